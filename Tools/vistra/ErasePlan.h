#pragma once

#include "Tools/vistra/StoredRecords.h"
#include "Tools/vistra/UsageFiles.h"

#include <optional>
#include <string>
#include <vector>

struct KeptItem {
    std::string path;
    std::string why;
};

/// What an erasure would take away, and nothing else.
struct ErasePlan {
    std::optional<std::string> key; ///< nothing for everything
    std::vector<UsageFile> files;
    std::vector<StoredRecord> records;
    bool hasAnswersElsewhere = false; ///< of a key whose answers are not in its record
    std::vector<KeptItem> kept;       ///< what belongs, or may belong, to what was asked for
    std::vector<KeptItem> unread;     ///< what could not be looked at

    bool IsEmpty() const { return files.empty() && records.empty() && !hasAnswersElsewhere; }
};

/// Looks for all that is stored, or all that belongs to the key. Changes nothing.
ErasePlan PlanErasure(const std::optional<std::string>& key);

/// Erases what the plan names, but documents that a program has come to write meanwhile, and
/// records that have changed. Returns what is left of it.
std::vector<KeptItem> Erase(const ErasePlan& plan);

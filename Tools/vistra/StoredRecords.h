#pragma once

#include "Platform/PropertyList.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What one top-level key of the library's preferences stands for.
enum class RecordKind {
    UsageKey,    ///< a person's answer to one product
    VersionNote, ///< the answer that was last told of one version of a product
    DateOnly,    ///< when a product family, or a key whose answer was forgotten, was first met
    Identity,    ///< the number that stands for the user
    Setting,     ///< what the user or an administrator has set, and the library only reads
    Other,
};

struct StoredRecord {
    std::string name;
    RecordKind kind = RecordKind::Other;
    std::optional<int> optIn;
    std::string date;
    std::size_t answers = 0; ///< demographic ones
    CFPropertyListRef value;
};

/// The library's preferences of this user on this machine.
namespace StoredRecords {

/// Path of the file; empty where there can be none.
std::string File();

/// Whether that file cannot be understood and so counts as empty, and the copies of such files.
bool IsFileBroken();
std::vector<std::string> KeptCopies();

/// Everything that is stored, by name. Nothing when it cannot be read.
std::optional<std::vector<StoredRecord>> ReadAll();

/// How many demographic answers a key has; some keys have them outside their record.
std::size_t CountAnswers(const std::string& key);

/// Removes one record, if what is stored is still what was read; true also for one that is gone.
/// False when it has changed, or cannot be removed.
bool Remove(const StoredRecord& record);

/// The key, of those that have a record, that a name of the form "KEY_..." begins with: the longest
/// one. Empty when there is none.
std::string KeyBefore(const std::vector<StoredRecord>& records, std::string_view name);

} // namespace StoredRecords

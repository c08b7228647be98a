#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// A file that the library, or an agent for it, keeps in the user's account.
struct UsageFile {
    enum class Kind { Document, Marker, Log, KeptCopy };

    Kind kind = Kind::Document;
    std::string path;
    std::string name;
    std::uint64_t bytes = 0;
};

/// What a look at the account found. Links are told of and not followed.
struct UsageFiles {
    std::vector<UsageFile> files; ///< by kind and path
    std::vector<std::string> links;
    std::vector<std::string> unlisted; ///< folders that cannot be listed
};

/// Finds documents, those that an agent has collected included, markers, logs, and copies of
/// preferences that could not be understood.
UsageFiles FindUsageFiles();

/// What the name of a document tells.
struct DocumentName {
    std::string product; ///< family and name, joined by "_"
    std::string session; ///< its GUID
};

/// Nothing for a name of another form.
std::optional<DocumentName> ParseDocumentName(std::string_view name);

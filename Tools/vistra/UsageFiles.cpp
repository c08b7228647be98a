#include "Tools/vistra/UsageFiles.h"

#include "Platform/Files.h"
#include "Platform/UserFolders.h"
#include "Tools/vistra/StoredRecords.h"
#include "Utility/src/Mac/FileSystemUtils.h"
#include "Utility/src/Mac/UserFolderUtils.h"
#include "Utility/src/UsageFileNames.h"
#include "Utility/src/UsageFolders.h"

#include <algorithm>
#include <filesystem>
#include <tuple>

using namespace UsageFileNames;

namespace {

constexpr char kCollectedFolder[] = "Collected"; ///< of the sample agent, beside the documents
constexpr std::size_t kGuidLength = 36;

bool IsDocument(std::string_view name) {
    return name.starts_with(kPrefix) &&
           (name.ends_with(kInProgressExtension) || name.ends_with(kPlainExtension) ||
            name.ends_with(kObfuscatedExtension));
}

bool IsMarker(std::string_view name) {
    return name.ends_with(UsageFolders::kMarkerExtension);
}

bool IsLog(std::string_view name) {
    return name.starts_with(UsageFolders::kLogPrefix) &&
           name.ends_with(UsageFolders::kLogExtension);
}

bool IsLink(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::is_symlink(std::filesystem::symlink_status(path, ignored));
}

void AddFile(UsageFile::Kind kind, const std::string& path, UsageFiles& found) {
    if (IsLink(path)) {
        found.links.push_back(path);
        return;
    }
    const auto size = Platform::SizeOfItem(path);
    found.files.push_back(
        {kind, path, FileSystemUtils::GetFileName(path), size ? size->logicalBytes : 0});
}

using NameTest = bool (*)(std::string_view);

/// Adds the files of a folder that pass the test.
void AddFolder(UsageFile::Kind kind, const std::string& folder, NameTest isWanted,
               UsageFiles& found) {
    if (folder.empty() || !FileSystemUtils::IsDirectory(folder))
        return;
    if (IsLink(folder)) {
        found.links.push_back(folder);
        return;
    }
    const auto entries = Platform::ListFolder(folder);
    if (!entries) {
        found.unlisted.push_back(folder);
        return;
    }
    for (const Platform::FolderEntry& entry : *entries)
        if (isWanted(entry.name) && (entry.isLink || !entry.isFolder))
            AddFile(kind, FileSystemUtils::AppendPathElement(folder, entry.name), found);
}

std::string Folder(const char* relative) {
    return FileSystemUtils::RightTrimPathByDelimiter(
        UserFolderUtils::PathBelow(kDomainLibraryFolderType, relative));
}

bool IsGuid(std::string_view text) {
    return text.size() == kGuidLength && std::ranges::all_of(text, [](char c) {
               return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F') || c == '-';
           });
}

/// Takes "_" and a GUID off the end.
std::optional<std::string> TakeGuid(std::string_view& name) {
    if (name.size() <= kGuidLength || name[name.size() - kGuidLength - 1] != '_' ||
        !IsGuid(name.substr(name.size() - kGuidLength)))
        return std::nullopt;
    std::string guid(name.substr(name.size() - kGuidLength));
    name.remove_suffix(kGuidLength + 1);
    return guid;
}

/// Takes "_" and the index off the end, if there is one: a changed decision has none.
void TakeIndex(std::string_view& name) {
    const std::size_t end = name.find_last_not_of("0123456789");
    if (end != std::string_view::npos && end + 1 < name.size() && name[end] == '_')
        name = name.substr(0, end);
}

} // namespace

UsageFiles FindUsageFiles() {
    const std::string documents = Folder(UsageFolders::kDocuments);
    UsageFiles found;
    AddFolder(UsageFile::Kind::Document, documents, IsDocument, found);
    if (!documents.empty())
        AddFolder(UsageFile::Kind::Document,
                  FileSystemUtils::AppendPathElement(FileSystemUtils::GetParentPath(documents),
                                                     kCollectedFolder),
                  IsDocument, found);
    AddFolder(UsageFile::Kind::Marker, Folder(UsageFolders::kMarkers), IsMarker, found);
    AddFolder(UsageFile::Kind::Log, Folder(UsageFolders::kLogs), IsLog, found);
    for (const std::string& path : StoredRecords::KeptCopies())
        AddFile(UsageFile::Kind::KeptCopy, path, found);
    std::ranges::stable_sort(found.files, [](const UsageFile& a, const UsageFile& b) {
        return std::tie(a.kind, a.path) < std::tie(b.kind, b.path);
    });
    return found;
}

std::optional<DocumentName> ParseDocumentName(std::string_view name) {
    if (!IsDocument(name))
        return std::nullopt;
    name.remove_suffix(std::string_view(kPlainExtension).size());
    name.remove_prefix(std::string_view(kPrefix).size());
    TakeIndex(name);
    const std::optional<std::string> session = TakeGuid(name);
    if (!session || !TakeGuid(name))
        return std::nullopt;
    return DocumentName{std::string(name), *session};
}

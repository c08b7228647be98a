#include "Tools/vistra/UsageFiles.h"

#include "Platform/Files.h"
#include "Platform/UserFolders.h"
#include "Tools/vistra/SessionFileName.h"
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

} // namespace

UsageFiles FindUsageFiles() {
    const std::string documents = Folder(UsageFolders::kDocuments);
    UsageFiles found;
    AddFolder(UsageFile::Kind::Document, documents, IsDocumentName, found);
    if (!documents.empty())
        AddFolder(UsageFile::Kind::Document,
                  FileSystemUtils::AppendPathElement(FileSystemUtils::GetParentPath(documents),
                                                     UsageFolders::kCollected),
                  IsDocumentName, found);
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
    const SessionFileName parsed = ParseSessionFileName(name);
    if (!IsDocumentName(name) || parsed.userId.empty())
        return std::nullopt;
    return DocumentName{parsed.product, parsed.sessionId};
}

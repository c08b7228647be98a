#include "Utility/src/Mac/FileSystemUtils.h"

#include "Platform/Files.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <system_error>

namespace fs = std::filesystem;
using Platform::ItemType;

namespace {

constexpr char kDelimiter = '/';

bool AddSize(const std::string& path, std::uint64_t& logical, std::uint64_t& physical) {
    const std::optional<Platform::FileSize> size = Platform::SizeOfItem(path);
    if (!size)
        return false;
    logical += size->logicalBytes;
    physical += size->allocatedBytes;
    return true;
}

bool AddFolderSize(const std::string& folder, std::uint64_t& logical, std::uint64_t& physical) {
    const auto entries = Platform::ListFolder(folder);
    if (!entries)
        return false;
    bool complete = true;
    for (const Platform::FolderEntry& entry : *entries) {
        const std::string path = FileSystemUtils::AppendPathElement(folder, entry.name);
        complete = (entry.isFolder && !entry.isLink ? AddFolderSize(path, logical, physical)
                                                    : AddSize(path, logical, physical)) &&
                   complete;
    }
    return complete;
}

/// False when the folder cannot be listed.
bool AppendFiles(const std::string& folder, bool recursive, std::vector<std::string>& files) {
    const auto entries = Platform::ListFolder(folder);
    if (!entries)
        return false;
    for (const Platform::FolderEntry& entry : *entries) {
        std::string path = FileSystemUtils::AppendPathElement(folder, entry.name);
        if (!entry.isFolder)
            files.push_back(std::move(path));
        else if (recursive && !entry.isLink)
            AppendFiles(path, recursive, files);
    }
    return true;
}

/// The creation date of the folder that holds `path`.
std::optional<Platform::FileTime> FolderCreationTime(const std::string& path) {
    const std::size_t end = path.rfind(kDelimiter);
    if (end == std::string::npos)
        return std::nullopt;
    return Platform::CreationTime(end == 0 ? path.substr(0, 1) : path.substr(0, end));
}

} // namespace

std::string FileSystemUtils::GetPathDelimiter() {
    return std::string(1, kDelimiter);
}

std::string FileSystemUtils::RightTrimPathByDelimiter(const std::string& path) {
    const std::size_t last = path.find_last_not_of(kDelimiter);
    return last == std::string::npos ? path : path.substr(0, last + 1);
}

std::string FileSystemUtils::GetParentPath(const std::string& path) {
    const std::string trimmed = RightTrimPathByDelimiter(path);
    const std::size_t end = trimmed.rfind(kDelimiter);
    if (end == std::string::npos)
        return {};
    return end == 0 ? GetPathDelimiter() : trimmed.substr(0, end);
}

std::string FileSystemUtils::GetPathLastComponent(const std::string& path) {
    const std::string trimmed = RightTrimPathByDelimiter(path);
    if (trimmed.ends_with(kDelimiter))
        return GetPathDelimiter();
    return trimmed.substr(trimmed.rfind(kDelimiter) + 1);
}

std::string FileSystemUtils::GetFileName(const std::string& path) {
    return path.ends_with(kDelimiter) ? std::string() : GetPathLastComponent(path);
}

std::string FileSystemUtils::AppendPathElement(const std::string& path,
                                               const std::string& element) {
    if (path.empty() || element.empty())
        return path + element;
    const std::size_t first = std::min(element.find_first_not_of(kDelimiter), element.size());
    const std::size_t end = path.find_last_not_of(kDelimiter) + 1;
    return path.substr(0, end) + kDelimiter + element.substr(first);
}

std::string FileSystemUtils::AppendPathElement(const std::string& path) {
    return path.ends_with(kDelimiter) ? path : path + kDelimiter;
}

bool FileSystemUtils::DoesPathExist(const std::string& path) {
    const ItemType type = Platform::TypeOfItem(path);
    return type == ItemType::Folder || type == ItemType::Other;
}

bool FileSystemUtils::IsPathMissing(const std::string& path) {
    return Platform::TypeOfItem(path) == ItemType::Missing;
}

bool FileSystemUtils::IsDirectory(const std::string& path) {
    return Platform::TypeOfItem(path) == ItemType::Folder;
}

bool FileSystemUtils::IsMacSystemFile(const std::string& path) {
    return path.empty() || IsDirectory(path) || GetPathLastComponent(path).starts_with('.');
}

bool FileSystemUtils::IsFileNewer(const std::string& a, const std::string& b) {
    const std::optional<Platform::FileTime> date = Platform::ModificationTime(b);
    // A missing `b` has no date that anything could be later than. An unknown date of the folder
    // or of a missing `a` counts as older than every known one.
    return date && (FolderCreationTime(a) > date || Platform::ModificationTime(a) > date);
}

bool FileSystemUtils::IsFileSizeValid(const std::string& path, std::int32_t limit) {
    if (limit < 0)
        return false;
    const Platform::FileHandle file = Platform::OpenFile(path, Platform::Access::Read);
    if (file == Platform::kNoFile)
        return true;
    Platform::CloseFile(file);
    std::error_code error;
    const std::uintmax_t length = fs::file_size(path, error);
    return error || length <= static_cast<std::uintmax_t>(limit);
}

bool FileSystemUtils::IsWriteLocked(const std::string& path) {
    const Platform::FileHandle file = Platform::OpenLockedFile(path);
    Platform::CloseFile(file);
    return file == Platform::kNoFile;
}

bool FileSystemUtils::GetFileLastModifiedTime(const std::string& path, std::uint64_t& seconds) {
    if (!DoesPathExist(path))
        return false;
    const std::optional<Platform::FileTime> time = Platform::ModificationTime(path);
    if (time)
        seconds = static_cast<std::uint64_t>(std::max<std::int64_t>(time->seconds, 0));
    return time.has_value();
}

bool FileSystemUtils::GetDiscFreeSpace(const std::string& path, std::uint64_t& bytes) {
    const std::optional<std::uint64_t> freeBytes = Platform::FreeBytes(path);
    bytes = freeBytes.value_or(bytes);
    return freeBytes.has_value();
}

bool FileSystemUtils::GetFileSize(const std::string& path, std::uint64_t& logical,
                                  std::uint64_t& physical) {
    logical = 0;
    physical = 0;
    if (!DoesPathExist(path))
        return false;
    std::error_code error;
    const fs::path item = fs::canonical(path, error);
    if (error)
        return false;
    return IsDirectory(item.string()) ? AddFolderSize(item, logical, physical)
                                      : AddSize(item.string(), logical, physical);
}

bool FileSystemUtils::GetFilesInDirectory(const std::string& folder,
                                          std::vector<std::string>& files, bool recursive) {
    return AppendFiles(RightTrimPathByDelimiter(folder), recursive, files) || IsDirectory(folder);
}

#include "Platform/Files.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>

namespace Platform {

namespace {

constexpr std::uint64_t kBlockBytes = 512; // the unit of st_blocks, whatever the file system's

} // namespace

ItemType TypeOfItem(const std::string& path) {
    // The system would read only the part before a NUL, which names something else.
    if (path.empty() || path.find('\0') != std::string::npos)
        return ItemType::Unknown;
    struct stat status = {};
    if (::stat(path.c_str(), &status) == 0)
        return S_ISDIR(status.st_mode) ? ItemType::Folder : ItemType::Other;
    return errno == ENOENT || errno == ENOTDIR ? ItemType::Missing : ItemType::Unknown;
}

std::optional<FileTime> ModificationTime(const std::string& path) {
    struct stat status = {};
    if (::stat(path.c_str(), &status) != 0)
        return std::nullopt;
    return FileTime{status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

std::optional<FileTime> CreationTime(const std::string& path) {
    struct statx status = {};
    if (::statx(AT_FDCWD, path.c_str(), 0, STATX_BTIME, &status) != 0 ||
        (status.stx_mask & STATX_BTIME) == 0)
        return std::nullopt;
    return FileTime{status.stx_btime.tv_sec, status.stx_btime.tv_nsec};
}

std::optional<FileSize> SizeOfItem(const std::string& path) {
    struct stat status = {};
    if (::lstat(path.c_str(), &status) != 0)
        return std::nullopt;
    return FileSize{static_cast<std::uint64_t>(status.st_size),
                    static_cast<std::uint64_t>(status.st_blocks) * kBlockBytes};
}

std::optional<std::uint64_t> FreeBytes(const std::string& path) {
    struct statvfs volume = {};
    if (path.find('\0') != std::string::npos || ::statvfs(path.c_str(), &volume) != 0)
        return std::nullopt;
    return std::uint64_t{volume.f_bavail} * volume.f_frsize;
}

} // namespace Platform

#include "Platform/Files.h"

#include "Platform/Linux/Descriptor.h"

#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>

// Not by the C++ library's iterators, which end the process when memory runs out half-way, nor by
// the C library's, which take more system calls than most folders are worth.

namespace Platform {

namespace {

/// Most folders in one piece: between two, others may change them.
constexpr std::size_t kBufferBytes = 32'768;

bool HasMode(int folder, const char* name, int flags, mode_t mode) {
    struct stat status = {};
    return ::fstatat(folder, name, &status, flags) == 0 && (status.st_mode & S_IFMT) == mode;
}

FolderEntry Describe(int folder, const dirent64& entry) {
    FolderEntry described{entry.d_name, entry.d_type == DT_DIR, entry.d_type == DT_LNK};
    if (entry.d_type == DT_UNKNOWN)
        described.isLink = HasMode(folder, entry.d_name, AT_SYMLINK_NOFOLLOW, S_IFLNK);
    if (entry.d_type == DT_UNKNOWN || described.isLink)
        described.isFolder = HasMode(folder, entry.d_name, 0, S_IFDIR);
    return described;
}

void AppendEntries(int folder, std::string_view records, std::vector<FolderEntry>& entries) {
    while (!records.empty()) {
        const auto& entry = *reinterpret_cast<const dirent64*>(records.data());
        if (const std::string_view name = entry.d_name; name != "." && name != "..")
            entries.push_back(Describe(folder, entry));
        records.remove_prefix(entry.d_reclen);
    }
}

} // namespace

std::optional<std::vector<FolderEntry>> ListFolder(const std::string& path) {
    const Descriptor folder = OpenDescriptor(path, O_RDONLY | O_DIRECTORY);
    if (!folder.IsOpen())
        return std::nullopt;
    std::vector<FolderEntry> entries;
    const auto buffer = std::make_unique_for_overwrite<char[]>(kBufferBytes);
    for (;;) {
        const ssize_t count = ::getdents64(folder.Get(), buffer.get(), kBufferBytes);
        if (count <= 0)
            return entries;
        AppendEntries(folder.Get(), {buffer.get(), static_cast<std::size_t>(count)}, entries);
    }
}

} // namespace Platform

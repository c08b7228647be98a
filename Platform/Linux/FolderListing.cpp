#include "Platform/Files.h"

#include "Platform/Linux/Descriptor.h"

#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>

// Not by the C++ library's iterators, which end the process when memory runs out half-way.

namespace Platform {

namespace {

struct Closer {
    void operator()(DIR* folder) const { ::closedir(folder); }
};
using Listing = std::unique_ptr<DIR, Closer>;

Listing Open(const std::string& path) {
    Descriptor folder = OpenDescriptor(path, O_RDONLY | O_DIRECTORY);
    Listing listing(folder.IsOpen() ? ::fdopendir(folder.Get()) : nullptr);
    if (listing)
        folder.Release();
    return listing;
}

bool HasMode(DIR* folder, const char* name, int flags, mode_t mode) {
    struct stat status = {};
    return ::fstatat(::dirfd(folder), name, &status, flags) == 0 &&
           (status.st_mode & S_IFMT) == mode;
}

FolderEntry Describe(DIR* folder, const dirent& entry) {
    FolderEntry described{entry.d_name, entry.d_type == DT_DIR, entry.d_type == DT_LNK};
    if (entry.d_type == DT_UNKNOWN)
        described.isLink = HasMode(folder, entry.d_name, AT_SYMLINK_NOFOLLOW, S_IFLNK);
    if (entry.d_type == DT_UNKNOWN || described.isLink)
        described.isFolder = HasMode(folder, entry.d_name, 0, S_IFDIR);
    return described;
}

} // namespace

std::optional<std::vector<FolderEntry>> ListFolder(const std::string& path) {
    const Listing folder = Open(path);
    if (!folder)
        return std::nullopt;
    std::vector<FolderEntry> entries;
    while (const dirent* entry = ::readdir(folder.get()))
        if (const std::string_view name = entry->d_name; name != "." && name != "..")
            entries.push_back(Describe(folder.get(), *entry));
    return entries;
}

} // namespace Platform

#include "Platform/FileReading.h"

#include "Platform/Linux/Descriptor.h"

#include <cinttypes>
#include <cstdio>
#include <fcntl.h>
#include <sstream>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace Platform {

namespace {

/// A line of the kernel's list of locks, such as
/// "3: FLOCK  ADVISORY  WRITE 1234 08:01:5678 0 EOF".
bool IsExclusiveLockOf(const std::string& line, const struct stat& file) {
    unsigned major = 0, minor = 0;
    std::uint64_t inode = 0;
    if (std::sscanf(line.c_str(), "%*d: FLOCK %*s WRITE %*d %x:%x:%" SCNu64, &major, &minor,
                    &inode) != 3)
        return false;
    // File systems without a device of their own show there another number than to `stat`.
    const bool sameDevice =
        major == 0 || (major == ::major(file.st_dev) && minor == ::minor(file.st_dev));
    return sameDevice && inode == file.st_ino;
}

} // namespace

std::optional<std::size_t> ReadFromFile(FileHandle file, char* bytes, std::size_t size) {
    const ssize_t count = Retried([&] { return ::read(file, bytes, size); });
    return count < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(count));
}

std::optional<std::size_t> ReadFromFileAt(FileHandle file, std::uint64_t offset, char* bytes,
                                          std::size_t size) {
    const ssize_t count =
        Retried([&] { return ::pread(file, bytes, size, static_cast<off_t>(offset)); });
    return count < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(count));
}

bool IsHeldLocked(const std::string& path) {
    struct stat file = {};
    if (::stat(path.c_str(), &file) != 0)
        return false;
    std::istringstream locks(ReadFile("/proc/locks").value_or(""));
    for (std::string line; std::getline(locks, line);)
        if (IsExclusiveLockOf(line, file))
            return true;
    return false;
}

bool MayBeWritten(const std::string& path) {
    const int wanted = TypeOfItem(path) == ItemType::Folder ? W_OK | X_OK : W_OK;
    return ::faccessat(AT_FDCWD, path.c_str(), wanted, AT_EACCESS) == 0;
}

} // namespace Platform

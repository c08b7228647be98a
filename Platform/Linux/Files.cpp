#include "Platform/Files.h"

#include "Platform/Linux/Descriptor.h"
#include "Platform/Linux/TemporaryFile.h"

#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Platform {

namespace {

int OpenFlags(Access access) {
    switch (access) {
    case Access::Read:
        return O_RDONLY;
    case Access::ReadWrite:
        return O_RDWR;
    case Access::Append:
        return O_WRONLY | O_APPEND | O_CREAT | O_NOFOLLOW;
    case Access::Truncate:
        return O_WRONLY | O_TRUNC | O_CREAT | O_NOFOLLOW;
    }
    return O_RDONLY;
}

/// For file systems that cannot refuse an existing target themselves: a second name first, which
/// does, then the old one goes. Folders have no second names, so this fails for them.
bool LinkThenUnlink(const std::string& source, const std::string& destination) {
    if (::link(source.c_str(), destination.c_str()) != 0)
        return false;
    if (::unlink(source.c_str()) == 0)
        return true;
    ::unlink(destination.c_str());
    return false;
}

} // namespace

FileHandle OpenFile(const std::string& path, Access access) {
    return OpenRegularFile(path, OpenFlags(access)).Release();
}

FileHandle OpenLockedFile(const std::string& path) {
    Descriptor file = OpenRegularFile(path, O_RDWR | O_CREAT | O_NOFOLLOW);
    if (!file.IsOpen() || Retried([&] { return ::flock(file.Get(), LOCK_EX | LOCK_NB); }) != 0)
        return kNoFile;
    return file.Release();
}

bool WriteToFile(FileHandle file, std::string_view bytes) {
    return file != kNoFile && WriteFully(file, bytes);
}

void CloseFile(FileHandle file) {
    if (file == kNoFile)
        return;
    // A forked child of the host shares the lock, which closing alone would leave to it.
    ::flock(file, LOCK_UN);
    ::close(file);
}

std::optional<std::string> ReadFile(const std::string& path, std::uint64_t maximumBytes) {
    struct stat status = {};
    const Descriptor file = OpenRegularFile(path, O_RDONLY, &status);
    if (!file.IsOpen() || static_cast<std::uint64_t>(status.st_size) > maximumBytes)
        return std::nullopt;
    std::string bytes;
    if (!ReadToEnd(file.Get(), maximumBytes, bytes))
        return std::nullopt;
    return bytes;
}

bool ReplaceFile(const std::string& path, std::string_view content) {
    if (ReadFile(path, content.size()) == content)
        return RenewModificationTime(path);
    TemporaryFile next = TemporaryFile::Unique(path);
    return next.Store(content) && next.Replace(path);
}

bool RenewModificationTime(const std::string& path) {
    return ::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0 &&
           ::utimensat(AT_FDCWD, path.c_str(), nullptr, 0) == 0;
}

bool CopyFile(const std::string& source, const std::string& destination) {
    const std::optional<std::string> content = ReadFile(source);
    if (!content)
        return false;
    TemporaryFile copy = TemporaryFile::Unique(destination);
    return copy.Store(*content) && copy.MoveToNew(destination);
}

bool DeleteFile(const std::string& path) noexcept {
    return path.find('\0') == std::string::npos && ::unlink(path.c_str()) == 0;
}

bool RenameWithoutReplacing(const std::string& source, const std::string& destination) {
    if (source.find('\0') != std::string::npos || destination.find('\0') != std::string::npos)
        return false;
    if (::renameat2(AT_FDCWD, source.c_str(), AT_FDCWD, destination.c_str(), RENAME_NOREPLACE) == 0)
        return true;
    return (errno == EINVAL || errno == ENOSYS) && LinkThenUnlink(source, destination);
}

bool CreateFolder(const std::string& path, const std::string& parent) {
    struct stat status = {};
    if (::stat(parent.c_str(), &status) != 0)
        return false;
    const mode_t permissions = status.st_mode & 07777;
    if (::mkdir(path.c_str(), permissions & 0777) == 0) {
        // mkdir takes the process's mask away; a file system without permissions keeps its own.
        ::chmod(path.c_str(), permissions);
        return true;
    }
    return errno == EEXIST && ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

} // namespace Platform

#include "Platform/Linux/TemporaryFile.h"

#include "Platform/Files.h"

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Platform {

TemporaryFile TemporaryFile::Unique(const std::string& target) {
    std::string path;
    const int number = Retried([&] {
        path = target + ".XXXXXX";
        return ::mkostemp(path.data(), O_CLOEXEC);
    });
    TemporaryFile file(path, Descriptor(AwayFromStandardStreams(number)));
    if (file.IsOpen()) // the process's mask may keep even its user out
        ::fchmod(file.m_file.Get(), 0600);
    return file;
}

TemporaryFile TemporaryFile::Named(const std::string& path, mode_t permissions) {
    ::unlink(path.c_str());
    TemporaryFile file(path, OpenDescriptor(path, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW));
    if (file.IsOpen() && ::fchmod(file.m_file.Get(), permissions) != 0)
        file.m_file.Close();
    return file;
}

TemporaryFile::~TemporaryFile() {
    if (IsOpen() && !m_moved)
        ::unlink(m_path.c_str());
}

bool TemporaryFile::Store(std::string_view content) {
    return IsOpen() && WriteFully(m_file.Get(), content) &&
           Retried([&] { return ::fsync(m_file.Get()); }) == 0;
}

bool TemporaryFile::Replace(const std::string& target) {
    m_moved =
        IsOpen() && TakePermissionsOf(target) && ::rename(m_path.c_str(), target.c_str()) == 0;
    return m_moved;
}

bool TemporaryFile::MoveToNew(const std::string& target) {
    m_moved = IsOpen() && RenameWithoutReplacing(m_path, target);
    return m_moved;
}

bool TemporaryFile::TakePermissionsOf(const std::string& target) {
    struct stat old = {};
    if (::stat(target.c_str(), &old) != 0)
        return errno == ENOENT;
    if (!S_ISREG(old.st_mode) || ::faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0)
        return false;
    // A privileged user's write leaves the file to its owner; for anybody else this does nothing.
    if (::fchown(m_file.Get(), old.st_uid, old.st_gid) != 0)
        errno = 0;
    return ::fchmod(m_file.Get(), old.st_mode & 0777) == 0;
}

} // namespace Platform

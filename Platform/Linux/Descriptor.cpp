#include "Platform/Linux/Descriptor.h"

#include <array>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace Platform {

bool MayPass(int reason) {
    return reason == EMFILE || reason == ENFILE || reason == ENOMEM || reason == EIO;
}

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
    std::swap(m_number, other.m_number);
    return *this;
}

int Descriptor::Release() {
    return std::exchange(m_number, -1);
}

void Descriptor::Close() {
    if (!IsOpen())
        return;
    const int reason = errno;
    ::close(Release());
    errno = reason;
}

int AwayFromStandardStreams(int number) {
    if (number < 0 || number > STDERR_FILENO)
        return number;
    const Descriptor standard(number);
    return ::fcntl(number, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
}

Descriptor OpenDescriptor(const std::string& path, int flags, mode_t mode) {
    if (path.find('\0') != std::string::npos) {
        errno = ENOENT;
        return Descriptor();
    }
    const int number = Retried([&] { return ::open(path.c_str(), flags | O_CLOEXEC, mode); });
    return Descriptor(AwayFromStandardStreams(number));
}

Descriptor OpenRegularFile(const std::string& path, int flags, struct stat* status) {
    constexpr mode_t kMode = 0600;
    // What turns out to be something else must not have been truncated.
    Descriptor file = OpenDescriptor(path, (flags & ~O_TRUNC) | O_NONBLOCK | O_NOCTTY, kMode);
    struct stat opened = {};
    if (!file.IsOpen() || ::fstat(file.Get(), &opened) != 0)
        return Descriptor();
    if (!S_ISREG(opened.st_mode)) {
        errno = S_ISDIR(opened.st_mode) ? EISDIR : EINVAL;
        return Descriptor();
    }
    if ((flags & O_TRUNC) != 0 && opened.st_size != 0 &&
        Retried([&] { return ::ftruncate(file.Get(), 0); }) != 0)
        return Descriptor();
    // The process's mask may have kept even its user out of a new file.
    if ((flags & O_CREAT) != 0 && opened.st_size == 0 && (opened.st_mode & kMode) != kMode)
        ::fchmod(file.Get(), kMode);
    if (status)
        *status = opened;
    return file;
}

bool ReadToEnd(int descriptor, std::uint64_t maximumBytes, std::string& bytes) {
    std::array<char, 8192> buffer;
    bytes.clear();
    for (;;) {
        const ssize_t count =
            Retried([&] { return ::read(descriptor, buffer.data(), buffer.size()); });
        if (count <= 0)
            return count == 0;
        if (static_cast<std::uint64_t>(count) > maximumBytes - bytes.size()) {
            errno = EFBIG;
            return false;
        }
        bytes.append(buffer.data(), static_cast<std::size_t>(count));
    }
}

bool WriteFully(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count =
            Retried([&] { return ::write(descriptor, bytes.data(), bytes.size()); });
        if (count <= 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

} // namespace Platform

#pragma once

#include <cerrno>
#include <cstdint>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <sys/types.h>

namespace Platform {

/// Repeats a system call that a signal interrupted.
template <typename Call>
auto Retried(Call call) {
    auto result = call();
    while (result == -1 && errno == EINTR)
        result = call();
    return result;
}

/// Whether what `reason`, an errno, tells of may be over at the next try: a lack of descriptors or
/// memory, or an error of the device. What such a failure hides must not count as missing.
bool MayPass(int reason);

/// Owner of an open file descriptor.
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int number) : m_number(number) {}
    Descriptor(Descriptor&& other) noexcept : m_number(other.Release()) {}
    Descriptor& operator=(Descriptor&& other) noexcept;
    ~Descriptor() { Close(); }

    bool IsOpen() const { return m_number >= 0; }
    int Get() const { return m_number; }
    int Release();
    void Close();

private:
    int m_number = -1;
};

/// Opens a file close-on-exec. A descriptor of the standard streams, free in a host that closed
/// them, is never taken. Not open on failure, with errno telling why.
Descriptor OpenDescriptor(const std::string& path, int flags, mode_t mode = 0600);

/// The same, but anything that is not a regular file is refused, and never waited for. A new file
/// is its user's alone. `status`, if given, becomes that of the opened file.
Descriptor OpenRegularFile(const std::string& path, int flags, struct stat* status = nullptr);

/// Moves a new descriptor away from the standard streams. -1, with `number` closed, on failure.
int AwayFromStandardStreams(int number);

/// Reads from the current position to the end. False on failure, with errno EFBIG when there are
/// more than `maximumBytes`.
bool ReadToEnd(int descriptor, std::uint64_t maximumBytes, std::string& bytes);

/// Writes all of `bytes`. False when not all of it could be written.
bool WriteFully(int descriptor, std::string_view bytes);

} // namespace Platform

#include "Platform/Process.h"

#include "Platform/ThreadAnnotations.h"

#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

namespace Platform {

namespace {

constexpr std::string_view kDeletedMark = " (deleted)";

/// The text of a symbolic link, however long; empty on failure.
std::string ReadLink(const std::string& path) {
    for (std::vector<char> buffer(256);; buffer.resize(buffer.size() * 2)) {
        const ssize_t length = ::readlink(path.c_str(), buffer.data(), buffer.size());
        if (length < 0)
            return std::string();
        if (static_cast<std::size_t>(length) < buffer.size())
            return std::string(buffer.data(), static_cast<std::size_t>(length));
    }
}

/// The program of a process, named as in the folder of all processes.
std::string ReadProgramPath(const std::string& process) {
    std::string path = ReadLink("/proc/" + process + "/exe");
    // A file may bear the kernel's mark as its real name; then it is there.
    if (path.ends_with(kDeletedMark) && ::access(path.c_str(), F_OK) != 0)
        path.resize(path.size() - kDeletedMark.size());
    return path;
}

} // namespace

int CurrentProcessId() {
    return ::getpid();
}

std::string CurrentProgramPath() {
    // Never destroyed, for the host's exit handlers; empty while the path cannot be told.
    static AnnotatedMutex mutex;
    static std::string& path = *new std::string;
    const ScopedLock lock(mutex);
    if (path.empty())
        path = ReadProgramPath("self");
    return path;
}

std::string ProgramPathOf(int processId) {
    return ReadProgramPath(std::to_string(processId));
}

} // namespace Platform

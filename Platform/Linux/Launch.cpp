#include "Platform/Launch.h"

#include "Platform/Linux/ChildProcess.h"

#include <array>
#include <fcntl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Platform {

namespace {

struct Program {
    const char* path;
    const char* const* arguments;
    const char* const* environment;
};

constexpr int kFirstPrivateDescriptor = STDERR_FILENO + 1;

VISTRA_CHILD_CODE bool StandOnNullDevice() {
    const long device = ::syscall(SYS_openat, AT_FDCWD, "/dev/null", O_RDWR, 0);
    bool standing = device >= 0;
    for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream)
        standing = standing && (device == stream || ::syscall(SYS_dup3, device, stream, 0) >= 0);
    return standing;
}

/// The writing end of the pipe closes by itself when the program begins.
VISTRA_CHILD_CODE void ExecuteOrReport(const Program& program, int report) {
    Execute(program.path, program.arguments, program.environment);
    ::syscall(SYS_write, report, "!", 1L);
}

VISTRA_CHILD_CODE int StartDetached(const void* argument) {
    const Program& program = *static_cast<const Program*>(argument);
    ::syscall(SYS_setsid);
    if (!StandOnNullDevice())
        return 1;
    CloseDescriptorsFrom(kFirstPrivateDescriptor);
    int report[2] = {};
    if (::syscall(SYS_pipe2, report, O_CLOEXEC) != 0)
        return 1;
    const int child = ForkChild();
    if (child == 0)
        ExecuteOrReport(program, report[1]);
    ::syscall(SYS_close, report[1]);
    char failure = 0;
    return child > 0 && ::syscall(SYS_read, report[0], &failure, 1L) == 0 ? 0 : 1;
}

/// The shell stands between, so that it too is no child that the host's wait calls find.
VISTRA_CHILD_CODE int RunShell(const void* argument) {
    const Program& program = *static_cast<const Program*>(argument);
    ::syscall(SYS_setsid);
    if (!StandOnNullDevice())
        EndBySignal();
    CloseDescriptorsFrom(kFirstPrivateDescriptor);
    const int child = ForkChild();
    if (child == 0) {
        Execute(program.path, program.arguments, program.environment);
        EndBySignal();
    }
    const int status = child > 0 ? WaitForChild(child) : -1;
    if (status == -1 || !WIFEXITED(status))
        EndBySignal();
    return WEXITSTATUS(status);
}

} // namespace

bool LaunchItem(const std::string& path) {
    const std::array<const char*, 2> arguments = {path.c_str(), nullptr};
    const Program program = {path.c_str(), arguments.data(), environ};
    const std::optional<int> status = RunInChild(StartDetached, &program);
    return status && WIFEXITED(*status) && WEXITSTATUS(*status) == 0;
}

int RunShellCommand(const std::string& command) {
    const std::array<const char*, 5> arguments = {"sh", "-c", "--", command.c_str(), nullptr};
    const Program program = {"/bin/sh", arguments.data(), environ};
    const std::optional<int> status = RunInChild(RunShell, &program);
    return status && WIFEXITED(*status) ? WEXITSTATUS(*status) : -1;
}

} // namespace Platform

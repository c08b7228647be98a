#include "Platform/Linux/ChildProcess.h"

#include "Platform/Linux/Descriptor.h"

#include <climits>
#include <csignal>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Platform {

namespace {

constexpr int kKernelSignals = 64;
constexpr std::size_t kKernelSetBytes = kKernelSignals / CHAR_BIT;
constexpr unsigned kMostDescriptors = 1 << 20; ///< for the loop of an old kernel

/// The kernel's signal settings; all zero, it is the default disposition with every field empty.
struct KernelAction {
    unsigned long words[8];
};

/// Like fork, with a choice of the signal that announces the end.
VISTRA_CHILD_CODE int Clone(int endSignal) {
    // One machine has the stack before the flags; every other argument is zero.
#if defined(__s390__)
    return static_cast<int>(::syscall(SYS_clone, 0L, static_cast<long>(endSignal), 0L, 0L, 0L));
#else
    return static_cast<int>(::syscall(SYS_clone, static_cast<long>(endSignal), 0L, 0L, 0L, 0L));
#endif
}

VISTRA_CHILD_CODE void RestoreDefaultDispositions() {
    const KernelAction action = {};
    for (int signal = 1; signal <= kKernelSignals; ++signal)
        ::syscall(SYS_rt_sigaction, signal, &action, nullptr, kKernelSetBytes);
}

[[noreturn]] VISTRA_CHILD_CODE void RunAsChild(ChildBody body, const void* argument) {
    RestoreDefaultDispositions();
    const int status = body(argument);
    for (;;)
        ::syscall(SYS_exit_group, status);
}

/// Keeps the host's signal handlers from running in a child before it has reset them.
class BlockedSignals {
public:
    BlockedSignals() {
        sigset_t all;
        ::sigfillset(&all);
        ::pthread_sigmask(SIG_SETMASK, &all, &m_previous);
    }
    ~BlockedSignals() { ::pthread_sigmask(SIG_SETMASK, &m_previous, nullptr); }
    BlockedSignals(const BlockedSignals&) = delete;
    BlockedSignals& operator=(const BlockedSignals&) = delete;

private:
    sigset_t m_previous;
};

} // namespace

std::optional<int> RunInChild(ChildBody body, const void* argument) {
    int child = -1;
    {
        const BlockedSignals blocked;
        child = Clone(0);
        if (child == 0)
            RunAsChild(body, argument);
    }
    int status = 0;
    if (child < 0 || Retried([&] { return ::waitpid(child, &status, __WALL); }) != child)
        return std::nullopt;
    return status;
}

VISTRA_CHILD_CODE int ForkChild() {
    return Clone(SIGCHLD);
}

VISTRA_CHILD_CODE void Execute(const char* path, const char* const* arguments,
                               const char* const* environment) {
    const KernelAction emptyMask = {};
    ::syscall(SYS_rt_sigprocmask, SIG_SETMASK, &emptyMask, nullptr, kKernelSetBytes);
    ::syscall(SYS_execve, path, arguments, environment);
}

VISTRA_CHILD_CODE void CloseDescriptorsFrom(int first) {
#ifdef SYS_close_range
    if (::syscall(SYS_close_range, first, ~0U, 0) == 0)
        return;
#endif
    rlimit64 limit = {};
    ::syscall(SYS_prlimit64, 0, RLIMIT_NOFILE, nullptr, &limit);
    for (unsigned number = static_cast<unsigned>(first);
         number < limit.rlim_max && number < kMostDescriptors; ++number)
        ::syscall(SYS_close, number);
}

VISTRA_CHILD_CODE int WaitForChild(int child) {
    int status = -1;
    const long ended = ::syscall(SYS_wait4, child, &status, 0, nullptr);
    return ended == child ? status : -1;
}

VISTRA_CHILD_CODE void EndBySignal() {
    ::syscall(SYS_kill, ::syscall(SYS_getpid), SIGKILL);
}

} // namespace Platform

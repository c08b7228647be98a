#include "Tests/Support/ScriptHost/Faults.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <new>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

bool g_isInCall = true;

namespace {

/// Runs before every other initialiser of this program and after those of its libraries.
[[gnu::constructor(101)]] void EndLoading() {
    g_isInCall = false;
}

long g_count = 0;
long g_failing = 0; ///< number of the allocation that is to fail

bool NextAllocationFails() {
    static bool goesOn = false;
    static const char* const order = std::getenv("FAILING_ALLOCATION");
    if (g_count == 0 && order)
        g_failing = std::atol(order);
    if (!g_isInCall)
        return goesOn = false;
    const bool fails = ++g_count == g_failing || goesOn;
    goesOn = fails && order && std::strchr(order, '+');
    return fails;
}

} // namespace

long CountedAllocations() {
    return g_count;
}

void FailAllocation(long nth) {
    g_failing = g_count + nth;
}

// The library's allocations and writes come here, too.

void* operator new(std::size_t size) {
    if (void* memory = NextAllocationFails() ? nullptr : std::malloc(size ? size : 1))
        return memory;
    throw std::bad_alloc();
}
void* operator new[](std::size_t size) { // a sanitizer's own would not come here
    return operator new(size);
}
// Inlined, they look to the compiler as if they freed what another allocator made.
[[gnu::noinline]] void operator delete(void* memory) noexcept {
    std::free(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
[[gnu::noinline]] void operator delete[](void* memory) noexcept {
    std::free(memory);
}
[[gnu::noinline]] void operator delete[](void* memory, std::size_t) noexcept {
    std::free(memory);
}

extern "C" ssize_t write(int file, const void* data, std::size_t size) {
    static const char* const limit = std::getenv("SHORT_WRITES");
    static int count = 0;
    struct stat status = {};
    if (limit && ::fstat(file, &status) == 0 && S_ISREG(status.st_mode)) {
        size = std::min(size, static_cast<std::size_t>(std::atol(limit)));
        if (++count % 3 == 0) {
            errno = EINTR;
            return -1;
        }
    }
    return ::syscall(SYS_write, file, data, size);
}

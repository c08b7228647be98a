#pragma once

#include <cstddef>

namespace Platform {

/// The threads library's plain lock, not recursive, with a condition. Each operation returns its
/// result code, 0 for success. Making one takes no memory of the heap.
class Lock {
public:
    Lock();
    ~Lock();
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;

    int Acquire();
    int Release();
    /// Waits on the condition; the lock is free meanwhile.
    int Wait();
    /// Wakes one waiter.
    int Signal();

private:
    struct Native;
    Native& GetNative();

    // In place: the library's own lock is made when it is loaded, where nobody could be told that
    // memory has run out.
    alignas(std::max_align_t) std::byte m_storage[128];
};

/// While one lives, a request to cancel the calling thread is put off: unwinding a thread from
/// inside the library's destructors would end the host.
class CancellationGuard {
public:
    CancellationGuard();
    ~CancellationGuard();
    CancellationGuard(const CancellationGuard&) = delete;
    CancellationGuard& operator=(const CancellationGuard&) = delete;

private:
    int m_previous = 0;
};

} // namespace Platform

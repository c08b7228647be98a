#pragma once

#include "Platform/Lock.h"
#include "Platform/ThreadAnnotations.h"
#include "Utility/src/GarbageCollection.h"

/// A plain, non-recursive lock with a condition. Each operation returns the threads library's
/// result code, 0 for success.
class VISTRA_CAPABILITY("mutex") Mutex : public GlobalItem {
public:
    int lock() VISTRA_ACQUIRE() VISTRA_UNCHECKED { return m_lock.Acquire(); }
    int unlock() VISTRA_RELEASE() VISTRA_UNCHECKED { return m_lock.Release(); }
    /// Waits on the condition; the lock is free meanwhile.
    int wait() VISTRA_REQUIRES(this) { return m_lock.Wait(); }
    /// Wakes one waiter.
    int signal() { return m_lock.Signal(); }

private:
    Platform::Lock m_lock;
};

/// Holds a lock for as long as it lives, and keeps the thread from being cancelled meanwhile. On
/// null it holds nothing, which the thread-safety analysis cannot follow.
class VISTRA_SCOPED_CAPABILITY MutexProxy {
public:
    explicit MutexProxy(Mutex* mutex) VISTRA_ACQUIRE(mutex) VISTRA_UNCHECKED : m_mutex(mutex) {
        if (m_mutex)
            m_mutex->lock();
    }
    ~MutexProxy() VISTRA_RELEASE() VISTRA_UNCHECKED {
        if (m_mutex)
            m_mutex->unlock();
    }
    MutexProxy(const MutexProxy&) = delete;
    MutexProxy& operator=(const MutexProxy&) = delete;

private:
    Platform::CancellationGuard m_guard;
    Mutex* m_mutex;
};

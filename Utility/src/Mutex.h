#pragma once

#include "Platform/ThreadAnnotations.h"
#include "Utility/src/GarbageCollection.h"

#include <pthread.h>

/// A plain, non-recursive lock with a condition. Each operation returns the threads library's
/// result code, 0 for success.
class VISTRA_CAPABILITY("mutex") Mutex : public GlobalItem {
public:
    Mutex();
    ~Mutex() override;
    Mutex(const Mutex&) = delete;
    Mutex& operator=(const Mutex&) = delete;

    int lock() VISTRA_ACQUIRE() VISTRA_UNCHECKED;
    int unlock() VISTRA_RELEASE() VISTRA_UNCHECKED;
    /// Waits on the condition; the lock is free meanwhile.
    int wait() VISTRA_REQUIRES(this);
    /// Wakes one waiter.
    int signal();

private:
    pthread_mutex_t m_mutex;
    pthread_cond_t m_condition;
};

/// Holds a lock for as long as it lives; on null it holds nothing, which the thread-safety analysis
/// cannot follow.
class VISTRA_SCOPED_CAPABILITY MutexProxy {
public:
    explicit MutexProxy(Mutex* mutex) VISTRA_ACQUIRE(mutex) VISTRA_UNCHECKED;
    ~MutexProxy() VISTRA_RELEASE() VISTRA_UNCHECKED;
    MutexProxy(const MutexProxy&) = delete;
    MutexProxy& operator=(const MutexProxy&) = delete;

private:
    Mutex* m_mutex;
};

#pragma once

#include <mutex>

// What a lock guards, in a form that clang's thread safety analysis checks (-Wthread-safety).
// Other compilers ignore it.

#if defined(__clang__)
#define VISTRA_THREAD_ATTRIBUTE(x) __attribute__((x))
#else
#define VISTRA_THREAD_ATTRIBUTE(x)
#endif

#define VISTRA_CAPABILITY(name) VISTRA_THREAD_ATTRIBUTE(capability(name))
#define VISTRA_SCOPED_CAPABILITY VISTRA_THREAD_ATTRIBUTE(scoped_lockable)
#define VISTRA_GUARDED_BY(lock) VISTRA_THREAD_ATTRIBUTE(guarded_by(lock))
#define VISTRA_REQUIRES(...) VISTRA_THREAD_ATTRIBUTE(requires_capability(__VA_ARGS__))
#define VISTRA_EXCLUDES(...) VISTRA_THREAD_ATTRIBUTE(locks_excluded(__VA_ARGS__))
#define VISTRA_ACQUIRE(...) VISTRA_THREAD_ATTRIBUTE(acquire_capability(__VA_ARGS__))
#define VISTRA_RELEASE(...) VISTRA_THREAD_ATTRIBUTE(release_capability(__VA_ARGS__))
#define VISTRA_UNCHECKED VISTRA_THREAD_ATTRIBUTE(no_thread_safety_analysis)

namespace Platform {

/// A std::mutex that the analysis knows.
class VISTRA_CAPABILITY("mutex") AnnotatedMutex {
public:
    void Lock() VISTRA_ACQUIRE() { m_mutex.lock(); }
    void Unlock() VISTRA_RELEASE() { m_mutex.unlock(); }

private:
    std::mutex m_mutex;
};

/// Holds an AnnotatedMutex for as long as it lives.
class VISTRA_SCOPED_CAPABILITY ScopedLock {
public:
    explicit ScopedLock(AnnotatedMutex& mutex) VISTRA_ACQUIRE(mutex) : m_mutex(mutex) {
        m_mutex.Lock();
    }
    ~ScopedLock() VISTRA_RELEASE() { m_mutex.Unlock(); }
    ScopedLock(const ScopedLock&) = delete;
    ScopedLock& operator=(const ScopedLock&) = delete;

private:
    AnnotatedMutex& m_mutex;
};

} // namespace Platform

#include "Platform/Lock.h"

#include <new>
#include <pthread.h>

namespace Platform {

struct Lock::Native {
    pthread_mutex_t mutex = PTHREAD_MUTEX_INITIALIZER;
    pthread_cond_t condition = PTHREAD_COND_INITIALIZER;
};

Lock::Lock() {
    static_assert(sizeof(Native) <= sizeof m_storage &&
                  alignof(Native) <= alignof(std::max_align_t));
    new (m_storage) Native;
}

Lock::Native& Lock::GetNative() {
    return *std::launder(reinterpret_cast<Native*>(m_storage));
}

Lock::~Lock() {
    ::pthread_cond_destroy(&GetNative().condition);
    ::pthread_mutex_destroy(&GetNative().mutex);
}

int Lock::Acquire() {
    return ::pthread_mutex_lock(&GetNative().mutex);
}

int Lock::Release() {
    return ::pthread_mutex_unlock(&GetNative().mutex);
}

int Lock::Wait() {
    return ::pthread_cond_wait(&GetNative().condition, &GetNative().mutex);
}

int Lock::Signal() {
    return ::pthread_cond_signal(&GetNative().condition);
}

CancellationGuard::CancellationGuard() {
    ::pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &m_previous);
}

CancellationGuard::~CancellationGuard() {
    ::pthread_setcancelstate(m_previous, nullptr);
}

} // namespace Platform

#include "Platform/Lock.h"

#include <pthread.h>

namespace Platform {

struct Lock::Native {
    pthread_mutex_t mutex = PTHREAD_MUTEX_INITIALIZER;
    pthread_cond_t condition = PTHREAD_COND_INITIALIZER;
};

Lock::Lock() : m_native(std::make_unique<Native>()) {}

Lock::~Lock() {
    ::pthread_cond_destroy(&m_native->condition);
    ::pthread_mutex_destroy(&m_native->mutex);
}

int Lock::Acquire() {
    return ::pthread_mutex_lock(&m_native->mutex);
}

int Lock::Release() {
    return ::pthread_mutex_unlock(&m_native->mutex);
}

int Lock::Wait() {
    return ::pthread_cond_wait(&m_native->condition, &m_native->mutex);
}

int Lock::Signal() {
    return ::pthread_cond_signal(&m_native->condition);
}

CancellationGuard::CancellationGuard() {
    ::pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &m_previous);
}

CancellationGuard::~CancellationGuard() {
    ::pthread_setcancelstate(m_previous, nullptr);
}

} // namespace Platform

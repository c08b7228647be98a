#include "Utility/src/Mutex.h"

Mutex::Mutex() {
    pthread_mutex_init(&m_mutex, nullptr);
    pthread_cond_init(&m_condition, nullptr);
}

Mutex::~Mutex() {
    pthread_cond_destroy(&m_condition);
    pthread_mutex_destroy(&m_mutex);
}

int Mutex::lock() {
    return pthread_mutex_lock(&m_mutex);
}

int Mutex::unlock() {
    return pthread_mutex_unlock(&m_mutex);
}

int Mutex::wait() {
    return pthread_cond_wait(&m_condition, &m_mutex);
}

int Mutex::signal() {
    return pthread_cond_signal(&m_condition);
}

MutexProxy::MutexProxy(Mutex* mutex) : m_mutex(mutex) {
    if (m_mutex)
        m_mutex->lock();
}

MutexProxy::~MutexProxy() {
    if (m_mutex)
        m_mutex->unlock();
}

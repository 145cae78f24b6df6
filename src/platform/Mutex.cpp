#include "platform/Mutex.h"

#include <cstring>

namespace vorn::platform {

RecursiveMutex::RecursiveMutex() : m_initialized(false) {
    std::memset(&m_mutex, 0, sizeof m_mutex);
}

bool RecursiveMutex::Initialize() {
    pthread_mutexattr_t attributes;
    if (pthread_mutexattr_init(&attributes) != 0)
        return false;
    bool ok = pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE) == 0 &&
              pthread_mutex_init(&m_mutex, &attributes) == 0;
    pthread_mutexattr_destroy(&attributes);
    m_initialized = ok;
    return ok;
}

void RecursiveMutex::Destroy() {
    if (m_initialized)
        pthread_mutex_destroy(&m_mutex);
    m_initialized = false;
}

bool RecursiveMutex::Enter() {
    return m_initialized && pthread_mutex_lock(&m_mutex) == 0;
}

bool RecursiveMutex::TryEnter() {
    return m_initialized && pthread_mutex_trylock(&m_mutex) == 0;
}

void RecursiveMutex::Leave() {
    if (m_initialized)
        pthread_mutex_unlock(&m_mutex);
}

} // namespace vorn::platform

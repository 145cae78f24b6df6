#include "platform/Mutex.h"

#include <cstring>

namespace vorn::platform {

RecursiveMutex::RecursiveMutex() {
    std::memset(&m_mutex, 0, sizeof m_mutex);
}

bool RecursiveMutex::Initialize() {
    pthread_mutexattr_t attributes;
    if (pthread_mutexattr_init(&attributes) != 0)
        return false;
    bool ok = pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE) == 0 &&
              pthread_mutex_init(&m_mutex, &attributes) == 0;
    pthread_mutexattr_destroy(&attributes);
    return ok;
}

// A zero-filled mutex is the system's default one, so none of these needs Initialize to be safe.
void RecursiveMutex::Destroy() {
    pthread_mutex_destroy(&m_mutex);
}

bool RecursiveMutex::Enter() {
    return pthread_mutex_lock(&m_mutex) == 0;
}

bool RecursiveMutex::TryEnter() {
    return pthread_mutex_trylock(&m_mutex) == 0;
}

void RecursiveMutex::Leave() {
    pthread_mutex_unlock(&m_mutex);
}

} // namespace vorn::platform

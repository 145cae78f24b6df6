#include "platform/Mutex.h"

#include <cstring>
#include <new>

#include <pthread.h>

namespace vorn::platform {

namespace {

static_assert(sizeof(pthread_mutex_t) <= 64 &&
                  alignof(pthread_mutex_t) <= alignof(std::max_align_t),
              "the system's mutex fits the room RecursiveMutex keeps for it");

pthread_mutex_t* Native(unsigned char* storage) {
    return std::launder(reinterpret_cast<pthread_mutex_t*>(storage));
}

} // namespace

RecursiveMutex::RecursiveMutex() : m_initialized(false) {
    std::memset(m_native, 0, sizeof m_native);
}

bool RecursiveMutex::Initialize() {
    pthread_mutexattr_t attributes;
    if (pthread_mutexattr_init(&attributes) != 0)
        return false;
    bool ok = pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE) == 0 &&
              pthread_mutex_init(new (m_native) pthread_mutex_t(), &attributes) == 0;
    pthread_mutexattr_destroy(&attributes);
    m_initialized = ok;
    return ok;
}

void RecursiveMutex::Destroy() {
    if (m_initialized)
        pthread_mutex_destroy(Native(m_native));
    m_initialized = false;
}

bool RecursiveMutex::Enter() {
    return m_initialized && pthread_mutex_lock(Native(m_native)) == 0;
}

bool RecursiveMutex::TryEnter() {
    return m_initialized && pthread_mutex_trylock(Native(m_native)) == 0;
}

void RecursiveMutex::Leave() {
    if (m_initialized)
        pthread_mutex_unlock(Native(m_native));
}

} // namespace vorn::platform

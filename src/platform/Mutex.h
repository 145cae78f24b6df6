// Critical sections of the platform layer: a recursive mutex owned by the thread that holds it.
#pragma once

#include <pthread.h>

namespace vorn::platform {

// Exactly the system's mutex, so that it can be built in place in a critical section's 40 bytes.
class RecursiveMutex {
public:
    // Zero-filled until Initialize.
    RecursiveMutex();
    RecursiveMutex(const RecursiveMutex&) = delete;
    RecursiveMutex& operator=(const RecursiveMutex&) = delete;

    // False when the system refuses to set up the mutex.
    bool Initialize();
    void Destroy();

    // False when the system reports a failure; the mutex is then not held.
    bool Enter();
    // One attempt, never a wait: true when the calling thread now holds the mutex.
    bool TryEnter();
    void Leave();

private:
    pthread_mutex_t m_mutex;
};

} // namespace vorn::platform

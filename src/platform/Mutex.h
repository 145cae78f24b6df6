// Critical sections of the platform layer: a recursive mutex owned by the thread that holds it.
#pragma once

#include <cstddef>

namespace vorn::platform {

class RecursiveMutex {
public:
    // Leaves the mutex unusable until Initialize succeeds.
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
    // Room for the system's mutex, so that a lock's state needs no allocation of its own; the
    // system part checks that its mutex fits.
    static constexpr std::size_t kNativeSize = 64;
    alignas(alignof(std::max_align_t)) unsigned char m_native[kNativeSize];
    bool m_initialized;
};

} // namespace vorn::platform

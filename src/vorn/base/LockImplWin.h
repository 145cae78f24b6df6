// The critical section behind CLock and CLazyLock: zero-filled, then set up with no spinning, so
// that contention goes straight to the system's wait.
#pragma once

#include <vorn/base/Base.h>

#include "platform/Mutex.h"

namespace vorn::base {

class LockImplWin : public CBase, public CNonCopyable {
public:
    // Throws CSynchronizationException when the system refuses the critical section.
    LockImplWin();
    ~LockImplWin();

    // False when the system reports a failure.
    bool Enter() { return m_section.Enter(); }
    // One attempt: true when the calling thread now holds the section.
    bool TryEnter() { return m_section.TryEnter(); }
    void Leave() { m_section.Leave(); }

private:
    vorn::platform::RecursiveMutex m_section;
};

} // namespace vorn::base

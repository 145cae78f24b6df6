// The critical section that LockImplWin and ReentrantLockImplWin each are, and the one body of
// CLock, CReentrantLock and CLazyLock: set up with no spinning, so that contention goes straight
// to the system's wait. Internal to the library.
#pragma once

#include <vorn/base/Base.h>
#include <vorn/base/SynchronizationException.h>

#include "platform/Mutex.h"

namespace vorn::base {

class CriticalSectionImpl : public CBase, public CNonCopyable {
public:
    // The guarded enter of every lock over a section: a failure the system reports is
    // CSynchronizationException from the lock's `source` and `line`.
    void Acquire(const char* source, unsigned int line) {
        if (!m_section.Enter())
            throw CSynchronizationException(source, line, "Failed to enter critical section.",
                                            nullptr);
    }
    // False when the system reports a failure.
    bool Enter() { return m_section.Enter(); }
    // One attempt: true when the calling thread now holds the section.
    bool TryEnter() { return m_section.TryEnter(); }
    void Leave() { m_section.Leave(); }

protected:
    // A refused section throws CSynchronizationException from the owner's `source` and `line`.
    CriticalSectionImpl(const char* source, unsigned int line) {
        if (!m_section.Initialize())
            throw CSynchronizationException(source, line, "Failed to create critical section.",
                                            nullptr);
    }
    ~CriticalSectionImpl() { m_section.Destroy(); }

private:
    vorn::platform::RecursiveMutex m_section;
};

} // namespace vorn::base

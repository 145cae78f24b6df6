// CSpinLock: one atomic word, 0 when free and 1 when held. No owner and no recursion: a thread
// that takes it twice spins for ever. A waiting thread yields between attempts.
#pragma once

#include <vorn/base/Base.h>

namespace vorn::base {

class VORN_API CSpinLock : public CNonCopyable {
public:
    CSpinLock() : m_lock(0) {}
    ~CSpinLock() {}

    void Acquire();
    // One attempt whatever the timeout.
    bool TryAcquire(unsigned int timeout);
    // A decrement, not a store: an unmatched Release leaves the word at -1, and then no Acquire
    // can succeed.
    void Release();

private:
    int volatile m_lock;
};

} // namespace vorn::base

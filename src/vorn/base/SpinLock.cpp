#include <vorn/base/Atomic.h>
#include <vorn/base/SpinLock.h>

#include "platform/Sleep.h"

namespace vorn::base {

void CSpinLock::Acquire() {
    while (!AtomicCompareAndSwap(m_lock, 1, 0))
        vorn::platform::Sleep(0);
}

bool CSpinLock::TryAcquire(unsigned int /*timeout*/) {
    return AtomicCompareAndSwap(m_lock, 1, 0);
}

void CSpinLock::Release() {
    // Deliberate: a decrement, not a store of 0; an unmatched Release leaves the lock unusable.
    AtomicDecrement(m_lock);
}

} // namespace vorn::base

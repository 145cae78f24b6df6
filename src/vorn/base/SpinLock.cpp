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
    AtomicDecrement(m_lock);
}

} // namespace vorn::base

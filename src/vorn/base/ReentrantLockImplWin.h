// The critical section behind CReentrantLock, and the unblocking lock of the conditions.
#pragma once

#include "vorn/base/CriticalSectionImpl.h"

namespace vorn::base {

class ReentrantLockImplWin : public CriticalSectionImpl {
public:
    // Throws CSynchronizationException when the system refuses the critical section.
    ReentrantLockImplWin() : CriticalSectionImpl("vorn/base/ReentrantLockImplWin", __LINE__) {}
};

} // namespace vorn::base

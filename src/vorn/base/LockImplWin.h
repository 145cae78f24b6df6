// The critical section behind CLock and CLazyLock.
#pragma once

#include "vorn/base/CriticalSectionImpl.h"

namespace vorn::base {

class LockImplWin : public CriticalSectionImpl {
public:
    // Throws CSynchronizationException when the system refuses the critical section.
    LockImplWin() : CriticalSectionImpl("vorn/base/LockImplWin", __LINE__) {}
};

} // namespace vorn::base

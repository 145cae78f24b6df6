// ILockable_: what every lock offers, and what a condition takes as its outer lock.
#pragma once

#include <vorn/base/Export.h>

namespace vorn::base {

class VORN_API ILockable_ {
protected:
    ILockable_() {}

public:
    ILockable_(const ILockable_&) {}
    ILockable_& operator=(const ILockable_&) { return *this; }
    virtual ~ILockable_() {}

    // Blocks until the calling thread holds the lock.
    virtual void Acquire() = 0;
    // True when the calling thread now holds the lock. `timeout` is in milliseconds; the locks
    // of this library make one attempt and ignore it.
    virtual bool TryAcquire(unsigned int timeout) = 0;
    virtual void Release() = 0;
};

} // namespace vorn::base

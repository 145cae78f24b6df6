// CSemaphore: a counting semaphore with a maximum, of this process or, with a name, shared by
// every process that opens that name. It has no owner: any thread may Release.
#pragma once

#include <vorn/base/Base.h>
#include <vorn/base/Lockable.h>

namespace vorn::base {

class CSemaphoreImpl;

class VORN_API CSemaphore : public ILockable_, public CBase, public CNonCopyable {
public:
    // The default is a binary semaphore, free at the start.
    CSemaphore(unsigned int initialCount = 1, unsigned int maximumCount = 1);
    // The maximum of a named semaphore is 0x7fffffff; a name already open elsewhere keeps its
    // count.
    CSemaphore(const char* name, unsigned int initialCount);
    ~CSemaphore() override;

    void Acquire() override;
    // Waits up to `milliseconds`; false when they ran out.
    bool TryAcquire(unsigned int milliseconds) override;
    void Release() override;

    bool IsNamed() const;
    bool IsShared() const;

private:
    CSemaphoreImpl* m_impl;
};

} // namespace vorn::base

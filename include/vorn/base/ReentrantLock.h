// CReentrantLock: a lock over a critical section that the thread holding it may take again; it
// behaves exactly as CLock.
#pragma once

#include <vorn/base/Base.h>
#include <vorn/base/Lockable.h>

namespace vorn::base {

class ReentrantLockImplWin;

class VORN_API CReentrantLock : public ILockable_, public CBase, public CNonCopyable {
public:
    CReentrantLock();
    ~CReentrantLock() override;

    void Acquire() override;
    bool TryAcquire(unsigned int timeout) override;
    void Release() override;

private:
    ReentrantLockImplWin* m_impl;
};

} // namespace vorn::base

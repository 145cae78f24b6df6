// CLock: a lock over a critical section. The thread that holds it may take it again, and then
// releases it as often as it took it.
#pragma once

#include <vorn/base/Base.h>
#include <vorn/base/Lockable.h>

namespace vorn::base {

class LockImplWin;

class VORN_API CLock : public ILockable_, public CBase, public CNonCopyable {
public:
    CLock();
    ~CLock() override;

    void Acquire() override;
    bool TryAcquire(unsigned int timeout) override;
    void Release() override;

private:
    LockImplWin* m_impl;
};

} // namespace vorn::base

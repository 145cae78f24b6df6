// CLazyLock: a lock whose critical section is meant to be made at its first use, under a spin
// lock. Its creation test only replaces a section that already exists, so a fresh CLazyLock never
// gets one: Acquire then fails with CSynchronizationException and TryAcquire returns false.
#pragma once

#include <vorn/base/Base.h>
#include <vorn/base/Lockable.h>
#include <vorn/base/SpinLock.h>

namespace vorn::base {

class LockImplWin;

class VORN_API CLazyLock : public ILockable_, public CBase, public CNonCopyable {
public:
    CLazyLock();
    ~CLazyLock() override;

    void Acquire() override;
    bool TryAcquire(unsigned int timeout) override;
    // Does nothing while there is no critical section.
    void Release() override;

private:
    void Create();

    CSpinLock m_creationLock;
    LockImplWin* m_impl;
};

} // namespace vorn::base

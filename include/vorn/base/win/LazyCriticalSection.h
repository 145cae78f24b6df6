// CLazyCriticalSection: a critical section meant to be made at its first use, under a spin lock.
// Its creation test only replaces a section that already exists, so a fresh object never gets
// one: Acquire then fails with CSynchronizationException and TryAcquire returns false.
#pragma once

#include <vorn/base/Base.h>
#include <vorn/base/SpinLock.h>
#include <vorn/base/win/SyncObject.h>

namespace vorn::base::win {

class SyncSection;

class VORN_API CLazyCriticalSection : public CSyncObject, public vorn::base::CNonCopyable {
    VORN_DECLARE_CLASS(CLazyCriticalSection)

public:
    CLazyCriticalSection();
    ~CLazyCriticalSection() override;

    bool IsTimeoutSupported() const override { return false; }
    void Acquire() override;
    // One attempt whatever the timeout.
    bool TryAcquire(unsigned int timeout) override;
    // Does nothing while there is no section.
    void Release() override;

private:
    void Create();

    vorn::base::CSpinLock m_creationLock;
    SyncSection* m_section;
};

} // namespace vorn::base::win

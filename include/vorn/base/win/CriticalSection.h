// CCriticalSection: a critical section of this process, held by one thread at a time, which may
// enter it again. It has no handle, so it can't take part in a wait on several objects.
#pragma once

#include <vorn/base/Base.h>
#include <vorn/base/win/SyncObject.h>

namespace vorn::base::win {

class VORN_API CCriticalSection : public CSyncObject, public vorn::base::CNonCopyable {
    VORN_DECLARE_CLASS(CCriticalSection)

public:
    CCriticalSection();
    ~CCriticalSection() override;

    bool IsTimeoutSupported() const override { return false; }
    void Acquire() override;
    // One attempt whatever the timeout.
    bool TryAcquire(unsigned int timeout) override;
    void Release() override;

private:
    // The platform's critical section, built in place.
    alignas(16) unsigned char m_section[80];
};

} // namespace vorn::base::win

// CMutex: a native mutex, owned by the thread that took it, which may take it again. A mutex
// whose owner ends without releasing it passes to the next waiter as abandoned, which still
// counts as taken. With a name it is shared by every process that opens that name.
#pragma once

#include <vorn/base/Base.h>
#include <vorn/base/win/SyncObject.h>

namespace vorn::base::win {

class VORN_API CMutex : public CSyncObject, public vorn::base::CNonCopyable {
    VORN_DECLARE_CLASS(CMutex)

public:
    CMutex(const char* name = nullptr, bool initiallyOwned = false);
    ~CMutex() override;

    bool IsTimeoutSupported() const override { return true; }
    void Acquire() override;
    bool TryAcquire(unsigned int timeout) override;
    // Raises CWinSystemErrorException on a thread that doesn't own it.
    void Release() override;
};

} // namespace vorn::base::win

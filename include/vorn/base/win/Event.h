// CEvent: a native event. An auto-reset event lets exactly one waiter through per SetEvent; a
// manual-reset one lets all through until ResetEvent. With a name it is shared by every process
// that opens that name.
#pragma once

#include <vorn/base/Base.h>
#include <vorn/base/win/SyncObject.h>

namespace vorn::base::win {

class VORN_API CEvent : public CSyncObject, public vorn::base::CNonCopyable {
    VORN_DECLARE_CLASS(CEvent)

public:
    CEvent(const char* name = nullptr, bool initiallySignaled = false, bool manualReset = false);
    ~CEvent() override;

    bool IsTimeoutSupported() const override { return true; }
    // Waits until signalled.
    void Acquire() override;
    bool TryAcquire(unsigned int timeout) override;
    // An event has nothing to give back.
    void Release() override {}

    void SetEvent();
    void ResetEvent();
};

} // namespace vorn::base::win

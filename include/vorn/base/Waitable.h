// IWaitable: something a thread can sleep on until it is woken or a limit runs out.
#pragma once

#include <vorn/base/Export.h>

namespace vorn::base {

class VORN_API IWaitable {
protected:
    IWaitable() {}

public:
    IWaitable(const IWaitable&) {}
    IWaitable& operator=(const IWaitable&) { return *this; }
    virtual ~IWaitable() {}

    // True when woken, false when `milliseconds` ran out.
    virtual bool Wait(unsigned int milliseconds) = 0;
    virtual void Wait() = 0;
};

} // namespace vorn::base

// CSemaphoreImpl: what stands behind a CSemaphore on a platform.
#pragma once

#include <vorn/base/Base.h>

namespace vorn::base {

class VORN_API CSemaphoreImpl : public CBase {
public:
    virtual ~CSemaphoreImpl() {}

    virtual bool IsNamed() const = 0;
    virtual bool IsShared() const = 0;
    virtual void Acquire() = 0;
    virtual bool TryAcquire(unsigned int milliseconds) = 0;
    virtual void Release() = 0;

protected:
    CSemaphoreImpl() {}
};

} // namespace vorn::base

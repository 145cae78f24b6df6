// CThreadLocalImpl: what stands behind a CThreadLocal on a platform.
#pragma once

#include <vorn/base/Base.h>

namespace vorn::base {

class VORN_API CThreadLocalImpl : public CBase {
public:
    virtual ~CThreadLocalImpl() {}

    // Takes the slot from the system.
    virtual void Alloc() = 0;
    virtual void* GetValue() = 0;
    virtual void SetValue(void* value) = 0;

protected:
    CThreadLocalImpl() {}
};

} // namespace vorn::base

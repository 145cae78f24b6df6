// CWinNamedSemaphoreImpl: a semaphore shared by every process that opens its name.
#pragma once

#include <vorn/base/Base.h>
#include <vorn/base/win/WinSemaphoreImpl.h>

namespace vorn::base::win {

class VORN_API CWinNamedSemaphoreImpl : public CWinSemaphoreImpl, public vorn::base::CNonCopyable {
public:
    // Raises CIllegalArgumentException for a null or empty name. The maximum is 0x7fffffff.
    CWinNamedSemaphoreImpl(const char* name, unsigned int initialCount);

    bool IsNamed() const override { return true; }
    bool IsShared() const override { return true; }
};

} // namespace vorn::base::win

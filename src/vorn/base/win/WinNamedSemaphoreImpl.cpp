#include <vorn/base/IllegalArgumentException.h>
#include <vorn/base/MemoryException.h>
#include <vorn/base/UnicodeString.h>
#include <vorn/base/win/WinNamedSemaphoreImpl.h>

#include "platform/Wait.h"

namespace vorn::base::win {

namespace {

const char* const kSource = "vorn/base/win/WinNamedSemaphoreImpl";

void* Create(const char* name, unsigned int initialCount) {
    if (name == nullptr || *name == '\0')
        throw CIllegalArgumentException(kSource, __LINE__, "Invalid semaphore name.");
    CUnicodeString wide(name);
    void* handle = vorn::platform::CreateSemaphore(initialCount, 0x7fffffff, wide);
    if (handle == nullptr)
        throw CMemoryException(kSource, __LINE__);
    return handle;
}

} // namespace

CWinNamedSemaphoreImpl::CWinNamedSemaphoreImpl(const char* name, unsigned int initialCount)
    : CWinSemaphoreImpl(Create(name, initialCount)) {}

} // namespace vorn::base::win

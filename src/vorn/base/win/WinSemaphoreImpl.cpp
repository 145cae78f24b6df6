#include <vorn/base/IllegalArgumentException.h>
#include <vorn/base/MemoryException.h>
#include <vorn/base/SynchronizationException.h>
#include <vorn/base/win/WinSemaphoreImpl.h>

#include "vorn/base/win/NativeWait.h"

namespace vorn::base::win {

namespace {

const char* const kSource = "vorn/base/win/WinSemaphoreImpl";

void* Create(unsigned int initialCount, unsigned int maximumCount) {
    if (initialCount > maximumCount)
        throw CIllegalArgumentException(kSource, __LINE__, "Invalid initial count.");
    void* handle = vorn::platform::CreateSemaphore(initialCount, maximumCount, nullptr);
    if (handle == nullptr)
        throw CMemoryException(kSource, __LINE__);
    return handle;
}

} // namespace

CWinSemaphoreImpl::CWinSemaphoreImpl(unsigned int initialCount, unsigned int maximumCount)
    : m_handle(Create(initialCount, maximumCount)) {}

CWinSemaphoreImpl::~CWinSemaphoreImpl() {
    vorn::platform::CloseHandle(m_handle);
}

void CWinSemaphoreImpl::Acquire() {
    if (WaitOn(m_handle, vorn::platform::kInfinite) != WaitRead::kSignaled)
        throw CSynchronizationException(kSource, __LINE__, "Failed to acquire the semaphore.",
                                        nullptr);
}

bool CWinSemaphoreImpl::TryAcquire(unsigned int milliseconds) {
    WaitRead read = WaitOn(m_handle, milliseconds);
    if (read == WaitRead::kFailed)
        throw CSynchronizationException(kSource, __LINE__, "Failed to acquire the semaphore.",
                                        nullptr);
    return read == WaitRead::kSignaled;
}

void CWinSemaphoreImpl::Release() {
    if (!vorn::platform::ReleaseSemaphore(m_handle, 1))
        throw CSynchronizationException(kSource, __LINE__, "Failed to release the semaphore.",
                                        nullptr);
}

} // namespace vorn::base::win

// CWinSemaphoreImpl: a semaphore of this process on a native semaphore handle.
#pragma once

#include <vorn/base/SemaphoreImpl.h>

namespace vorn::base::win {

class VORN_API CWinSemaphoreImpl : public vorn::base::CSemaphoreImpl {
public:
    // Raises CIllegalArgumentException when `initialCount` passes `maximumCount`.
    CWinSemaphoreImpl(unsigned int initialCount, unsigned int maximumCount);
    ~CWinSemaphoreImpl() override;

    bool IsNamed() const override { return false; }
    bool IsShared() const override { return false; }
    void Acquire() override;
    bool TryAcquire(unsigned int milliseconds) override;
    // Raises CSynchronizationException beyond the maximum.
    void Release() override;

protected:
    // Takes over a handle made by a derived class.
    explicit CWinSemaphoreImpl(void* handle) : m_handle(handle) {}

private:
    void* m_handle;
};

} // namespace vorn::base::win

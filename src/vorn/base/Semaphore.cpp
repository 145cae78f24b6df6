#include <vorn/base/Semaphore.h>
#include <vorn/base/win/WinNamedSemaphoreImpl.h>
#include <vorn/base/win/WinSemaphoreImpl.h>

namespace vorn::base {

CSemaphore::CSemaphore(unsigned int initialCount, unsigned int maximumCount)
    : m_impl(new win::CWinSemaphoreImpl(initialCount, maximumCount)) {}

CSemaphore::CSemaphore(const char* name, unsigned int initialCount)
    : m_impl(new win::CWinNamedSemaphoreImpl(name, initialCount)) {}

CSemaphore::~CSemaphore() {
    delete m_impl;
}

void CSemaphore::Acquire() {
    m_impl->Acquire();
}

bool CSemaphore::TryAcquire(unsigned int milliseconds) {
    return m_impl->TryAcquire(milliseconds);
}

void CSemaphore::Release() {
    m_impl->Release();
}

bool CSemaphore::IsNamed() const {
    return m_impl->IsNamed();
}

bool CSemaphore::IsShared() const {
    return m_impl->IsShared();
}

} // namespace vorn::base

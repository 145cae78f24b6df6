#include <vorn/base/ReentrantLock.h>
#include <vorn/base/SynchronizationException.h>

#include "vorn/base/ReentrantLockImplWin.h"

namespace vorn::base {

CReentrantLock::CReentrantLock() : m_impl(new ReentrantLockImplWin()) {}

CReentrantLock::~CReentrantLock() {
    delete m_impl;
}

void CReentrantLock::Acquire() {
    if (!m_impl->Enter())
        throw CSynchronizationException("vorn/base/ReentrantLock", __LINE__,
                                        "Failed to enter critical section.", nullptr);
}

bool CReentrantLock::TryAcquire(unsigned int /*timeout*/) {
    return m_impl->TryEnter();
}

void CReentrantLock::Release() {
    m_impl->Leave();
}

} // namespace vorn::base

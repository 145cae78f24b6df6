#include <vorn/base/ReentrantLock.h>

#include "vorn/base/ReentrantLockImplWin.h"

namespace vorn::base {

CReentrantLock::CReentrantLock() : m_impl(new ReentrantLockImplWin()) {}

CReentrantLock::~CReentrantLock() {
    delete m_impl;
}

void CReentrantLock::Acquire() {
    m_impl->Acquire("vorn/base/ReentrantLock", __LINE__);
}

bool CReentrantLock::TryAcquire(unsigned int /*timeout*/) {
    return m_impl->TryEnter();
}

void CReentrantLock::Release() {
    m_impl->Leave();
}

} // namespace vorn::base

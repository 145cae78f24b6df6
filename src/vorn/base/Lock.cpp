#include <vorn/base/Lock.h>

#include "vorn/base/LockImplWin.h"

namespace vorn::base {

CLock::CLock() : m_impl(new LockImplWin()) {}

CLock::~CLock() {
    delete m_impl;
}

void CLock::Acquire() {
    m_impl->Acquire("vorn/base/Lock", __LINE__);
}

bool CLock::TryAcquire(unsigned int /*timeout*/) {
    return m_impl->TryEnter();
}

void CLock::Release() {
    m_impl->Leave();
}

} // namespace vorn::base

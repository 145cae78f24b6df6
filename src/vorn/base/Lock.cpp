#include <vorn/base/Lock.h>
#include <vorn/base/SynchronizationException.h>

#include "vorn/base/LockImplWin.h"

namespace vorn::base {

CLock::CLock() : m_impl(new LockImplWin()) {}

CLock::~CLock() {
    delete m_impl;
}

void CLock::Acquire() {
    if (!m_impl->Enter())
        throw CSynchronizationException("vorn/base/Lock", __LINE__,
                                        "Failed to enter critical section.", nullptr);
}

bool CLock::TryAcquire(unsigned int /*timeout*/) {
    return m_impl->TryEnter();
}

void CLock::Release() {
    m_impl->Leave();
}

} // namespace vorn::base

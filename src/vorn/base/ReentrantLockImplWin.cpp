#include "vorn/base/ReentrantLockImplWin.h"

#include <vorn/base/SynchronizationException.h>

namespace vorn::base {

ReentrantLockImplWin::ReentrantLockImplWin() {
    if (!m_section.Initialize())
        throw CSynchronizationException("vorn/base/ReentrantLockImplWin", __LINE__,
                                        "Failed to create critical section.", nullptr);
}

ReentrantLockImplWin::~ReentrantLockImplWin() {
    m_section.Destroy();
}

} // namespace vorn::base

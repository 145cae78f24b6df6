#include "vorn/base/LockImplWin.h"

#include <vorn/base/SynchronizationException.h>

namespace vorn::base {

LockImplWin::LockImplWin() {
    if (!m_section.Initialize())
        throw CSynchronizationException("vorn/base/LockImplWin", __LINE__,
                                        "Failed to create critical section.", nullptr);
}

LockImplWin::~LockImplWin() {
    m_section.Destroy();
}

} // namespace vorn::base

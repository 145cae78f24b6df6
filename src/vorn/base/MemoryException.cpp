#include <vorn/base/MemoryException.h>

namespace vorn::base {

VORN_DEFINE_CLASS_BASE(CMemoryException, "vorn::base::CMemoryException", "vorn::base::CException")

CMemoryException::CMemoryException(const char* file, unsigned int line)
    : CException(file, line, nullptr, nullptr) {}

} // namespace vorn::base

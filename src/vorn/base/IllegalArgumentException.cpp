#include <vorn/base/IllegalArgumentException.h>

namespace vorn::base {

VORN_DEFINE_CLASS_BASE(CIllegalArgumentException, "vorn::base::CIllegalArgumentException",
                       "vorn::base::CException")

CIllegalArgumentException::CIllegalArgumentException(const char* file, unsigned int line,
                                                     const char* description)
    : CException(file, line, description, nullptr) {}

} // namespace vorn::base

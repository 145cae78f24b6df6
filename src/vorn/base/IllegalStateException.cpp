#include <vorn/base/IllegalStateException.h>

namespace vorn::base {

VORN_DEFINE_CLASS_BASE(CIllegalStateException, "vorn::base::CIllegalStateException",
                       "vorn::base::CException")

CIllegalStateException::CIllegalStateException(const char* file, unsigned int line,
                                               const char* description, const char* message)
    : CException(file, line, description, message) {}

} // namespace vorn::base

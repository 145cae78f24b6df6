#include <vorn/base/IllegalComparisonException.h>

namespace vorn::base {

VORN_DEFINE_CLASS_BASE(CIllegalComparisonException, "vorn::base::CIllegalComparisonException",
                       "vorn::base::CException")

CIllegalComparisonException::CIllegalComparisonException(const char* file, unsigned int line,
                                                         const char* description,
                                                         const char* message)
    : CException(file, line, description, message) {}

} // namespace vorn::base

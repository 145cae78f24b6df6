#include <vorn/base/NumberFormatException.h>

namespace vorn::base {

VORN_DEFINE_CLASS_BASE(CNumberFormatException, "vorn::base::CNumberFormatException",
                       "vorn::base::CException")

CNumberFormatException::CNumberFormatException(const char* file, unsigned int line,
                                               const char* description, const char* message)
    : CException(file, line, description, message) {}

} // namespace vorn::base

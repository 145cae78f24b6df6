#include <vorn/base/NullReferenceException.h>

namespace vorn::base {

VORN_DEFINE_CLASS_BASE(CNullReferenceException, "vorn::base::CNullReferenceException",
                       "vorn::base::CException")

CNullReferenceException::CNullReferenceException(const char* file, unsigned int line)
    : CException(file, line, nullptr, nullptr) {}

} // namespace vorn::base

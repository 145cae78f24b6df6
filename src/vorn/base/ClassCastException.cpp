#include <vorn/base/ClassCastException.h>

namespace vorn::base {

VORN_DEFINE_CLASS_BASE(CClassCastException, "vorn::base::CClassCastException",
                       "vorn::base::CException")

CClassCastException::CClassCastException(const char* file, unsigned int line)
    : CException(file, line, nullptr, nullptr) {}

} // namespace vorn::base

#include <vorn/base/ArrayIndexOutOfBoundsException.h>

namespace vorn::base {

VORN_DEFINE_CLASS_BASE(CArrayIndexOutOfBoundsException,
                       "vorn::base::CArrayIndexOutOfBoundsException", "vorn::base::CException")

CArrayIndexOutOfBoundsException::CArrayIndexOutOfBoundsException(const char* file,
                                                                 unsigned int line)
    : CException(file, line, nullptr, nullptr) {}

} // namespace vorn::base

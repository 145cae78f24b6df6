#include <vorn/util/EmptyStackException.h>

namespace vorn::util {

VORN_DEFINE_CLASS_BASE(CEmptyStackException, "vorn::util::CEmptyStackException",
                       "vorn::base::CException")

CEmptyStackException::CEmptyStackException(const char* file, unsigned int line)
    : vorn::base::CException(file, line, nullptr, nullptr) {}

} // namespace vorn::util

#include <vorn/util/EmptyQueueException.h>

namespace vorn::util {

VORN_DEFINE_CLASS_BASE(CEmptyQueueException, "vorn::util::CEmptyQueueException",
                       "vorn::base::CException")

CEmptyQueueException::CEmptyQueueException(const char* file, unsigned int line)
    : vorn::base::CException(file, line, nullptr, nullptr) {}

} // namespace vorn::util

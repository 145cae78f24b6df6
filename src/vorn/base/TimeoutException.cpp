#include <vorn/base/TimeoutException.h>

namespace vorn::base {

VORN_DEFINE_CLASS_BASE(CTimeoutException, "vorn::base::CTimeoutException",
                       "vorn::base::CSynchronizationException")

CTimeoutException::CTimeoutException(const char* file, unsigned int line, const char* description,
                                     const char* message)
    : CSynchronizationException(file, line, description, message) {}

} // namespace vorn::base

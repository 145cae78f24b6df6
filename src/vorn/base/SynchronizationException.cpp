#include <vorn/base/SynchronizationException.h>

namespace vorn::base {

VORN_DEFINE_CLASS_BASE(CSynchronizationException, "vorn::base::CSynchronizationException",
                       "vorn::base::CException")

CSynchronizationException::CSynchronizationException(const char* file, unsigned int line,
                                                     const char* description, const char* message)
    : CException(file, line, description, message) {}

} // namespace vorn::base

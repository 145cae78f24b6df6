#include <vorn/io/InterruptedIOException.h>

namespace vorn::io {

VORN_DEFINE_CLASS_BASE(CInterruptedIOException, "vorn::io::CInterruptedIOException",
                       "vorn::io::CIOException")

CInterruptedIOException::CInterruptedIOException(const char* file, unsigned int line,
                                                 const char* description, const char* message)
    : CIOException(file, line, description, message) {}

} // namespace vorn::io

#include <vorn/io/IOException.h>

namespace vorn::io {

VORN_DEFINE_CLASS_BASE(CIOException, "vorn::io::CIOException", "vorn::base::CException")

CIOException::CIOException(const char* file, unsigned int line, const char* description,
                           const char* message)
    : vorn::base::CException(file, line, description, message) {}

} // namespace vorn::io

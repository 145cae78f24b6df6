#include <vorn/io/AccessDeniedException.h>

namespace vorn::io {

VORN_DEFINE_CLASS_BASE(CAccessDeniedException, "vorn::io::CAccessDeniedException",
                       "vorn::io::CIOException")

CAccessDeniedException::CAccessDeniedException(const char* file, unsigned int line,
                                               const char* description, const char* message)
    : CIOException(file, line, description, message) {}

} // namespace vorn::io

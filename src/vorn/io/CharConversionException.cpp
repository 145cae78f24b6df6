#include <vorn/io/CharConversionException.h>

namespace vorn::io {

VORN_DEFINE_CLASS_BASE(CCharConversionException, "vorn::io::CCharConversionException",
                       "vorn::io::CIOException")

CCharConversionException::CCharConversionException(const char* file, unsigned int line,
                                                   const char* description, const char* message)
    : CIOException(file, line, description, message) {}

} // namespace vorn::io

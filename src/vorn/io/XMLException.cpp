#include <vorn/io/XMLException.h>

namespace vorn::io {

VORN_DEFINE_CLASS_BASE(CXMLException, "vorn::io::CXMLException", "vorn::io::CIOException")

CXMLException::CXMLException(const char* file, unsigned int line, const char* description,
                             const char* message)
    : CIOException(file, line, description, message) {}

} // namespace vorn::io

#include <vorn/net/SocketException.h>

namespace vorn::net {

VORN_DEFINE_CLASS_BASE(CSocketException, "vorn::net::CSocketException", "vorn::io::CIOException")

CSocketException::CSocketException(const char* file, unsigned int line, const char* description,
                                   const char* message)
    : vorn::io::CIOException(file, line, description, message) {}

} // namespace vorn::net

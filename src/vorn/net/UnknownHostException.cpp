#include <vorn/net/UnknownHostException.h>

namespace vorn::net {

VORN_DEFINE_CLASS_BASE(CUnknownHostException, "vorn::net::CUnknownHostException",
                       "vorn::io::CIOException")

CUnknownHostException::CUnknownHostException(const char* file, unsigned int line,
                                             const char* hostName)
    : vorn::io::CIOException(file, line, "Unknown host name.", nullptr), m_hostName(hostName) {}

CUnknownHostException::CUnknownHostException(const CUnknownHostException& other)
    : vorn::io::CIOException(other), m_hostName(other.m_hostName) {}

CUnknownHostException& CUnknownHostException::operator=(const CUnknownHostException& other) {
    vorn::io::CIOException::operator=(other);
    m_hostName = other.m_hostName;
    return *this;
}

} // namespace vorn::net

#include <vorn/io/UnsupportedEncodingException.h>

namespace vorn::io {

VORN_DEFINE_CLASS_BASE(CUnsupportedEncodingException, "vorn::io::CUnsupportedEncodingException",
                       "vorn::io::CIOException")

CUnsupportedEncodingException::CUnsupportedEncodingException(const char* file, unsigned int line,
                                                             const char* encoding)
    : CIOException(file, line, nullptr, nullptr) {
    if (encoding != nullptr && *encoding != '\0')
        m_encoding = encoding;
}

CUnsupportedEncodingException::CUnsupportedEncodingException(
    const CUnsupportedEncodingException& other)
    : CIOException(other), m_encoding(other.m_encoding) {}

CUnsupportedEncodingException&
CUnsupportedEncodingException::operator=(const CUnsupportedEncodingException& other) {
    CIOException::operator=(other);
    m_encoding = other.m_encoding;
    return *this;
}

} // namespace vorn::io

// CSocketException: an exception of the family with a description and a message.
#pragma once

#include <vorn/io/IOException.h>

namespace vorn::net {

class VORN_API CSocketException : public vorn::io::CIOException {
    VORN_DECLARE_CLASS(CSocketException)

public:
    CSocketException(const char* file, unsigned int line, const char* description,
                     const char* message);
};

} // namespace vorn::net

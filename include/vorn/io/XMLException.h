// CXMLException: an exception of the family with a description and a message.
#pragma once

#include <vorn/io/IOException.h>

namespace vorn::io {

class VORN_API CXMLException : public CIOException {
    VORN_DECLARE_CLASS(CXMLException)

public:
    CXMLException(const char* file, unsigned int line, const char* description,
                  const char* message);
};

} // namespace vorn::io

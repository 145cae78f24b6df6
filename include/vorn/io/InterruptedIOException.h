// CInterruptedIOException: an exception of the family with a description and a message.
#pragma once

#include <vorn/io/IOException.h>

namespace vorn::io {

class VORN_API CInterruptedIOException : public CIOException {
    VORN_DECLARE_CLASS(CInterruptedIOException)

public:
    CInterruptedIOException(const char* file, unsigned int line, const char* description,
                            const char* message);
};

} // namespace vorn::io

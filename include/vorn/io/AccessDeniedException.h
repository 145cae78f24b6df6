// CAccessDeniedException: an exception of the family with a description and a message.
#pragma once

#include <vorn/io/IOException.h>

namespace vorn::io {

class VORN_API CAccessDeniedException : public CIOException {
    VORN_DECLARE_CLASS(CAccessDeniedException)

public:
    CAccessDeniedException(const char* file, unsigned int line, const char* description,
                           const char* message);
};

} // namespace vorn::io

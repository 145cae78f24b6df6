// CIOException: an exception of the family with a description and a message.
#pragma once

#include <vorn/base/Exception.h>

namespace vorn::io {

class VORN_API CIOException : public vorn::base::CException {
    VORN_DECLARE_CLASS(CIOException)

public:
    CIOException(const char* file, unsigned int line, const char* description, const char* message);
};

} // namespace vorn::io

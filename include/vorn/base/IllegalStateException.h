// CIllegalStateException: an exception of the family with a description and a message.
#pragma once

#include <vorn/base/Exception.h>

namespace vorn::base {

class VORN_API CIllegalStateException : public CException {
    VORN_DECLARE_CLASS(CIllegalStateException)

public:
    CIllegalStateException(const char* file, unsigned int line, const char* description,
                           const char* message);
};

} // namespace vorn::base

// CIllegalArgumentException: an exception of the family with a description and no message.
#pragma once

#include <vorn/base/Exception.h>

namespace vorn::base {

class VORN_API CIllegalArgumentException : public CException {
    VORN_DECLARE_CLASS(CIllegalArgumentException)

public:
    CIllegalArgumentException(const char* file, unsigned int line, const char* description);
};

} // namespace vorn::base

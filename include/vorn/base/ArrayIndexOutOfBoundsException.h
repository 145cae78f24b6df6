// CArrayIndexOutOfBoundsException: an exception of the family with no description and no message.
#pragma once

#include <vorn/base/Exception.h>

namespace vorn::base {

class VORN_API CArrayIndexOutOfBoundsException : public CException {
    VORN_DECLARE_CLASS(CArrayIndexOutOfBoundsException)

public:
    CArrayIndexOutOfBoundsException(const char* file, unsigned int line);
};

} // namespace vorn::base

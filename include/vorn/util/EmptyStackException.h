// CEmptyStackException: an exception of the family with no description and no message.
#pragma once

#include <vorn/base/Exception.h>

namespace vorn::util {

class VORN_API CEmptyStackException : public vorn::base::CException {
    VORN_DECLARE_CLASS(CEmptyStackException)

public:
    CEmptyStackException(const char* file, unsigned int line);
};

} // namespace vorn::util

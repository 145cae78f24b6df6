// CNoSuchElementException: an exception of the family with no description and no message.
#pragma once

#include <vorn/base/Exception.h>

namespace vorn::util {

class VORN_API CNoSuchElementException : public vorn::base::CException {
    VORN_DECLARE_CLASS(CNoSuchElementException)

public:
    CNoSuchElementException(const char* file, unsigned int line);
};

} // namespace vorn::util

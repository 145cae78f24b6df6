// CNullReferenceException: an exception of the family with no description and no message.
#pragma once

#include <vorn/base/Exception.h>

namespace vorn::base {

class VORN_API CNullReferenceException : public CException {
    VORN_DECLARE_CLASS(CNullReferenceException)

public:
    CNullReferenceException(const char* file, unsigned int line);
};

} // namespace vorn::base

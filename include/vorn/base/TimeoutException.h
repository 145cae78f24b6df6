// CTimeoutException: an exception of the family with a description and a message.
#pragma once

#include <vorn/base/SynchronizationException.h>

namespace vorn::base {

class VORN_API CTimeoutException : public CSynchronizationException {
    VORN_DECLARE_CLASS(CTimeoutException)

public:
    CTimeoutException(const char* file, unsigned int line, const char* description,
                      const char* message);
};

} // namespace vorn::base

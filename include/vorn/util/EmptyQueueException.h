// CEmptyQueueException: an exception of the family with no description and no message.
#pragma once

#include <vorn/base/Exception.h>

namespace vorn::util {

class VORN_API CEmptyQueueException : public vorn::base::CException {
    VORN_DECLARE_CLASS(CEmptyQueueException)

public:
    CEmptyQueueException(const char* file, unsigned int line);
};

} // namespace vorn::util

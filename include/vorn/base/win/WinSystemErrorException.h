// CWinSystemErrorException: an operating system error code, with the system's text as message.
#pragma once

#include <vorn/base/Exception.h>

namespace vorn::base::win {

class VORN_API CWinSystemErrorException : public vorn::base::CException {
    VORN_DECLARE_CLASS(CWinSystemErrorException)

public:
    // A non-zero code takes the system's text for it as message, when there is one.
    CWinSystemErrorException(const char* file, unsigned int line, const char* description,
                             unsigned long errorCode);
    CWinSystemErrorException(const CWinSystemErrorException& other) = default;
    CWinSystemErrorException& operator=(const CWinSystemErrorException& other) = default;

    unsigned long GetErrorCode() const { return m_errorCode; }

private:
    unsigned long m_errorCode;
};

} // namespace vorn::base::win

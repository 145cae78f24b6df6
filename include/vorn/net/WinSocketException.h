// CWinSocketException: a socket layer error code, with the system's text as message.
#pragma once

#include <vorn/net/SocketException.h>

namespace vorn::net {

class VORN_API CWinSocketException : public CSocketException {
    VORN_DECLARE_CLASS(CWinSocketException)

public:
    CWinSocketException(const char* file, unsigned int line, const char* description,
                        int errorCode);

    int GetErrorCode() const { return m_errorCode; }

private:
    int m_errorCode;
};

} // namespace vorn::net

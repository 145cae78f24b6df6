#include <vorn/net/WinSocketException.h>

#include "platform/SystemError.h"

namespace vorn::net {

VORN_DEFINE_CLASS_BASE(CWinSocketException, "vorn::net::CWinSocketException",
                       "vorn::net::CSocketException")

CWinSocketException::CWinSocketException(const char* file, unsigned int line,
                                         const char* description, int errorCode)
    : CSocketException(file, line, description, nullptr), m_errorCode(errorCode) {
    char text[512];
    if (errorCode != 0 &&
        vorn::platform::SystemErrorText(static_cast<unsigned long>(errorCode), text, sizeof text))
        SetMessage(text);
}

} // namespace vorn::net

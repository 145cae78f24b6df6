#include <vorn/base/win/WinSystemErrorException.h>

#include "platform/SystemError.h"

namespace vorn::base::win {

VORN_DEFINE_CLASS_BASE(CWinSystemErrorException, "vorn::base::win::CWinSystemErrorException",
                       "vorn::base::CException")

CWinSystemErrorException::CWinSystemErrorException(const char* file, unsigned int line,
                                                   const char* description, unsigned long errorCode)
    : CException(file, line, description, nullptr), m_errorCode(errorCode) {
    char text[512];
    if (errorCode != 0 && vorn::platform::SystemErrorText(errorCode, text, sizeof text))
        SetMessage(text);
}

} // namespace vorn::base::win

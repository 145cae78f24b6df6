// What CEvent and CMutex share: their making from a narrow name, and their waits. Internal to
// the library.
#pragma once

#include <vorn/base/UnicodeString.h>
#include <vorn/base/win/WinSystemErrorException.h>

#include "vorn/base/win/NativeWait.h"

namespace vorn::base::win {

// `name` widened for the native call; an absent name is the empty text, which makes an unnamed
// object.
inline vorn::base::CUnicodeString WideName(const char* name) {
    return vorn::base::CUnicodeString(name);
}

// True when the wait took the object, false when `timeout` ran out; a failure raises
// CWinSystemErrorException with `words` from `source` and `line`.
inline bool WaitForHandle(void* handle, unsigned int timeout, const char* source, unsigned int line,
                          const char* words) {
    WaitRead read = WaitOn(handle, timeout);
    if (read == WaitRead::kFailed)
        throw CWinSystemErrorException(source, line, words, vorn::platform::GetLastError());
    return read == WaitRead::kSignaled;
}

} // namespace vorn::base::win

// How the library reads a native wait: 0 and 128 (a mutex taken from an owner that ended) are
// success, 258 is the limit running out, anything else a failure. Internal to the library.
#pragma once

#include "platform/Wait.h"

namespace vorn::base::win {

enum class WaitRead { kSignaled, kTimeout, kFailed };

inline WaitRead ReadWait(unsigned int result) {
    if (result == vorn::platform::kWaitObject0 || result == vorn::platform::kWaitAbandoned0)
        return WaitRead::kSignaled;
    return result == vorn::platform::kWaitTimeout ? WaitRead::kTimeout : WaitRead::kFailed;
}

inline WaitRead WaitOn(void* handle, unsigned int milliseconds) {
    return ReadWait(vorn::platform::WaitForSingleObject(handle, milliseconds));
}

} // namespace vorn::base::win

#include "platform/Sleep.h"

#include <cerrno>
#include <ctime>

#include <sched.h>

namespace vorn::platform {

void Sleep(unsigned int milliseconds) {
    if (milliseconds == 0) {
        sched_yield();
        return;
    }
    timespec left{static_cast<time_t>(milliseconds / 1000),
                  static_cast<long>(milliseconds % 1000) * 1000000L};
    while (nanosleep(&left, &left) != 0 && errno == EINTR) {
    }
}

} // namespace vorn::platform

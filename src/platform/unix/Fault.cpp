#include "platform/Fault.h"

#include <csignal>
#include <cstdlib>

namespace vorn::platform {

void RaiseDivisionFault() {
    std::raise(SIGFPE);
    // A handler that returns doesn't make the division valid.
    std::abort();
}

} // namespace vorn::platform

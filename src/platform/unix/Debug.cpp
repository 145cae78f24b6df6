#include "platform/Debug.h"

#include <unistd.h>

namespace vorn::platform {

void WriteStandardError(const char* text, std::size_t length) {
    while (length > 0) {
        const ssize_t n = ::write(STDERR_FILENO, text, length);
        if (n <= 0)
            return; // debug output has nowhere else to go
        text += n;
        length -= static_cast<std::size_t>(n);
    }
}

} // namespace vorn::platform

#include "platform/SystemError.h"

#include <cstdio>
#include <cstring>

namespace vorn::platform {

bool SystemErrorText(unsigned long code, char* buffer, unsigned int size) {
    if (buffer == nullptr || size == 0)
        return false;
    buffer[0] = '\0';
    if (code == 0 || code > 0x7FFFFFFFul)
        return false;
    char local[256];
    // GNU strerror_r: returns the text, which may or may not be in `local`.
    const char* text = ::strerror_r(static_cast<int>(code), local, sizeof local);
    if (text == nullptr || *text == '\0')
        return false;
    // glibc answers every unknown code with this prefix: treat it as no text.
    if (std::strncmp(text, "Unknown error", 13) == 0)
        return false;
    std::snprintf(buffer, size, "%s", text);
    return true;
}

} // namespace vorn::platform

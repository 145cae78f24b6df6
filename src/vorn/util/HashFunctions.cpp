#include <vorn/util/HashFunctions.h>

#include <cstring>

namespace vorn::util {

int GetStringHashCode(const char* text) {
    if (text == nullptr)
        return 0;
    const auto* c = reinterpret_cast<const unsigned char*>(text);
    const unsigned int len = static_cast<unsigned int>(std::strlen(text));
    unsigned int h = 0;
    if (len < 16) {
        for (unsigned int i = 0; i < len; ++i)
            h = h * 37u + c[i];
    } else {
        const unsigned int step = len >> 3;
        for (unsigned int i = 0; i < len; i += step)
            h = h * 39u + c[i];
    }
    return static_cast<int>(h);
}

} // namespace vorn::util

// The one rule behind every text hash of the library: the class registry's and the util tables'.
// Internal to the library.
#pragma once

#include <cstring>

namespace vorn::base::detail {

// Below 16 units every unit counts (h = h * 37 + u); longer texts are sampled about eight times.
// `unit(i)` gives the unit at `i` as unsigned.
template <typename Unit> int HashUnits(unsigned int length, Unit unit) {
    unsigned int h = 0;
    if (length < 16) {
        for (unsigned int i = 0; i < length; ++i)
            h = h * 37u + unit(i);
    } else {
        const unsigned int step = length >> 3;
        for (unsigned int i = 0; i < length; i += step)
            h = h * 39u + unit(i);
    }
    return static_cast<int>(h);
}

// A NUL-terminated text's bytes taken as unsigned; null hashes to 0.
inline int HashText(const char* text) {
    if (text == nullptr)
        return 0;
    const auto* bytes = reinterpret_cast<const unsigned char*>(text);
    return HashUnits(static_cast<unsigned int>(std::strlen(text)),
                     [bytes](unsigned int i) -> unsigned int { return bytes[i]; });
}

} // namespace vorn::base::detail

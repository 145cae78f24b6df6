#include "platform/TextConvert.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "platform/Utf8.h"

namespace {

std::size_t UnitExtent(const unsigned short* text, int length) {
    std::size_t n = 0;
    if (length < 0) {
        while (text[n] != 0)
            ++n;
        return n;
    }
    while (n < static_cast<std::size_t>(length) && text[n] != 0)
        ++n;
    return n;
}

bool IsLead(unsigned short u) {
    return u >= 0xD800 && u <= 0xDBFF;
}
bool IsTrail(unsigned short u) {
    return u >= 0xDC00 && u <= 0xDFFF;
}

} // namespace

int CHUnicode2ANSI(const unsigned short* source, int sourceLength, char* target, int targetSize,
                   ZKCharCode /*charCode*/, bool replaceBySubstitute, void* /*cache*/) {
    if (source == nullptr)
        return 0;
    const std::size_t n = UnitExtent(source, sourceLength);
    const std::size_t room = targetSize > 0 ? static_cast<std::size_t>(targetSize) : 0;
    std::size_t bytes = 0;
    for (std::size_t i = 0; i < n;) {
        std::int32_t c = source[i++];
        if (IsLead(static_cast<unsigned short>(c)) && i < n && IsTrail(source[i]))
            c = 0x10000 + ((c - 0xD800) << 10) + (source[i++] - 0xDC00);
        else if (c >= 0xD800 && c <= 0xDFFF)
            c = replaceBySubstitute ? 0xFFFD : '?';
        std::size_t k = vorn::platform::utf8::EncodedLength(c);
        if (target != nullptr) {
            if (bytes + k > room)
                break;
            vorn::platform::utf8::Encode(c, target + bytes);
        }
        bytes += k;
    }
    return static_cast<int>(bytes);
}

int CHANSI2Unicode(const char* source, int sourceLength, unsigned short* target, int targetSize,
                   ZKCharCode /*charCode*/, void* /*cache*/) {
    if (source == nullptr)
        return 0;
    std::size_t n;
    if (sourceLength < 0) {
        n = std::strlen(source);
    } else {
        const void* end = std::memchr(source, 0, static_cast<std::size_t>(sourceLength));
        n = end != nullptr ? static_cast<std::size_t>(static_cast<const char*>(end) - source)
                           : static_cast<std::size_t>(sourceLength);
    }
    const std::size_t room = targetSize > 0 ? static_cast<std::size_t>(targetSize) : 0;
    std::size_t units = 0;
    for (std::size_t i = 0; i < n;) {
        std::int32_t c;
        i += vorn::platform::utf8::Decode(source + i, n - i, c);
        if (c >= vorn::platform::utf8::kInvalid)
            c = 0xFFFD;
        std::size_t k = c > 0xFFFF ? 2 : 1;
        if (target != nullptr) {
            if (units + k > room)
                return static_cast<int>(units);
            if (k == 2) {
                target[units] = static_cast<unsigned short>(0xD800 + ((c - 0x10000) >> 10));
                target[units + 1] = static_cast<unsigned short>(0xDC00 + ((c - 0x10000) & 0x3FF));
            } else {
                target[units] = static_cast<unsigned short>(c);
            }
        }
        units += k;
    }
    if (sourceLength < 0) {
        if (target != nullptr) {
            if (units >= room)
                return static_cast<int>(units);
            target[units] = 0;
        }
        ++units;
    }
    return static_cast<int>(units);
}

#include "platform/TextConvert.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "platform/Utf16.h"
#include "platform/Utf8.h"

namespace {

namespace utf8 = vorn::platform::utf8;
namespace utf16 = vorn::platform::utf16;

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
        if (utf16::IsHighSurrogate(c) && i < n && utf16::IsLowSurrogate(source[i]))
            c = static_cast<std::int32_t>(utf16::Combine(c, source[i++]));
        else if (utf16::IsSurrogate(c))
            c = replaceBySubstitute ? 0xFFFD : '?';
        std::size_t k = utf8::EncodedLength(c);
        if (target != nullptr) {
            if (bytes + k > room)
                break;
            utf8::Encode(c, target + bytes);
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
        i += utf8::Decode(source + i, n - i, c);
        if (c >= utf8::kInvalid)
            c = 0xFFFD;
        std::size_t k = c > 0xFFFF ? 2 : 1;
        if (target != nullptr) {
            if (units + k > room)
                return static_cast<int>(units);
            utf16::Encode(static_cast<char32_t>(c), target + units);
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

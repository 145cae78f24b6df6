// UTF-8 as the narrow text services read it: a character is one well-formed sequence, and any
// other byte is a character of its own. So stepping never splits a sequence, and bad input can
// neither stall a walk nor swallow the bytes that follow it.
#pragma once

#include <cstddef>
#include <cstdint>

namespace vorn::platform::utf8 {

// Stands for an invalid byte b as kInvalid + b: above every code point, so such a byte orders
// after all text and never equals a character.
constexpr std::int32_t kInvalid = 0x110000;

// Bytes of the character at `s` (1 to 4), reading at most `limit` bytes; stores its code point,
// or kInvalid + byte. A terminator is a character of one byte. Reading is safe on a terminated
// text with any limit, since no continuation byte is zero.
inline std::size_t Decode(const char* text, std::size_t limit, std::int32_t& c) {
    const auto* s = reinterpret_cast<const unsigned char*>(text);
    unsigned char b = s[0];
    if (b < 0x80) {
        c = b;
        return 1;
    }
    std::size_t n;
    std::int32_t cp;
    unsigned char low = 0x80, high = 0xBF; // range of the first continuation byte
    if (b >= 0xC2 && b <= 0xDF) {
        n = 2;
        cp = b & 0x1F;
    } else if (b >= 0xE0 && b <= 0xEF) {
        n = 3;
        cp = b & 0x0F;
        if (b == 0xE0)
            low = 0xA0; // no overlong forms
        else if (b == 0xED)
            high = 0x9F; // no surrogates
    } else if (b >= 0xF0 && b <= 0xF4) {
        n = 4;
        cp = b & 0x07;
        if (b == 0xF0)
            low = 0x90;
        else if (b == 0xF4)
            high = 0x8F; // nothing above U+10FFFF
    } else {
        c = kInvalid + b;
        return 1;
    }
    if (n > limit) {
        c = kInvalid + b;
        return 1;
    }
    for (std::size_t i = 1; i < n; ++i) {
        unsigned char t = s[i];
        if (t < low || t > high) {
            c = kInvalid + b;
            return 1;
        }
        cp = (cp << 6) | (t & 0x3F);
        low = 0x80;
        high = 0xBF;
    }
    c = cp;
    return n;
}

// Bytes that the code point `c` takes in UTF-8.
inline std::size_t EncodedLength(std::int32_t c) {
    return c < 0x80 ? 1 : c < 0x800 ? 2 : c < 0x10000 ? 3 : 4;
}

// Writes `c` (a code point, not a surrogate) and returns the bytes written.
inline std::size_t Encode(std::int32_t c, char* out) {
    auto* o = reinterpret_cast<unsigned char*>(out);
    if (c < 0x80) {
        o[0] = static_cast<unsigned char>(c);
        return 1;
    }
    if (c < 0x800) {
        o[0] = static_cast<unsigned char>(0xC0 | (c >> 6));
        o[1] = static_cast<unsigned char>(0x80 | (c & 0x3F));
        return 2;
    }
    if (c < 0x10000) {
        o[0] = static_cast<unsigned char>(0xE0 | (c >> 12));
        o[1] = static_cast<unsigned char>(0x80 | ((c >> 6) & 0x3F));
        o[2] = static_cast<unsigned char>(0x80 | (c & 0x3F));
        return 3;
    }
    o[0] = static_cast<unsigned char>(0xF0 | (c >> 18));
    o[1] = static_cast<unsigned char>(0x80 | ((c >> 12) & 0x3F));
    o[2] = static_cast<unsigned char>(0x80 | ((c >> 6) & 0x3F));
    o[3] = static_cast<unsigned char>(0x80 | (c & 0x3F));
    return 4;
}

} // namespace vorn::platform::utf8

// The library's one set of UTF-8 primitives, for the strings, the converter, the formatter and
// the narrow text services. Those services read a character as one well-formed sequence and any
// other byte as a character of its own (Decode), so stepping never splits a sequence, and bad
// input can neither stall a walk nor swallow the bytes that follow it.
#pragma once

#include <cstddef>
#include <cstdint>

namespace vorn::platform::utf8 {

// Stands for an invalid byte b as kInvalid + b: above every code point, so such a byte orders
// after all text and never equals a character.
constexpr std::int32_t kInvalid = 0x110000;

// One sequence as the well-formedness rules read it (shortest form, no surrogates, at most
// U+10FFFF). An ill-formed one has `valid` false, and `length` counts its longest well-formed
// prefix, at least its first byte. What a caller makes of an ill-formed sequence is its own rule.
struct Sequence {
    std::int32_t codePoint; // the first byte when ill-formed
    std::size_t length;
    bool valid;
};

// Reads at most `limit` bytes at `text` (at least one). Reading is safe on a terminated text with
// any limit, since no continuation byte is zero.
inline Sequence Read(const char* text, std::size_t limit) {
    const auto* s = reinterpret_cast<const unsigned char*>(text);
    const unsigned char b = s[0];
    if (b < 0x80)
        return {b, 1, true};
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
        return {b, 1, false};
    }
    for (std::size_t i = 1; i < n; ++i) {
        if (i >= limit || s[i] < low || s[i] > high)
            return {b, i, false};
        cp = (cp << 6) | (s[i] & 0x3F);
        low = 0x80;
        high = 0xBF;
    }
    return {cp, n, true};
}

// Bytes of the character at `text` (1 to 4), reading at most `limit` bytes; stores its code
// point, or kInvalid + byte: a byte that begins no well-formed sequence is a character of its own.
// A terminator is a character of one byte.
inline std::size_t Decode(const char* text, std::size_t limit, std::int32_t& c) {
    const Sequence sequence = Read(text, limit);
    if (!sequence.valid) {
        c = kInvalid + sequence.codePoint;
        return 1;
    }
    c = sequence.codePoint;
    return sequence.length;
}

// Bytes that the code point `c` takes in UTF-8.
inline std::size_t EncodedLength(std::int32_t c) {
    return c < 0x80 ? 1 : c < 0x800 ? 2 : c < 0x10000 ? 3 : 4;
}

// Writes `c` and returns the bytes written. A lone surrogate takes the three bytes of its value.
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

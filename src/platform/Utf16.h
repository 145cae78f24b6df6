// UTF-16 surrogates: the one place that says what a high and a low half are and how a pair
// stands for a code point. What to do with a half that has no partner is each caller's own rule.
#pragma once

namespace vorn::platform::utf16 {

constexpr bool IsHighSurrogate(char32_t u) {
    return u >= 0xD800 && u <= 0xDBFF;
}
constexpr bool IsLowSurrogate(char32_t u) {
    return u >= 0xDC00 && u <= 0xDFFF;
}
constexpr bool IsSurrogate(char32_t u) {
    return u >= 0xD800 && u <= 0xDFFF;
}

// The code point of a high and a low half.
constexpr char32_t Combine(char32_t high, char32_t low) {
    return 0x10000 + ((high - 0xD800) << 10) + (low - 0xDC00);
}

// Writes `c` as one unit, or as a pair when it lies beyond U+FFFF; returns the units written.
template <typename Unit> unsigned int Encode(char32_t c, Unit* out) {
    if (c < 0x10000) {
        out[0] = static_cast<Unit>(c);
        return 1;
    }
    c -= 0x10000;
    out[0] = static_cast<Unit>(0xD800 + (c >> 10));
    out[1] = static_cast<Unit>(0xDC00 + (c & 0x3FF));
    return 2;
}

} // namespace vorn::platform::utf16

#include "platform/NumberParse.h"

#include <charconv>
#include <cstdarg>
#include <cstring>
#include <limits>
#include <string>

#include "platform/UniText.h"

namespace {

struct Span {
    const unsigned short* begin;
    const unsigned short* end;
};

Span Bounds(const unsigned short* text, const unsigned short* end, ZK::TrimWSMode trim) {
    if (trim == ZK::TrimWSBoth) {
        while (text < end && ZK::isuspace(*text))
            ++text;
        while (end > text && ZK::isuspace(end[-1]))
            --end;
    }
    return {text, end};
}

// The magnitude and sign of a decimal integer; false for anything else or more than 64 bits.
bool ParseInteger(Span s, bool allowMinus, bool& negative, unsigned long long& magnitude) {
    const unsigned short* p = s.begin;
    negative = false;
    if (p < s.end && (*p == u'+' || *p == u'-')) {
        negative = *p == u'-';
        ++p;
    }
    if (p == s.end || (negative && !allowMinus))
        return false;
    unsigned long long v = 0;
    for (; p < s.end; ++p) {
        if (*p < u'0' || *p > u'9')
            return false;
        const unsigned digit = *p - u'0';
        if (v > (std::numeric_limits<unsigned long long>::max() - digit) / 10)
            return false;
        v = v * 10 + digit;
    }
    magnitude = v;
    return true;
}

template <typename T> bool ToSigned(Span s, T& value) {
    bool negative;
    unsigned long long m;
    if (!ParseInteger(s, true, negative, m))
        return false;
    const unsigned long long limit = static_cast<unsigned long long>(std::numeric_limits<T>::max());
    if (m > limit + (negative ? 1 : 0))
        return false;
    // Two's complement negation in the unsigned type reaches the minimum without overflow.
    value = static_cast<T>(negative ? 0 - m : m);
    return true;
}

template <typename T> bool ToUnsigned(Span s, T& value) {
    bool negative;
    unsigned long long m;
    if (!ParseInteger(s, false, negative, m) || m > std::numeric_limits<T>::max())
        return false;
    value = static_cast<T>(m);
    return true;
}

template <typename T> bool ToFloating(Span s, T& value) {
    const std::size_t length = static_cast<std::size_t>(s.end - s.begin);
    char small[128];
    std::string large;
    char* text = small;
    if (length >= sizeof small) {
        large.resize(length);
        text = &large[0];
    }
    for (std::size_t i = 0; i < length; ++i) {
        // from_chars reads ASCII only; anything wider is no part of a number.
        if (s.begin[i] == 0 || s.begin[i] > 0x7F)
            return false;
        text[i] = static_cast<char>(s.begin[i]);
    }
    const char* first = text;
    const char* last = text + length;
    if (first < last && *first == '+') {
        ++first;
        if (first < last && *first == '-')
            return false;
    }
    T parsed;
    std::from_chars_result r = std::from_chars(first, last, parsed);
    if (first == last || r.ec != std::errc() || r.ptr != last)
        return false;
    value = parsed;
    return true;
}

Span Whole(const unsigned short* text, ZK::TrimWSMode trim) {
    if (text == nullptr)
        return {nullptr, nullptr};
    return Bounds(text, text + ZK::ucslen(text), trim);
}

// One directive of a checkedsscanf format, as text ("%llu") and as what it stores.
enum class Kind { Signed, Unsigned, Floating };

struct Directive {
    char text[8];
    Kind kind;
    int bits; // 8, 16, 32 or 64; for a floating value 32 or 64
};

// Reads the directive at `format` (just after the '%'); false for one this scanner doesn't know.
bool ReadDirective(const unsigned short*& format, Directive& d) {
    int bits = 32;
    std::size_t n = 0;
    d.text[n++] = '%';
    if (format[0] == u'h' && format[1] == u'h') {
        bits = 8;
    } else if (format[0] == u'h') {
        bits = 16;
    } else if (format[0] == u'l' && format[1] == u'l') {
        bits = 64;
    }
    const int lengthUnits = bits == 8 || bits == 64 ? 2 : (format[0] == u'h' || format[0] == u'l');
    for (int i = 0; i < lengthUnits; ++i)
        d.text[n++] = static_cast<char>(*format++);
    const unsigned short c = *format;
    if (c == u'd' || c == u'i') {
        d.kind = Kind::Signed;
    } else if (c == u'u') {
        d.kind = Kind::Unsigned;
    } else if ((c == u'f' || c == u'e' || c == u'g') && bits == 32) {
        d.kind = Kind::Floating;
        // %lf stores a double, %f a float.
        bits = lengthUnits == 1 ? 64 : 32;
    } else {
        return false;
    }
    d.text[n++] = static_cast<char>(*format++);
    d.text[n] = 0;
    d.bits = bits;
    return true;
}

bool Store(const Directive& d, Span s, va_list& arguments) {
    switch (d.kind) {
    case Kind::Signed:
        switch (d.bits) {
        case 8: {
            signed char v;
            return ToSigned(s, v) && (*va_arg(arguments, signed char*) = v, true);
        }
        case 16: {
            short v;
            return ToSigned(s, v) && (*va_arg(arguments, short*) = v, true);
        }
        case 32: {
            int v;
            return ToSigned(s, v) && (*va_arg(arguments, int*) = v, true);
        }
        default: {
            long long v;
            return ToSigned(s, v) && (*va_arg(arguments, long long*) = v, true);
        }
        }
    case Kind::Unsigned:
        switch (d.bits) {
        case 8: {
            unsigned char v;
            return ToUnsigned(s, v) && (*va_arg(arguments, unsigned char*) = v, true);
        }
        case 16: {
            unsigned short v;
            return ToUnsigned(s, v) && (*va_arg(arguments, unsigned short*) = v, true);
        }
        case 32: {
            unsigned int v;
            return ToUnsigned(s, v) && (*va_arg(arguments, unsigned int*) = v, true);
        }
        default: {
            unsigned long long v;
            return ToUnsigned(s, v) && (*va_arg(arguments, unsigned long long*) = v, true);
        }
        }
    case Kind::Floating:
        if (d.bits == 32) {
            float v;
            return ToFloating(s, v) && (*va_arg(arguments, float*) = v, true);
        }
        double v;
        return ToFloating(s, v) && (*va_arg(arguments, double*) = v, true);
    }
    return false;
}

} // namespace

namespace ZK {

bool strtovalue(const unsigned short* text, short& value, ToValueMode, TrimWSMode trim) {
    return text != nullptr && ToSigned(Whole(text, trim), value);
}
bool strtovalue(const unsigned short* text, int& value, ToValueMode, TrimWSMode trim) {
    return text != nullptr && ToSigned(Whole(text, trim), value);
}
bool strtovalue(const unsigned short* text, unsigned int& value, ToValueMode, TrimWSMode trim) {
    return text != nullptr && ToUnsigned(Whole(text, trim), value);
}
bool strtovalue(const unsigned short* text, long long& value, ToValueMode, TrimWSMode trim) {
    return text != nullptr && ToSigned(Whole(text, trim), value);
}
bool strtovalue(const unsigned short* text, unsigned long long& value, ToValueMode,
                TrimWSMode trim) {
    return text != nullptr && ToUnsigned(Whole(text, trim), value);
}
bool strtovalue(const unsigned short* text, float& value, ToValueMode, TrimWSMode trim) {
    return text != nullptr && ToFloating(Whole(text, trim), value);
}
bool strtovalue(const unsigned short* text, double& value, ToValueMode, TrimWSMode trim) {
    return text != nullptr && ToFloating(Whole(text, trim), value);
}

int checkedsscanf(unsigned int, const unsigned short* text, const unsigned short* format,
                  const char* const* argumentFormats, ...) {
    if (text == nullptr || format == nullptr || argumentFormats == nullptr)
        return 0;
    va_list arguments;
    va_start(arguments, argumentFormats);
    int stored = 0;
    const unsigned short* p = text;
    while (*format != 0) {
        if (isuspace(*format)) {
            while (isuspace(*format))
                ++format;
            while (isuspace(*p))
                ++p;
            continue;
        }
        if (*format != u'%' || format[1] == u'%') {
            const unsigned short literal = *format == u'%' ? *++format : *format;
            if (*p != literal)
                break;
            ++p;
            ++format;
            continue;
        }
        ++format;
        Directive d;
        const char* expected = argumentFormats[stored];
        if (!ReadDirective(format, d) || expected == nullptr || std::strcmp(expected, d.text) != 0)
            break;
        while (isuspace(*p))
            ++p;
        // The number ends at white space, the end, or the literal that the format expects next.
        const unsigned short stop = *format == u'%' || isuspace(*format) ? 0 : *format;
        const unsigned short* end = p;
        while (*end != 0 && !isuspace(*end) && (stop == 0 || *end != stop))
            ++end;
        if (!Store(d, {p, end}, arguments))
            break;
        ++stored;
        p = end;
    }
    va_end(arguments);
    return stored;
}

} // namespace ZK

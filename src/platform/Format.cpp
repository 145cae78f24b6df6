#include "platform/Format.h"

#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <type_traits>

#include "platform/Utf16.h"
#include "platform/Utf8.h"

namespace {

using Unit16 = unsigned short;

constexpr std::size_t kUnlimited = SIZE_MAX;
// Width and precision saturate here, one past what an int result can count, so that an
// oversized field is refused rather than shrunk.
constexpr std::size_t kMaxField = static_cast<std::size_t>(INT_MAX) + 1;
// Digits a double can need: 767 significant, 1074 after the point. Beyond this a longer precision
// only adds zeros, which are written here so that the C library's output always fits the buffer.
constexpr std::size_t kMaxFloatPrecision = 1100;
constexpr std::size_t kFloatRoom = 1 + 309 + 1 + kMaxFloatPrecision + 16;

// Writes the first `limit` units and counts all of them.
template <typename Out> class Sink {
public:
    using Unit = Out;
    Sink(Out* buffer, std::size_t limit) : m_buffer(buffer), m_limit(limit) {}

    void Put(Out unit) {
        if (m_count < m_limit)
            m_buffer[m_count] = unit;
        ++m_count;
    }
    void Fill(Out unit, std::size_t n) {
        std::size_t k = Fit(n);
        for (std::size_t i = 0; i < k; ++i)
            m_buffer[m_count + i] = unit;
        m_count += n;
    }
    void Write(const Out* units, std::size_t n) {
        std::size_t k = Fit(n);
        if (k > 0)
            std::memcpy(m_buffer + m_count, units, k * sizeof(Out));
        m_count += n;
    }
    std::size_t Count() const { return m_count; }

private:
    std::size_t Fit(std::size_t n) const {
        std::size_t room = m_count < m_limit ? m_limit - m_count : 0;
        return n < room ? n : room;
    }
    Out* m_buffer;
    std::size_t m_limit;
    std::size_t m_count = 0;
};

// Measures a piece before it is written right-aligned.
template <typename Out> class Meter {
public:
    using Unit = Out;
    void Put(Out) { ++m_count; }
    void Fill(Out, std::size_t n) { m_count += n; }
    void Write(const Out*, std::size_t n) { m_count += n; }
    std::size_t Count() const { return m_count; }

private:
    std::size_t m_count = 0;
};

// Source text: up to `end` when given, and never past a terminator.
template <typename Src> bool More(const Src* p, const Src* end) {
    return (end == nullptr || p < end) && *p != 0;
}

// One character of UTF-8; an ill-formed sequence gives U+FFFD and is skipped by its longest
// well-formed prefix, as ICU's converters do.
char32_t NextCharacter(const char*& p, const char* end) {
    const auto sequence = vorn::platform::utf8::Read(
        p, end != nullptr ? static_cast<std::size_t>(end - p) : SIZE_MAX);
    p += sequence.length;
    return sequence.valid ? static_cast<char32_t>(sequence.codePoint) : 0xFFFD;
}

// One character of UTF-16; an unpaired surrogate gives U+FFFD.
char32_t NextCharacter(const Unit16*& p, const Unit16* end) {
    const char32_t unit = *p++;
    if (!vorn::platform::utf16::IsSurrogate(unit))
        return unit;
    if (vorn::platform::utf16::IsHighSurrogate(unit) && More(p, end) &&
        vorn::platform::utf16::IsLowSurrogate(*p))
        return vorn::platform::utf16::Combine(unit, *p++);
    return 0xFFFD;
}

std::size_t Encode(char32_t c, char* out) {
    return vorn::platform::utf8::Encode(static_cast<std::int32_t>(c), out);
}

std::size_t Encode(char32_t c, Unit16* out) {
    return vorn::platform::utf16::Encode(c, out);
}

// Copies or transcodes text into the sink's unit type: at most `maxOut` output units, and never
// part of a re-encoded character. Returns the units written.
template <typename S, typename Src>
std::size_t EmitText(S& sink, const Src* p, const Src* end, std::size_t maxOut) {
    using Out = typename S::Unit;
    if constexpr (std::is_same_v<Out, Src>) {
        std::size_t n = 0;
        while (n < maxOut && More(p + n, end))
            ++n;
        sink.Write(p, n);
        return n;
    } else {
        std::size_t produced = 0;
        Out units[4];
        while (produced < maxOut && More(p, end)) {
            if (static_cast<char32_t>(*p) < 0x80) { // ASCII is the same unit in both
                sink.Put(static_cast<Out>(*p++));
                ++produced;
                continue;
            }
            std::size_t k = Encode(NextCharacter(p, end), units);
            if (k > maxOut - produced)
                break;
            sink.Write(units, k);
            produced += k;
        }
        return produced;
    }
}

enum class Length { None, Char, Short, Long, LongLong, Size, Ptrdiff, IntMax, LongDouble, Wide };

// One parsed directive: flags, field, length and the conversion character.
struct Directive {
    bool left = false, plus = false, space = false, alt = false, zero = false;
    std::size_t width = 0;
    std::size_t precision = kUnlimited; // kUnlimited: none given
    Length length = Length::None;
    char32_t conversion = 0;
};

// Whether a character or text conversion takes UTF-16: `l` and `w` on %c and %s, anything but `h`
// on %C and %S.
bool WideArgument(const Directive& directive) {
    if (directive.conversion == 'C' || directive.conversion == 'S')
        return directive.length != Length::Short;
    return directive.length == Length::Long || directive.length == Length::Wide;
}

// How an integer conversion writes its digits.
struct IntegerForm {
    unsigned base;
    bool upper;    // X and p: upper-case digits and prefix
    bool isSigned; // d and i: room for a sign
};

constexpr IntegerForm kSignedDecimal{10, false, true};
constexpr IntegerForm kUnsignedDecimal{10, false, false};
constexpr IntegerForm kOctal{8, false, false};
constexpr IntegerForm kHex{16, false, false};
constexpr IntegerForm kUpperHex{16, true, false};

template <typename S> void Pad(S& sink, std::size_t width, std::size_t used) {
    if (used < width)
        sink.Fill(static_cast<typename S::Unit>(' '), width - used);
}

// Text in a field: `precision` output units at most, padded with spaces to the width.
template <typename S, typename Src>
void EmitField(S& sink, const Directive& directive, const Src* text, const Src* end) {
    using Out = typename S::Unit;
    if (directive.width == 0) {
        EmitText(sink, text, end, directive.precision);
    } else if (directive.left) {
        Pad(sink, directive.width, EmitText(sink, text, end, directive.precision));
    } else {
        Meter<Out> meter;
        Pad(sink, directive.width, EmitText(meter, text, end, directive.precision));
        EmitText(sink, text, end, directive.precision);
    }
}

// One character from an int argument: a narrow byte or a UTF-16 unit. A NUL is written as a unit
// of its own, as printf does.
template <typename S> void EmitCharacter(S& sink, const Directive& directive, int value) {
    const bool wide = WideArgument(directive);
    using Out = typename S::Unit;
    Out units[4];
    std::size_t k;
    if (wide) {
        auto unit = static_cast<Unit16>(value);
        if constexpr (std::is_same_v<Out, Unit16>) {
            units[0] = unit;
            k = 1;
        } else {
            k = Encode(vorn::platform::utf16::IsSurrogate(unit) ? 0xFFFD : unit, units);
        }
    } else {
        auto byte = static_cast<unsigned char>(value);
        if constexpr (std::is_same_v<Out, char>)
            units[0] = static_cast<char>(byte);
        else
            units[0] = byte < 0x80 ? byte : 0xFFFD; // a lone byte above ASCII is no UTF-8
        k = 1;
    }
    if (!directive.left)
        Pad(sink, directive.width, k);
    sink.Write(units, k);
    if (directive.left)
        Pad(sink, directive.width, k);
}

template <typename S>
void EmitInteger(S& sink, const Directive& directive, const IntegerForm& form,
                 unsigned long long magnitude, bool negative = false) {
    using Out = typename S::Unit;
    const unsigned base = form.base;
    const bool upper = form.upper;
    const char* digitSet = upper ? "0123456789ABCDEF" : "0123456789abcdef";
    char digits[24];
    std::size_t count = 0;
    for (unsigned long long v = magnitude; v != 0; v /= base)
        digits[sizeof digits - ++count] = digitSet[v % base];
    if (magnitude == 0 && directive.precision != 0)
        digits[sizeof digits - ++count] = '0';
    const char* first = digits + sizeof digits - count;

    char sign = 0;
    if (form.isSigned)
        sign = negative ? '-' : (directive.plus ? '+' : (directive.space ? ' ' : 0));
    const char* prefix = "";
    if (directive.alt && base == 16 && magnitude != 0)
        prefix = upper ? "0X" : "0x";
    std::size_t prefixLength = std::strlen(prefix);

    std::size_t zeros = 0;
    if (directive.precision != kUnlimited && directive.precision > count)
        zeros = directive.precision - count;
    if (directive.alt && base == 8 && zeros == 0 && (count == 0 || *first != '0'))
        zeros = 1;
    std::size_t used = (sign != 0 ? 1 : 0) + prefixLength + zeros + count;
    if (directive.zero && !directive.left && directive.precision == kUnlimited &&
        used < directive.width) {
        zeros += directive.width - used;
        used = directive.width;
    }

    if (!directive.left)
        Pad(sink, directive.width, used);
    if (sign != 0)
        sink.Put(static_cast<Out>(sign));
    for (std::size_t i = 0; i < prefixLength; ++i)
        sink.Put(static_cast<Out>(prefix[i]));
    sink.Fill(static_cast<Out>('0'), zeros);
    for (std::size_t i = 0; i < count; ++i)
        sink.Put(static_cast<Out>(first[i]));
    if (directive.left)
        Pad(sink, directive.width, used);
}

// The C library formats the value without width, so its output always fits; the field is laid
// out here with C's rules (zeros after the sign and any 0x, spaces for infinities and NaNs).
template <typename S> void EmitFloat(S& sink, const Directive& directive, double value) {
    using Out = typename S::Unit;
    const auto conversion = static_cast<char>(directive.conversion);
    char format[12];
    std::size_t f = 0;
    format[f++] = '%';
    if (directive.plus)
        format[f++] = '+';
    if (directive.space)
        format[f++] = ' ';
    if (directive.alt)
        format[f++] = '#';
    format[f++] = '.';
    format[f++] = '*';
    format[f++] = conversion;
    format[f] = '\0';

    int precision = -1; // the C library's default
    std::size_t extraZeros = 0;
    if (directive.precision != kUnlimited) {
        std::size_t p = directive.precision;
        if (p > kMaxFloatPrecision) {
            extraZeros = p - kMaxFloatPrecision;
            p = kMaxFloatPrecision;
        }
        precision = static_cast<int>(p);
    }
    char text[kFloatRoom];
    int n = std::snprintf(text, sizeof text, format, precision, value);
    if (n < 0)
        return;
    std::size_t length =
        static_cast<std::size_t>(n) < sizeof text ? static_cast<std::size_t>(n) : sizeof text - 1;
    const bool finite = std::isfinite(value);
    if (!finite)
        extraZeros = 0;
    // %g drops trailing zeros unless '#' keeps them.
    if ((conversion == 'g' || conversion == 'G') && !directive.alt)
        extraZeros = 0;

    // Where the zeros beyond the C library's precision go: before the exponent, if any.
    std::size_t split = length;
    char exponent = (conversion == 'a' || conversion == 'A') ? 'p' : 'e';
    if (conversion != 'f' && conversion != 'F') {
        for (std::size_t i = length; i > 0; --i) {
            if (text[i - 1] == exponent || text[i - 1] == exponent - 'a' + 'A') {
                split = i - 1;
                break;
            }
        }
    }
    std::size_t signLength =
        length > 0 && (text[0] == '-' || text[0] == '+' || text[0] == ' ') ? 1 : 0;
    std::size_t lead = signLength;
    if ((conversion == 'a' || conversion == 'A') && length >= lead + 2 && text[lead] == '0' &&
        (text[lead + 1] == 'x' || text[lead + 1] == 'X'))
        lead += 2;

    std::size_t used = extraZeros;
    if constexpr (std::is_same_v<Out, char>) {
        used += length;
    } else {
        Meter<Out> meter; // a locale's decimal point may be more than one byte
        used += EmitText(meter, text, text + length, kUnlimited);
    }
    std::size_t pad = used < directive.width ? directive.width - used : 0;
    if (pad > 0 && !directive.left && !(directive.zero && finite))
        sink.Fill(static_cast<Out>(' '), pad);
    EmitText(sink, text, text + lead, kUnlimited);
    if (pad > 0 && !directive.left && directive.zero && finite)
        sink.Fill(static_cast<Out>('0'), pad);
    EmitText(sink, text + lead, text + split, kUnlimited);
    sink.Fill(static_cast<Out>('0'), extraZeros);
    EmitText(sink, text + split, text + length, kUnlimited);
    if (pad > 0 && directive.left)
        sink.Fill(static_cast<Out>(' '), pad);
}

template <typename In> std::size_t ReadNumber(const In*& p) {
    std::size_t n = 0;
    for (; *p >= '0' && *p <= '9'; ++p) {
        n = n * 10 + static_cast<std::size_t>(*p - '0');
        if (n > kMaxField)
            n = kMaxField;
    }
    return n;
}

template <typename In> Length ReadLength(const In*& p) {
    switch (*p) {
    case 'h':
        ++p;
        if (*p == 'h') {
            ++p;
            return Length::Char;
        }
        return Length::Short;
    case 'l':
        ++p;
        if (*p == 'l') {
            ++p;
            return Length::LongLong;
        }
        return Length::Long;
    case 'I':
        ++p;
        if (p[0] == '6' && p[1] == '4') {
            p += 2;
            return Length::LongLong;
        }
        if (p[0] == '3' && p[1] == '2') {
            p += 2;
            return Length::Long;
        }
        return Length::Size;
    case 'L':
        ++p;
        return Length::LongDouble;
    case 'z':
        ++p;
        return Length::Size;
    case 't':
        ++p;
        return Length::Ptrdiff;
    case 'j':
        ++p;
        return Length::IntMax;
    case 'w':
        ++p;
        return Length::Wide;
    default:
        return Length::None;
    }
}

struct Arguments {
    va_list list;
};

long long ReadSigned(Arguments& a, Length length) {
    switch (length) {
    case Length::Char:
        return static_cast<signed char>(va_arg(a.list, int));
    case Length::Short:
        return static_cast<short>(va_arg(a.list, int));
    case Length::LongLong:
    case Length::LongDouble:
        return va_arg(a.list, long long);
    case Length::Size:
    case Length::Ptrdiff:
        return va_arg(a.list, std::ptrdiff_t);
    case Length::IntMax:
        return va_arg(a.list, std::intmax_t);
    default: // none, l, I32, w: 32 bits
        return va_arg(a.list, int);
    }
}

unsigned long long ReadUnsigned(Arguments& a, Length length) {
    switch (length) {
    case Length::Char:
        return static_cast<unsigned char>(va_arg(a.list, unsigned));
    case Length::Short:
        return static_cast<unsigned short>(va_arg(a.list, unsigned));
    case Length::LongLong:
    case Length::LongDouble:
        return va_arg(a.list, unsigned long long);
    case Length::Size:
    case Length::Ptrdiff:
        return va_arg(a.list, std::size_t);
    case Length::IntMax:
        return va_arg(a.list, std::uintmax_t);
    default: // none, l, I32, w: 32 bits, whatever width the caller passed
        return va_arg(a.list, unsigned);
    }
}

const char kNullText[] = "(null)";

// Reads the flags, width, precision and length of a directive from just after its '%', and
// leaves `p` on the conversion character. A `*` takes its value from the arguments.
template <typename In> Directive ReadDirective(const In*& p, Arguments& args) {
    Directive directive;
    for (;; ++p) {
        if (*p == '-')
            directive.left = true;
        else if (*p == '+')
            directive.plus = true;
        else if (*p == ' ')
            directive.space = true;
        else if (*p == '#')
            directive.alt = true;
        else if (*p == '0')
            directive.zero = true;
        else
            break;
    }
    if (*p == '*') {
        ++p;
        int width = va_arg(args.list, int);
        if (width < 0) {
            directive.left = true;
            directive.width = static_cast<std::size_t>(-static_cast<long long>(width));
            if (directive.width > kMaxField)
                directive.width = kMaxField;
        } else {
            directive.width = static_cast<std::size_t>(width);
        }
    } else {
        directive.width = ReadNumber(p);
    }
    if (*p == '.') {
        ++p;
        if (*p == '*') {
            ++p;
            int precision = va_arg(args.list, int);
            directive.precision = precision < 0 ? kUnlimited : static_cast<std::size_t>(precision);
        } else {
            directive.precision = ReadNumber(p);
        }
    }
    directive.length = ReadLength(p);
    directive.conversion = static_cast<char32_t>(*p);
    return directive;
}

// Takes the directive's argument and writes it. False for a character that is no conversion
// (%n included), which then stands as literal text; it consumes no argument.
template <typename S> bool Convert(S& sink, const Directive& directive, Arguments& args) {
    using Out = typename S::Unit;
    switch (directive.conversion) {
    case 'd':
    case 'i': {
        long long v = ReadSigned(args, directive.length);
        unsigned long long magnitude =
            v < 0 ? 0ULL - static_cast<unsigned long long>(v) : static_cast<unsigned long long>(v);
        EmitInteger(sink, directive, kSignedDecimal, magnitude, v < 0);
        return true;
    }
    case 'u':
        EmitInteger(sink, directive, kUnsignedDecimal, ReadUnsigned(args, directive.length));
        return true;
    case 'o':
        EmitInteger(sink, directive, kOctal, ReadUnsigned(args, directive.length));
        return true;
    case 'x':
        EmitInteger(sink, directive, kHex, ReadUnsigned(args, directive.length));
        return true;
    case 'X':
        EmitInteger(sink, directive, kUpperHex, ReadUnsigned(args, directive.length));
        return true;
    case 'p': {
        // As the target platform prints pointers: every hex digit, upper case, no prefix.
        Directive pointer = directive;
        pointer.alt = pointer.zero = false;
        pointer.precision = 2 * sizeof(void*);
        auto address = reinterpret_cast<std::uintptr_t>(va_arg(args.list, void*));
        EmitInteger(sink, pointer, kUpperHex, address);
        return true;
    }
    case 'c':
    case 'C':
        EmitCharacter(sink, directive, va_arg(args.list, int));
        return true;
    case 's':
    case 'S':
        if (WideArgument(directive)) {
            if (const Unit16* text = va_arg(args.list, const Unit16*)) {
                EmitField(sink, directive, text, static_cast<const Unit16*>(nullptr));
                return true;
            }
        } else if (const char* text = va_arg(args.list, const char*)) {
            EmitField(sink, directive, text, static_cast<const char*>(nullptr));
            return true;
        }
        EmitField(sink, directive, kNullText, static_cast<const char*>(nullptr));
        return true;
    case 'e':
    case 'E':
    case 'f':
    case 'F':
    case 'g':
    case 'G':
    case 'a':
    case 'A': {
        // Long double is double on the target platform: take the caller's value as one.
        double value = directive.length == Length::LongDouble
                           ? static_cast<double>(va_arg(args.list, long double))
                           : va_arg(args.list, double);
        EmitFloat(sink, directive, value);
        return true;
    }
    case '%':
        sink.Put(static_cast<Out>('%'));
        return true;
    default:
        return false;
    }
}

template <typename S, typename In> void Run(S& sink, const In* p, Arguments& args) {
    while (*p != 0) {
        if (*p != '%') {
            const In* run = p;
            while (*p != 0 && *p != '%')
                ++p;
            EmitText(sink, run, p, kUnlimited);
            continue;
        }
        ++p;
        const Directive directive = ReadDirective(p, args);
        if (*p == 0)
            return; // the format ends inside a directive: nothing more to write
        if (Convert(sink, directive, args))
            ++p; // otherwise the next literal run starts with the unknown character
    }
}

template <typename Out, typename In>
std::size_t FormatInto(Out* buffer, std::size_t limit, const In* format, va_list arguments) {
    Sink<Out> sink(buffer, buffer != nullptr ? limit : 0);
    if (format != nullptr) {
        Arguments args;
        va_copy(args.list, arguments);
        Run(sink, format, args);
        va_end(args.list);
    }
    return sink.Count();
}

// A null buffer is taken as one of size 0 rather than written through.
template <typename Out, typename In>
int Legacy(Out* buffer, std::size_t size, const In* format, va_list arguments) {
    if (buffer == nullptr)
        size = 0;
    std::size_t count = FormatInto(buffer, size, format, arguments);
    if (count < size)
        buffer[count] = 0;
    return count > size || count > static_cast<std::size_t>(INT_MAX) ? -1 : static_cast<int>(count);
}

} // namespace

namespace vorn::platform {

int FormatLegacyV(char* buffer, std::size_t size, const char* format, va_list arguments) {
    return Legacy(buffer, size, format, arguments);
}

int FormatV(char* buffer, std::size_t size, const char* format, va_list arguments) {
    if (buffer == nullptr)
        size = 0;
    std::size_t count = FormatInto(buffer, size > 0 ? size - 1 : 0, format, arguments);
    if (size > 0)
        buffer[count < size - 1 ? count : size - 1] = '\0';
    return count > static_cast<std::size_t>(INT_MAX) ? -1 : static_cast<int>(count);
}

int Format(char* buffer, std::size_t size, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    int n = FormatV(buffer, size, format, arguments);
    va_end(arguments);
    return n;
}

} // namespace vorn::platform

namespace ZK {

int vsnuprintf(unsigned short* target, std::size_t units, const unsigned short* format,
               va_list arguments) {
    return Legacy(target, units, format, arguments);
}

int vsnuprintf(unsigned short* target, std::size_t units, const char* format, va_list arguments) {
    return Legacy(target, units, format, arguments);
}

int snuprintf(unsigned short* target, std::size_t units, const unsigned short* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    int n = vsnuprintf(target, units, format, arguments);
    va_end(arguments);
    return n;
}

int snuprintf(unsigned short* target, std::size_t units, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    int n = vsnuprintf(target, units, format, arguments);
    va_end(arguments);
    return n;
}

} // namespace ZK

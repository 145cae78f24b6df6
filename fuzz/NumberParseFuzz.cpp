// The strict number parsers, ZK::strtovalue for every target type and ZK::checkedsscanf with the
// library's own formats, on arbitrary UTF-16 text. Integers are checked against the C library's
// reading of the same digits and range, floating values against strtod and strtof, and the scan
// against strtovalue of the word it stopped at.
#include <cerrno>
#include <cmath>
#include <limits>
#include <string>

#include "Fuzz.h"
#include "platform/NumberParse.h"
#include "platform/UniText.h"

using Units = std::u16string;

namespace {

const unsigned short* Ptr(const Units& u) {
    return reinterpret_cast<const unsigned short*>(u.c_str());
}

// The text between white space at both ends, if `trim`, as ASCII; false if anything is wider.
bool Ascii(const Units& text, bool trim, std::string& out) {
    std::size_t b = 0, e = text.size();
    while (trim && b < e && ZK::isuspace(text[b]))
        ++b;
    while (trim && e > b && ZK::isuspace(text[e - 1]))
        --e;
    out.clear();
    for (std::size_t i = b; i < e; ++i) {
        if (text[i] > 0x7F)
            return false;
        out.push_back(static_cast<char>(text[i]));
    }
    return true;
}

// A whole decimal integer: one optional sign ('-' for signed types only), then digits.
template <typename T> bool Reference(const std::string& s, T& value) {
    const bool isSigned = std::numeric_limits<T>::is_signed;
    std::size_t i = s.size() > 0 && (s[0] == '+' || (isSigned && s[0] == '-')) ? 1 : 0;
    if (i == s.size() || s.find_first_not_of("0123456789", i) != std::string::npos)
        return false;
    errno = 0;
    if (isSigned) {
        const long long v = std::strtoll(s.c_str(), nullptr, 10);
        if (errno != 0 || v < static_cast<long long>(std::numeric_limits<T>::min()) ||
            v > static_cast<long long>(std::numeric_limits<T>::max()))
            return false;
        value = static_cast<T>(v);
    } else {
        const unsigned long long v = std::strtoull(s.c_str(), nullptr, 10);
        if (errno != 0 || v > static_cast<unsigned long long>(std::numeric_limits<T>::max()))
            return false;
        value = static_cast<T>(v);
    }
    return true;
}

template <typename T> void Integer(const Units& text, ZK::TrimWSMode trim) {
    T value = 42, expected = 0;
    const bool ok = ZK::strtovalue(Ptr(text), value, ZK::ToValueStrict, trim);
    std::string ascii;
    const bool reference = Ascii(text, trim == ZK::TrimWSBoth, ascii) && Reference(ascii, expected);
    FUZZ_CHECK(ok == reference);
    FUZZ_CHECK(ok ? value == expected : value == 42);
    if (ok) {
        double d = 0;
        FUZZ_CHECK(ZK::strtovalue(Ptr(text), d, ZK::ToValueStrict, trim));
        FUZZ_CHECK(d == std::strtod(ascii.c_str(), nullptr));
    }
}

template <typename T> void Floating(const Units& text, ZK::TrimWSMode trim) {
    T value = 42;
    if (!ZK::strtovalue(Ptr(text), value, ZK::ToValueStrict, trim)) {
        FUZZ_CHECK(value == 42);
        return;
    }
    std::string ascii;
    FUZZ_CHECK(Ascii(text, trim == ZK::TrimWSBoth, ascii));
    const T expected = sizeof(T) == 4 ? std::strtof(ascii.c_str(), nullptr)
                                      : static_cast<T>(std::strtod(ascii.c_str(), nullptr));
    FUZZ_CHECK(std::isnan(value) ? std::isnan(expected) : value == expected);
    const std::string lower = [&] {
        std::string l;
        for (char c : ascii)
            l.push_back(static_cast<char>(c | 0x20));
        return l;
    }();
    if (std::isinf(value))
        FUZZ_CHECK(lower.find("inf") != std::string::npos);
    // No underflow to zero: a zero comes from zero digits alone.
    if (value == 0)
        FUZZ_CHECK(lower.substr(0, lower.find('e')).find_first_of("123456789") ==
                   std::string::npos);
}

// One directive against strtovalue of the word it reads.
template <typename T> void Scan(const Units& text, const char16_t* format, const char* directive) {
    const char* const list[] = {directive, nullptr};
    T value = 42;
    const int n = ZK::checkedsscanf(0, Ptr(text), reinterpret_cast<const unsigned short*>(format),
                                    list, &value);
    std::size_t b = 0;
    while (b < text.size() && ZK::isuspace(text[b]))
        ++b;
    std::size_t e = b;
    while (e < text.size() && !ZK::isuspace(text[e]))
        ++e;
    T word = 7;
    const bool ok =
        ZK::strtovalue(Ptr(text.substr(b, e - b)), word, ZK::ToValueStrict, ZK::TrimWSNone);
    FUZZ_CHECK(n == (ok ? 1 : 0));
    FUZZ_CHECK(ok ? (value == word || (value != value && word != word)) : value == 42);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    // The first byte chooses how the rest is read: one byte a unit, or two (little-endian).
    Units text;
    if (data[0] & 1) {
        for (std::size_t i = 1; i + 1 < size; i += 2)
            text.push_back(static_cast<char16_t>(data[i] | data[i + 1] << 8));
    } else {
        for (std::size_t i = 1; i < size; ++i)
            text.push_back(data[i]);
    }
    text.resize(text.find(u'\0') == Units::npos ? text.size() : text.find(u'\0'));

    for (ZK::TrimWSMode trim : {ZK::TrimWSNone, ZK::TrimWSBoth}) {
        Integer<short>(text, trim);
        Integer<int>(text, trim);
        Integer<unsigned int>(text, trim);
        Integer<long long>(text, trim);
        Integer<unsigned long long>(text, trim);
        Floating<float>(text, trim);
        Floating<double>(text, trim);
    }
    Scan<unsigned long long>(text, u"%llu", "%llu");
    Scan<int>(text, u"%d", "%d");
    Scan<short>(text, u" %hd", "%hd");
    Scan<unsigned int>(text, u"%u", "%u");
    Scan<double>(text, u"%lf", "%lf");
    Scan<float>(text, u"%f", "%f");

    // A directive that its list doesn't name stores nothing.
    const char* const wrong[] = {"%d", nullptr};
    long long untouched = 42;
    FUZZ_CHECK(ZK::checkedsscanf(0, Ptr(text), reinterpret_cast<const unsigned short*>(u"%lld"),
                                 wrong, &untouched) == 0);
    FUZZ_CHECK(untouched == 42);
    return 0;
}

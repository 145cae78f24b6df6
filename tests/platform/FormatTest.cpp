#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "platform/Debug.h"
#include "platform/Format.h"
#include "support/DebugCapture.h"
#include "support/Utf16.h"

namespace {

using vorn::test::W;
using vorn::test::WString;

constexpr std::size_t kRoom = 4096;

std::string F(const char* format, ...) {
    char buffer[kRoom];
    va_list arguments;
    va_start(arguments, format);
    int n = vorn::platform::FormatV(buffer, sizeof buffer, format, arguments);
    va_end(arguments);
    EXPECT_GE(n, 0) << format;
    return std::string(buffer, n < 0 ? 0 : static_cast<std::size_t>(n));
}

// UTF-16 output from a narrow format.
WString U(const char* format, ...) {
    unsigned short buffer[kRoom];
    va_list arguments;
    va_start(arguments, format);
    int n = ZK::vsnuprintf(buffer, kRoom, format, arguments);
    va_end(arguments);
    EXPECT_GE(n, 0) << format;
    return WString(buffer, n < 0 ? 0 : static_cast<std::size_t>(n));
}

// UTF-16 output from a UTF-16 format.
WString UW(const unsigned short* format, ...) {
    unsigned short buffer[kRoom];
    va_list arguments;
    va_start(arguments, format);
    int n = ZK::vsnuprintf(buffer, kRoom, format, arguments);
    va_end(arguments);
    EXPECT_GE(n, 0);
    return WString(buffer, n < 0 ? 0 : static_cast<std::size_t>(n));
}

WString Widen(const std::string& text) {
    return WString(text.begin(), text.end());
}

TEST(FormatLengths, LIs32BitsAndLlI64Are64) {
    EXPECT_EQ(F("%ld|%li|%lx", -5, INT_MIN, -1), "-5|-2147483648|ffffffff");
    // Only the low half of a 64-bit argument is read, and the next argument is still found.
    EXPECT_EQ(F("%lu %d", 0x1234567890ULL, 7), "878082192 7");
    EXPECT_EQ(F("%lu", 0x100000002ULL), "2");
    EXPECT_EQ(F("%I32d %I32u", -3, 4000000000u), "-3 4000000000");
    EXPECT_EQ(F("%lld %llu", LLONG_MIN, ULLONG_MAX), "-9223372036854775808 18446744073709551615");
    EXPECT_EQ(F("%I64d %I64X %I64o", -(1LL << 40), 0xDEADBEEFCAFEULL, 01777ULL),
              "-1099511627776 DEADBEEFCAFE 1777");
    EXPECT_EQ(F("%zu %zd %Iu %jd", SIZE_MAX, std::ptrdiff_t{-9}, std::size_t{12}, INTMAX_MIN),
              "18446744073709551615 -9 12 -9223372036854775808");
    EXPECT_EQ(U("%ld/%lu/%I64d", -1, 0xFFFFFFFF00000001ULL, 1LL << 33), W(u"-1/1/8589934592"));
}

TEST(FormatLengths, HTruncatesToItsWidth) {
    EXPECT_EQ(F("%hd %hu %hx", 70000, -1, 0x12345), "4464 65535 2345");
    EXPECT_EQ(F("%hhd %hhu", 200, 257), "-56 1");
    EXPECT_EQ(F("%hs|%hc", "narrow", 'n'), "narrow|n");
}

TEST(FormatLengths, FloatingLengths) {
    EXPECT_EQ(F("%lf %lg %g", 0.1, 0.1, 1.5), "0.100000 0.1 1.5");
    // Long double is taken as a double value.
    EXPECT_EQ(F("%Lf|%.3Le", 1.5L, 12345.0L), "1.500000|1.234e+04");
    EXPECT_EQ(U("%f", 0.1), W(u"0.100000"));
}

TEST(FormatWideText, Utf16ToNarrowIsUtf8) {
    WString text = W(u"a\u00e9\u20ac\U0001F600");
    EXPECT_EQ(F("%ls", text.c_str()), "a\xc3\xa9\xe2\x82\xac\xf0\x9f\x98\x80");
    EXPECT_EQ(F("%S|%wc", text.c_str(), 0xE9), F("%ls|%lc", text.c_str(), 0xE9));
    const unsigned short lone[] = {0xD800, 'a', 0xDC00, 0xDBFF, 0};
    EXPECT_EQ(F("%ls", lone), "\xef\xbf\xbd"
                              "a\xef\xbf\xbd\xef\xbf\xbd");
    EXPECT_EQ(F("%lc%lc%lc", 0x20AC, 0xD800, 'x'), "\xe2\x82\xac\xef\xbf\xbdx");
    // Width and precision count bytes, and precision never cuts a character.
    EXPECT_EQ(F("[%5ls]", W(u"\u00e9").c_str()), "[   \xc3\xa9]");
    EXPECT_EQ(F("[%-4lc]", 0xE9), "[\xc3\xa9  ]");
    EXPECT_EQ(F("%.3ls|%.2ls", W(u"a\u00e9\u20ac").c_str(), W(u"a\u20ac").c_str()), "a\xc3\xa9|a");
}

TEST(FormatWideText, NarrowToUtf16DecodesUtf8) {
    EXPECT_EQ(U("%s", "\xc3\xa9\xf0\x9f\x98\x80"), W(u"\u00e9\U0001F600"));
    EXPECT_EQ(U("%c%c", 'A', 0xE9), W(u"A\uFFFD"));
    // Each ill-formed piece is one U+FFFD: bad leads, a cut sequence, overlongs, surrogates.
    EXPECT_EQ(U("%s", "a\xff"
                      "b\xe2\x82"
                      "c"),
              W(u"a\uFFFDb\uFFFDc"));
    EXPECT_EQ(U("%s", "\xc0\xaf\xe0\x80\x80"), W(u"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD"));
    EXPECT_EQ(U("%s|%s", "\xed\xa0\x80", "\xf4\x90\x80\x80"),
              W(u"\uFFFD\uFFFD\uFFFD|\uFFFD\uFFFD\uFFFD\uFFFD"));
    // The narrow format's own text is UTF-8 too.
    EXPECT_EQ(U("\xc3\xa9 %d \xe2\x82\xac", 5), W(u"\u00e9 5 \u20ac"));
    // Units are counted: a pair takes two and is never cut.
    EXPECT_EQ(U("[%.1s|%.2s|%4s]", "\xf0\x9f\x98\x80", "\xf0\x9f\x98\x80", "\xf0\x9f\x98\x80"),
              W(u"[|\U0001F600|  \U0001F600]"));
}

TEST(FormatWideText, Utf16ToUtf16KeepsUnits) {
    const unsigned short lone[] = {0xDC00, 'z', 0};
    EXPECT_EQ(U("%ls%lc", lone, 0xD800), WString(lone) + WString(1, 0xD800));
    WString format = W(u"%ls=%d \u20ac %s");
    EXPECT_EQ(UW(format.c_str(), W(u"\u043a\u043b\u044e\u0447").c_str(), 3, "\xc3\xa9"),
              W(u"\u043a\u043b\u044e\u0447=3 \u20ac \u00e9"));
    EXPECT_EQ(UW(W(u"%-3lc|%.2ls|%5.1f").c_str(), 0x3A9, W(u"\u03a9\u03a9\u03a9").c_str(), 2.25),
              W(u"\u03a9  |\u03a9\u03a9|  2.2"));
}

TEST(FormatOwnRules, RefusedUnknownAndDangling) {
    int untouched = 42;
    EXPECT_EQ(F("a%nb", &untouched), "anb");
    EXPECT_EQ(untouched, 42);
    EXPECT_EQ(F("%y|%-5y|%ly|%d", 3), "y|y|y|3");
    EXPECT_EQ(U("%\xc3\xa9"), W(u"\u00e9"));
    EXPECT_EQ(F("100%% %5%"), "100% %");
    EXPECT_EQ(F("abc%"), "abc");
    EXPECT_EQ(F("abc%-5l"), "abc");
}

TEST(FormatOwnRules, NullTextPointerAndNulCharacter) {
    EXPECT_EQ(F("%s|%ls|%.3s", static_cast<const char*>(nullptr),
                static_cast<const unsigned short*>(nullptr), static_cast<const char*>(nullptr)),
              "(null)|(null)|(nu");
    EXPECT_EQ(
        F("%p|%20p|%-18p|", reinterpret_cast<void*>(0xABC), nullptr, reinterpret_cast<void*>(1)),
        "0000000000000ABC|    0000000000000000|0000000000000001  |");
    EXPECT_EQ(F("a%cb", 0), std::string("a\0b", 3));
    EXPECT_EQ(U("a%lcb", 0), WString({'a', 0, 'b'}));
}

TEST(FormatOwnRules, StarsAndHugeFields) {
    EXPECT_EQ(F("[%*d|%-*d|%*d|%.*d|%.*d]", 4, 7, 3, 8, -3, 9, -1, 5, 3, 5),
              "[   7|8  |9  |5|005]");
    // A field too wide for an int result is refused, and the buffer still ends cleanly.
    char buffer[8] = "xxxxxxx";
    EXPECT_EQ(vorn::platform::Format(buffer, sizeof buffer, "%2147483647d%d", 1, 1), -1);
    EXPECT_EQ(std::strlen(buffer), 7u);
    EXPECT_EQ(vorn::platform::Format(buffer, sizeof buffer, "%*d", INT_MIN, 1), -1);
}

TEST(FormatOwnRules, PrecisionBeyondTheDelegatedDigits) {
    const char* formats[] = {"%.1200f", "%.1500e",      "%#.1400g",    "%.1400g",
                             "%.1300a", "%-1500.1200f", "%01400.1150e"};
    const double values[] = {0.1, 5e-324, 1e308, -2.5, 0.0};
    for (const char* format : formats) {
        for (double value : values) {
            char expected[kRoom];
            int n = std::snprintf(expected, sizeof expected, format, value);
            ASSERT_GT(n, 0);
            EXPECT_EQ(F(format, value), std::string(expected, static_cast<std::size_t>(n)))
                << format << " " << value;
        }
    }
}

// The engine against the C library wherever the two agree: random flags, widths, precisions
// (given and by '*') and values, narrow and UTF-16 output alike.
class Differential {
public:
    explicit Differential(unsigned seed) : m_random(seed) {}

    void Run(int cases) {
        for (int i = 0; i < cases; ++i) {
            switch (Pick(4)) {
            case 0:
                Integer();
                break;
            case 1:
                Floating();
                break;
            case 2:
                Text();
                break;
            default:
                Character();
                break;
            }
            if (::testing::Test::HasFatalFailure())
                return;
        }
    }

private:
    unsigned Pick(unsigned n) {
        return std::uniform_int_distribution<unsigned>(0, n - 1)(m_random);
    }

    // Flags from `allowed`, a width and a precision, each maybe by '*'.
    std::string Field(const char* allowed, bool precision) {
        std::string field;
        m_stars.clear();
        for (const char* f = allowed; *f != 0; ++f)
            if (Pick(4) == 0)
                field += *f;
        switch (Pick(4)) {
        case 0:
            break;
        case 1:
            field += "*";
            m_stars.push_back(static_cast<int>(Pick(61)) - 30);
            break;
        default:
            field += std::to_string(Pick(40));
        }
        if (precision) {
            switch (Pick(4)) {
            case 0:
                break;
            case 1:
                field += ".*";
                m_stars.push_back(static_cast<int>(Pick(41)) - 5);
                break;
            case 2:
                field += ".";
                break;
            default:
                field += "." + std::to_string(Pick(30));
            }
        }
        return field;
    }

    template <typename... A>
    void Check(const std::string& ours, const std::string& theirs, A... a) {
        char expected[kRoom];
        int n = std::snprintf(expected, sizeof expected, theirs.c_str(), a...);
        ASSERT_GE(n, 0) << theirs;
        std::string reference(expected, static_cast<std::size_t>(n));
        ASSERT_EQ(F(ours.c_str(), a...), reference) << "format " << ours;
        ASSERT_EQ(U(ours.c_str(), a...), Widen(reference)) << "UTF-16 output, format " << ours;
    }

    template <typename T> void WithStars(const std::string& ours, const std::string& theirs, T v) {
        if (m_stars.empty())
            Check(ours, theirs, v);
        else if (m_stars.size() == 1)
            Check(ours, theirs, m_stars[0], v);
        else
            Check(ours, theirs, m_stars[0], m_stars[1], v);
    }

    long long Bits() {
        std::uint64_t v = m_random();
        switch (Pick(5)) {
        case 0:
            return static_cast<long long>(v % 200) - 100;
        case 1:
            return 0;
        case 2: {
            const long long edges[] = {INT_MIN, INT_MAX, -1, LLONG_MIN, LLONG_MAX, 255, 65535};
            return edges[Pick(7)];
        }
        default:
            return static_cast<long long>(v);
        }
    }

    void Integer() {
        const char conversions[] = "diuoxX";
        char conversion = conversions[Pick(6)];
        bool isSigned = conversion == 'd' || conversion == 'i';
        bool hex = conversion == 'x' || conversion == 'X' || conversion == 'o';
        std::string field = Field(isSigned ? "-+ 0" : (hex ? "-#0" : "-0"), true);
        long long v = Bits();
        switch (Pick(5)) {
        case 0: // "l" is the C library's plain int
            WithStars("%" + field + "l" + conversion, "%" + field + conversion,
                      static_cast<int>(v));
            break;
        case 1:
            WithStars("%" + field + "h" + conversion, "%" + field + "h" + conversion,
                      static_cast<int>(v));
            break;
        case 2:
            WithStars("%" + field + "hh" + conversion, "%" + field + "hh" + conversion,
                      static_cast<int>(v));
            break;
        case 3:
            WithStars("%" + field + (Pick(2) ? "ll" : "I64") + conversion,
                      "%" + field + "ll" + conversion, v);
            break;
        default:
            WithStars("%" + field + conversion, "%" + field + conversion, static_cast<int>(v));
        }
    }

    void Floating() {
        const char conversions[] = "eEfFgGaA";
        char conversion = conversions[Pick(8)];
        std::string field = Field("-+ #0", true);
        double v;
        switch (Pick(4)) {
        case 0: {
            std::uint64_t bits = m_random();
            std::memcpy(&v, &bits, sizeof v); // any pattern: NaNs, infinities, subnormals
            break;
        }
        case 1:
            v = (static_cast<double>(Pick(2000001)) - 1000000.0) / 1000.0;
            break;
        case 2: {
            const double edges[] = {0.0,    -0.0, 0.5,  9.5,
                                    99.999, 1e-5, 1e21, std::numeric_limits<double>::infinity()};
            v = edges[Pick(8)];
            break;
        }
        default:
            v = std::ldexp(static_cast<double>(m_random() % 100000),
                           static_cast<int>(Pick(120)) - 60);
        }
        // The C library's long double %a normalises differently; the value is the same.
        if (Pick(2) == 0 || conversion == 'a' || conversion == 'A')
            WithStars("%" + field + (Pick(2) ? "l" : "") + conversion, "%" + field + conversion, v);
        else
            WithStars("%" + field + "L" + conversion, "%" + field + "L" + conversion,
                      static_cast<long double>(v));
    }

    void Text() {
        std::string text;
        for (unsigned n = Pick(20); n > 0; --n)
            text += static_cast<char>(' ' + Pick(95));
        std::string field = Field("-", true);
        const char* length = Pick(2) ? "" : "h";
        WithStars(std::string("%") + field + length + "s", "%" + field + "s", text.c_str());
    }

    void Character() {
        std::string field = Field("-", false);
        WithStars("%" + field + "c", "%" + field + "c", static_cast<int>(' ' + Pick(95)));
    }

    std::mt19937_64 m_random;
    std::vector<int> m_stars;
};

TEST(FormatDifferential, AgreesWithTheCLibrary) {
    Differential(20240611).Run(20000);
}

// Writes "ab" + "cde" as five units through the engine with the given size.
int Legacy(char* buffer, std::size_t size, ...) {
    va_list arguments;
    va_start(arguments, size);
    int n = vorn::platform::FormatLegacyV(buffer, size, "ab%s", arguments);
    va_end(arguments);
    return n;
}

TEST(FormatTermination, LegacyAroundTheSize) {
    struct Case {
        std::size_t size;
        int result;
        const char* content; // the buffer afterwards, '#' for untouched
    };
    const Case cases[] = {
        {6, 5, "abcde\0#"}, {5, 5, "abcde##"}, {4, -1, "abcd###"}, {0, -1, "#######"}};
    for (const Case& c : cases) {
        char buffer[7];
        std::memset(buffer, '#', sizeof buffer);
        EXPECT_EQ(Legacy(buffer, c.size, "cde"), c.result) << c.size;
        EXPECT_EQ(std::string(buffer, sizeof buffer), std::string(c.content, sizeof buffer))
            << c.size;

        unsigned short wide[7], narrowFormat[7];
        std::fill(wide, wide + 7, '#');
        std::fill(narrowFormat, narrowFormat + 7, '#');
        EXPECT_EQ(ZK::snuprintf(wide, c.size, W(u"ab%s").c_str(), "cde"), c.result);
        EXPECT_EQ(ZK::snuprintf(narrowFormat, c.size, "ab%ls", W(u"cde").c_str()), c.result);
        EXPECT_EQ(WString(wide, 7), Widen(std::string(c.content, sizeof buffer)));
        EXPECT_EQ(WString(narrowFormat, 7), Widen(std::string(c.content, sizeof buffer)));
    }
    EXPECT_EQ(Legacy(nullptr, 10, "x"), -1);
}

TEST(FormatTermination, C99AlwaysTerminatesAndCounts) {
    for (std::size_t size : {6u, 5u, 4u, 1u}) {
        char buffer[7];
        std::memset(buffer, '#', sizeof buffer);
        EXPECT_EQ(vorn::platform::Format(buffer, size, "ab%s", "cde"), 5);
        EXPECT_EQ(std::string(buffer), std::string("abcde").substr(0, size - 1)) << size;
        EXPECT_EQ(buffer[size], '#');
    }
    EXPECT_EQ(vorn::platform::Format(nullptr, 0, "%d", 12345), 5);
    EXPECT_EQ(vorn::platform::Format(nullptr, 99, "%d", 12345), 5);
}

// A retry with a bigger buffer reuses the same argument list, as callers written for a platform
// with pointer-like va_lists do.
std::string Retry(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    char small[4];
    int first = vorn::platform::FormatLegacyV(small, sizeof small, format, arguments);
    char big[64];
    int second = vorn::platform::FormatLegacyV(big, sizeof big, format, arguments);
    va_end(arguments);
    EXPECT_EQ(first, -1);
    return std::string(big, second < 0 ? 0 : static_cast<std::size_t>(second));
}

TEST(FormatTermination, ArgumentsSurviveARetry) {
    EXPECT_EQ(Retry("%d-%s-%ls", 1234, "five", W(u"six").c_str()), "1234-five-six");
}

TEST(FormatDebugOutput, DebugPrintfUsesTheEngine) {
    vorn::test::DebugCapture capture;
    DBPrintf("%ld %lu %ls%s", -7, 0x100000003ULL, W(u"\u00e9").c_str(), ZK::EOL);
    EXPECT_EQ(capture.Text(), "-7 3 \xc3\xa9\n");
    capture.Clear();
    std::string big(1000, 'q');
    DBPrintf("%s%lu", big.c_str(), 0x100000001ULL);
    EXPECT_EQ(capture.Text(), big + "1");
}

} // namespace

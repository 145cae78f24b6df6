#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <random>
#include <string>

#include "platform/Debug.h"
#include "platform/Format.h"
#include "support/DebugCapture.h"
#include "support/FormatDifferential.h"
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

// UTF-16 output, from a narrow or a UTF-16 format.
template <typename Unit> WString U(const Unit* format, ...) {
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

TEST(FormatLengths, WindowsWidths) {
    EXPECT_EQ(F("%ld|%li|%lx", -5, INT_MIN, -1), "-5|-2147483648|ffffffff");
    // Only the low half of a 64-bit argument is read, and the next argument is still found.
    EXPECT_EQ(F("%lu %d", 0x1234567890ULL, 7), "878082192 7");
    EXPECT_EQ(U("%ld/%lu/%I64d", -1, 0xFFFFFFFF00000001ULL, 1LL << 33), W(u"-1/1/8589934592"));
    EXPECT_EQ(F("%hd %hu %hhd", 70000, -1, 200), "4464 65535 -56");
    EXPECT_EQ(F("%lld %I64u %I64X", LLONG_MIN, ULLONG_MAX, 0xDEADBEEFCAFEULL),
              "-9223372036854775808 18446744073709551615 DEADBEEFCAFE");
    EXPECT_EQ(F("%zu %Id %jd %I32u", SIZE_MAX, std::ptrdiff_t{-9}, INTMAX_MIN, 4000000000u),
              "18446744073709551615 -9 -9223372036854775808 4000000000");
}

TEST(FormatWideText, Utf16ToNarrowIsUtf8) {
    WString text = W(u"a\u00e9\u20ac\U0001F600");
    EXPECT_EQ(F("%S|%wc", text.c_str(), 0xE9), "a\xc3\xa9\xe2\x82\xac\xf0\x9f\x98\x80|\xc3\xa9");
    const unsigned short lone[] = {0xD800, 'a', 0xDC00, 0xDBFF, 0};
    EXPECT_EQ(F("%ls", lone), "\xef\xbf\xbd\x61\xef\xbf\xbd\xef\xbf\xbd");
    EXPECT_EQ(F("%lc%lc%lc", 0x20AC, 0xD800, 'x'), "\xe2\x82\xac\xef\xbf\xbdx");
    // Width and precision count bytes, and precision never cuts a character.
    EXPECT_EQ(F("[%5ls|%-4lc]", W(u"\u00e9").c_str(), 0xE9), "[   \xc3\xa9|\xc3\xa9  ]");
    EXPECT_EQ(F("%.3ls|%.2ls", W(u"a\u00e9\u20ac").c_str(), W(u"a\u20ac").c_str()), "a\xc3\xa9|a");
}

TEST(FormatWideText, NarrowToUtf16DecodesUtf8) {
    EXPECT_EQ(U("%s%c%c", "\xc3\xa9\xf0\x9f\x98\x80", 'A', 0xE9), W(u"\u00e9\U0001F600A\uFFFD"));
    // Each ill-formed piece is one U+FFFD: bad leads, a cut sequence, overlongs, surrogates.
    EXPECT_EQ(U("%s|%s", "a\xff\x62\xe2\x82\x63", "\xc0\xaf\xe0\x80\x80"),
              W(u"a\uFFFDb\uFFFDc|\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD"));
    EXPECT_EQ(U("%s|%s", "\xed\xa0\x80", "\xf4\x90\x80\x80"),
              W(u"\uFFFD\uFFFD\uFFFD|\uFFFD\uFFFD\uFFFD\uFFFD"));
    // The narrow format's own text is UTF-8 too; units are counted and a pair is never cut.
    EXPECT_EQ(U("\xc3\xa9 %d \xe2\x82\xac", 5), W(u"\u00e9 5 \u20ac"));
    const char* pair = "\xf0\x9f\x98\x80";
    EXPECT_EQ(U("[%.1s|%.2s|%4s]", pair, pair, pair), W(u"[|\U0001F600|  \U0001F600]"));
}

TEST(FormatWideText, Utf16FormatKeepsUnits) {
    const unsigned short lone[] = {0xDC00, 'z', 0};
    EXPECT_EQ(U("%ls%lc", lone, 0xD800), WString(lone) + WString(1, 0xD800));
    EXPECT_EQ(
        U(W(u"%ls=%d \u20ac %s").c_str(), W(u"\u043a\u043b\u044e\u0447").c_str(), 3, "\xc3\xa9"),
        W(u"\u043a\u043b\u044e\u0447=3 \u20ac \u00e9"));
    EXPECT_EQ(U(W(u"%-3lc|%.2ls|%5.1f").c_str(), 0x3A9, W(u"\u03a9\u03a9\u03a9").c_str(), 2.25),
              W(u"\u03a9  |\u03a9\u03a9|  2.2"));
}

TEST(FormatOwnRules, RefusedUnknownAndDangling) {
    int untouched = 42;
    EXPECT_EQ(F("a%nb", &untouched), "anb");
    EXPECT_EQ(untouched, 42);
    EXPECT_EQ(F("%y|%-5y|%ly|%d", 3), "y|y|y|3");
    EXPECT_EQ(U("%\xc3\xa9"), W(u"\u00e9"));
    EXPECT_EQ(F("100%% %5%|abc%"), "100% %|abc");
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
    EXPECT_EQ(F("[%*d|%-*d|%*d|%.*d|%.*d|%*.*f]", 4, 7, 3, 8, -3, 9, -1, 5, 3, 5, -6, 1, 0.5),
              "[   7|8  |9  |5|005|0.5   ]");
    // A field too wide for an int result is refused, and the buffer still ends cleanly.
    char buffer[8] = "xxxxxxx";
    EXPECT_EQ(vorn::platform::Format(buffer, sizeof buffer, "%2147483647d%d", 1, 1), -1);
    EXPECT_EQ(std::strlen(buffer), 7u);
    EXPECT_EQ(vorn::platform::Format(buffer, sizeof buffer, "%*d", INT_MIN, 1), -1);
}

TEST(FormatOwnRules, PrecisionBeyondTheDelegatedDigits) {
    const char* formats[] = {"%.1200f", "%.1500e",      "%#.1400g",    "%.1400g",
                             "%.1300a", "%-1500.1200f", "%01400.1150e"};
    for (const char* format : formats) {
        for (double value : {0.1, 5e-324, 1e308, -2.5, 0.0, -HUGE_VAL}) {
            char expected[kRoom];
            int n = std::snprintf(expected, sizeof expected, format, value);
            EXPECT_EQ(F(format, value), std::string(expected, static_cast<std::size_t>(n)))
                << format << " " << value;
        }
    }
}

// The engine against the C library wherever the two agree, in narrow and UTF-16 output alike.
TEST(FormatDifferential, AgreesWithTheCLibrary) {
    vorn::test::FormatDifferential(20240611, [](const std::string& format, auto value,
                                                const std::string& reference) {
        ASSERT_EQ(F(format.c_str(), value), reference) << "format " << format;
        ASSERT_EQ(U(format.c_str(), value), Widen(reference)) << "UTF-16 output, format " << format;
    }).Run(20000);
}

// Formats twice from one argument list, as a caller retrying after a short buffer does: the
// engine must leave the list as it found it.
int Legacy(char* buffer, std::size_t size, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    char scratch[2];
    vorn::platform::FormatLegacyV(scratch, sizeof scratch, format, arguments);
    int n = vorn::platform::FormatLegacyV(buffer, size, format, arguments);
    va_end(arguments);
    return n;
}

TEST(FormatTermination, LegacyAroundTheSize) {
    struct Case {
        std::size_t size;
        int result;
        const char* content; // the buffer afterwards, '#' for untouched
    } const cases[] = {
        {6, 5, "abcde\0#"}, {5, 5, "abcde##"}, {4, -1, "abcd###"}, {0, -1, "#######"}};
    for (const Case& c : cases) {
        const std::string content(c.content, 7);
        char narrow[7];
        unsigned short wide[7], fromNarrow[7];
        std::fill(narrow, narrow + 7, '#');
        std::fill(wide, wide + 7, '#');
        std::fill(fromNarrow, fromNarrow + 7, '#');
        EXPECT_EQ(Legacy(narrow, c.size, "ab%s%c", "cd", 'e'), c.result);
        EXPECT_EQ(ZK::snuprintf(wide, c.size, W(u"ab%s").c_str(), "cde"), c.result);
        EXPECT_EQ(ZK::snuprintf(fromNarrow, c.size, "ab%ls", W(u"cde").c_str()), c.result);
        EXPECT_EQ(std::string(narrow, 7), content) << c.size;
        EXPECT_EQ(WString(wide, 7), Widen(content)) << c.size;
        EXPECT_EQ(WString(fromNarrow, 7), Widen(content)) << c.size;
    }
    EXPECT_EQ(Legacy(nullptr, 10, "x"), -1);
}

TEST(FormatTermination, C99AlwaysTerminatesAndCounts) {
    for (std::size_t size : {6u, 5u, 4u, 1u}) {
        char buffer[8] = "#######";
        EXPECT_EQ(vorn::platform::Format(buffer, size, "ab%s", "cde"), 5);
        EXPECT_EQ(std::string(buffer), std::string("abcde").substr(0, size - 1)) << size;
        EXPECT_EQ(buffer[size], '#');
    }
    EXPECT_EQ(vorn::platform::Format(nullptr, 99, "%d", 12345), 5);
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

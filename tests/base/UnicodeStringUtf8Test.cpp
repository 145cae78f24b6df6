// CUnicodeString's own UTF-8 rules, case by case and against ICU over random text.
#include <gtest/gtest.h>

#include <unicode/ustring.h>

#include <memory>
#include <random>
#include <string>

#include <vorn/base/MemoryException.h>
#include <vorn/base/NullReferenceException.h>
#include <vorn/base/UnicodeString.h>

#include "support/Throws.h"
#include "support/Utf16.h"

namespace {

using vorn::base::CString;
using vorn::base::CUnicodeString;
using vorn::test::W;
using vorn::test::WString;

WString Decoded(const char* text, int length) {
    CUnicodeString s;
    s.FromUTF8(text, length);
    return WString(static_cast<const unsigned short*>(s), s.GetLength());
}

std::string Encoded(const WString& units) {
    CString bytes = CUnicodeString(units.c_str(), static_cast<unsigned int>(units.size())).ToUTF8();
    return std::string(static_cast<const char*>(bytes), bytes.GetLength());
}

TEST(UnicodeStringUtf8, FromUTF8StopsSilentlyAtTheFirstFlaw) {
    EXPECT_EQ(Decoded("a\xF0\x90\x80\x80", -1), WString({'a', 0xD800, 0xDC00}));
    EXPECT_EQ(Decoded("h\xC3\xA9\xE2\x82\xAC\xF4\x8F\xBF\xBF", -1),
              WString({'h', 0xE9, 0x20AC, 0xDBFF, 0xDFFF}));
    EXPECT_EQ(Decoded("ab\xC3", -1), W(u"ab"));
    EXPECT_EQ(Decoded("\x80x", -1), W(u""));
    EXPECT_EQ(Decoded("ab\xE2\x82z", -1), W(u"ab"));
    EXPECT_EQ(Decoded("a\xF8\x88\x80\x80\x80", -1), W(u"a"));
    // No check for overlong forms, encoded surrogates or values past U+10FFFF.
    EXPECT_EQ(Decoded("\xC0\xAF\xED\xA0\x80", -1), WString({'/', 0xD800}));
    EXPECT_EQ(Decoded("\xF0\x80\x80\x80", -1), WString({0xD7C0, 0xDC00}));
    EXPECT_EQ(Decoded("\xF7\xBF\xBF\xBF", -1), WString({0xDFBF, 0xDFFF}));
    // An explicit length stops there, also inside a sequence, and reads a zero byte as a unit.
    EXPECT_EQ(Decoded("a\xC3\xA9", 2), W(u"a"));
    EXPECT_EQ(Decoded("a\xF0\x90\x80\x80", 4), W(u"a"));
    EXPECT_EQ(Decoded("a\0b", 3), WString({'a', 0, 'b'}));
    // Decoding replaces the text of this string only.
    CUnicodeString s(W(u"old").c_str()), shared(s);
    s.FromUTF8("", -1);
    EXPECT_TRUE(s.IsEmpty());
    EXPECT_EQ(shared.GetLength(), 3u);
    EXPECT_THROW(s.FromUTF8(nullptr, 3), vorn::base::CNullReferenceException);
}

TEST(UnicodeStringUtf8, ToUTF8WritesSurrogatesAsQuestionMarks) {
    CUnicodeString s(WString({'a', 0xD800, 0xDC00}).c_str());
    EXPECT_EQ(s.ToUTF8(nullptr, -1), 3);
    EXPECT_STREQ(s.ToUTF8(), "a?");
    char buffer[8] = "#######";
    EXPECT_EQ(s.ToUTF8(buffer, 2), -1);
    EXPECT_STREQ(buffer, "#######");
    EXPECT_EQ(s.ToUTF8(buffer, 3), 2);
    EXPECT_STREQ(buffer, "a?");
    // Empty strings write and count nothing, not even a terminator.
    EXPECT_EQ(CUnicodeString().ToUTF8(nullptr, -1), 0);
    EXPECT_EQ(CUnicodeString(W(u"").c_str()).ToUTF8(buffer, 8), 0);
    EXPECT_STREQ(buffer, "a?");
    // A lone low surrogate is a three-byte form; a high one takes whatever follows with it.
    EXPECT_EQ(Encoded({0xDC00}), "\xED\xB0\x80");
    EXPECT_EQ(Encoded({0xD800, 'b', 'c'}), "?c");
    EXPECT_EQ(Encoded({0x7F, 0x80, 0x7FF, 0x800, 0xFFFF}),
              "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF");
    // A stored zero is written as a byte; the CString form ends there.
    CUnicodeString zero;
    zero.FromUTF8("a\0b", 3);
    EXPECT_EQ(zero.ToUTF8(buffer, 8), 3);
    EXPECT_EQ(std::string(buffer, 4), std::string("a\0b\0", 4));
    EXPECT_STREQ(zero.ToUTF8(), "a");
}

TEST(UnicodeStringUtf8, HighSurrogateAtTheEndNeverWritesPastTheSize) {
    // Two '?' where one was counted; with no room for the second, it is left out.
    CUnicodeString high(WString({'a', 0xDBFF}).c_str());
    EXPECT_EQ(high.ToUTF8(nullptr, -1), 3);
    EXPECT_STREQ(high.ToUTF8(), "a??");
    std::unique_ptr<char[]> exact(new char[3]);
    EXPECT_EQ(high.ToUTF8(exact.get(), 3), 2);
    EXPECT_EQ(std::string(exact.get(), 3), std::string("a?\0", 3));
    char roomy[8];
    EXPECT_EQ(high.ToUTF8(roomy, 8), 2);
    EXPECT_STREQ(roomy, "a??");
    EXPECT_EQ(high.ToUTF8(nullptr, 8), -1);

    CUnicodeString big(WString(2000, 'x').c_str());
    vorn::test::ExpectNoMemory([&] { big.ToUTF8(); }, "vorn/base/String");
}

// A random unit that isn't a surrogate or zero, spread over the one-, two- and three-byte forms.
unsigned short RandomUnit(std::mt19937& random) {
    std::uniform_int_distribution<int> kind(0, 3), ascii(1, 0x7F), two(0x80, 0x7FF),
        three(0x800, 0xF7FF);
    const int k = kind(random);
    const int v = k == 0 ? ascii(random) : k == 1 ? two(random) : three(random);
    return static_cast<unsigned short>(v < 0xD800 || k < 2 ? v : v + 0x800);
}

std::string IcuUtf8(const WString& units) {
    UErrorCode error = U_ZERO_ERROR;
    std::string out(units.size() * 3, '\0');
    int32_t length = 0;
    u_strToUTF8(out.data(), static_cast<int32_t>(out.size()), &length,
                reinterpret_cast<const UChar*>(units.data()), static_cast<int32_t>(units.size()),
                &error);
    EXPECT_FALSE(U_FAILURE(error));
    out.resize(static_cast<std::size_t>(length));
    return out;
}

TEST(UnicodeStringUtf8, MatchesIcuAndRoundTripsWithoutSurrogates) {
    std::mt19937 random(20240611);
    std::uniform_int_distribution<int> size(0, 300);
    for (int round = 0; round < 10000; ++round) {
        WString units(static_cast<std::size_t>(size(random)), 0);
        for (auto& u : units)
            u = RandomUnit(random);
        const std::string expected = IcuUtf8(units);
        ASSERT_EQ(Encoded(units), expected) << "round " << round;
        ASSERT_EQ(Decoded(expected.data(), static_cast<int>(expected.size())), units);
        ASSERT_EQ(Decoded(expected.c_str(), -1), units);
    }
}

TEST(UnicodeStringUtf8, RandomBytesAreReadOnlyWithinTheirLength) {
    // Each input lives in a block of exactly its length, so the address sanitizer catches any
    // read past it; the result is the prefix of whole sequences by the lead bytes' lengths.
    std::mt19937 random(99);
    std::uniform_int_distribution<int> size(0, 64), byte(0, 255), pick(0, 9);
    for (int round = 0; round < 20000; ++round) {
        const auto n = static_cast<std::size_t>(size(random));
        std::unique_ptr<unsigned char[]> bytes(new unsigned char[n == 0 ? 1 : n]);
        for (std::size_t i = 0; i < n; ++i) {
            // Continuation and lead bytes often enough to make and break sequences.
            const int p = pick(random), b = byte(random);
            bytes[i] = static_cast<unsigned char>(p < 4   ? 0x80 | (b & 0x3F)
                                                  : p < 6 ? 0xC0 | (b & 0x37)
                                                          : b);
        }
        WString expected;
        for (std::size_t i = 0; i < n;) {
            const unsigned int b = bytes[i];
            const std::size_t k = b < 0x80   ? 1
                                  : b < 0xC0 ? 0
                                  : b < 0xE0 ? 2
                                  : b < 0xF0 ? 3
                                  : b < 0xF8 ? 4
                                             : 0;
            unsigned int v = k == 1 ? b : b & (0x7Fu >> k);
            std::size_t j = 1;
            for (; k != 0 && j < k && i + j < n && (bytes[i + j] & 0xC0) == 0x80; ++j)
                v = (v << 6) | (bytes[i + j] & 0x3F);
            if (k == 0 || j < k)
                break;
            if (k == 4) {
                const int w = static_cast<int>(v) - 0x10000;
                expected += {static_cast<unsigned short>(0xD800 + w / 1024),
                             static_cast<unsigned short>(0xDC00 + w % 1024)};
            } else {
                expected += static_cast<unsigned short>(v);
            }
            i += k;
        }
        ASSERT_EQ(Decoded(reinterpret_cast<const char*>(bytes.get()), static_cast<int>(n)),
                  expected)
            << "round " << round;
    }
}

} // namespace

// CUnicodeString's own UTF-8 rules, case by case and against ICU over random text.
#include <gtest/gtest.h>

#include <unicode/ustring.h>
#include <unicode/utf8.h>

#include <memory>
#include <random>
#include <string>

#include <vorn/base/MemoryException.h>
#include <vorn/base/NullReferenceException.h>
#include <vorn/base/String.h>
#include <vorn/base/UnicodeString.h>

#include "support/AllocFailure.h"
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
    EXPECT_EQ(Decoded("\xF4\x8F\xBF\xBF", -1), WString({0xDBFF, 0xDFFF}));
    EXPECT_EQ(Decoded("h\xC3\xA9\xE2\x82\xAC", -1), W(u"h\u00e9\u20ac"));
    EXPECT_EQ(Decoded("ab\xC3", -1), W(u"ab"));
    EXPECT_EQ(Decoded("\x80x", -1), W(u""));
    EXPECT_EQ(Decoded("ab\xE2\x82z", -1), W(u"ab"));
    EXPECT_EQ(Decoded("a\xF8\x88\x80\x80\x80", -1), W(u"a"));
    // No check for overlong forms, encoded surrogates or values past U+10FFFF.
    EXPECT_EQ(Decoded("\xC0\xAF", -1), W(u"/"));
    EXPECT_EQ(Decoded("\xED\xA0\x80", -1), WString({0xD800}));
    EXPECT_EQ(Decoded("\xF0\x80\x80\x80", -1), WString({0xD7C0, 0xDC00}));
    EXPECT_EQ(Decoded("\xF7\xBF\xBF\xBF", -1), WString({0xDFBF, 0xDFFF}));
    // An explicit length stops there, also inside a sequence, and reads a zero byte as a unit.
    EXPECT_EQ(Decoded("abc", 2), W(u"ab"));
    EXPECT_EQ(Decoded("a\xC3\xA9", 2), W(u"a"));
    EXPECT_EQ(Decoded("a\xF0\x90\x80\x80", 4), W(u"a"));
    EXPECT_EQ(Decoded("a\0b", 3), WString({'a', 0, 'b'}));
    EXPECT_EQ(Decoded("abc", 0), W(u""));

    // Decoding replaces the text, and an empty input leaves a buffer of length 0.
    CUnicodeString s(W(u"old").c_str());
    CUnicodeString shared(s);
    s.FromUTF8("", -1);
    EXPECT_TRUE(s.IsEmpty());
    EXPECT_EQ(shared.GetLength(), 3u);
    EXPECT_THROW(s.FromUTF8(nullptr, 3), vorn::base::CNullReferenceException);
}

TEST(UnicodeStringUtf8, ToUTF8CountsAndWritesSurrogatesAsQuestionMarks) {
    const WString pair = {'a', 0xD800, 0xDC00};
    CUnicodeString s(pair.c_str(), 3);
    EXPECT_EQ(s.ToUTF8(nullptr, -1), 3);
    EXPECT_STREQ(s.ToUTF8(), "a?");
    char buffer[8] = "#######";
    EXPECT_EQ(s.ToUTF8(buffer, 2), -1);
    EXPECT_STREQ(buffer, "#######");
    EXPECT_EQ(s.ToUTF8(buffer, 3), 2);
    EXPECT_STREQ(buffer, "a?");

    // Empty strings write nothing and count nothing, not even a terminator.
    CUnicodeString none;
    EXPECT_EQ(none.ToUTF8(nullptr, -1), 0);
    EXPECT_EQ(none.ToUTF8(buffer, 8), 0);
    EXPECT_STREQ(buffer, "a?");
    EXPECT_TRUE(none.ToUTF8().IsEmpty());
    EXPECT_TRUE(CUnicodeString(static_cast<const unsigned short*>(nullptr)).ToUTF8().IsEmpty());

    // A lone low surrogate is a three-byte form; a high one eats whatever follows it.
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
    // A high surrogate at the end writes two '?' where one was counted; with no room for the
    // second, it is left out rather than written past the target.
    CUnicodeString high(WString({'a', 0xDBFF}).c_str());
    EXPECT_EQ(high.ToUTF8(nullptr, -1), 3);
    EXPECT_STREQ(high.ToUTF8(), "a??");
    std::unique_ptr<char[]> exact(new char[3]);
    EXPECT_EQ(high.ToUTF8(exact.get(), 3), 2);
    EXPECT_EQ(std::string(exact.get(), 3), std::string("a?\0", 3));
    EXPECT_EQ(high.ToUTF8(buffer, 8), 2);
    EXPECT_STREQ(buffer, "a??");
    EXPECT_EQ(high.ToUTF8(nullptr, 8), -1);
}

TEST(UnicodeStringUtf8, ToUTF8WithoutMemoryFailsAsTheStringDoes) {
    CUnicodeString big(WString(2000, 'x').c_str());
    try {
        vorn::test::FailAllocation fail(1);
        big.ToUTF8();
        ADD_FAILURE() << "no exception";
    } catch (const vorn::base::CMemoryException& e) {
        EXPECT_STREQ(e.GetSourceFile(), "vorn/base/String");
    }
    EXPECT_EQ(big.ToUTF8().GetLength(), 2000u);
}

// Random units from the whole plane but the surrogates, zero excluded.
unsigned short RandomUnit(std::mt19937& random) {
    std::uniform_int_distribution<int> kind(0, 3), ascii(1, 0x7F), two(0x80, 0x7FF),
        three(0x800, 0xFFFF - 0x800);
    switch (kind(random)) {
    case 0:
        return static_cast<unsigned short>(ascii(random));
    case 1:
        return static_cast<unsigned short>(two(random));
    default: {
        int v = three(random);
        return static_cast<unsigned short>(v < 0xD800 ? v : v + 0x800);
    }
    }
}

std::string IcuUtf8(const WString& units) {
    UErrorCode error = U_ZERO_ERROR;
    int32_t needed = 0;
    const auto* source = reinterpret_cast<const UChar*>(units.data());
    u_strToUTF8(nullptr, 0, &needed, source, static_cast<int32_t>(units.size()), &error);
    std::string out(static_cast<std::size_t>(needed), '\0');
    error = U_ZERO_ERROR;
    u_strToUTF8(out.data(), needed, &needed, source, static_cast<int32_t>(units.size()), &error);
    EXPECT_FALSE(U_FAILURE(error));
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

TEST(UnicodeStringUtf8, SurrogatePairsComeOutAsOneQuestionMarkEach) {
    std::mt19937 random(7);
    std::uniform_int_distribution<int> size(1, 200), coin(0, 3), high(0xD800, 0xDBFF),
        low(0xDC00, 0xDFFF), plane(0x10000, 0x10FFFF);
    for (int round = 0; round < 2000; ++round) {
        WString units;
        std::string expected;
        const int n = size(random);
        for (int i = 0; i < n; ++i) {
            if (coin(random) == 0) {
                units.push_back(static_cast<unsigned short>(high(random)));
                units.push_back(static_cast<unsigned short>(low(random)));
                expected += '?';
            } else {
                const WString one(1, RandomUnit(random));
                units += one;
                expected += IcuUtf8(one);
            }
        }
        ASSERT_EQ(Encoded(units), expected) << "round " << round;
        CUnicodeString s(units.c_str(), static_cast<unsigned int>(units.size()));
        ASSERT_EQ(s.ToUTF8(nullptr, -1), static_cast<int>(expected.size()) + 1);
        // The way back decodes four-byte forms into pairs.
        UChar32 c = plane(random);
        char four[4];
        int32_t at = 0;
        U8_APPEND_UNSAFE(four, at, c);
        const WString pairBack = Decoded(four, 4);
        ASSERT_EQ(pairBack.size(), 2u);
        ASSERT_EQ((pairBack[0] - 0xD800) * 1024 + (pairBack[1] - 0xDC00) + 0x10000, c);
    }
}

TEST(UnicodeStringUtf8, RandomBytesAreReadOnlyWithinTheirLength) {
    // Each input lives in a block of exactly its length, so a read past it is caught by the
    // address sanitizer; the result must be the well-formed prefix that a plain decoder finds.
    std::mt19937 random(99);
    std::uniform_int_distribution<int> size(0, 64), byte(0, 255), biased(0, 9);
    for (int round = 0; round < 20000; ++round) {
        const auto n = static_cast<std::size_t>(size(random));
        std::unique_ptr<char[]> bytes(new char[n == 0 ? 1 : n]);
        for (std::size_t i = 0; i < n; ++i) {
            // Continuation bytes and lead bytes often enough to form and break sequences.
            const int pick = biased(random);
            const int b = pick < 4   ? 0x80 + byte(random) % 0x40
                          : pick < 6 ? 0xC0 + byte(random) % 0x38
                                     : byte(random);
            bytes[i] = static_cast<char>(b);
        }
        CUnicodeString s;
        s.FromUTF8(bytes.get(), static_cast<int>(n));
        // Reference: the longest prefix of whole sequences by the lead byte's announced length.
        WString expected;
        for (std::size_t i = 0; i < n;) {
            const auto b = static_cast<unsigned char>(bytes[i]);
            const std::size_t k = b < 0x80             ? 1
                                  : (b & 0xE0) == 0xC0 ? 2
                                  : (b & 0xF0) == 0xE0 ? 3
                                  : (b & 0xF8) == 0xF0 ? 4
                                                       : 0;
            if (k == 0 || i + k > n)
                break;
            unsigned int v = k == 1 ? b : b & (0xFF >> (k + 1));
            bool ok = true;
            for (std::size_t j = 1; j < k && ok; ++j) {
                const auto t = static_cast<unsigned char>(bytes[i + j]);
                ok = (t & 0xC0) == 0x80;
                v = (v << 6) | (t & 0x3F);
            }
            if (!ok)
                break;
            if (k == 4) {
                const int w = static_cast<int>(v) - 0x10000;
                expected.push_back(static_cast<unsigned short>(0xD800 + w / 1024));
                expected.push_back(static_cast<unsigned short>(0xDC00 + w % 1024));
            } else {
                expected.push_back(static_cast<unsigned short>(v));
            }
            i += k;
        }
        ASSERT_EQ(WString(static_cast<const unsigned short*>(s), s.GetLength()), expected)
            << "round " << round;
    }
}

} // namespace

#include <gtest/gtest.h>

#include <algorithm>

#include "platform/UniText.h"
#include "support/Utf16.h"

namespace {

using vorn::test::Units;
using vorn::test::W;
using vorn::test::WString;

TEST(UniTextCopy, LengthCopyConcatenate) {
    EXPECT_EQ(ZK::ucslen(ZK::EmptyUTF16), 0u);
    EXPECT_EQ(ZK::ucslen(W(u"\u00e9t\U0001F600").c_str()), 4u);
    unsigned short buffer[8];
    std::fill(buffer, buffer + 8, 0xAAAA);
    const unsigned short tail[] = {0xD800, 'z', 0};
    EXPECT_EQ(ZK::ucscat(ZK::ucscpy(buffer, W(u"ab\u0416").c_str()), tail), buffer);
    EXPECT_EQ(WString(buffer, 7), W(u"ab\u0416") + WString({0xD800, 'z', 0, 0xAAAA}));

    // At most `count` units, unterminated when the source is longer, zero-filled when shorter.
    std::fill(buffer, buffer + 8, 0xAAAA);
    EXPECT_EQ(ZK::ucsncpy(buffer, W(u"abcdef").c_str(), 3), buffer);
    EXPECT_EQ(WString(buffer, 4), WString({'a', 'b', 'c', 0xAAAA}));
    ZK::ucsncpy(buffer, W(u"xy").c_str(), 5);
    EXPECT_EQ(WString(buffer, 6), WString({'x', 'y', 0, 0, 0, 0xAAAA}));
}

TEST(UniTextCompare, OrderIsByUnitValue) {
    EXPECT_LT(ZK::ucscmp(W(u"ab").c_str(), W(u"abc").c_str()), 0);
    EXPECT_GT(ZK::ucscmp(W(u"a").c_str(), W(u"B").c_str()), 0);
    // A surrogate pair sorts below U+E000 here, though its character lies above it.
    EXPECT_LT(ZK::ucscmp(W(u"\U00010000").c_str(), W(u"\uE000").c_str()), 0);
    EXPECT_EQ(ZK::ucsncmp(W(u"abcX").c_str(), W(u"abcY").c_str(), 3), 0);
    EXPECT_LT(ZK::ucsncmp(W(u"abcX").c_str(), W(u"abcY").c_str(), 4), 0);
    EXPECT_EQ(ZK::ucsncmp(W(u"a").c_str(), W(u"a").c_str(), 10), 0);
    EXPECT_EQ(ZK::ucsncmp(W(u"x").c_str(), W(u"y").c_str(), 0), 0);
}

TEST(UniTextCompare, IgnoringCaseFoldsEachUnit) {
    EXPECT_EQ(ZK::ucsicmp(W(u"\u00c9COLE").c_str(), W(u"\u00e9cole").c_str()), 0);
    EXPECT_EQ(ZK::ucsicmp(W(u"\u041f\u0420\u0418").c_str(), W(u"\u043f\u0440\u0438").c_str()), 0);
    // Final sigma and capital sigma share a fold; dotted capital I has no simple one.
    EXPECT_EQ(ZK::ucsicmp(W(u"\u03c2").c_str(), W(u"\u03a3").c_str()), 0);
    EXPECT_NE(ZK::ucsicmp(W(u"\u0130").c_str(), W(u"i").c_str()), 0);
    EXPECT_NE(ZK::ucsicmp(W(u"stra\u00dfe").c_str(), W(u"STRASSE").c_str()), 0);
    // Folded values order the result: 'a' before 'B'.
    EXPECT_LT(ZK::ucsicmp(W(u"a").c_str(), W(u"B").c_str()), 0);
    EXPECT_LT(ZK::ucsicmp(W(u"AB").c_str(), W(u"abc").c_str()), 0);
    // Surrogates are units, not characters: these two Deseret letters don't match.
    EXPECT_NE(ZK::ucsicmp(W(u"\U00010400").c_str(), W(u"\U00010428").c_str()), 0);
    EXPECT_EQ(ZK::ucsnicmp(W(u"\u00c0bcX").c_str(), W(u"\u00e0BCy").c_str(), 3), 0);
    EXPECT_LT(ZK::ucsnicmp(W(u"\u00c0bcX").c_str(), W(u"\u00e0BCy").c_str(), 4), 0);
}

TEST(UniTextSearch, CharactersAndSubstrings) {
    WString text = W(u"aaab\u00e9aab");
    unsigned short* t = &text[0];
    EXPECT_EQ(ZK::ucschr(t, 'b'), t + 3);
    EXPECT_EQ(ZK::ucsrchr(static_cast<const unsigned short*>(t), 'b'), t + 7);
    EXPECT_EQ(ZK::ucschr(t, 0), t + 8);
    EXPECT_EQ(ZK::ucsrchr(t, 0), t + 8);
    EXPECT_EQ(ZK::ucsrchr(t, 'z'), nullptr);
    EXPECT_EQ(ZK::ucsstr(t, W(u"aab").c_str()), t + 1);
    EXPECT_EQ(ZK::ucsstr(static_cast<const unsigned short*>(t), W(u"b\u00e9").c_str()), t + 3);
    EXPECT_EQ(ZK::ucsstr(t, ZK::EmptyUTF16), t);
    EXPECT_EQ(ZK::ucsstr(t, W(u"aabx").c_str()), nullptr);
}

TEST(UniTextCase, UpperLowerPerUnit) {
    WString text = W(u"stra\u00dfe \u01c6 \u00ff \u00b5 \u0439 \U00010428");
    EXPECT_EQ(ZK::ucsupr(&text[0]), &text[0]);
    // Sharp s has no single-unit capital; the Deseret pair is left alone.
    EXPECT_EQ(text, W(u"STRA\u00dfE \u01c4 \u0178 \u039c \u0419 \U00010428"));

    WString lower = W(u"ABC \u0130 \u2126 \u01c4 \U00010400");
    EXPECT_EQ(ZK::ucslwr(&lower[0]), &lower[0]);
    EXPECT_EQ(lower, W(u"abc i \u03c9 \u01c6 \U00010400"));
}

TEST(UniTextCase, ReverseIsByUnit) {
    WString text = W(u"ab\U0001F600c");
    EXPECT_EQ(ZK::ucsrev(&text[0]), &text[0]);
    EXPECT_EQ(text, WString({'c', 0xDE00, 0xD83D, 'b', 'a'}));
    unsigned short one[] = {'x', 0};
    EXPECT_EQ(Units(ZK::ucsrev(one)), W(u"x"));
}

TEST(UniTextClasses, SpaceAndDigit) {
    for (unsigned c : {0x20u, 0x09u, 0x0Au, 0x0Du, 0xA0u, 0x2028u, 0x3000u, 0x85u})
        EXPECT_TRUE(ZK::isuspace(c)) << std::hex << c;
    for (unsigned c : {0u, 'a' + 0u, 0x200Bu, 0xFEFFu, 1048575u})
        EXPECT_FALSE(ZK::isuspace(c)) << std::hex << c;
    EXPECT_TRUE(ZK::isudigit('0'));
    EXPECT_TRUE(ZK::isudigit('9'));
    for (unsigned c : {'/' + 0u, ':' + 0u, 0x660u, 0xFF10u, 0x10030u})
        EXPECT_FALSE(ZK::isudigit(c)) << std::hex << c;
}

} // namespace

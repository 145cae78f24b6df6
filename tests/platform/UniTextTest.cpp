// The UTF-16 text service works on units, not characters; the standard behaviour of each
// function is left to the string tests that use it.
#include <gtest/gtest.h>

#include <algorithm>

#include "platform/UniText.h"
#include "support/Utf16.h"

namespace {

using vorn::test::W;
using vorn::test::WString;

TEST(UniText, CopyCountsUnits) {
    // At most `count` units, unterminated when the source is longer, zero-filled when shorter.
    unsigned short buffer[8];
    std::fill(buffer, buffer + 8, 0xAAAA);
    EXPECT_EQ(ZK::ucsncpy(buffer, W(u"abcdef").c_str(), 3), buffer);
    EXPECT_EQ(WString(buffer, 4), WString({'a', 'b', 'c', 0xAAAA}));
    ZK::ucsncpy(buffer, W(u"xy").c_str(), 5);
    EXPECT_EQ(WString(buffer, 6), WString({'x', 'y', 0, 0, 0, 0xAAAA}));
    EXPECT_EQ(ZK::ucslen(W(u"\u00e9t\U0001F600").c_str()), 4u);
}

TEST(UniText, CaseFoldsAndMapsEachUnitAlone) {
    EXPECT_EQ(ZK::ucsicmp(W(u"\u00c9COLE").c_str(), W(u"\u00e9cole").c_str()), 0);
    // Final sigma and capital sigma share a fold; dotted capital I has no simple one.
    EXPECT_EQ(ZK::ucsicmp(W(u"\u03c2").c_str(), W(u"\u03a3").c_str()), 0);
    EXPECT_NE(ZK::ucsicmp(W(u"\u0130").c_str(), W(u"i").c_str()), 0);
    EXPECT_NE(ZK::ucsicmp(W(u"stra\u00dfe").c_str(), W(u"STRASSE").c_str()), 0);
    // Folded values order the result: 'a' before 'B'.
    EXPECT_LT(ZK::ucsicmp(W(u"a").c_str(), W(u"B").c_str()), 0);
    // Surrogates are units, not characters: these two Deseret letters don't match.
    EXPECT_NE(ZK::ucsicmp(W(u"\U00010400").c_str(), W(u"\U00010428").c_str()), 0);
    EXPECT_LT(ZK::ucsnicmp(W(u"\u00c0bcX").c_str(), W(u"\u00e0BCy").c_str(), 4), 0);

    WString text = W(u"stra\u00dfe \u01c6 \u00ff \u00b5 \U00010428");
    EXPECT_EQ(ZK::ucsupr(&text[0]), &text[0]);
    // Sharp s has no single-unit capital; the Deseret pair is left alone.
    EXPECT_EQ(text, W(u"STRA\u00dfE \u01c4 \u0178 \u039c \U00010428"));
    WString lower = W(u"ABC \u0130 \u2126 \U00010400");
    ZK::ucslwr(&lower[0]);
    EXPECT_EQ(lower, W(u"abc i \u03c9 \U00010400"));
    WString reversed = W(u"ab\U0001F600c");
    ZK::ucsrev(&reversed[0]);
    EXPECT_EQ(reversed, WString({'c', 0xDE00, 0xD83D, 'b', 'a'}));
}

TEST(UniText, SpaceAndDigitClasses) {
    for (unsigned c : {0x20u, 0x09u, 0x0Au, 0xA0u, 0x2028u, 0x3000u, 0x85u})
        EXPECT_TRUE(ZK::isuspace(c)) << std::hex << c;
    for (unsigned c : {0u, 'a' + 0u, 0x200Bu, 0xFEFFu, 1048575u})
        EXPECT_FALSE(ZK::isuspace(c)) << std::hex << c;
    EXPECT_TRUE(ZK::isudigit('0') && ZK::isudigit('9'));
    for (unsigned c : {'/' + 0u, ':' + 0u, 0x660u, 0xFF10u, 0x10030u})
        EXPECT_FALSE(ZK::isudigit(c)) << std::hex << c;
}

} // namespace

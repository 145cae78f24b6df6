#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <string>

#include "platform/Text.h"
#include "platform/TextConvert.h"
#include "support/Utf16.h"

namespace {

using vorn::test::W;
using vorn::test::WString;

// "aé€😀": characters of 1, 2, 3 and 4 bytes.
const char kMixed[] = "a\xc3\xa9\xe2\x82\xac\xf0\x9f\x98\x80";

TEST(PlatformText, StepsByWholeSequencesAndBadBytesAlone) {
    const char* p = kMixed;
    int steps[4];
    for (int& step : steps) {
        const char* next = CHGetNextCharPtr(p, 0);
        step = static_cast<int>(next - p);
        p = next;
    }
    EXPECT_EQ(steps[0], 1);
    EXPECT_EQ(steps[1], 2);
    EXPECT_EQ(steps[2], 3);
    EXPECT_EQ(steps[3], 4);
    EXPECT_EQ(*p, '\0');
    // A terminator is one byte; a truncated sequence, an overlong form and an encoded surrogate
    // are each bytes of their own.
    const char* empty = "";
    EXPECT_EQ(CHGetNextCharPtr(empty, 0), empty + 1);
    for (const char* bad : {"\xe2\x82"
                            "a",
                            "\xc0\xaf", "\xed\xa0\x80", "\xf4\x90\x80\x80", "\x80"})
        EXPECT_EQ(CHGetNextCharPtr(bad, 0), bad + 1) << bad;
}

TEST(PlatformText, TruncateNeverSplitsACharacter) {
    char out[16];
    std::memset(out, 'x', sizeof out);
    EXPECT_EQ(CHTruncate(kMixed, out, 5, 0), 3); // "aé" and the terminator; "€" would not fit
    EXPECT_STREQ(out, "a\xc3\xa9");
    EXPECT_EQ(out[4], 'x');
    EXPECT_EQ(CHTruncate(kMixed, out, 2, 0), 1);
    EXPECT_EQ(CHTruncate(kMixed, out, 1, 0), 0);
    EXPECT_STREQ(out, "");
    out[0] = 'q';
    EXPECT_EQ(CHTruncate(kMixed, out, 0, 0), 0);
    EXPECT_EQ(out[0], 'q');
    EXPECT_EQ(CHTruncate("ab", out, 10, 0), 2);
    EXPECT_STREQ(out, "ab");
    // Overlapping, forward: the way a string copies a piece of its own text.
    char own[] = "xxabc";
    EXPECT_EQ(CHTruncate(own + 2, own, 10, 0), 3);
    EXPECT_STREQ(own, "abc");
    EXPECT_STREQ(CHCopyC(own + 1, own), "bc");
}

TEST(PlatformText, SearchesMatchWholeCharacters) {
    const char text[] = "x\xc3\xa9y\xc3\xa9z";
    EXPECT_EQ(CHSearchSubstring("\xc3\xa9", text, -1, 1, 0), text + 1);
    EXPECT_EQ(CHSearchSubstring("\xc3\xa9z", text, -1, 1, 0), text + 4);
    // A lone lead byte is not a piece of "é".
    EXPECT_EQ(CHSearchSubstring("\xc3", text, -1, 1, 0), nullptr);
    EXPECT_EQ(CHSearchSubstring("", text, -1, 1, 0), text);
    EXPECT_EQ(CHSearchSubstring("y", text, 3, 1, 0), nullptr);
    EXPECT_EQ(CHSearchSubstring("y", text, 4, 1, 0), text + 3);
    // Folded matches may differ in bytes: "ſ" (U+017F) folds to "s", the Kelvin sign to "k".
    EXPECT_EQ(CHSearchSubstring("\xc3\x89Y", text, -1, 0, 0), text + 1);
    const char folded[] = "ab\xc5\xbfk";
    EXPECT_EQ(CHSearchSubstring("S\xe2\x84\xaa", folded, -1, 0, 0), folded + 2);
    EXPECT_EQ(CHSearchSubstring("S\xe2\x84\xaa", folded, -1, 1, 0), nullptr);

    const char character[] = "\xc3\xa9";
    EXPECT_EQ(CHSearchCharLeft(character, text, -1, 0), text + 1);
    EXPECT_EQ(CHSearchCharRight(character, text, -1, 0), text + 4);
    EXPECT_EQ(CHSearchCharLeft("\xc3", text, -1, 0), nullptr);
    EXPECT_EQ(CHSearchCharLeft("", text, -1, 0), nullptr);
    EXPECT_EQ(CHSearchCharRight("z", text, 6, 0), nullptr);
}

TEST(PlatformText, CompareOrdersBadBytesAfterText) {
    EXPECT_LT(CHCompareTexts("\xf0\x9f\x98\x80", -1, "\xff", -1, 0, 0), 0);
    EXPECT_NE(CHCompareTexts("\xe2\x82"
                             "a",
                             -1,
                             "\xe2\x83"
                             "a",
                             -1, 0, 0),
              0);
    EXPECT_EQ(CHCompareTexts("\xe2\x82"
                             "A",
                             -1,
                             "\xe2\x82"
                             "a",
                             -1, 0, 0),
              0);
    EXPECT_EQ(CHCompareTexts("STRASSE", -1,
                             "stra\xc5\xbf\xc5\xbf"
                             "e",
                             -1, 0, 0),
              0);
}

TEST(PlatformText, CaseMappingKeepsTheByteLength) {
    // "ǆé" to upper is "ǄÉ"; "ı" (dotless i) would become the one-byte "I" and stays.
    char text[] = "\xc7\x86\xc3\xa9x\xc4\xb1\xff";
    CHtoUpper(text, -1, 0);
    EXPECT_STREQ(text, "\xc7\x84\xc3\x89X\xc4\xb1\xff");
    // "K" (Kelvin sign) would lower to the one-byte "k" and stays; the length bounds the walk.
    char kelvin[] = "\xe2\x84\xaa"
                    "AB";
    CHtoLower(kelvin, 4, 0);
    EXPECT_STREQ(kelvin, "\xe2\x84\xaa"
                         "aB");
}

TEST(PlatformTextConvert, Utf16ToNarrow) {
    WString text = W(u"a\u00e9\u20ac\U0001F600");
    EXPECT_EQ(CHUnicode2ANSI(text.c_str(), -1, nullptr, 0, 0, true, nullptr), 10);
    char out[16];
    std::memset(out, 0, sizeof out);
    EXPECT_EQ(CHUnicode2ANSI(text.c_str(), -1, out, 16, 0, true, nullptr), 10);
    EXPECT_STREQ(out, kMixed);
    // Only whole characters, and never a terminator.
    std::memset(out, 'x', sizeof out);
    EXPECT_EQ(CHUnicode2ANSI(text.c_str(), -1, out, 8, 0, true, nullptr), 6);
    EXPECT_EQ(out[6], 'x');
    EXPECT_EQ(CHUnicode2ANSI(text.c_str(), 2, nullptr, 0, 0, true, nullptr), 3);
    // Unpaired surrogates: U+FFFD, or '?' without the flag. A counted source ends at a zero.
    const unsigned short lone[] = {0xDC00, 'a', 0xD800, 0, 'b'};
    std::memset(out, 0, sizeof out);
    EXPECT_EQ(CHUnicode2ANSI(lone, 5, out, 16, 0, true, nullptr), 7);
    EXPECT_STREQ(out, "\xef\xbf\xbd"
                      "a\xef\xbf\xbd");
    std::memset(out, 0, sizeof out);
    EXPECT_EQ(CHUnicode2ANSI(lone, -1, out, 16, 0, false, nullptr), 3);
    EXPECT_STREQ(out, "?a?");
}

TEST(PlatformTextConvert, NarrowToUtf16) {
    // With -1 the terminator is counted and written; with a count it isn't.
    EXPECT_EQ(CHANSI2Unicode(kMixed, -1, nullptr, 0, 0, nullptr), 6);
    EXPECT_EQ(CHANSI2Unicode(kMixed, 3, nullptr, 0, 0, nullptr), 2);
    unsigned short out[8];
    EXPECT_EQ(CHANSI2Unicode(kMixed, -1, out, 8, 0, nullptr), 6);
    EXPECT_EQ(WString(out), W(u"a\u00e9\u20ac\U0001F600"));
    // A pair that doesn't fit is left out whole, and so is the terminator.
    std::fill(std::begin(out), std::end(out), 0x7777);
    EXPECT_EQ(CHANSI2Unicode(kMixed, -1, out, 4, 0, nullptr), 3);
    EXPECT_EQ(out[3], 0x7777);
    // Each bad byte is one U+FFFD; a count that cuts a sequence makes its bytes bad.
    EXPECT_EQ(CHANSI2Unicode("\xe2\x82"
                             "a\xff",
                             -1, out, 8, 0, nullptr),
              5);
    EXPECT_EQ(WString(out), W(u"\uFFFD\uFFFDa\uFFFD"));
    EXPECT_EQ(CHANSI2Unicode("\xc3\xa9", 1, out, 8, 0, nullptr), 1);
    EXPECT_EQ(out[0], 0xFFFD);
    EXPECT_EQ(CHANSI2Unicode("ab\0cd", 5, nullptr, 0, 0, nullptr), 2);
}

} // namespace

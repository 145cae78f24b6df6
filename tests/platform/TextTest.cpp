// Search, comparison and case of the narrow text service meet a model through CString in
// StringDifferentialTest.cpp; here what the string tests can't reach.
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

TEST(PlatformText, StepsAndTruncatesByWholeSequences) {
    const char* p = kMixed;
    for (int size : {1, 2, 3, 4}) {
        const char* next = CHGetNextCharPtr(p, 0);
        EXPECT_EQ(next - p, size);
        p = next;
    }
    // A terminator is one byte; a truncated sequence, an overlong form and an encoded surrogate
    // are each bytes of their own.
    const char* empty = "";
    EXPECT_EQ(CHGetNextCharPtr(empty, 0), empty + 1);
    for (const char* bad : {"\xe2\x82", "\xc0\xaf", "\xed\xa0\x80", "\xf4\x90\x80\x80", "\x80"})
        EXPECT_EQ(CHGetNextCharPtr(bad, 0), bad + 1) << bad;

    char out[16];
    std::memset(out, 'x', sizeof out);
    EXPECT_EQ(CHTruncate(kMixed, out, 5, 0), 3); // "aé" and the terminator; "€" would not fit
    EXPECT_STREQ(out, "a\xc3\xa9");
    EXPECT_EQ(out[4], 'x');
    out[0] = 'q';
    EXPECT_EQ(CHTruncate(kMixed, out, 0, 0), 0);
    EXPECT_EQ(out[0], 'q');
}

TEST(PlatformTextConvert, Utf16ToNarrow) {
    WString text = W(u"a\u00e9\u20ac\U0001F600");
    EXPECT_EQ(CHUnicode2ANSI(text.c_str(), -1, nullptr, 0, 0, true, nullptr), 10);
    // Only whole characters, and never a terminator.
    char out[16];
    std::memset(out, 'x', sizeof out);
    EXPECT_EQ(CHUnicode2ANSI(text.c_str(), -1, out, 8, 0, true, nullptr), 6);
    EXPECT_EQ(std::string(out, 7), "a\xc3\xa9\xe2\x82\xacx");
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
    // A pair that doesn't fit is left out whole, and so is the terminator.
    unsigned short out[8];
    std::fill(std::begin(out), std::end(out), 0x7777);
    EXPECT_EQ(CHANSI2Unicode(kMixed, -1, out, 4, 0, nullptr), 3);
    EXPECT_EQ(WString(out, 4), W(u"a\u00e9\u20ac\u7777"));
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

#include <gtest/gtest.h>

#include <cstring>

#include <vorn/base/String.h>
#include <vorn/base/UnicodeString.h>
#include <vorn/util/HashFunctions.h>

#include "support/Utf16.h"

namespace {

unsigned int Reference(const char* text) {
    unsigned int len = static_cast<unsigned int>(std::strlen(text)), h = 0;
    if (len < 16) {
        for (unsigned int i = 0; i < len; ++i)
            h = h * 37 + static_cast<unsigned char>(text[i]);
    } else {
        for (unsigned int i = 0; i < len; i += len >> 3)
            h = h * 39 + static_cast<unsigned char>(text[i]);
    }
    return h;
}

TEST(StringHash, ShortTextsUseEveryByte) {
    EXPECT_EQ(vorn::util::GetStringHashCode(nullptr), 0);
    EXPECT_EQ(vorn::util::GetStringHashCode(""), 0);
    EXPECT_EQ(vorn::util::GetStringHashCode("a"), 97);
    EXPECT_EQ(vorn::util::GetStringHashCode("ab"), 97 * 37 + 98);
    // Bytes count as unsigned.
    EXPECT_EQ(vorn::util::GetStringHashCode("\xff"), 255);
}

TEST(StringHash, LongTextsAreSampled) {
    // 16 bytes: step 2, so the odd positions don't count.
    EXPECT_EQ(vorn::util::GetStringHashCode("aXaXaXaXaXaXaXaX"),
              vorn::util::GetStringHashCode("aYaYaYaYaYaYaYaY"));
    const char* text = "vorn::base::win::CWinSystemErrorException";
    EXPECT_EQ(static_cast<unsigned int>(vorn::util::GetStringHashCode(text)), Reference(text));
}

TEST(StringHash, CStringAgreesOnEqualTextAroundTheSamplingLimit) {
    using vorn::base::CString;
    using vorn::util::GetCStringHashCode;
    // 15 bytes: all with 37; 16: units 0, 2, ... 14 with 39; 17: units 0, 2, ... 16.
    unsigned int h15 = 0, h16 = 0, h17 = 0;
    for (int i = 0; i < 15; ++i)
        h15 = h15 * 37 + static_cast<unsigned char>('a' + i);
    for (int i = 0; i < 16; i += 2)
        h16 = h16 * 39 + static_cast<unsigned char>('a' + i);
    for (int i = 0; i < 17; i += 2)
        h17 = h17 * 39 + static_cast<unsigned char>('a' + i);
    const char* texts[] = {"abcdefghijklmno", "abcdefghijklmnop", "abcdefghijklmnopq"};
    const unsigned int expected[] = {h15, h16, h17};
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(static_cast<unsigned int>(GetCStringHashCode(CString(texts[i]))), expected[i]);
        EXPECT_EQ(static_cast<unsigned int>(vorn::util::GetStringHashCode(texts[i])), expected[i]);
    }
    EXPECT_EQ(GetCStringHashCode(CString()), 0);
    EXPECT_EQ(GetCStringHashCode(CString("")), 0);
    // The stored length counts, and the unwritten bytes behind the text count as 0.
    EXPECT_EQ(static_cast<unsigned int>(GetCStringHashCode(CString("abcdef", 3))),
              ((97u * 37 + 98) * 37 + 99) * 37 * 37 * 37);
}

TEST(StringHash, UnicodeStringUsesUnitsAsUnsigned) {
    using vorn::base::CUnicodeString;
    using vorn::util::GetCUnicodeStringHashCode;
    for (const char* text : {"abcdefghijklmno", "abcdefghijklmnop", "abcdefghijklmnopq"})
        EXPECT_EQ(GetCUnicodeStringHashCode(CUnicodeString(text)),
                  vorn::util::GetStringHashCode(text));
    EXPECT_EQ(GetCUnicodeStringHashCode(CUnicodeString()), 0);
    EXPECT_EQ(GetCUnicodeStringHashCode(CUnicodeString(vorn::test::W(u"").c_str())), 0);
    EXPECT_EQ(
        static_cast<unsigned int>(GetCUnicodeStringHashCode(CUnicodeString(vorn::test::W(u"\xFFFF"
                                                                                         u"a")
                                                                               .c_str()))),
        0xFFFFu * 37 + 'a');
}

TEST(StringHash, NumbersHashToThemselves) {
    EXPECT_EQ(vorn::util::GetLongHashCode(-7), -7);
    EXPECT_EQ(vorn::util::GetUnsignedLongHashCode(0xFFFFFFFFu), -1);
}

} // namespace

#include <gtest/gtest.h>

#include <string>

#include <vorn/base/String.h>
#include <vorn/base/UnicodeString.h>
#include <vorn/util/HashFunctions.h>

#include "support/Utf16.h"

namespace {

using vorn::base::CString;
using vorn::base::CUnicodeString;
using vorn::util::GetCStringHashCode;
using vorn::util::GetCUnicodeStringHashCode;
using vorn::util::GetStringHashCode;

unsigned int Hash(int multiplier, const std::string& text, std::size_t step) {
    unsigned int h = 0;
    for (std::size_t i = 0; i < text.size(); i += step)
        h = h * multiplier + static_cast<unsigned char>(text[i]);
    return h;
}

TEST(StringHash, ShortTextsUseEveryByteAndLongOnesAreSampled) {
    EXPECT_EQ(GetStringHashCode(nullptr), 0);
    EXPECT_EQ(GetStringHashCode(""), 0);
    EXPECT_EQ(GetStringHashCode("ab"), 97 * 37 + 98);
    EXPECT_EQ(GetStringHashCode("\xff"), 255); // bytes count as unsigned
    // 15 bytes: all with 37; 16: bytes 0, 2, ... 14 with 39; 17: bytes 0, 2, ... 16; 41: every 5th.
    const std::string alphabet = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNO";
    for (std::size_t size : {15u, 16u, 17u, 41u}) {
        const std::string text = alphabet.substr(0, size);
        const unsigned int expected = size < 16 ? Hash(37, text, 1) : Hash(39, text, size >> 3);
        EXPECT_EQ(static_cast<unsigned int>(GetStringHashCode(text.c_str())), expected) << size;
        EXPECT_EQ(static_cast<unsigned int>(GetCStringHashCode(CString(text.c_str()))), expected);
        EXPECT_EQ(
            static_cast<unsigned int>(GetCUnicodeStringHashCode(CUnicodeString(text.c_str()))),
            expected);
    }
    EXPECT_EQ(GetCStringHashCode(CString()), 0);
    EXPECT_EQ(GetCUnicodeStringHashCode(CUnicodeString()), 0);
    // The stored length counts, and the unwritten bytes behind the text count as 0.
    EXPECT_EQ(static_cast<unsigned int>(GetCStringHashCode(CString("abcdef", 3))),
              ((97u * 37 + 98) * 37 + 99) * 37 * 37 * 37);
    // Units count as unsigned.
    const vorn::test::WString high({0xFFFF, 'a'});
    EXPECT_EQ(static_cast<unsigned int>(GetCUnicodeStringHashCode(CUnicodeString(high.c_str()))),
              0xFFFFu * 37 + 'a');
    EXPECT_EQ(vorn::util::GetUnsignedLongHashCode(0xFFFFFFFFu), -1);
}

} // namespace

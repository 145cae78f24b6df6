#include <gtest/gtest.h>

#include <cstring>

#include <vorn/util/HashFunctions.h>

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

} // namespace

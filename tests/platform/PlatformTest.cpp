#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>

#include "platform/Debug.h"
#include "platform/Memory.h"
#include "platform/PtrCheck.h"
#include "platform/Resources.h"
#include "platform/SystemError.h"
#include "platform/Text.h"
#include "support/AllocFailure.h"
#include "support/DebugCapture.h"

namespace {

TEST(PlatformMemory, SwitchFailsTheChosenAllocationOnly) {
    vorn::test::FailAllocation fail(2);
    void* first = ZK_malloc(8);
    void* second = ZK_malloc(8);
    void* third = ZK_malloc(8);
    EXPECT_NE(first, nullptr);
    EXPECT_EQ(second, nullptr);
    EXPECT_NE(third, nullptr);
    ZK_free(first);
    ZK_free(third);
}

TEST(PlatformMemory, StickySwitchFailsEverythingAfter) {
    {
        vorn::test::FailAllocation fail(1, true);
        EXPECT_EQ(ZK_malloc(1), nullptr);
        EXPECT_EQ(ZK_malloc(1), nullptr);
    }
    void* p = ZK_malloc(1);
    EXPECT_NE(p, nullptr);
    ZK_free(p);
    EXPECT_EQ(vorn::test::CountAllocations([] { ZK_free(ZK_malloc(3)); }), 1u);
}

TEST(PlatformPointers, NullOnlyWithoutLength) {
    EXPECT_TRUE(BNValidReadPtr(nullptr, 0));
    EXPECT_FALSE(BNValidReadPtr(nullptr, 1));
    EXPECT_FALSE(BNValidWritePtr(nullptr, 4));
    char c;
    EXPECT_TRUE(BNValidWritePtr(&c, 1));
}

TEST(PlatformDebug, HookCapturesFormattedOutput) {
    vorn::test::DebugCapture capture;
    DBPrintf("%s=%d%s", "x", 42, ZK::EOL);
    EXPECT_EQ(capture.Text(), "x=42\n");
    std::string big(3000, 'q');
    DBPrintf("%s", big.c_str());
    EXPECT_EQ(capture.Text().size(), 5 + big.size());
}

TEST(PlatformResources, TextsByIdAndIndex) {
    std::int64_t cache = RSInitModuleImageCache(nullptr);
    char buffer[64];
    RSGetIndString_ParamAdapter("vorn/LoadString", 45, buffer, sizeof buffer, 1, 1, cache, 0);
    EXPECT_NE(std::string(buffer).find("%s"), std::string::npos);
    RSGetIndString_ParamAdapter("vorn/LoadString", 45, buffer, sizeof buffer, 9, 1, cache, 0);
    EXPECT_STREQ(buffer, "");
    char tiny[4];
    RSGetIndString_ParamAdapter("vorn/LoadString", 45, tiny, sizeof tiny, 1, 1, cache, 0);
    EXPECT_EQ(std::strlen(tiny), 3u);
    RSRemoveModuleImageCache(cache);
}

TEST(PlatformSystemError, TextsOfCodes) {
    char buffer[128];
    EXPECT_FALSE(vorn::platform::SystemErrorText(0, buffer, sizeof buffer));
    EXPECT_TRUE(vorn::platform::SystemErrorText(2, buffer, sizeof buffer));
    EXPECT_STRNE(buffer, "");
    EXPECT_FALSE(vorn::platform::SystemErrorText(123456, buffer, sizeof buffer));
    EXPECT_STREQ(buffer, "");
}

TEST(PlatformText, CompareByCodePointAndFolded) {
    EXPECT_EQ(CHCompareTexts("abc", -1, "abc", -1, 1, 0), 0);
    EXPECT_LT(CHCompareTexts("ab", -1, "abc", -1, 1, 0), 0);
    EXPECT_GT(CHCompareTexts("b", -1, "abc", -1, 1, 0), 0);
    // U+00E9 sorts after 'z' by code point, as its UTF-8 bytes do.
    EXPECT_GT(CHCompareTexts("\xc3\xa9", -1, "z", -1, 1, 0), 0);
    EXPECT_EQ(CHCompareTexts("abcdef", 3, "abcxyz", 3, 1, 0), 0);
    EXPECT_NE(CHCompareTexts("ABC", -1, "abc", -1, 1, 0), 0);
    EXPECT_EQ(CHCompareTexts("ABC", -1, "abc", -1, 0, 0), 0);
    EXPECT_EQ(CHCompareTexts("\xc3\x89t\xc3\xa9", -1, "\xc3\xa9T\xc3\x89", -1, 0, 0), 0);
    EXPECT_EQ(CHCompareTexts(nullptr, -1, "", -1, 1, 0), 0);
}

} // namespace

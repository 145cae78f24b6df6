#include <gtest/gtest.h>

#include <cstring>

#include "platform/Memory.h"
#include "platform/Resources.h"
#include "support/AllocFailure.h"

namespace {

TEST(PlatformMemory, SwitchFailsTheChosenAllocationOrEveryOneAfter) {
    {
        vorn::test::FailAllocation fail(2);
        void* first = ZK_malloc(8);
        EXPECT_NE(first, nullptr);
        EXPECT_EQ(ZK_malloc(8), nullptr);
        void* third = ZK_malloc(8);
        EXPECT_NE(third, nullptr);
        ZK_free(first);
        ZK_free(third);
    }
    {
        vorn::test::FailAllocation fail(1, true);
        EXPECT_EQ(ZK_malloc(1), nullptr);
        EXPECT_EQ(ZK_malloc(1), nullptr);
    }
    EXPECT_EQ(vorn::test::CountAllocations([] { ZK_free(ZK_malloc(3)); }), 1u);
}

TEST(PlatformResources, TextsByIdAndIndexCutToTheBuffer) {
    std::int64_t cache = RSInitModuleImageCache(nullptr);
    char buffer[64];
    RSGetIndString_ParamAdapter("vorn/LoadString", 45, buffer, sizeof buffer, 1, 1, cache, 0);
    EXPECT_NE(std::string(buffer).find("%s"), std::string::npos);
    char tiny[4];
    RSGetIndString_ParamAdapter("vorn/LoadString", 45, tiny, sizeof tiny, 1, 1, cache, 0);
    EXPECT_EQ(std::strlen(tiny), 3u);
    RSRemoveModuleImageCache(cache);
}

} // namespace

#include <gtest/gtest.h>

#include <vorn/base/Base.h>
#include <vorn/base/Bool.h>

#include "platform/FileLayer.h"
#include "platform/Resources.h"
#include "vorn/base/Module.h"

namespace {

using vorn::module::ModuleStartCount;

class ModuleTest : public ::testing::Test {
protected:
    void SetUp() override { ModuleStartCount = 0; }
    void TearDown() override { ModuleStartCount = 0; }
};

TEST_F(ModuleTest, TerminateAtZeroDoesNothing) {
    int ends = vorn::platform::FileLayerEndCalls();
    EXPECT_EQ(vorn::Terminate(), 0);
    EXPECT_EQ(vorn::platform::FileLayerEndCalls(), ends);
}

TEST_F(ModuleTest, NestedCallsStartAndStopTheFileLayerOnce) {
    int inits = vorn::platform::FileLayerInitCalls();
    int ends = vorn::platform::FileLayerEndCalls();
    EXPECT_EQ(vorn::Initialize(), 1);
    EXPECT_EQ(vorn::Initialize(), 2);
    EXPECT_EQ(vorn::platform::FileLayerInitCalls(), inits + 1);
    EXPECT_TRUE(vorn::platform::FileLayerRunning());
    EXPECT_EQ(vorn::Terminate(), 1);
    EXPECT_EQ(vorn::platform::FileLayerEndCalls(), ends);
    EXPECT_EQ(vorn::Terminate(), 0);
    EXPECT_EQ(vorn::platform::FileLayerEndCalls(), ends + 1);
    EXPECT_FALSE(vorn::platform::FileLayerRunning());
    // A new first call starts the layer again.
    EXPECT_EQ(vorn::Initialize(), 1);
    EXPECT_EQ(vorn::platform::FileLayerInitCalls(), inits + 2);
    EXPECT_EQ(vorn::Terminate(), 0);
}

TEST_F(ModuleTest, CounterSaturatesAndStillCountsDown) {
    ModuleStartCount = 0x7FFFFFFF;
    int inits = vorn::platform::FileLayerInitCalls();
    EXPECT_EQ(vorn::Initialize(), 0x7FFFFFFF);
    EXPECT_EQ(ModuleStartCount, 0x7FFFFFFF);
    EXPECT_EQ(vorn::platform::FileLayerInitCalls(), inits);
    EXPECT_EQ(vorn::Terminate(), 0x7FFFFFFE);
}

TEST_F(ModuleTest, AttachedBeforeMainWithResourceCache) {
    EXPECT_TRUE(vorn::module::IsAttached());
    EXPECT_GT(vorn::module::ModuleResourceCache, 0);
    EXPECT_GE(vorn::platform::OpenResourceCaches(), 1);
}

TEST_F(ModuleTest, ObjectsWorkWithoutInitialize) {
    ASSERT_EQ(ModuleStartCount, 0);
    EXPECT_STREQ(vorn::base::CBool::ToString(true), "true");
    EXPECT_NE(vorn::base::CClass::FindClass("vorn::base::CBool"), nullptr);
}

} // namespace

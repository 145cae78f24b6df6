// The whole suite runs without Initialize, which shows that everything but the file layer
// works before it.
#include <gtest/gtest.h>

#include <vorn/base/Base.h>
#include <vorn/base/Thread.h>

#include "platform/FileLayer.h"
#include "platform/Resources.h"
#include "vorn/base/Module.h"

namespace {

using vorn::module::ModuleStartCount;
using vorn::platform::FileLayerEndCalls;
using vorn::platform::FileLayerInitCalls;

class ModuleTest : public ::testing::Test {
protected:
    void SetUp() override { ModuleStartCount = 0; }
    void TearDown() override { ModuleStartCount = 0; }
};

TEST_F(ModuleTest, NestedCallsStartAndStopTheFileLayerOnce) {
    const int inits = FileLayerInitCalls(), ends = FileLayerEndCalls();
    EXPECT_EQ(vorn::Terminate(), 0); // at zero: nothing
    EXPECT_EQ(vorn::Initialize(), 1);
    EXPECT_EQ(vorn::Initialize(), 2);
    EXPECT_EQ(FileLayerInitCalls(), inits + 1);
    EXPECT_TRUE(vorn::platform::FileLayerRunning());
    EXPECT_EQ(vorn::Terminate(), 1);
    EXPECT_EQ(FileLayerEndCalls(), ends);
    EXPECT_EQ(vorn::Terminate(), 0);
    EXPECT_EQ(FileLayerEndCalls(), ends + 1);
    EXPECT_FALSE(vorn::platform::FileLayerRunning());
    // A new first call starts the layer again.
    EXPECT_EQ(vorn::Initialize(), 1);
    EXPECT_EQ(FileLayerInitCalls(), inits + 2);
    EXPECT_EQ(vorn::Terminate(), 0);
}

TEST_F(ModuleTest, CounterSaturatesAndStillCountsDown) {
    ModuleStartCount = 0x7FFFFFFF;
    const int inits = FileLayerInitCalls();
    EXPECT_EQ(vorn::Initialize(), 0x7FFFFFFF);
    EXPECT_EQ(FileLayerInitCalls(), inits);
    EXPECT_EQ(vorn::Terminate(), 0x7FFFFFFE);
}

TEST_F(ModuleTest, AttachedBeforeMainWithResourceCache) {
    EXPECT_TRUE(vorn::module::IsAttached());
    EXPECT_GT(vorn::module::ModuleResourceCache, 0);
    EXPECT_GE(vorn::platform::OpenResourceCaches(), 1);
    // The attach step also made the thread slot, empty on this thread.
    EXPECT_NE(vorn::module::CurrentThreadSlot, nullptr);
    EXPECT_EQ(vorn::base::CThread::GetCurrentThread(), nullptr);
}

} // namespace

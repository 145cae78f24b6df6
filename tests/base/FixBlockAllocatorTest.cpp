#include <gtest/gtest.h>

#include <cstring>
#include <thread>
#include <vector>

#include "support/AllocFailure.h"
#include "support/DebugCapture.h"
#include "support/Throws.h"
#include "vorn/base/FixBlockAllocator.h"

namespace {

using vorn::base::FixBlockAllocator;
using vorn::test::CountAllocations;

std::vector<void*> Take(FixBlockAllocator& pool, int n) {
    std::vector<void*> blocks;
    for (int i = 0; i < n; ++i)
        blocks.push_back(pool.Allocate());
    return blocks;
}

TEST(FixBlockAllocator, GrowsByTheMinimumAndKeepsIt) {
    FixBlockAllocator pool(76, 4);
    EXPECT_EQ(CountAllocations([&] { pool.Release(pool.Allocate()); }), 4u);
    // The only used block went back: 0 of 4 is idle, but free isn't above the minimum.
    EXPECT_EQ(pool.GetUsedCount(), 0u);
    EXPECT_EQ(pool.GetFreeCount(), 4u);
    void* block = nullptr;
    EXPECT_EQ(CountAllocations([&] { block = pool.Allocate(); }), 0u);
    EXPECT_EQ(pool.GetFreeCount(), 3u);
    pool.Release(nullptr);
    EXPECT_EQ(pool.GetUsedCount(), 1u);
    pool.Release(block);
}

TEST(FixBlockAllocator, ShrinksByHalvesBelowTheFloatThreshold) {
    FixBlockAllocator pool(16, 4);
    std::vector<void*> blocks = Take(pool, 40);
    for (int i = 0; i < 12; ++i)
        pool.Release(blocks[i]);
    // 28 of 40 is exactly the float 0.7: nothing goes back, though 12 free is above the minimum.
    EXPECT_EQ(pool.GetUsedCount(), 28u);
    EXPECT_EQ(pool.GetFreeCount(), 12u);
    pool.Release(blocks[12]);
    // 27 of 40: 13 free, and the walk gives back 5 of the 9 surplus.
    EXPECT_EQ(pool.GetFreeCount(), 8u);
    for (std::size_t i = 13; i < blocks.size(); ++i)
        pool.Release(blocks[i]);
    // Each give-back is at least one block but rounds the half down from there, so an idle pool
    // settles one above the minimum.
    EXPECT_EQ(pool.GetUsedCount(), 0u);
    EXPECT_EQ(pool.GetFreeCount(), 5u);
}

TEST(FixBlockAllocator, ReleasesInAnyOrderAndStartsOverAfterReleaseAll) {
    FixBlockAllocator pool(32, 4);
    std::vector<void*> blocks = Take(pool, 6);
    for (std::size_t i = 0; i < blocks.size(); ++i)
        std::memset(blocks[i], static_cast<int>(i), 32);
    // Middle, head (the newest) and tail (the oldest) of the used list.
    pool.Release(blocks[2]);
    pool.Release(blocks[5]);
    pool.Release(blocks[0]);
    EXPECT_EQ(pool.GetUsedCount(), 3u);
    for (int i : {1, 3, 4})
        EXPECT_EQ(static_cast<unsigned char*>(blocks[i])[31], i);
    pool.ReleaseAll();
    EXPECT_EQ(pool.GetUsedCount(), 0u);
    EXPECT_EQ(pool.GetFreeCount(), 0u);
    void* block = nullptr;
    EXPECT_EQ(CountAllocations([&] { block = pool.Allocate(); }), 4u);
    pool.Release(block);
}

TEST(FixBlockAllocator, FailedGrowthKeepsWhatWasAdded) {
    FixBlockAllocator pool(76, 4);
    {
        vorn::test::DebugCapture capture;
        vorn::test::ExpectNoMemory([&] { pool.Allocate(); }, "vorn/base/FixBlockAllocator", 109, 3);
        // The growth's own failure went to the debug output first.
        EXPECT_NE(capture.Text().find("\tvorn::base::CMemoryException\n"), std::string::npos);
        EXPECT_NE(capture.Text().find("\t\tvorn/base/FixBlockAllocator(218)\n"), std::string::npos);
    }
    EXPECT_EQ(pool.GetUsedCount(), 0u);
    EXPECT_EQ(pool.GetFreeCount(), 2u);
    void* block = nullptr;
    EXPECT_EQ(CountAllocations([&] { block = pool.Allocate(); }), 0u);
    pool.Release(block);
}

TEST(FixBlockAllocator, TenPoolsByCapacity) {
    using vorn::base::StringBlockPool;
    using vorn::base::UnicodeBlockPool;
    const unsigned int narrow[] = {76, 140, 268, 524, 1036};
    const unsigned int wide[] = {140, 268, 524, 1036, 2060};
    for (int i = 0; i < 5; ++i) {
        unsigned int capacity = 64u << i;
        EXPECT_EQ(StringBlockPool(capacity)->GetBlockSize(), narrow[i]);
        EXPECT_EQ(UnicodeBlockPool(capacity)->GetBlockSize(), wide[i]);
        EXPECT_EQ(StringBlockPool(capacity), StringBlockPool(capacity / 2 + 1));
    }
    EXPECT_EQ(StringBlockPool(1025), nullptr);
    EXPECT_EQ(UnicodeBlockPool(4096), nullptr);
}

TEST(FixBlockAllocatorThreads, OnePoolServesManyThreads) {
    FixBlockAllocator pool(64, 4);
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([&pool, t] {
            for (int round = 0; round < 300; ++round) {
                std::vector<void*> blocks = Take(pool, 1 + (round + t) % 7);
                for (void* block : blocks)
                    std::memset(block, t, 64);
                for (void* block : blocks)
                    pool.Release(block);
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(pool.GetUsedCount(), 0u);
    EXPECT_GE(pool.GetFreeCount(), 4u);
}

} // namespace

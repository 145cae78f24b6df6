#include <gtest/gtest.h>

#include <string>

#include <vorn/base/MemoryException.h>
#include <vorn/io/IOException.h>
#include <vorn/io/MemoryOutputStream.h>

#include "platform/Memory.h"
#include "support/AllocFailure.h"
#include "support/Throws.h"

namespace {

using vorn::io::CIOException;
using vorn::io::CMemoryOutputStream;
using vorn::test::CountAllocations;
using vorn::test::ExpectThrow;
using vorn::test::FailAllocation;

const char* const kSource = "vorn/io/MemoryOutputStream";

std::string Bytes(const CMemoryOutputStream& s) {
    return std::string(s.GetBuffer(), s.GetBufferSize());
}

TEST(MemoryOutputStream, WritesCollectInOrder) {
    CMemoryOutputStream s;
    s.Write('a');
    s.Write("bcd", 2);
    s.Write("xyzefg", 3, 3);
    EXPECT_EQ(Bytes(s), "abcefg");
    s.Flush();
    s.Write(nullptr, 0);
    s.Write(nullptr, 5); // refused by the pointer check: nothing, no throw
    s.Write(nullptr, 2, 5);
    s.Write("ignored", 3, 0);
    EXPECT_EQ(Bytes(s), "abcefg");
}

TEST(MemoryOutputStream, CapacityRoundsUpToTheGranule) {
    // 100 rounds to 128: writing 128 bytes then allocates nothing more.
    CMemoryOutputStream s(100, 64);
    std::string block(128, 'x');
    EXPECT_EQ(CountAllocations([&] { s.Write(block.data(), 128); }), 0u);
    EXPECT_EQ(CountAllocations([&] { s.Write('y'); }), 1u);
    EXPECT_EQ(CountAllocations([&] { s.Write(block.data(), 63); }), 0u);
    EXPECT_EQ(s.GetBufferSize(), 192u);
    EXPECT_TRUE(s.EnsureBufferCapacity(192));
    EXPECT_EQ(CountAllocations([&] { EXPECT_TRUE(s.EnsureBufferCapacity(193)); }), 1u);
    EXPECT_EQ(Bytes(s), block + "y" + block.substr(0, 63));
}

TEST(MemoryOutputStream, ZeroGrowthMeansSixtyFourAndNoInitialBlock) {
    CMemoryOutputStream s(0, 0);
    EXPECT_EQ(s.GetBuffer(), nullptr);
    EXPECT_EQ(CountAllocations([&] { s.Write('a'); }), 1u);
    std::string more(63, 'b');
    EXPECT_EQ(CountAllocations([&] { s.Write(more.data(), 63); }), 0u); // 64 bytes were taken
    EXPECT_EQ(CountAllocations([&] { s.Write('c'); }), 1u);
}

TEST(MemoryOutputStream, OddGranulesFollowTheRoundingFormula) {
    // capacity + ((growth - 1) * capacity) mod growth, for a granule that is no power of two.
    CMemoryOutputStream s(0, 100);
    EXPECT_EQ(CountAllocations([&] { EXPECT_TRUE(s.EnsureBufferCapacity(150)); }), 1u);
    EXPECT_EQ(CountAllocations([&] { EXPECT_TRUE(s.EnsureBufferCapacity(200)); }), 0u);
    EXPECT_EQ(CountAllocations([&] { EXPECT_TRUE(s.EnsureBufferCapacity(201)); }), 1u);
    // 2^32 - 16 with granule 64 rounds past 4 GiB: refused, never a tiny block.
    CMemoryOutputStream t(0, 64);
    EXPECT_EQ(CountAllocations([&] { EXPECT_FALSE(t.EnsureBufferCapacity(0xFFFFFFF0u)); }), 0u);
}

TEST(MemoryOutputStream, ConstructorWithoutMemoryThrowsMemoryException) {
    FailAllocation fail(1);
    ExpectThrow<vorn::base::CMemoryException>([] { CMemoryOutputStream s(10, 8); }, kSource);
}

TEST(MemoryOutputStream, WriteWithoutMemoryIsMemoryFullAndStoresNothing) {
    CMemoryOutputStream s(4, 4);
    s.Write("abcd", 4);
    {
        FailAllocation fail(1);
        ExpectThrow<CIOException>([&] { s.Write('e'); }, kSource, "Memory full.");
    }
    {
        FailAllocation fail(1);
        ExpectThrow<CIOException>([&] { s.Write("efgh", 4); }, kSource, "Memory full.");
    }
    {
        FailAllocation fail(1);
        ExpectThrow<CIOException>([&] { s.Write("efgh", 1, 2); }, kSource, "Memory full.");
    }
    {
        FailAllocation fail(1);
        EXPECT_FALSE(s.EnsureBufferCapacity(100));
    }
    EXPECT_EQ(Bytes(s), "abcd");
    s.Write('e'); // still usable
    EXPECT_EQ(Bytes(s), "abcde");
    // A count that would wrap the size is refused the same way, without a copy.
    ExpectThrow<CIOException>([&] { s.Write("x", 0xFFFFFFFFu); }, kSource, "Memory full.");
    EXPECT_EQ(Bytes(s), "abcde");
}

TEST(MemoryOutputStream, CloseKeepsTheBytesAndStopsWrites) {
    CMemoryOutputStream s;
    s.Write("abc", 3);
    s.Close();
    s.Close();
    EXPECT_EQ(Bytes(s), "abc");
    ExpectThrow<CIOException>([&] { s.Write('d'); }, kSource, "Stream closed.");
    ExpectThrow<CIOException>([&] { s.Write("d", 1); }, kSource, "Stream closed.");
    ExpectThrow<CIOException>([&] { s.Write(nullptr, 0, 0); }, kSource, "Stream closed.");
    ExpectThrow<CIOException>([&] { s.Flush(); }, kSource, "Stream closed.");
    const char* block = s.GetBuffer();
    s.Reset(); // works closed, and does not reopen
    EXPECT_EQ(s.GetBufferSize(), 0u);
    EXPECT_EQ(s.GetBuffer(), block);
    ExpectThrow<CIOException>([&] { s.Write('d'); }, kSource, "Stream closed.");
    char* detached = s.DetachBuffer();
    EXPECT_EQ(detached, block);
    ZK_free(detached);
}

TEST(MemoryOutputStream, DetachHandsOverTheBlockAndStartsAnew) {
    CMemoryOutputStream s(8, 8);
    s.Write("abc", 3);
    char* detached = s.DetachBuffer();
    EXPECT_EQ(std::string(detached, 3), "abc");
    EXPECT_EQ(s.GetBuffer(), nullptr);
    EXPECT_EQ(s.GetBufferSize(), 0u);
    EXPECT_EQ(CountAllocations([&] { s.Write('z'); }), 1u);
    EXPECT_NE(s.GetBuffer(), detached);
    EXPECT_EQ(Bytes(s), "z");
    ZK_free(detached);
}

TEST(MemoryOutputStream, ResetKeepsTheBlock) {
    CMemoryOutputStream s(8, 8);
    s.Write("abcdef", 6);
    const char* block = s.GetBuffer();
    s.Reset();
    EXPECT_EQ(s.GetBufferSize(), 0u);
    EXPECT_EQ(s.GetBuffer(), block);
    EXPECT_EQ(CountAllocations([&] { s.Write("12345678", 8); }), 0u);
    EXPECT_EQ(Bytes(s), "12345678");
}

} // namespace

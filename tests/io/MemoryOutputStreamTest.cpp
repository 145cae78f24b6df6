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
    s.Write(nullptr, 0);
    s.Write(nullptr, 5); // refused by the pointer check: nothing, no throw
    s.Write(nullptr, 2, 5);
    s.Flush();
    EXPECT_EQ(Bytes(s), "abcefg");
}

TEST(MemoryOutputStream, GrowsByTheRoundedGranule) {
    CMemoryOutputStream s(100, 64); // 128 bytes
    std::string block(128, 'x');
    EXPECT_EQ(CountAllocations([&] { s.Write(block.data(), 128); }), 0u);
    EXPECT_EQ(CountAllocations([&] { s.Write('y'); }), 1u);
    EXPECT_EQ(CountAllocations([&] { s.Write(block.data(), 63); }), 0u);
    EXPECT_EQ(Bytes(s), block + "y" + block.substr(0, 63));

    CMemoryOutputStream lazy(0, 0); // no block yet, granule 64
    EXPECT_EQ(lazy.GetBuffer(), nullptr);
    EXPECT_EQ(CountAllocations([&] { lazy.Write(block.data(), 64); }), 1u);
    EXPECT_EQ(CountAllocations([&] { lazy.Write('c'); }), 1u);

    CMemoryOutputStream odd(0, 100); // no power of two: 150 rounds to 200
    EXPECT_EQ(CountAllocations([&] { EXPECT_TRUE(odd.EnsureBufferCapacity(150)); }), 1u);
    EXPECT_EQ(CountAllocations([&] { EXPECT_TRUE(odd.EnsureBufferCapacity(200)); }), 0u);
    // With a granule of 100000, 97000 wraps in the rounding to 165408: more than the 100000
    // there are, though the request itself is below them.
    CMemoryOutputStream wide(1, 100000);
    EXPECT_EQ(CountAllocations([&] { EXPECT_TRUE(wide.EnsureBufferCapacity(97000)); }), 1u);
    // 2^32 - 16 rounds past 4 GiB: refused, never a tiny block.
    EXPECT_EQ(CountAllocations([&] { EXPECT_FALSE(lazy.EnsureBufferCapacity(0xFFFFFFF0u)); }), 0u);
}

TEST(MemoryOutputStream, NoMemoryIsMemoryExceptionAtFirstAndMemoryFullLater) {
    vorn::test::ExpectNoMemory([] { CMemoryOutputStream s(10, 8); }, kSource);
    CMemoryOutputStream s(4, 4);
    s.Write("abcd", 4);
    for (auto write : {+[](CMemoryOutputStream& m) { m.Write('e'); },
                       +[](CMemoryOutputStream& m) { m.Write("efgh", 4); },
                       +[](CMemoryOutputStream& m) { m.Write("efgh", 1, 2); }}) {
        FailAllocation fail(1);
        ExpectThrow<CIOException>([&] { write(s); }, kSource, "Memory full.");
    }
    // A count that would wrap the size is refused the same way.
    ExpectThrow<CIOException>([&] { s.Write("x", 0xFFFFFFFFu); }, kSource, "Memory full.");
    EXPECT_EQ(Bytes(s), "abcd");
    s.Write('e'); // still usable
    EXPECT_EQ(Bytes(s), "abcde");
}

TEST(MemoryOutputStream, BytesOutliveCloseResetAndDetach) {
    CMemoryOutputStream s(8, 8);
    s.Write("abc", 3);
    s.Close();
    s.Close();
    EXPECT_EQ(Bytes(s), "abc");
    for (auto call : {+[](CMemoryOutputStream& m) { m.Write('d'); },
                      +[](CMemoryOutputStream& m) { m.Write("d", 1); },
                      +[](CMemoryOutputStream& m) { m.Write(nullptr, 0, 0); },
                      +[](CMemoryOutputStream& m) { m.Flush(); }})
        ExpectThrow<CIOException>([&] { call(s); }, kSource, "Stream closed.");
    const char* block = s.GetBuffer();
    s.Reset(); // keeps the block, and does not reopen
    EXPECT_EQ(s.GetBufferSize(), 0u);
    EXPECT_EQ(s.GetBuffer(), block);
    ExpectThrow<CIOException>([&] { s.Write('d'); }, kSource, "Stream closed.");

    CMemoryOutputStream open(8, 8);
    open.Write("xyz", 3);
    char* detached = open.DetachBuffer();
    EXPECT_EQ(std::string(detached, 3), "xyz");
    EXPECT_EQ(open.GetBuffer(), nullptr);
    EXPECT_EQ(open.GetBufferSize(), 0u);
    EXPECT_EQ(CountAllocations([&] { open.Write('z'); }), 1u);
    EXPECT_EQ(Bytes(open), "z");
    ZK_free(detached);
}

} // namespace

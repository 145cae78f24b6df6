#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include <vorn/base/IllegalArgumentException.h>
#include <vorn/io/IOException.h>
#include <vorn/io/MemoryInputStream.h>

#include "platform/Memory.h"
#include "support/Throws.h"

namespace {

using vorn::io::CMemoryInputStream;
using vorn::test::ExpectThrow;

const char* const kSource = "vorn/io/MemoryInputStream";
const char kTen[] = "0123456789";

TEST(MemoryInputStream, EmptyStreamOverAValidPointer) {
    CMemoryInputStream s(kTen, 0, false);
    char buffer[4];
    EXPECT_EQ(s.Read(), 65535);
    EXPECT_EQ(s.Read(buffer, 1), -1);
    EXPECT_EQ(s.Read(buffer, 0), 0);
    EXPECT_EQ(s.Skip(5), 0);
    EXPECT_EQ(s.GetAvailable(), 0u);
}

TEST(MemoryInputStream, ReadsCopyWhatIsLeftThenEnd) {
    const char bytes[] = "\x7F\x80\xFF";
    CMemoryInputStream high(bytes, 3, false);
    EXPECT_EQ(high.Read(), 0x7F);
    EXPECT_EQ(high.Read(), -128);
    EXPECT_EQ(high.Read(), -1);
    EXPECT_EQ(high.Read(), 65535);

    CMemoryInputStream s(kTen, 10, false);
    char buffer[16] = {};
    EXPECT_EQ(s.Read(buffer, 4), 4);
    EXPECT_EQ(s.Read(buffer, 2, 3), 3);
    EXPECT_EQ(std::string(buffer, 5), "01456");
    EXPECT_EQ(s.Read(buffer, 16), 3);
    EXPECT_EQ(s.Read(buffer, 16), -1);
    EXPECT_EQ(s.Read(buffer, 0), 0);
    s.Reset();
    EXPECT_EQ(s.GetAvailable(), 10u);
}

TEST(MemoryInputStream, NullDestinationSkipsAndSkipCountsWhatItSkipped) {
    CMemoryInputStream s(kTen, 10, false);
    EXPECT_EQ(s.Read(nullptr, 4), 4);
    EXPECT_EQ(s.GetAvailable(), 6u);
    EXPECT_EQ(s.Read(nullptr, 3, 2), 2);
    EXPECT_EQ(s.Read(nullptr, 0), 0);
    EXPECT_EQ(s.Skip(3), 3);
    EXPECT_EQ(s.Read(nullptr, 9), 1);
    EXPECT_EQ(s.Read(nullptr, 9), 0); // the skip's 0, not the read's -1
    EXPECT_EQ(s.Skip(0), 0);
}

TEST(MemoryInputStream, RefusedSourceAndClosedStream) {
    ExpectThrow<vorn::base::CIllegalArgumentException>(
        [] { CMemoryInputStream s(nullptr, 0, false); }, kSource, "Invalid source buffer.");
    CMemoryInputStream s(kTen, 10, false);
    s.Close();
    for (auto call :
         {+[](CMemoryInputStream& m) { m.Read(); },
          +[](CMemoryInputStream& m) { m.Read(nullptr, 1); },
          +[](CMemoryInputStream& m) { m.Read(nullptr, 0, 0); },
          +[](CMemoryInputStream& m) { m.Skip(0); },
          +[](CMemoryInputStream& m) { m.GetAvailable(); },
          +[](CMemoryInputStream& m) { m.Reset(); }, +[](CMemoryInputStream& m) { m.Close(); }})
        ExpectThrow<vorn::io::CIOException>([&] { call(s); }, kSource, "Stream closed.");
}

TEST(MemoryInputStream, OwnedBufferIsReleasedOnCloseOrDestruction) {
    // AddressSanitizer reports a leak or a double free if either path is wrong.
    char* block = static_cast<char*>(ZK_malloc(4));
    std::memcpy(block, "abcd", 4);
    {
        CMemoryInputStream s(block, 4, true);
        EXPECT_EQ(s.Read(), 'a');
    }
    CMemoryInputStream closed(static_cast<char*>(ZK_malloc(4)), 4, true);
    closed.Close();
}

} // namespace

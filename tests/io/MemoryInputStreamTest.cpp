#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include <vorn/base/IllegalArgumentException.h>
#include <vorn/io/IOException.h>
#include <vorn/io/MemoryInputStream.h>

#include "platform/Memory.h"
#include "support/AllocFailure.h"
#include "support/Throws.h"

namespace {

using vorn::io::CInputStream;
using vorn::io::CIOException;
using vorn::io::CMemoryInputStream;
using vorn::test::ExpectThrow;

const char* const kSource = "vorn/io/MemoryInputStream";
const char kTen[] = "0123456789";

TEST(MemoryInputStream, EmptyStreamOverAValidPointer) {
    CMemoryInputStream s(kTen, 0, false);
    char buffer[4];
    EXPECT_EQ(s.Read(), CInputStream::EOS);
    EXPECT_EQ(s.Read(buffer, 1), -1);
    EXPECT_EQ(s.Read(buffer, 0, 1), -1);
    EXPECT_EQ(s.Read(buffer, 0), 0);
    EXPECT_EQ(s.Skip(5), 0);
    EXPECT_EQ(s.GetAvailable(), 0u);
}

TEST(MemoryInputStream, SingleBytesAreSignExtended) {
    const char bytes[] = {'\x7F', '\x80', '\xFF'};
    CMemoryInputStream s(bytes, 3, false);
    EXPECT_EQ(s.Read(), 0x7F);
    EXPECT_EQ(s.Read(), -128);
    EXPECT_EQ(s.Read(), -1);
    EXPECT_EQ(s.Read(), 65535);
}

TEST(MemoryInputStream, CountedReadsCopyWhatIsLeftThenEnd) {
    CMemoryInputStream s(kTen, 10, false);
    char buffer[16] = {};
    EXPECT_EQ(s.Read(buffer, 4), 4);
    EXPECT_EQ(std::string(buffer, 4), "0123");
    EXPECT_EQ(s.Read(buffer, 2, 3), 3);
    EXPECT_EQ(std::string(buffer, 5), "01456");
    EXPECT_EQ(s.Read(buffer, 16), 3);
    EXPECT_EQ(std::string(buffer, 3), "789");
    EXPECT_EQ(s.Read(buffer, 16), -1);
    EXPECT_EQ(s.Read(buffer, 0), 0); // a zero count answers 0 even at the end
    s.Reset();
    EXPECT_EQ(s.GetAvailable(), 10u);
    EXPECT_EQ(s.Read(), '0');
}

TEST(MemoryInputStream, NullDestinationSkips) {
    CMemoryInputStream s(kTen, 10, false);
    EXPECT_EQ(s.Read(nullptr, 4), 4);
    EXPECT_EQ(s.GetAvailable(), 6u);
    EXPECT_EQ(s.Read(nullptr, 3, 2), 2);
    EXPECT_EQ(s.Read(nullptr, 0), 0);
    EXPECT_EQ(s.Read(nullptr, 9), 4);
    EXPECT_EQ(s.Read(nullptr, 9), 0); // the skip's count, not the read's -1
    EXPECT_EQ(s.Read(), CInputStream::EOS);
}

TEST(MemoryInputStream, SkipCountsWhatItSkipped) {
    CMemoryInputStream s(kTen, 10, false);
    EXPECT_EQ(s.Skip(0), 0);
    EXPECT_EQ(s.Skip(3), 3);
    EXPECT_EQ(s.Read(), '3');
    EXPECT_EQ(s.Skip(6), 6);
    EXPECT_EQ(s.Skip(6), 0);
    s.Reset();
    EXPECT_EQ(s.Skip(10), 10);
}

TEST(MemoryInputStream, RejectsANullSource) {
    ExpectThrow<vorn::base::CIllegalArgumentException>(
        [] { CMemoryInputStream s(nullptr, 0, false); }, kSource, "Invalid source buffer.");
}

TEST(MemoryInputStream, EveryOperationOnAClosedStreamThrows) {
    CMemoryInputStream s(kTen, 10, false);
    s.Close();
    char buffer[2];
    ExpectThrow<CIOException>([&] { s.Read(); }, kSource, "Stream closed.");
    ExpectThrow<CIOException>([&] { s.Read(buffer, 1); }, kSource, "Stream closed.");
    ExpectThrow<CIOException>([&] { s.Read(nullptr, 0, 0); }, kSource, "Stream closed.");
    ExpectThrow<CIOException>([&] { s.Skip(0); }, kSource, "Stream closed.");
    ExpectThrow<CIOException>([&] { s.GetAvailable(); }, kSource, "Stream closed.");
    ExpectThrow<CIOException>([&] { s.Reset(); }, kSource, "Stream closed.");
    ExpectThrow<CIOException>([&] { s.Close(); }, kSource, "Stream closed.");
}

TEST(MemoryInputStream, OwnedBufferIsReleasedOnCloseOrDestruction) {
    // AddressSanitizer reports a leak or a double free if either path is wrong.
    char* block = static_cast<char*>(ZK_malloc(4));
    std::memcpy(block, "abcd", 4);
    {
        CMemoryInputStream s(block, 4, true);
        EXPECT_EQ(s.Read(), 'a');
    }
    block = static_cast<char*>(ZK_malloc(4));
    CMemoryInputStream closed(block, 4, true);
    closed.Close();
}

TEST(MemoryInputStream, RegisteredUnderItsBase) {
    CMemoryInputStream s(kTen, 1, false);
    EXPECT_STREQ(s.GetClass()->GetQualifiedName(), "vorn::io::CMemoryInputStream");
    EXPECT_STREQ(s.GetClass()->GetQualifiedBaseClassName1(), "vorn::io::CInputStream");
    EXPECT_EQ(vorn::test::CountAllocations([] { CMemoryInputStream t(kTen, 10, false); }), 0u);
}

} // namespace

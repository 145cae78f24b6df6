// CBufferedInputStream and, by its differences, CBufferedReader.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <vorn/base/IllegalArgumentException.h>
#include <vorn/io/BufferedInputStream.h>
#include <vorn/io/BufferedReader.h>
#include <vorn/io/IOException.h>
#include <vorn/io/MemoryInputStream.h>

#include "support/Recording.h"
#include "support/Throws.h"

namespace {

using vorn::base::CIllegalArgumentException;
using vorn::io::CBufferedInputStream;
using vorn::io::CBufferedReader;
using vorn::io::CIOException;
using vorn::io::CMemoryInputStream;
using vorn::test::ExpectThrow;
using vorn::test::W;
using vorn::test::WString;

const char* const kSource = "vorn/io/BufferedInputStream";
const char* const kReader = "vorn/io/BufferedReader";
const char kBytes[] = "\x01\x02\x03\x04\x05\x06\x07\x08\x09\x0A";

TEST(BufferedInputStream, ConstructionAndTheDefaultSize) {
    EXPECT_EQ(vorn::test::CountAllocations([] {
                  ExpectThrow<CIllegalArgumentException>([] { CBufferedInputStream s(nullptr, 4); },
                                                         kSource, "Invalid input stream.");
              }),
              0u); // refused before the buffer
    const std::string bytes(1000, 'x');
    CMemoryInputStream beneath(bytes.data(), 1000, false);
    vorn::test::ExpectNoMemory([&] { CBufferedInputStream t(&beneath, 4); }, kSource);
    CBufferedInputStream s(&beneath, 0);
    EXPECT_EQ(s.Read(), 'x');
    EXPECT_EQ(beneath.GetAvailable(), 488u); // one fill of 512
    EXPECT_EQ(s.GetAvailable(), 999u);
}

TEST(BufferedInputStream, LargeReadsBypassTheBufferAndSmallOnesRefillOnce) {
    CMemoryInputStream ten(kBytes, 10, false);
    CBufferedInputStream s(&ten, 4);
    char buffer[8] = {};
    EXPECT_EQ(s.Read(), 1);
    EXPECT_EQ(s.Read(buffer, 5), 5); // direct: 5 to 9, ahead of 2 to 4
    EXPECT_EQ(std::string(buffer, 5), "\x05\x06\x07\x08\x09");
    EXPECT_EQ(s.Read(), 2);

    CMemoryInputStream six(kBytes, 6, false);
    CBufferedInputStream t(&six, 4);
    EXPECT_EQ(t.Read(buffer, 3), 3);
    EXPECT_EQ(t.Read(buffer, 1, 4), 3); // 4, then a refill with 5 and 6
    EXPECT_EQ(std::string(buffer, 4), "\x01\x04\x05\x06");
    EXPECT_EQ(t.Read(buffer, 1), 0); // 0 at the end, where the stream beneath gives -1
    EXPECT_EQ(t.Read(), vorn::io::CInputStream::EOS);
}

TEST(BufferedInputStream, SkipResetAndClose) {
    CMemoryInputStream ten(kBytes, 10, false);
    CBufferedInputStream s(&ten, 4);
    EXPECT_EQ(s.Read(), 1);
    EXPECT_EQ(s.Skip(2), 2);          // from the buffer
    EXPECT_EQ(s.Read(nullptr, 3), 3); // one buffered, two beneath
    EXPECT_EQ(s.Read(), 7);
    EXPECT_EQ(s.Skip(10), 3);
    s.Reset();
    EXPECT_EQ(s.GetAvailable(), 10u);
    ten.Close();
    // The stream beneath refuses its Close: closed all the same.
    ExpectThrow<CIOException>([&] { s.Close(); }, "vorn/io/MemoryInputStream", "Stream closed.");
    for (auto call :
         {+[](CBufferedInputStream& b) { b.Read(); },
          +[](CBufferedInputStream& b) { b.Read(nullptr, 0); },
          +[](CBufferedInputStream& b) { b.Read(nullptr, 0, 0); },
          +[](CBufferedInputStream& b) { b.Skip(0); },
          +[](CBufferedInputStream& b) { b.GetAvailable(); },
          +[](CBufferedInputStream& b) { b.Reset(); }, +[](CBufferedInputStream& b) { b.Close(); }})
        ExpectThrow<CIOException>([&] { call(s); }, kSource, "Stream closed.");
}

TEST(BufferedReader, ARequestSpanningARefillLosesTheBufferedUnits) {
    vorn::test::CUnitSource source(W(u"abcdef"));
    CBufferedReader r(&source, 4);
    unsigned short units[8] = {};
    EXPECT_EQ(r.Read(units, 3), 3);
    EXPECT_EQ(r.Read(units, 2, 4), 2); // d, then e and f over it
    EXPECT_EQ(WString(units, 4), W(u"abef"));
    EXPECT_EQ(r.Read(units, 1), 0);
    EXPECT_EQ(r.Read(), vorn::io::CReader::EOS);
    r.Reset();
    EXPECT_EQ(r.Read(units, 3), 3);
    EXPECT_EQ(r.Read(units, 1), 1); // not below the one buffered: d is lost to e
    EXPECT_EQ(units[0], 'e');
    EXPECT_EQ(r.Read(units, 5), -1); // above the capacity: straight beneath, past the buffered f
    EXPECT_EQ(r.Read(), 'f');
    EXPECT_EQ(source.asked, (std::vector<unsigned int>{4, 4, 4, 4, 4, 4, 5}));
}

TEST(BufferedReader, ConstructionSkipAndClose) {
    ExpectThrow<CIllegalArgumentException>([] { CBufferedReader r(nullptr, 0); }, kReader,
                                           "Invalid reader.");
    vorn::test::CUnitSource source(W(u"\xFFFF"
                                     "bcdefgh"));
    ExpectThrow<CIllegalArgumentException>([&] { CBufferedReader r(&source, 0); }, kReader,
                                           "Invalid buffer size.");
    vorn::test::ExpectNoMemory([&] { CBufferedReader r(&source, 4); }, kReader);
    CBufferedReader r(&source, 4);
    EXPECT_EQ(r.Read(), 0xFFFF);      // zero-extended
    EXPECT_EQ(r.Read(nullptr, 5), 5); // three buffered, two beneath
    EXPECT_EQ(r.Read(), 'g');
    source.failClose = true;
    ExpectThrow<CIOException>([&] { r.Close(); }, "test/Recording", "Close failed.");
    ExpectThrow<CIOException>([&] { r.Read(); }, kReader, "Reader closed.");
    ExpectThrow<CIOException>([&] { r.Close(); }, kReader, "Reader closed.");
}

} // namespace

// CPushbackInputStream and, by its differences, CPushbackReader.
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include <vorn/base/IllegalArgumentException.h>
#include <vorn/io/IOException.h>
#include <vorn/io/MemoryInputStream.h>
#include <vorn/io/PushbackInputStream.h>
#include <vorn/io/PushbackReader.h>

#include "support/Recording.h"
#include "support/Throws.h"

namespace {

using vorn::base::CIllegalArgumentException;
using vorn::io::CInputStream;
using vorn::io::CIOException;
using vorn::io::CMemoryInputStream;
using vorn::io::CPushbackInputStream;
using vorn::io::CPushbackReader;
using vorn::test::ExpectThrow;
using vorn::test::W;

const char* const kSource = "vorn/io/PushbackInputStream";
const char* const kReader = "vorn/io/PushbackReader";
const char kBytes[] = "\x01\x02\x03\x04\x05\x06\x07\x08\x09\x0A";

void ExpectFull(const std::function<void()>& call, const char* source = kSource) {
    ExpectThrow<CIOException>(call, source, "Pushback buffer is full.");
}

TEST(PushbackInputStream, Construction) {
    CMemoryInputStream beneath(kBytes, 10, false);
    // The stream is refused before the size, and both before the buffer is asked for.
    EXPECT_EQ(vorn::test::CountAllocations([] {
                  ExpectThrow<CIllegalArgumentException>([] { CPushbackInputStream s(nullptr, 0); },
                                                         kSource, "Invalid input stream.");
                  ExpectThrow<CIllegalArgumentException>(
                      [] { CPushbackInputStream s(vorn::base::CRef<CInputStream>(), 1); }, kSource,
                      "Invalid input stream.");
              }),
              0u);
    ExpectThrow<CIllegalArgumentException>([&] { CPushbackInputStream s(&beneath, 0); }, kSource,
                                           "Invalid pushback buffer size.");
    vorn::test::ExpectNoMemory([&] { CPushbackInputStream s(&beneath, 4); }, kSource);
    ExpectThrow<CIllegalArgumentException>([] { CPushbackReader r(nullptr, 1); }, kReader,
                                           "Invalid reader.");
}

TEST(PushbackInputStream, UnreadBytesComeBackInOrderUpToTheSize) {
    CMemoryInputStream beneath("\x05\x06", 2, false);
    CPushbackInputStream s(&beneath, 3);
    EXPECT_EQ(s.Read(), 5);
    s.Unread('\x09');
    EXPECT_EQ(s.Read(), 9);
    EXPECT_EQ(s.Read(), 6);
    // Single bytes last one first, a block in its own order, a block behind singles held.
    s.Unread('\x01');
    s.Unread('\x02');
    s.Unread('\x03');
    ExpectFull([&] { s.Unread('\x04'); });
    EXPECT_EQ(s.Read(), 3);
    EXPECT_EQ(s.Read(), 2);
    s.Unread(kBytes, 4, 2); // 5, 6 in front of 1
    ExpectFull([&] { s.Unread(kBytes, 1); });
    ExpectFull([&] { s.Unread(nullptr, 1); }); // room first, even for no block
    char buffer[8] = {};
    EXPECT_EQ(s.Read(buffer, 1, 3), 3);
    EXPECT_EQ(std::string(buffer + 1, 3), "\x05\x06\x01");
    ExpectFull([&] { s.Unread(nullptr, 4); });
    s.Unread(nullptr, 3); // no block, nothing held
    s.Unread(kBytes, 0);
    EXPECT_EQ(s.GetAvailable(), 0u);
    EXPECT_EQ(s.Read(), CInputStream::EOS);
    // A byte above 0x7F comes back sign-extended, as from any stream.
    s.Unread('\xFF');
    EXPECT_EQ(s.Read(), -1);
}

TEST(PushbackInputStream, CountedReadsJoinHeldBytesToTheStreamBeneath) {
    CMemoryInputStream ten(kBytes, 10, false);
    CPushbackInputStream s(&ten, 4);
    char buffer[16] = {};
    s.Unread("\x0B\x0C", 2);
    EXPECT_EQ(s.Read(buffer, 1), 1); // fewer than held: no call beneath
    EXPECT_EQ(ten.GetAvailable(), 10u);
    EXPECT_EQ(s.Read(buffer, 4), 4); // the one held, then three from beneath
    EXPECT_EQ(std::string(buffer, 4), "\x0C\x01\x02\x03");
    // A null destination skips instead: the held byte and one beneath.
    s.Unread('\x0D');
    EXPECT_EQ(s.Read(nullptr, 2), 2);
    EXPECT_EQ(s.Read(nullptr, 0), 0);
    EXPECT_EQ(s.Read(), 5);

    // At the end beneath, its -1 is added to what was held.
    CMemoryInputStream none(kBytes, 0, false);
    CPushbackInputStream t(&none, 4);
    EXPECT_EQ(t.Read(buffer, 4), -1);
    t.Unread('\x07');
    EXPECT_EQ(t.Read(buffer, 2, 4), 0);
    EXPECT_EQ(buffer[2], '\x07');
    t.Unread("\x08\x09", 2);
    EXPECT_EQ(t.Read(buffer, 2), 2); // just what is held: beneath asked for 0, which is 0
}

TEST(PushbackInputStream, SkipAvailableAndReset) {
    CMemoryInputStream ten(kBytes, 10, false);
    CPushbackInputStream s(&ten, 4);
    s.Unread('\x00');
    EXPECT_EQ(s.GetAvailable(), 11u);
    EXPECT_EQ(s.Skip(3), 3);
    EXPECT_EQ(s.GetAvailable(), 8u);
    s.Unread("\x0B\x0C", 2);
    EXPECT_EQ(s.Skip(1), 1);
    EXPECT_EQ(s.Read(), 12);
    s.Unread('\x0E');
    s.Reset();
    EXPECT_EQ(s.GetAvailable(), 10u);
    EXPECT_EQ(s.Read(), 1);
}

TEST(PushbackInputStream, ClosedStreamTakesBytesButGivesNone) {
    CMemoryInputStream ten(kBytes, 10, false);
    CPushbackInputStream s(&ten, 2);
    s.Close();
    EXPECT_THROW(ten.GetAvailable(), CIOException);
    s.Unread('\x01');
    char buffer[4];
    for (const auto& call : std::initializer_list<std::function<void()>>{
             [&] { s.Read(); }, [&] { s.Read(buffer, 0, 1); }, [&] { s.Skip(1); },
             [&] { s.GetAvailable(); }, [&] { s.Reset(); }, [&] { s.Close(); }})
        ExpectThrow<CIOException>(call, kSource, "Stream closed.");
}

TEST(PushbackInputStream, TheReaderInUnits) {
    vorn::test::CUnitSource units(W(u"ab"));
    units.units.push_back(0xFFFF);
    CPushbackReader r(&units, 2);
    r.Unread(W(u"xy").c_str(), 1, 1);
    r.Unread(static_cast<unsigned short>(0x8000));
    ExpectFull([&] { r.Unread(static_cast<unsigned short>('z')); }, kReader);
    unsigned short buffer[8] = {};
    EXPECT_EQ(r.Read(), 0x8000); // zero-extended
    EXPECT_EQ(r.Read(buffer, 1, 3), 3);
    EXPECT_EQ(vorn::test::WString(buffer + 1, 3), W(u"yab"));
    EXPECT_EQ(r.Read(), 0xFFFF);
    EXPECT_EQ(r.Read(), vorn::io::CReader::EOS);
    units.failClose = true;
    EXPECT_THROW(r.Close(), CIOException);
    ExpectThrow<CIOException>([&] { r.Read(); }, kReader, "Reader closed.");
}

} // namespace

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <string>

#include <vorn/base/IllegalArgumentException.h>
#include <vorn/base/MemoryException.h>
#include <vorn/io/DataInputStream.h>
#include <vorn/io/DataOutputStream.h>
#include <vorn/io/IOException.h>
#include <vorn/io/MemoryInputStream.h>
#include <vorn/io/MemoryOutputStream.h>

#include "support/AllocFailure.h"
#include "support/Throws.h"
#include "support/Utf16.h"

namespace {

using vorn::base::CIllegalArgumentException;
using vorn::base::CMemoryException;
using vorn::base::CRef;
using vorn::base::CUnicodeString;
using vorn::io::CDataInputStream;
using vorn::io::CDataOutputStream;
using vorn::io::CInputStream;
using vorn::io::CIOException;
using vorn::io::CMemoryInputStream;
using vorn::io::CMemoryOutputStream;
using vorn::io::ISerializable;
using vorn::test::ExpectThrow;
using vorn::test::Units;
using vorn::test::W;

constexpr const char* kSource = "vorn/io/DataInputStream";

// Hands out at most `step` bytes per counted read, and counts the reads.
class CTrickle : public CMemoryInputStream {
public:
    CTrickle(const std::string& bytes, unsigned int step)
        : CMemoryInputStream(bytes.data(), static_cast<unsigned int>(bytes.size()), false),
          m_step(step) {}
    int Read(char* buffer, unsigned int offset, unsigned int count) override {
        ++reads;
        return CMemoryInputStream::Read(buffer, offset, count < m_step ? count : m_step);
    }
    int Read(char* buffer, unsigned int count) override { return Read(buffer, 0, count); }
    int reads = 0;

private:
    unsigned int m_step;
};

// A record that writes and reads itself.
struct CPoint : ISerializable {
    int x = 0;
    short y = 0;
    CUnicodeString name;
    void Read(CDataInputStream& stream) override { stream >> x >> y >> name; }
    void Write(CDataOutputStream& stream) const override { stream << x << y << name; }
};

TEST(DataInputStream, ReadsWhatTheWriterWrote) {
    CMemoryOutputStream memory;
    CDataOutputStream out(&memory);
    CPoint point;
    point.x = -7;
    point.y = 300;
    point.name = W(u"P\u00e9\u20ac").c_str();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    out << true << false << '\x80' << static_cast<unsigned char>(0xFE) << short(-32768)
        << static_cast<unsigned short>(65535) << -2147483647 - 1 << 4294967295u << -0.0f << nan
        << CUnicodeString("text") << point;

    CMemoryInputStream source(memory.GetBuffer(), memory.GetBufferSize(), false);
    CDataInputStream in(&source);
    EXPECT_TRUE(in.ReadBool());
    EXPECT_FALSE(in.ReadBool());
    EXPECT_EQ(in.ReadByte(), '\x80');
    EXPECT_EQ(in.ReadSByte(), 0xFE);
    EXPECT_EQ(in.ReadInt16(), -32768);
    EXPECT_EQ(in.ReadUInt16(), 65535);
    EXPECT_EQ(in.ReadInt32(), -2147483647 - 1);
    EXPECT_EQ(in.ReadUInt32(), 4294967295u);
    const float zero = in.ReadFloat();
    EXPECT_TRUE(zero == 0.0f && std::signbit(zero));
    EXPECT_TRUE(std::isnan(in.ReadDouble()));
    EXPECT_EQ(in.ReadString(), "text");
    CPoint back;
    in >> back;
    EXPECT_EQ(back.x, -7);
    EXPECT_EQ(back.y, 300);
    EXPECT_EQ(Units(back.name), W(u"P\u00e9\u20ac"));
    EXPECT_EQ(in.GetAvailable(), 0u);
}

TEST(DataInputStream, OddBytesAndTheEndReadQuietly) {
    const std::string bytes("\x02\x00\x00\x00\x05"
                            "a\0bcd"
                            "\x00\x00\x00\x09"
                            "xy",
                            16);
    CMemoryInputStream source(bytes.data(), static_cast<unsigned int>(bytes.size()), false);
    CDataInputStream in(&source);
    EXPECT_FALSE(in.ReadBool()); // only the byte 1 is true
    // The text ends at the first NUL, whatever the count says; a count past the data gives
    // what there was.
    EXPECT_EQ(in.ReadString(), "a");
    EXPECT_EQ(in.ReadString(), "xy");
    EXPECT_EQ(in.ReadByte(), '\xff');
    EXPECT_EQ(in.ReadSByte(), 0xFF);
    EXPECT_FALSE(in.ReadBool());
    EXPECT_EQ(in.ReadInt32(), 0);
    EXPECT_EQ(in.ReadDouble(), 0.0);
    EXPECT_TRUE(in.ReadString().IsEmpty());

    // A text with U+0000 comes back up to it.
    CMemoryOutputStream memory;
    CDataOutputStream out(&memory);
    CUnicodeString cut("a_b");
    cut.SetAt(1, 0);
    out << cut;
    CMemoryInputStream written(memory.GetBuffer(), memory.GetBufferSize(), false);
    EXPECT_EQ(CDataInputStream(&written).ReadString(), "a");
}

TEST(DataInputStream, OneReadPerValueWithNoGathering) {
    const std::string numbers("\x01\x02\x03\x04\x05\x06", 6);
    CTrickle trickle(numbers, 1);
    CDataInputStream in(&trickle);
    EXPECT_EQ(in.ReadInt32(), 0x01000000);
    EXPECT_EQ(in.ReadInt16(), 0x0200);
    EXPECT_EQ(trickle.reads, 2);
    // Three bytes of the count arrive, the fourth stays zero: the count is 0.
    const std::string counted("\x00\x00\x00\x03"
                              "abc",
                              7);
    CTrickle text(counted, 3);
    CDataInputStream reader(&text);
    EXPECT_EQ(reader.ReadString(), "");
    EXPECT_EQ(text.reads, 2);
}

TEST(DataInputStream, BytesPassThrough) {
    const std::string bytes("abcdef");
    CMemoryInputStream source(bytes.data(), 6, false);
    CDataInputStream in(&source);
    char buffer[4] = {};
    EXPECT_EQ(in.Read(), 'a');
    EXPECT_EQ(in.Read(buffer, 2), 2);
    EXPECT_EQ(in.Read(buffer, 2, 1), 1);
    EXPECT_EQ(std::string(buffer, 3), "bcd");
    EXPECT_EQ(in.Skip(1), 1);
    EXPECT_EQ(in.GetAvailable(), 1u);
    in.Reset();
    EXPECT_EQ(in.GetAvailable(), 6u);
}

TEST(DataInputStream, ConstructionCloseAndClosedStream) {
    ExpectThrow<CIllegalArgumentException>([] { CDataInputStream(CRef<CInputStream>()); }, kSource,
                                           "Invalid input stream.");
    ExpectThrow<CIllegalArgumentException>(
        [] { CDataInputStream(static_cast<CInputStream*>(nullptr)); }, kSource,
        "Invalid intput stream.");

    auto* shared = new CMemoryInputStream("x", 1, false);
    CDataInputStream in{CRef<CInputStream>(shared)};
    in.Close();
    in.Close();
    // The stream beneath was closed once: a second Close of it throws.
    ExpectThrow<CIOException>([&] { shared->Close(); }, "vorn/io/MemoryInputStream",
                              "Stream closed.");
    const char* closed = "Stream closed.";
    ExpectThrow<CIOException>([&] { in.ReadInt32(); }, kSource, closed);
    ExpectThrow<CIOException>([&] { in.ReadString(); }, kSource, closed);
    ExpectThrow<CIOException>([&] { in.Read(); }, kSource, closed);
    ExpectThrow<CIOException>([&] { in.GetAvailable(); }, kSource, closed);
    ExpectThrow<CIOException>([&] { in.Reset(); }, kSource, closed);
    CPoint point;
    ExpectThrow<CIOException>([&] { in >> point; }, kSource, closed);

    // A Close that fails beneath closes the decorator all the same.
    CMemoryInputStream gone("x", 1, false);
    gone.Close();
    CDataInputStream decorator(&gone);
    ExpectThrow<CIOException>([&] { decorator.Close(); }, "vorn/io/MemoryInputStream", closed);
    decorator.Close();
    ExpectThrow<CIOException>([&] { decorator.ReadBool(); }, kSource, closed);
}

TEST(DataInputStream, StringMemoryFailures) {
    const std::string bytes("\x00\x00\x00\x02"
                            "ok"
                            "\xff\xff\xff\xff",
                            10);
    CMemoryInputStream source(bytes.data(), 10, false);
    CDataInputStream in(&source);
    vorn::test::ExpectThrowAt<CMemoryException>(
        [&] {
            vorn::test::FailAllocation fail(1);
            in.ReadString();
        },
        "vorn/base/StringBuffer", 297);
    // A count whose room with the terminator can't be counted can't be had either.
    EXPECT_EQ(in.ReadUInt32(), 0x6F6BFFFFu);
    source.Reset();
    source.Skip(6);
    ExpectThrow<CMemoryException>([&] { in.ReadString(); }, kSource);
}

} // namespace

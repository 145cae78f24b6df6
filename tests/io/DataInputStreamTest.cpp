#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include <vorn/base/IllegalArgumentException.h>
#include <vorn/base/MemoryException.h>
#include <vorn/io/DataOutputStream.h>
#include <vorn/io/IOException.h>
#include <vorn/io/JavaDataInputStream.h>
#include <vorn/io/MemoryInputStream.h>
#include <vorn/io/MemoryOutputStream.h>

#include "support/AllocFailure.h"
#include "support/Throws.h"
#include "support/Utf16.h"

namespace {

using vorn::base::CUnicodeString;
using vorn::io::CDataInputStream;
using vorn::io::CDataOutputStream;
using vorn::io::CInputStream;
using vorn::io::CIOException;
using vorn::io::CMemoryInputStream;
using vorn::test::ExpectThrow;
using vorn::test::Units;
using vorn::test::W;

constexpr const char* kSource = "vorn/io/DataInputStream";

// A memory stream over `bytes` (kept by the caller) that hands out at most `step` bytes per
// counted read, and counts the reads.
class CTrickle : public CMemoryInputStream {
public:
    CTrickle(const std::string& bytes, unsigned int step = ~0u)
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

struct CPoint : vorn::io::ISerializable {
    int x = 0;
    short y = 0;
    CUnicodeString name;
    void Read(CDataInputStream& stream) override { stream >> x >> y >> name; }
    void Write(CDataOutputStream& stream) const override { stream << x << y << name; }
};

TEST(DataInputStream, ReadsWhatTheWriterWrote) {
    vorn::io::CMemoryOutputStream memory;
    CDataOutputStream out(&memory);
    CPoint point;
    point.x = -7;
    point.y = 300;
    point.name = W(u"P\u00e9\u20ac").c_str();
    CUnicodeString cut("a_b"); // U+0000 ends the text that comes back
    cut.SetAt(1, 0);
    out << true << '\x80' << static_cast<unsigned char>(0xFE) << short(-32768)
        << static_cast<unsigned short>(65535) << -2147483647 - 1 << 4294967295u << -0.0f
        << std::numeric_limits<double>::quiet_NaN() << point << cut;

    CMemoryInputStream source(memory.GetBuffer(), memory.GetBufferSize(), false);
    CDataInputStream in(&source);
    EXPECT_TRUE(in.ReadBool());
    EXPECT_EQ(in.ReadByte(), '\x80');
    EXPECT_EQ(in.ReadSByte(), 0xFE);
    EXPECT_EQ(in.ReadInt16(), -32768);
    EXPECT_EQ(in.ReadUInt16(), 65535);
    EXPECT_EQ(in.ReadInt32(), -2147483647 - 1);
    EXPECT_EQ(in.ReadUInt32(), 4294967295u);
    EXPECT_TRUE(std::signbit(in.ReadFloat()));
    EXPECT_TRUE(std::isnan(in.ReadDouble()));
    CPoint back;
    in >> back;
    EXPECT_EQ(back.x, -7);
    EXPECT_EQ(back.y, 300);
    EXPECT_EQ(Units(back.name), W(u"P\u00e9\u20ac"));
    EXPECT_EQ(in.ReadString(), "a");
    EXPECT_EQ(in.GetAvailable(), 0u);
}

TEST(DataInputStream, OneReadPerValueAndQuietEnds) {
    const std::string bytes("\x02\x00\x00\x00\x05"
                            "a\0bcd"
                            "\x00\x00\x00\x09"
                            "xy",
                            16);
    CTrickle source(bytes);
    CDataInputStream in(&source);
    EXPECT_FALSE(in.ReadBool());      // only the byte 1 is true
    EXPECT_EQ(in.ReadString(), "a");  // up to the first NUL, whatever the count says
    EXPECT_EQ(in.ReadString(), "xy"); // a count past the data gives what there was
    EXPECT_EQ(source.reads, 4);
    EXPECT_EQ(in.ReadByte(), '\xff');
    EXPECT_EQ(in.ReadSByte(), 0xFF);
    EXPECT_FALSE(in.ReadBool());
    EXPECT_EQ(in.ReadInt32(), 0);
    EXPECT_TRUE(in.ReadString().IsEmpty());

    // No gathering: what a short read leaves out stays zero, here three bytes of each number
    // and of the string's count.
    const std::string numbers("\x01\x02\x00", 3);
    CTrickle trickle(numbers, 1);
    CDataInputStream slow(&trickle);
    EXPECT_EQ(slow.ReadInt32(), 0x01000000);
    EXPECT_EQ(slow.ReadInt16(), 0x0200);
    EXPECT_TRUE(slow.ReadString().IsEmpty());
    EXPECT_EQ(trickle.reads, 4);
}

TEST(DataInputStream, ConstructionCloseAndFailures) {
    ExpectThrow<vorn::base::CIllegalArgumentException>(
        [] { CDataInputStream(vorn::base::CRef<CInputStream>()); }, kSource,
        "Invalid input stream.");
    ExpectThrow<vorn::base::CIllegalArgumentException>(
        [] { vorn::io::CJavaDataInputStream(static_cast<CInputStream*>(nullptr)); }, kSource,
        "Invalid intput stream.");
    auto* shared = new CMemoryInputStream("x", 1, false);
    CDataInputStream in{vorn::base::CRef<CInputStream>(shared)};
    in.Close();
    in.Close();
    // Closed once beneath, so closing it again there throws.
    ExpectThrow<CIOException>([&] { shared->Close(); }, "vorn/io/MemoryInputStream",
                              "Stream closed.");
    for (auto call :
         {+[](CDataInputStream& s) { s.ReadInt32(); }, +[](CDataInputStream& s) { s.ReadString(); },
          +[](CDataInputStream& s) { s.Read(); }, +[](CDataInputStream& s) { s.GetAvailable(); },
          +[](CDataInputStream& s) {
              CPoint point;
              s >> point;
          }})
        ExpectThrow<CIOException>([&] { call(in); }, kSource, "Stream closed.");
    // A Close that fails beneath closes the decorator all the same.
    CMemoryInputStream gone("x", 1, false);
    gone.Close();
    CDataInputStream decorator(&gone);
    ExpectThrow<CIOException>([&] { decorator.Close(); }, "vorn/io/MemoryInputStream",
                              "Stream closed.");
    ExpectThrow<CIOException>([&] { decorator.ReadBool(); }, kSource, "Stream closed.");

    const std::string bytes("\x00\x00\x00\x02ok\xff\xff\xff\xff", 10);
    CMemoryInputStream counts(bytes.data(), 10, false);
    CDataInputStream strings(&counts);
    vorn::test::ExpectThrowAt<vorn::base::CMemoryException>(
        [&] {
            vorn::test::FailAllocation fail(1);
            strings.ReadString();
        },
        "vorn/base/StringBuffer", 297);
    counts.Skip(2);
    // Room for this count and a terminator can't be counted in 32 bits.
    ExpectThrow<vorn::base::CMemoryException>([&] { strings.ReadString(); }, kSource);
}

TEST(JavaDataInputStream, SixteenBitCounts) {
    const std::string bytes("\x00\x02\xc3\xa9\x00\x00\x00\x00\x00\x01", 10);
    CMemoryInputStream source(bytes.data(), 10, false);
    vorn::io::CJavaDataInputStream in(&source);
    EXPECT_EQ(Units(in.ReadString()), W(u"\u00e9"));
    EXPECT_TRUE(in.ReadString().IsEmpty());
    EXPECT_EQ(in.ReadInt32(), 1);
    in.Close();
    ExpectThrow<CIOException>([&] { in.ReadString(); }, "vorn/io/JavaDataInputStream",
                              "Stream closed.");
}

} // namespace

#include <gtest/gtest.h>

#include <vorn/base/IllegalArgumentException.h>
#include <vorn/io/DataOutputStream.h>
#include <vorn/io/IOException.h>
#include <vorn/io/MemoryOutputStream.h>

#include "support/AllocFailure.h"
#include "support/StreamLog.h"
#include "support/Throws.h"
#include "support/Utf16.h"

namespace {

using vorn::base::CIllegalArgumentException;
using vorn::base::CRef;
using vorn::base::CUnicodeString;
using vorn::io::CDataInputStream;
using vorn::io::CDataOutputStream;
using vorn::io::CIOException;
using vorn::io::CMemoryOutputStream;
using vorn::io::COutputStream;
using vorn::io::ISerializable;
using vorn::test::CStreamLog;
using vorn::test::ExpectThrow;
using vorn::test::W;

constexpr const char* kSource = "vorn/io/DataOutputStream";

class CTag : public ISerializable {
public:
    void Read(CDataInputStream&) override {}
    void Write(CDataOutputStream& stream) const override { stream << 'T' << short(1); }
};

TEST(DataOutputStream, OneWritePerValueInTheWireFormat) {
    CStreamLog log;
    CDataOutputStream out(&log);
    out.WriteInt32(16909060);
    out.WriteInt16(-2);
    out.WriteUInt32(0xFFFFFFFEu);
    out.WriteUInt16(0x8001);
    out.WriteBool(true);
    out.WriteBool(false);
    out.WriteByte('\x80');
    out.WriteUByte(0xFE);
    EXPECT_EQ(log.log, "[01020304][FFFE][FFFFFFFE][8001]<01><00><80><FE>");
    log.log.clear();
    // Floating values keep the machine's byte order.
    out.WriteFloat(1.0f);
    out.WriteDouble(1.0);
    EXPECT_EQ(log.log, "[0000803F][000000000000F03F]");
    log.log.clear();
    out.WriteString(CUnicodeString(W(u"\u00e9").c_str()));
    out.WriteString(CUnicodeString());
    EXPECT_EQ(log.log, "[00000002][C3A9][00000000][]");
    log.log.clear();
    // A null or empty pointer writes nothing, not even a count.
    out.WriteString(static_cast<const unsigned short*>(nullptr));
    out.WriteString(W(u"").c_str());
    EXPECT_EQ(log.log, "");
    out.WriteString(W(u"ab").c_str());
    EXPECT_EQ(log.log, "[00000002][6162]");
}

TEST(DataOutputStream, OperatorsChainAndBytesPassThrough) {
    CStreamLog log;
    CDataOutputStream out(&log);
    const unsigned short* none = nullptr;
    out << true << 'a' << static_cast<unsigned char>(0xFF) << short(-1)
        << static_cast<unsigned short>(2) << 3 << 4u << CUnicodeString("x") << none << CTag();
    EXPECT_EQ(log.log, "<01><61><FF>[FFFF][0002][00000003][00000004][00000001][78]<54>[0001]");
    log.log.clear();
    out << 0.5f << 0.5;
    EXPECT_EQ(log.log, "[0000003F][000000000000E03F]");
    log.log.clear();
    out.Write('z');
    out.Write("abc", 2);
    out.Write("abc", 1, 2);
    out.Flush();
    EXPECT_EQ(log.log, "<7A>[6162][6263]F");
}

TEST(DataOutputStream, NumbersAllocateNothing) {
    CMemoryOutputStream memory(1024, 64);
    CDataOutputStream out(&memory);
    EXPECT_EQ(
        vorn::test::CountAllocations([&] { out << 1 << short(2) << 3.0 << 4.0f << true << 'c'; }),
        0u);
    EXPECT_EQ(memory.GetBufferSize(), 4u + 2 + 8 + 4 + 1 + 1);
}

TEST(DataOutputStream, ConstructionCloseAndClosedStream) {
    ExpectThrow<CIllegalArgumentException>([] { CDataOutputStream(CRef<COutputStream>()); },
                                           kSource, "Invalid output stream.");
    ExpectThrow<CIllegalArgumentException>(
        [] { CDataOutputStream(static_cast<COutputStream*>(nullptr)); }, kSource,
        "Invalid output stream.");

    // The handle keeps the stream beneath alive; Close doesn't flush, and a second does nothing.
    auto* shared = new CStreamLog;
    CDataOutputStream out{CRef<COutputStream>(shared)};
    out.Close();
    out.Close();
    EXPECT_EQ(shared->log, "C");
    const char* closed = "Stream closed.";
    ExpectThrow<CIOException>([&] { out.WriteInt32(1); }, kSource, closed);
    ExpectThrow<CIOException>([&] { out.WriteString(CUnicodeString()); }, kSource, closed);
    ExpectThrow<CIOException>([&] { out.WriteObject(CTag()); }, kSource, closed);
    ExpectThrow<CIOException>([&] { out.Write("a", 1); }, kSource, closed);
    ExpectThrow<CIOException>([&] { out.Flush(); }, kSource, closed);
    // The empty pointer returns before the closed check.
    out.WriteString(static_cast<const unsigned short*>(nullptr));

    // A failing Close beneath still closes the decorator, and its exception passes on.
    CStreamLog failing;
    failing.failClose = true;
    CDataOutputStream decorator(&failing);
    ExpectThrow<CIOException>([&] { decorator.Close(); }, "log", "Close failed.");
    decorator.Close();
    EXPECT_EQ(failing.log, "C");
    ExpectThrow<CIOException>([&] { decorator.WriteBool(true); }, kSource, closed);
}

} // namespace

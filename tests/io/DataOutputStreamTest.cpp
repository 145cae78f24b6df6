#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include <vorn/base/IllegalArgumentException.h>
#include <vorn/io/IOException.h>
#include <vorn/io/JavaDataOutputStream.h>
#include <vorn/io/MemoryOutputStream.h>

#include "support/AllocFailure.h"
#include "support/Throws.h"
#include "support/Utf16.h"

namespace {

using vorn::base::CUnicodeString;
using vorn::io::CDataOutputStream;
using vorn::io::CIOException;
using vorn::io::CJavaDataOutputStream;
using vorn::test::ExpectThrow;
using vorn::test::W;

// Records each call that reaches it: a counted write as "[hex]", a byte as "<hex>", a flush as
// "F", a close as "C" (which can be made to fail).
class CCallLog : public vorn::io::COutputStream {
public:
    void Write(char const* buffer, unsigned int offset, unsigned int count) override {
        log += "[" + Hex(buffer + offset, count) + "]";
    }
    void Write(char const* buffer, unsigned int count) override { Write(buffer, 0, count); }
    void Write(char value) override { log += "<" + Hex(&value, 1) + ">"; }
    void Flush() override { log += "F"; }
    void Close() override {
        log += "C";
        if (failClose)
            throw CIOException("log", 1, "Close failed.", nullptr);
    }
    static std::string Hex(char const* bytes, unsigned int count) {
        std::string text;
        for (char digits[3]; count-- > 0; text += digits)
            std::snprintf(digits, sizeof digits, "%02X", static_cast<unsigned char>(*bytes++));
        return text;
    }
    std::string log;
    bool failClose = false;
};

struct CTag : vorn::io::ISerializable {
    void Read(vorn::io::CDataInputStream&) override {}
    void Write(CDataOutputStream& stream) const override { stream << 'T' << short(1); }
};

const unsigned short* const kNoText = nullptr;

TEST(DataOutputStream, OneWritePerValueInTheWireFormat) {
    CCallLog log;
    CDataOutputStream out(&log);
    out.WriteInt32(16909060);
    out.WriteInt16(-2);
    out.WriteUInt32(0xFFFFFFFEu);
    out.WriteUInt16(0x8001);
    out.WriteBool(true);
    out.WriteByte('\x80');
    out.WriteUByte(0xFE);
    out.WriteFloat(1.0f); // floating values keep the machine's byte order
    out.WriteDouble(1.0);
    EXPECT_EQ(log.log, "[01020304][FFFE][FFFFFFFE][8001]<01><80><FE>[0000803F][000000000000F03F]");
    log.log.clear();
    out.WriteString(CUnicodeString(W(u"\u00e9").c_str()));
    out.WriteString(CUnicodeString());
    out.WriteString(kNoText); // nothing at all, not even a count
    out.WriteString(W(u"").c_str());
    out.WriteString(W(u"ab").c_str());
    EXPECT_EQ(log.log, "[00000002][C3A9][00000000][][00000002][6162]");
    log.log.clear();
    out << false << 'a' << static_cast<unsigned char>(0xFF) << short(-1)
        << static_cast<unsigned short>(2) << 3 << 4u << 0.5f << 0.5 << CUnicodeString("x")
        << kNoText << CTag();
    out.Write('z');
    out.Write("abc", 1, 2);
    out.Flush();
    EXPECT_EQ(log.log, "<00><61><FF>[FFFF][0002][00000003][00000004][0000003F][000000000000E03F]"
                       "[00000001][78]<54>[0001]<7A>[6263]F");

    vorn::io::CMemoryOutputStream memory(64, 64);
    CDataOutputStream numbers(&memory);
    EXPECT_EQ(vorn::test::CountAllocations([&] { numbers << 1 << short(2) << 3.0 << true; }), 0u);
}

TEST(DataOutputStream, ConstructionCloseAndClosedStream) {
    const char* source = "vorn/io/DataOutputStream";
    ExpectThrow<vorn::base::CIllegalArgumentException>(
        [] { CDataOutputStream(vorn::base::CRef<vorn::io::COutputStream>()); }, source,
        "Invalid output stream.");
    ExpectThrow<vorn::base::CIllegalArgumentException>(
        [] { CJavaDataOutputStream(static_cast<vorn::io::COutputStream*>(nullptr)); }, source,
        "Invalid output stream.");
    // The handle keeps the stream beneath alive; Close doesn't flush, and a second does nothing.
    auto* shared = new CCallLog;
    CDataOutputStream out{vorn::base::CRef<vorn::io::COutputStream>(shared)};
    out.Close();
    out.Close();
    EXPECT_EQ(shared->log, "C");
    for (auto call :
         {+[](CDataOutputStream& s) { s.WriteInt32(1); },
          +[](CDataOutputStream& s) { s.WriteString(CUnicodeString()); },
          +[](CDataOutputStream& s) { s << CTag(); },
          +[](CDataOutputStream& s) { s.Write("a", 1); }, +[](CDataOutputStream& s) { s.Flush(); }})
        ExpectThrow<CIOException>([&] { call(out); }, source, "Stream closed.");
    out.WriteString(kNoText); // returns before the closed check
    // A failing Close beneath still closes the decorator, and its exception passes on.
    CCallLog failing;
    failing.failClose = true;
    CDataOutputStream decorator(&failing);
    ExpectThrow<CIOException>([&] { decorator.Close(); }, "log", "Close failed.");
    decorator.Close();
    EXPECT_EQ(failing.log, "C");
    ExpectThrow<CIOException>([&] { decorator.WriteBool(true); }, source, "Stream closed.");
}

TEST(JavaDataOutputStream, SixteenBitCountsUpTo65535Bytes) {
    CCallLog log;
    CJavaDataOutputStream out(&log);
    out.WriteString(CUnicodeString(W(u"\u00e9").c_str()));
    out.WriteString(CUnicodeString());
    out << kNoText << W(u"").c_str(); // unlike the base class, the count 0
    out.WriteFloat(1.0f);
    EXPECT_EQ(log.log, "[0002][C3A9][0000][][0000][][0000][][0000803F]");
    log.log.clear();
    CUnicodeString text;
    for (int i = 0; i < 21845; ++i)
        text += W(u"\u20ac").c_str();
    out.WriteString(text);
    EXPECT_EQ(log.log.substr(0, 7), "[FFFF][");
    log.log.clear();
    text += "x"; // one byte too many: refused before anything is written
    const char* source = "vorn/io/JavaDataOutputStream";
    ExpectThrow<CIOException>([&] { out.WriteString(text); }, source,
                              "The specified string is too long.");
    EXPECT_EQ(log.log, "");
    out.Close();
    ExpectThrow<CIOException>([&] { out.WriteString(kNoText); }, source, "Stream closed.");
}

} // namespace

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include <vorn/io/IOException.h>
#include <vorn/io/JavaDataOutputStream.h>
#include <vorn/io/MemoryOutputStream.h>

#include "support/JavaPeer.h"
#include "support/StreamLog.h"
#include "support/Throws.h"
#include "support/Utf16.h"

namespace {

using vorn::base::CUnicodeString;
using vorn::io::CIOException;
using vorn::io::CJavaDataOutputStream;
using vorn::io::CMemoryOutputStream;
using vorn::test::CStreamLog;
using vorn::test::ExpectThrow;
using vorn::test::JavaPeer;
using vorn::test::W;

constexpr const char* kSource = "vorn/io/JavaDataOutputStream";

TEST(JavaDataOutputStream, SixteenBitCountsAndTheLimit) {
    CStreamLog log;
    CJavaDataOutputStream out(&log);
    out.WriteString(CUnicodeString(W(u"\u00e9").c_str()));
    out.WriteString(CUnicodeString());
    // Unlike the base class, a null or empty pointer writes the count 0.
    out.WriteString(static_cast<const unsigned short*>(nullptr));
    out << W(u"").c_str();
    out.WriteFloat(1.0f);
    out.WriteInt32(1);
    EXPECT_EQ(log.log, "[0002][C3A9][0000][][0000][][0000][][0000803F][00000001]");

    // 65535 UTF-8 bytes go through; one more is refused before anything is written.
    CStreamLog limit;
    CJavaDataOutputStream bounded(&limit);
    CUnicodeString text;
    text.EnsureCapacity(21846);
    for (int i = 0; i < 21845; ++i)
        text += W(u"\u20ac").c_str();
    bounded.WriteString(text);
    EXPECT_EQ(limit.log.substr(0, 7), "[FFFF][");
    limit.log.clear();
    text += "x";
    ExpectThrow<CIOException>([&] { bounded.WriteString(text); }, kSource,
                              "The specified string is too long.");
    EXPECT_EQ(limit.log, "");

    bounded.Close();
    ExpectThrow<CIOException>(
        [&] { bounded.WriteString(static_cast<const unsigned short*>(nullptr)); }, kSource,
        "Stream closed.");
}

// The JVM's DataInputStream reads what this class writes.
TEST(JavaDataOutputStream, AJvmReadsTheValues) {
    JavaPeer& peer = JavaPeer::Get();
    if (!peer.HasJdk())
        GTEST_SKIP() << "no JDK here (javac and java are needed): the JVM interoperation "
                        "test doesn't run";
    ASSERT_TRUE(peer.IsCompiled()) << "tests/io/java/DataStreamPeer.java didn't compile";
    CMemoryOutputStream memory;
    CJavaDataOutputStream out(&memory);
    for (int v : vorn::test::kPeerInts)
        out << v;
    for (short v : vorn::test::kPeerShorts)
        out << v;
    for (bool v : vorn::test::kPeerBools)
        out << v;
    for (const auto& v : vorn::test::PeerStrings())
        out << CUnicodeString(v.c_str());
    const std::string file = peer.File("from-library.bin");
    FILE* f = std::fopen(file.c_str(), "wb");
    ASSERT_NE(f, nullptr);
    std::fwrite(memory.GetBuffer(), 1, memory.GetBufferSize(), f);
    std::fclose(f);
    EXPECT_EQ(peer.Run("check", file), 0);
}

} // namespace

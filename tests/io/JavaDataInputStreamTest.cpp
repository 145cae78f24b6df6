#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

#include <vorn/io/IOException.h>
#include <vorn/io/JavaDataInputStream.h>
#include <vorn/io/MemoryInputStream.h>

#include "support/JavaPeer.h"
#include "support/Throws.h"
#include "support/Utf16.h"

namespace {

using vorn::io::CIOException;
using vorn::io::CJavaDataInputStream;
using vorn::io::CMemoryInputStream;
using vorn::test::JavaPeer;
using vorn::test::Units;
using vorn::test::W;

TEST(JavaDataInputStream, SixteenBitCounts) {
    const std::string bytes("\x00\x02\xc3\xa9"
                            "\x00\x00"
                            "\x00\x00\x00\x01",
                            10);
    CMemoryInputStream source(bytes.data(), 10, false);
    CJavaDataInputStream in(&source);
    EXPECT_EQ(Units(in.ReadString()), W(u"\u00e9"));
    EXPECT_TRUE(in.ReadString().IsEmpty());
    EXPECT_EQ(in.ReadInt32(), 1);
    in.Close();
    vorn::test::ExpectThrow<CIOException>([&] { in.ReadString(); }, "vorn/io/JavaDataInputStream",
                                          "Stream closed.");
}

// This class reads what the JVM's DataOutputStream writes.
TEST(JavaDataInputStream, ReadsTheValuesOfAJvm) {
    JavaPeer& peer = JavaPeer::Get();
    if (!peer.HasJdk())
        GTEST_SKIP() << "no JDK here (javac and java are needed): the JVM interoperation "
                        "test doesn't run";
    ASSERT_TRUE(peer.IsCompiled()) << "tests/io/java/DataStreamPeer.java didn't compile";
    const std::string file = peer.File("from-jvm.bin");
    ASSERT_EQ(peer.Run("write", file), 0);
    std::ifstream stream(file, std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(stream)),
                            std::istreambuf_iterator<char>());
    CMemoryInputStream source(bytes.data(), static_cast<unsigned int>(bytes.size()), false);
    CJavaDataInputStream in(&source);
    for (int v : vorn::test::kPeerInts)
        EXPECT_EQ(in.ReadInt32(), v);
    for (short v : vorn::test::kPeerShorts)
        EXPECT_EQ(in.ReadInt16(), v);
    for (bool v : vorn::test::kPeerBools)
        EXPECT_EQ(in.ReadBool(), v);
    for (const auto& v : vorn::test::PeerStrings())
        EXPECT_EQ(Units(in.ReadString()), v) << vorn::test::Narrow(v).substr(0, 40);
    EXPECT_EQ(in.GetAvailable(), 0u);
}

} // namespace

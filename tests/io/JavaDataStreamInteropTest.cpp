// The JVM's own data streams against CJavaDataOutputStream and CJavaDataInputStream, through
// tests/io/java/DataStreamPeer.java, which the test compiles into a temporary directory.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include <vorn/io/JavaDataInputStream.h>
#include <vorn/io/JavaDataOutputStream.h>
#include <vorn/io/MemoryInputStream.h>
#include <vorn/io/MemoryOutputStream.h>

#include "support/Files.h"
#include "support/Utf16.h"

namespace {

using vorn::base::CUnicodeString;
using vorn::test::W;
using vorn::test::WString;

// The values of DataStreamPeer, in its order.
const int kInts[] = {0, 1, -1, 16909060, -2147483647 - 1, 2147483647};
const short kShorts[] = {0, -2, 32767, -32768};
const bool kBools[] = {true, false};
std::vector<WString> Strings() {
    return {W(u""),
            W(u"plain"),
            W(u"\u00e9t\u00e9"),
            W(u"\u20ac \u2713 \u4e2d\u6587"),
            W(u"\u0800\u07ff\u0080\u007f\ud7ff\ue000\ufffd"),
            WString(21845, 0x20AC)};
}

class JavaDataStreamInterop : public testing::Test {
protected:
    void SetUp() override {
        if (std::system("command -v javac >/dev/null 2>&1 && command -v java >/dev/null 2>&1"))
            GTEST_SKIP() << "no JDK here (javac and java): the JVM interoperation isn't tested";
        std::string directory = vorn::test::UniqueName("/tmp/vorn-java-");
        ASSERT_NE(mkdtemp(directory.data()), nullptr);
        m_directory = directory;
        ASSERT_EQ(std::system(("javac -d " + m_directory +
                               " " VORN_TEST_SOURCE_DIR "/io/java/DataStreamPeer.java")
                                  .c_str()),
                  0);
    }
    void TearDown() override {
        if (!m_directory.empty())
            std::filesystem::remove_all(m_directory);
    }
    // The peer's exit status for "write" or "check" of the file data.bin.
    int Peer(const char* mode) {
        return std::system(
            ("java -cp " + m_directory + " DataStreamPeer " + mode + " " + File()).c_str());
    }
    std::string File() const { return m_directory + "/data.bin"; }

    std::string m_directory;
};

TEST_F(JavaDataStreamInterop, TheJvmReadsWhatTheLibraryWrites) {
    vorn::io::CMemoryOutputStream memory;
    vorn::io::CJavaDataOutputStream out(&memory);
    for (int v : kInts)
        out << v;
    for (short v : kShorts)
        out << v;
    for (bool v : kBools)
        out << v;
    for (const WString& v : Strings())
        out << CUnicodeString(v.c_str());
    std::ofstream(File(), std::ios::binary).write(memory.GetBuffer(), memory.GetBufferSize());
    EXPECT_EQ(Peer("check"), 0);
}

TEST_F(JavaDataStreamInterop, TheLibraryReadsWhatTheJvmWrites) {
    ASSERT_EQ(Peer("write"), 0);
    std::ifstream file(File(), std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(file)),
                            std::istreambuf_iterator<char>());
    vorn::io::CMemoryInputStream source(bytes.data(), static_cast<unsigned int>(bytes.size()),
                                        false);
    vorn::io::CJavaDataInputStream in(&source);
    for (int v : kInts)
        EXPECT_EQ(in.ReadInt32(), v);
    for (short v : kShorts)
        EXPECT_EQ(in.ReadInt16(), v);
    for (bool v : kBools)
        EXPECT_EQ(in.ReadBool(), v);
    for (const WString& v : Strings())
        EXPECT_TRUE(vorn::test::Units(in.ReadString()) == v) << vorn::test::Narrow(v.substr(0, 20));
    EXPECT_EQ(in.GetAvailable(), 0u);
}

} // namespace

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include <vorn/base/ArrayIndexOutOfBoundsException.h>
#include <vorn/base/BinaryData.h>
#include <vorn/base/IllegalArgumentException.h>
#include <vorn/io/Base64OutputStream.h>
#include <vorn/io/IOException.h>
#include <vorn/io/MemoryOutputStream.h>

#include "support/Files.h"
#include "support/Recording.h"
#include "support/Throws.h"

namespace {

using vorn::base::CRef;
using vorn::io::CBase64OutputStream;
using vorn::io::CIOException;
using vorn::io::COutputStream;
using vorn::test::CRecordingStream;
using vorn::test::ExpectThrow;

constexpr const char* kSource = "vorn/io/Base64OutputStream";

std::string Encode(const std::string& bytes, unsigned int lineLength, bool flush = true) {
    CRecordingStream below;
    CBase64OutputStream out(&below, lineLength);
    out.Write(bytes.data(), static_cast<unsigned int>(bytes.size()));
    if (flush)
        out.Flush();
    out.Close();
    return below.bytes;
}

TEST(Base64OutputStream, GroupsPaddingAndLines) {
    EXPECT_EQ(Encode("\xFF", 0), "/w==");
    EXPECT_EQ(Encode("M", 0, false), ""); // Close encodes no partial group
    EXPECT_EQ(Encode("abcdef", 4), "YWJj\r\nZGVm");
    EXPECT_EQ(Encode("abc", 3), "YWJ\r\nj");
    EXPECT_EQ(Encode("abcdefg", 5), "YWJjZ\r\nGVmZw\r\n==");

    // Each Flush pads; later bytes start a new group. One counted write a group, one call a
    // character with line breaks.
    CRecordingStream below;
    CBase64OutputStream out(&below, 0);
    for (const char* piece : {"M", "a", "Man"}) {
        out.Write(piece, 0, static_cast<unsigned int>(std::strlen(piece)));
        out.Flush();
    }
    out.Flush();
    out.Close();
    out.Close();
    EXPECT_EQ(below.log, "TQ==|FYQ==|FTWFu|F|F|C|C");
    EXPECT_EQ(below.blocks, (std::vector<unsigned int>{4, 4, 4}));
    CRecordingStream lines;
    CBase64OutputStream broken(&lines, 2);
    broken.Write("Man", 3);
    EXPECT_EQ(lines.calls, "<54><57><0D><0A><46><75>");
}

TEST(Base64OutputStream, RefusalsAndFailuresBeneath) {
    ExpectThrow<vorn::base::CIllegalArgumentException>(
        [] { CBase64OutputStream(static_cast<COutputStream*>(nullptr), 0); }, kSource,
        "Invalid output stream.");
    ExpectThrow<vorn::base::CIllegalArgumentException>(
        [] { CBase64OutputStream(CRef<COutputStream>(), 0); }, kSource, "Invalid output stream.");

    // The handle keeps the stream beneath alive; after Close the calls reach its closed rule.
    auto* memory = new vorn::io::CMemoryOutputStream();
    CBase64OutputStream shared(CRef<COutputStream>(memory), 76);
    shared.Write("ab", 2);
    shared.Flush();
    shared.Close();
    EXPECT_EQ(std::string(memory->GetBuffer(), memory->GetBufferSize()), "YWI=");
    ExpectThrow<CIOException>([&] { shared.Write("abc", 3); }, "vorn/io/MemoryOutputStream",
                              "Stream closed.");

    // A group whose write failed stays pending: no room for another byte, and Flush sends it.
    CRecordingStream below;
    CBase64OutputStream out(&below, 0);
    below.failWrite = true;
    EXPECT_THROW(out.Write("Man", 3), CIOException);
    below.failWrite = false;
    ExpectThrow<vorn::base::CArrayIndexOutOfBoundsException>([&] { out.Write('x'); }, kSource);
    out.Flush();
    EXPECT_EQ(below.bytes, "TWFu");
}

std::string SystemBase64(const vorn::test::TempDir& directory, const std::string& bytes,
                         unsigned int lineLength) {
    vorn::test::PutFile(directory / "in", bytes);
    FILE* tool =
        popen(("base64 -w " + std::to_string(lineLength) + " " + (directory / "in")).c_str(), "r");
    std::string text;
    char chunk[65536];
    for (std::size_t n; tool != nullptr && (n = std::fread(chunk, 1, sizeof chunk, tool)) > 0;)
        text.append(chunk, n);
    EXPECT_EQ(tool == nullptr ? -1 : pclose(tool), 0);
    return text;
}

// Every length from 0 to 4,100, written in random pieces with a random line length, against
// CBinaryData's encoder; then against the system's base64 program.
TEST(Base64OutputStream, AgreesWithTheBinaryDataEncoderAndTheSystemProgram) {
    if (std::system("command -v base64 >/dev/null 2>&1") != 0)
        GTEST_SKIP() << "no base64 program on this system";
    std::mt19937 random(4100);
    std::string all;
    for (unsigned int length = 0; length <= 4100; ++length) {
        std::string bytes(length, '\0');
        for (char& c : bytes)
            c = static_cast<char>(random());
        const unsigned int lineLength = random() % 4 == 0 ? 0 : 1 + random() % 100;
        vorn::io::CMemoryOutputStream below(0, 1024);
        CBase64OutputStream out(&below, lineLength);
        for (unsigned int at = 0; at < length;) {
            const unsigned int piece = std::min<unsigned int>(length - at, random() % 9);
            if (piece == 1)
                out.Write(bytes[at]);
            else
                out.Write(bytes.data(), at, piece);
            at += piece;
        }
        out.Flush();
        out.Close();

        const std::string single =
            length == 0
                ? std::string()
                : std::string(vorn::base::CBinaryData::ToBase64String(bytes.data(), length));
        std::string lines;
        for (std::size_t i = 0; i < single.size(); ++i) {
            if (lineLength != 0 && i != 0 && i % lineLength == 0)
                lines += "\r\n";
            lines += single[i];
        }
        ASSERT_EQ(std::string(below.GetBuffer(), below.GetBufferSize()), lines)
            << "length " << length << ", lines of " << lineLength;
        all += bytes;
    }
    // The program's lines end in LF, and it ends its last one.
    vorn::test::TempDir directory;
    for (unsigned int lineLength : {0u, 1u, 4u, 76u}) {
        for (unsigned int length : {0u, 1u, 2u, 3u, 4100u}) {
            const std::string bytes = all.substr(0, length);
            std::string ours = Encode(bytes, lineLength);
            for (std::size_t cr; (cr = ours.find('\r')) != std::string::npos;)
                ours.erase(cr, 1);
            if (lineLength != 0 && length != 0)
                ours += '\n';
            EXPECT_EQ(ours, SystemBase64(directory, bytes, lineLength)) << length;
        }
    }
}

} // namespace

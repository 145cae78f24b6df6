// CBufferedOutputStream and, by its differences, CBufferedWriter.
#include <gtest/gtest.h>

#include <vector>

#include <vorn/base/IllegalArgumentException.h>
#include <vorn/base/UnicodeString.h>
#include <vorn/io/BufferedOutputStream.h>
#include <vorn/io/BufferedWriter.h>
#include <vorn/io/IOException.h>

#include "support/Recording.h"
#include "support/Throws.h"

namespace {

using vorn::base::CIllegalArgumentException;
using vorn::io::CBufferedOutputStream;
using vorn::io::CBufferedWriter;
using vorn::io::CIOException;
using vorn::test::CRecordingStream;
using vorn::test::ExpectThrow;
using vorn::test::W;

const char* const kSource = "vorn/io/BufferedOutputStream";
const char* const kWriter = "vorn/io/BufferedWriter";

TEST(BufferedOutputStream, WhenTheBufferGoesOut) {
    CRecordingStream beneath;
    CBufferedOutputStream s(&beneath, 4);
    for (char c : {'a', 'b', 'c', 'd'})
        s.Write(c);
    EXPECT_EQ(beneath.calls, ""); // full, and still pending
    s.Write('e');
    EXPECT_EQ(beneath.calls, "[61626364]");
    s.Write("fghi", 4); // as large as the buffer: after what is pending, directly
    EXPECT_EQ(beneath.calls, "[61626364][65][66676869]");
    s.Write("xjkl", 1, 3); // stays
    s.Write("mn", 2);      // fills the buffer, which goes out at once, and starts it again
    EXPECT_EQ(beneath.blocks, (std::vector<unsigned int>{4, 1, 4, 4}));
    s.Flush();
    s.Write("o", 1);
    s.Close();
    s.Close(); // quietly
    EXPECT_EQ(beneath.log, "abcdefghijklmn|Fo|C");
    s.Write(nullptr, 1); // a refused source is dropped before the check
    ExpectThrow<CIOException>([&] { s.Flush(); }, kSource, "Stream closed.");
    ExpectThrow<CIOException>([&] { s.Write('x'); }, kSource, "Stream closed.");
    ExpectThrow<CIOException>([&] { s.Write("x", 0, 0); }, kSource, "Stream closed.");
}

TEST(BufferedOutputStream, ConstructionAndFailuresThatKeepWhatIsPending) {
    ExpectThrow<CIllegalArgumentException>([] { CBufferedOutputStream s(nullptr, 0); }, kSource,
                                           "Invalid output stream.");
    CRecordingStream beneath;
    ExpectThrow<CIllegalArgumentException>([&] { CBufferedOutputStream s(&beneath, 0); }, kSource,
                                           "Invaid buffer size.");
    vorn::test::ExpectNoMemory([&] { CBufferedOutputStream s(&beneath, 4); }, kSource);
    CBufferedOutputStream s(&beneath, 4);
    s.Write("ab", 2);
    beneath.failWrite = true;
    ExpectThrow<CIOException>([&] { s.Flush(); }, "test/Recording", "Write failed.");
    beneath.failWrite = false;
    s.Flush(); // offered again
    EXPECT_EQ(beneath.log, "ab|F");
    s.Write('c');
    beneath.failWrite = beneath.failClose = true;
    // The flush's failure is reported; the stream beneath is closed all the same.
    ExpectThrow<CIOException>([&] { s.Close(); }, "test/Recording", "Write failed.");
    EXPECT_EQ(beneath.closes, 1);
    ExpectThrow<CIOException>([&] { s.Flush(); }, kSource, "Stream closed.");
}

TEST(BufferedWriter, UnitsGoOutAsBytesDo) {
    ExpectThrow<CIllegalArgumentException>([] { CBufferedWriter w(nullptr, 0); }, kWriter,
                                           "Invalid writer.");
    vorn::test::CRecordingWriter beneath;
    ExpectThrow<CIllegalArgumentException>([&] { CBufferedWriter w(&beneath, 0); }, kWriter,
                                           "Invalid buffer size.");
    vorn::test::ExpectNoMemory([&] { CBufferedWriter w(&beneath, 2); }, kWriter);
    CBufferedWriter w(&beneath, 3);
    w.Write(vorn::base::CUnicodeString(W(u"xab").c_str()), 1, 9); // cut to the text
    w.Write(static_cast<unsigned short>(0xE9));
    EXPECT_EQ(beneath.writes, 0); // full, and still pending
    w.Write(W(u"cd").c_str());
    EXPECT_EQ(beneath.log, W(u"ab\u00E9")); // the single unit met a full buffer
    w.Write(W(u"efg").c_str(), 3); // as large as the buffer: directly, after the pending c d
    w.Write(nullptr, 0, 5);
    w.Write(W(u"h").c_str(), 0, 1);
    w.Close();
    w.Close(); // quietly
    EXPECT_EQ(beneath.log, W(u"ab\u00E9cdefgh|C"));
    EXPECT_EQ(beneath.writes, 4);
    ExpectThrow<CIOException>([&] { w.Write(W(u"").c_str()); }, kWriter, "Writer closed.");
    ExpectThrow<CIOException>([&] { w.Flush(); }, kWriter, "Writer closed.");
}

} // namespace

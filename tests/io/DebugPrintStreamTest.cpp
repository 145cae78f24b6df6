#include <gtest/gtest.h>

#include <string>

#include <vorn/base/System.h>
#include <vorn/io/DebugPrintStream.h>
#include <vorn/io/IOException.h>

#include "support/DebugCapture.h"
#include "support/Throws.h"

namespace {

using vorn::base::CString;
using vorn::io::CDebugPrintStream;
using vorn::io::CIOException;
using vorn::test::DebugCapture;
using vorn::test::ExpectThrow;

const char* const kSource = "vorn/io/DebugPrintStream";

template <typename T> void ExpectPrinted(T value, const char* print, const char* println) {
    CDebugPrintStream out;
    DebugCapture capture;
    out.Print(value);
    EXPECT_EQ(capture.Text(), print);
    capture.Clear();
    out.Println(value);
    EXPECT_EQ(capture.Text(), println);
}

TEST(DebugPrintStream, FormatsEachValueTypeWithItsOwnQuirks) {
    ExpectPrinted('A', "A", "A\n");
    ExpectPrinted(static_cast<short>(-32768), "-32768", "-32768\n");
    ExpectPrinted(-7, "-7", "-7\n");
    ExpectPrinted(7u, "lu", "7\n"); // the format has no percent sign
    ExpectPrinted(1.5f, "1.500000", "1.500000\n");
    // "%ld" reads the low half of the double's bits: 0.1 is 0x3FB999999999999A.
    ExpectPrinted(0.1, "-1717986918", "0.100000\n");
    ExpectPrinted(1.5, "0", "1.500000\n");
    ExpectPrinted(true, "true", "true\n");
    ExpectPrinted(false, "false", "false\n");
    ExpectPrinted("text", "text", "text\n");
    ExpectPrinted(CString("a string"), "a string", "a string\n");
}

TEST(DebugPrintStream, EmptyTextPrintsNothingNotEvenALineEnd) {
    CDebugPrintStream out;
    DebugCapture capture;
    out.Print(CString());
    out.Print("");
    out.Print(static_cast<const char*>(nullptr));
    out.Println(CString());
    out.Println("");
    out.Println(static_cast<const char*>(nullptr));
    EXPECT_EQ(capture.Text(), "");
    out.Println();
    EXPECT_EQ(capture.Text(), "\n");
}

TEST(DebugPrintStream, IsNoByteSink) {
    CDebugPrintStream out;
    const char* unsupported = "Unsupported on class CDebugPrintStream.";
    ExpectThrow<CIOException>([&] { out.Write('a'); }, kSource, unsupported);
    ExpectThrow<CIOException>([&] { out.Write("a", 1); }, kSource, unsupported);
    ExpectThrow<CIOException>([&] { out.Write(nullptr, 0, 0); }, kSource, unsupported);
    out.Flush();
}

TEST(DebugPrintStream, CloseSilencesEverythingForGood) {
    CDebugPrintStream out;
    out.Close();
    out.Close();
    DebugCapture capture;
    ExpectThrow<CIOException>([&] { out.Print(CString()); }, kSource, "Stream closed.");
    ExpectThrow<CIOException>([&] { out.Print(1); }, kSource, "Stream closed.");
    ExpectThrow<CIOException>([&] { out.Println(); }, kSource, "Stream closed.");
    ExpectThrow<CIOException>([&] { out.Println(""); }, kSource, "Stream closed.");
    ExpectThrow<CIOException>([&] { out.Write('a'); }, kSource, "Stream closed.");
    ExpectThrow<CIOException>([&] { out.Flush(); }, kSource, "Stream closed.");
    EXPECT_EQ(capture.Text(), "");
}

TEST(DebugPrintStream, SystemDebugOutGoesToTheDebugChannel) {
    DebugCapture capture;
    vorn::base::CSystem::debugOut.Print("count ");
    vorn::base::CSystem::debugOut.Println(3);
    EXPECT_EQ(capture.Text(), "count 3\n");
    EXPECT_STREQ(vorn::base::CSystem::debugOut.GetClass()->GetQualifiedName(),
                 "vorn::io::CDebugPrintStream");
}

} // namespace

#include <gtest/gtest.h>

#include <string>

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

template <typename T> void ExpectPrinted(T value, const std::string& print, const char* println) {
    CDebugPrintStream out;
    DebugCapture capture;
    out.Print(value);
    out.Println(value);
    EXPECT_EQ(capture.Text(), print + println);
}

TEST(DebugPrintStream, FormatsEachValueTypeWithItsOwnQuirks) {
    ExpectPrinted('A', "A", "A\n");
    ExpectPrinted(short(-32768), "-32768", "-32768\n");
    ExpectPrinted(-7, "-7", "-7\n");
    ExpectPrinted(7u, "lu", "7\n"); // the format has no percent sign
    ExpectPrinted(1.5f, "1.500000", "1.500000\n");
    // "%ld" reads the low half of the double's bits: 0.1 is 0x3FB999999999999A.
    ExpectPrinted(0.1, "-1717986918", "0.100000\n");
    ExpectPrinted(true, "true", "true\n");
    ExpectPrinted(false, "false", "false\n");
    ExpectPrinted("text", "text", "text\n");
    ExpectPrinted(CString("a string"), "a string", "a string\n");
    ExpectPrinted(CString(), "", ""); // not even a line end
    ExpectPrinted("", "", "");
    ExpectPrinted(static_cast<const char*>(nullptr), "", "");
    DebugCapture capture;
    CDebugPrintStream().Println();
    EXPECT_EQ(capture.Text(), "\n");
}

TEST(DebugPrintStream, IsNoByteSinkAndCloseSilencesIt) {
    CDebugPrintStream out;
    const char* unsupported = "Unsupported on class CDebugPrintStream.";
    ExpectThrow<CIOException>([&] { out.Write('a'); }, kSource, unsupported);
    ExpectThrow<CIOException>([&] { out.Write("a", 1); }, kSource, unsupported);
    ExpectThrow<CIOException>([&] { out.Write(nullptr, 0, 0); }, kSource, unsupported);
    out.Flush();
    out.Close();
    out.Close();
    DebugCapture capture;
    for (auto call :
         {+[](CDebugPrintStream& s) { s.Print(CString()); },
          +[](CDebugPrintStream& s) { s.Print(1); }, +[](CDebugPrintStream& s) { s.Println(); },
          +[](CDebugPrintStream& s) { s.Println(""); }, +[](CDebugPrintStream& s) { s.Write('a'); },
          +[](CDebugPrintStream& s) { s.Flush(); }})
        ExpectThrow<CIOException>([&] { call(out); }, kSource, "Stream closed.");
    EXPECT_EQ(capture.Text(), "");
}

} // namespace

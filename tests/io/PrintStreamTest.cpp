#include <gtest/gtest.h>

#include <climits>
#include <string>

#include <vorn/base/IllegalArgumentException.h>
#include <vorn/io/CRLFPrintStream.h>
#include <vorn/io/IOException.h>
#include <vorn/io/MemoryOutputStream.h>

#include "platform/Debug.h"
#include "support/AllocFailure.h"
#include "support/Recording.h"
#include "support/Throws.h"

namespace {

using vorn::base::CRef;
using vorn::base::CString;
using vorn::io::CCRLFPrintStream;
using vorn::io::CIOException;
using vorn::io::CMemoryOutputStream;
using vorn::io::COutputStream;
using vorn::io::CPrintStream;
using vorn::test::CRecordingStream;
using vorn::test::ExpectThrow;

const char* const kSource = "vorn/io/PrintStream";

std::string Bytes(const CMemoryOutputStream& s) {
    return std::string(s.GetBuffer(), s.GetBufferSize());
}

template <typename T> void ExpectPrinted(T value, const std::string& text) {
    CMemoryOutputStream memory;
    CPrintStream out(&memory, false);
    out.Print(value);
    out.Println(value);
    EXPECT_EQ(Bytes(memory), text + text + ZK::EOL);
}

TEST(PrintStream, FormatsEachValueType) {
    ExpectPrinted('A', "A");
    ExpectPrinted(short(-32768), "-32768");
    ExpectPrinted(INT_MIN, "-2147483648");
    ExpectPrinted(4294967295u, "4294967295");
    ExpectPrinted(1.5f, "1.5");
    ExpectPrinted(0.1, "0.1");
    ExpectPrinted(-0.000012345678, "-1.23457e-05");
    ExpectPrinted(true, "true");
    ExpectPrinted(false, "false");
    ExpectPrinted("text", "text");
    ExpectPrinted(CString("a string"), "a string");
}

TEST(PrintStream, LineEndsAndAutoFlush) {
    CMemoryOutputStream crlf;
    CCRLFPrintStream windows(&crlf, false);
    windows.Println();
    windows.Println(7);
    windows.Print("a\nb"); // not translated
    EXPECT_EQ(Bytes(crlf), "\r\n7\r\na\nb");

    CRecordingStream journal;
    CPrintStream quiet(&journal, false);
    quiet.Println(1);
    quiet.Println(CString());
    CPrintStream eager(&journal, true);
    eager.Print(2);
    eager.Println("x");
    const std::string eol = ZK::EOL;
    EXPECT_EQ(journal.log, "1" + eol + eol + "2x" + eol + "|F");
}

TEST(PrintStream, ClosedStreamThrowsButEmptyTextDoesNot) {
    CMemoryOutputStream memory;
    CPrintStream out(&memory, false);
    out.Print("kept");
    out.Close();
    out.Close();
    EXPECT_EQ(Bytes(memory), "kept"); // and the memory stream is closed too
    ExpectThrow<CIOException>([&] { memory.Write('x'); }, "vorn/io/MemoryOutputStream",
                              "Stream closed.");
    out.Print(CString());
    out.Print(static_cast<const char*>(nullptr));
    for (auto call :
         {+[](CPrintStream& s) { s.Print(1); }, +[](CPrintStream& s) { s.Print(""); },
          +[](CPrintStream& s) { s.Println(); }, +[](CPrintStream& s) { s.Println(CString()); },
          +[](CPrintStream& s) { s.Write('a'); }, +[](CPrintStream& s) { s.Write("a", 1); },
          +[](CPrintStream& s) { s.Write("a", 0, 1); }, +[](CPrintStream& s) { s.Flush(); }})
        ExpectThrow<CIOException>([&] { call(out); }, kSource, "Stream closed.");
}

TEST(PrintStream, CloseEndsClosedWhenTheStreamBeneathFails) {
    CRecordingStream journal;
    journal.failFlush = journal.failClose = true;
    {
        CPrintStream out(&journal, false);
        ExpectThrow<CIOException>([&] { out.Close(); }, "test/Recording", "Flush failed.");
        EXPECT_EQ(journal.log, "|F|C"); // closed beneath all the same, its failure dropped
        ExpectThrow<CIOException>([&] { out.Print(1); }, kSource, "Stream closed.");
    }
    journal.failFlush = false;
    CPrintStream out(&journal, false);
    ExpectThrow<CIOException>([&] { out.Close(); }, "test/Recording", "Close failed.");
    ExpectThrow<CIOException>([&] { out.Flush(); }, kSource, "Stream closed.");
}

TEST(PrintStream, NullStreamsAreRefusedWithTheirOwnWords) {
    using vorn::base::CIllegalArgumentException;
    ExpectThrow<CIllegalArgumentException>([] { CCRLFPrintStream s(CRef<COutputStream>(), true); },
                                           kSource, "Invalid ooutput stream.");
    ExpectThrow<CIllegalArgumentException>([] { CPrintStream s((COutputStream*)nullptr, false); },
                                           kSource, "Invalid output stream.");
}

TEST(PrintStream, PrintingAllocatesNothing) {
    CMemoryOutputStream memory(1024, 1024);
    CPrintStream out(&memory, true);
    CString text("written in place");
    EXPECT_EQ(vorn::test::CountAllocations([&] {
                  out.Print(12345);
                  out.Print(2.5);
                  out.Println(text);
                  out.Println(true);
              }),
              0u);
}

} // namespace

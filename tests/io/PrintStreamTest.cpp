#include <gtest/gtest.h>

#include <climits>
#include <string>

#include <vorn/base/Bool.h>
#include <vorn/base/IllegalArgumentException.h>
#include <vorn/io/CRLFPrintStream.h>
#include <vorn/io/IOException.h>
#include <vorn/io/MemoryOutputStream.h>
#include <vorn/io/PrintStream.h>

#include "platform/Debug.h"
#include "support/AllocFailure.h"
#include "support/Throws.h"

namespace {

using vorn::base::CRef;
using vorn::base::CString;
using vorn::io::CCRLFPrintStream;
using vorn::io::CIOException;
using vorn::io::CMemoryOutputStream;
using vorn::io::COutputStream;
using vorn::io::CPrintStream;
using vorn::test::ExpectThrow;

const char* const kSource = "vorn/io/PrintStream";

std::string Bytes(const CMemoryOutputStream& s) {
    return std::string(s.GetBuffer(), s.GetBufferSize());
}

// Records what reaches it: bytes as they are, a flush as "|F", a close as "|C". Either of the
// two can be made to fail.
class CJournal : public COutputStream {
public:
    using COutputStream::Write;
    void Write(char value) override { log.push_back(value); }
    void Flush() override {
        log += "|F";
        if (failFlush)
            throw CIOException("journal", 1, "Flush failed.", nullptr);
    }
    void Close() override {
        log += "|C";
        if (failClose)
            throw CIOException("journal", 2, "Close failed.", nullptr);
    }
    std::string log;
    bool failFlush = false;
    bool failClose = false;
};

// Each value printed alone, and with its line end, through the narrow formats.
template <typename T> void ExpectPrinted(T value, const std::string& text) {
    CMemoryOutputStream memory;
    CPrintStream out(&memory, false);
    out.Print(value);
    EXPECT_EQ(Bytes(memory), text);
    out.Println(value);
    EXPECT_EQ(Bytes(memory), text + text + ZK::EOL);
}

TEST(PrintStream, FormatsEachValueType) {
    ExpectPrinted('A', "A");
    ExpectPrinted(static_cast<short>(-32768), "-32768");
    ExpectPrinted(-1, "-1");
    ExpectPrinted(INT_MIN, "-2147483648");
    ExpectPrinted(4294967295u, "4294967295");
    ExpectPrinted(1.5f, "1.5");
    ExpectPrinted(0.1, "0.1");
    ExpectPrinted(1e20, "1e+20");
    ExpectPrinted(-0.000012345678, "-1.23457e-05");
    ExpectPrinted(true, vorn::base::CBool::SZ_TRUE);
    ExpectPrinted(false, "false");
    ExpectPrinted("text", "text");
    ExpectPrinted(CString("a string"), "a string");
}

TEST(PrintStream, EmptyTextWritesNothingAndLineEndsAlone) {
    CMemoryOutputStream memory;
    CPrintStream out(&memory, false);
    out.Print(CString());
    out.Print(static_cast<const char*>(nullptr));
    out.Print("");
    EXPECT_EQ(memory.GetBufferSize(), 0u);
    out.Println(CString());
    out.Println();
    EXPECT_EQ(Bytes(memory), std::string(ZK::EOL) + ZK::EOL);
}

TEST(PrintStream, CRLFStreamEndsLinesWithCRLF) {
    CMemoryOutputStream memory;
    CCRLFPrintStream out(&memory, false);
    out.Println();
    out.Println(7);
    out.Print("a\nb"); // line ends inside text are not translated
    EXPECT_EQ(Bytes(memory), "\r\n7\r\na\nb");
    EXPECT_STREQ(out.GetClass()->GetQualifiedBaseClassName1(), "vorn::io::CPrintStream");
}

TEST(PrintStream, AutoFlushOnlyAfterALineEnd) {
    CJournal journal;
    CPrintStream quiet(&journal, false);
    quiet.Println(1);
    quiet.Print(2);
    EXPECT_EQ(journal.log, std::string("1") + ZK::EOL + "2");
    journal.log.clear();
    CPrintStream eager(&journal, true);
    eager.Print(3);
    eager.Println("x");
    eager.Println();
    EXPECT_EQ(journal.log, std::string("3x") + ZK::EOL + "|F" + ZK::EOL + "|F");
}

TEST(PrintStream, WritesAndFlushGoBeneath) {
    CJournal journal;
    CPrintStream out(&journal, false);
    out.Write('a');
    out.Write("bc", 2);
    out.Write("xdefx", 1, 3);
    out.Flush();
    EXPECT_EQ(journal.log, "abcdef|F");
}

TEST(PrintStream, ClosedStreamThrowsButEmptyTextDoesNot) {
    CMemoryOutputStream memory;
    CPrintStream out(&memory, false);
    out.Print("kept");
    out.Close();
    out.Close(); // nothing the second time
    EXPECT_EQ(Bytes(memory), "kept");
    out.Print(CString());
    out.Print(static_cast<const char*>(nullptr));
    ExpectThrow<CIOException>([&] { out.Print(1); }, kSource, "Stream closed.");
    ExpectThrow<CIOException>([&] { out.Print(""); }, kSource, "Stream closed.");
    ExpectThrow<CIOException>([&] { out.Println(CString()); }, kSource, "Stream closed.");
    ExpectThrow<CIOException>([&] { out.Println(); }, kSource, "Stream closed.");
    ExpectThrow<CIOException>([&] { out.Write('a'); }, kSource, "Stream closed.");
    ExpectThrow<CIOException>([&] { out.Write("a", 1); }, kSource, "Stream closed.");
    ExpectThrow<CIOException>([&] { out.Write("a", 0, 1); }, kSource, "Stream closed.");
    ExpectThrow<CIOException>([&] { out.Flush(); }, kSource, "Stream closed.");
    ExpectThrow<CIOException>([&] { memory.Write('x'); }, "vorn/io/MemoryOutputStream",
                              "Stream closed.");
}

TEST(PrintStream, CloseFlushesThenClosesAndEndsClosedOnFailure) {
    CJournal journal;
    {
        CPrintStream out(&journal, false);
        out.Close();
        EXPECT_EQ(journal.log, "|F|C");
    }
    journal.log.clear();
    journal.failFlush = journal.failClose = true;
    {
        CPrintStream out(&journal, false);
        try {
            out.Close();
            ADD_FAILURE() << "no exception";
        } catch (const CIOException& e) {
            EXPECT_STREQ(e.GetErrorDescription(), "Flush failed."); // the close's is dropped
        }
        EXPECT_EQ(journal.log, "|F|C");
        ExpectThrow<CIOException>([&] { out.Print(1); }, kSource, "Stream closed.");
        out.Close();
    }
    journal.log.clear();
    journal.failFlush = false;
    {
        CPrintStream out(&journal, false);
        ExpectThrow<CIOException>([&] { out.Close(); }, "journal", "Close failed.");
        ExpectThrow<CIOException>([&] { out.Flush(); }, kSource, "Stream closed.");
    }
}

TEST(PrintStream, NullStreamsAreRefusedWithTheirOwnWords) {
    ExpectThrow<vorn::base::CIllegalArgumentException>(
        [] { CPrintStream out(CRef<COutputStream>(), false); }, kSource, "Invalid ooutput stream.");
    ExpectThrow<vorn::base::CIllegalArgumentException>(
        [] { CPrintStream out(static_cast<COutputStream*>(nullptr), false); }, kSource,
        "Invalid output stream.");
    ExpectThrow<vorn::base::CIllegalArgumentException>(
        [] { CCRLFPrintStream out(CRef<COutputStream>(), true); }, kSource,
        "Invalid ooutput stream.");
    ExpectThrow<vorn::base::CIllegalArgumentException>(
        [] { CCRLFPrintStream out(static_cast<COutputStream*>(nullptr), true); }, kSource,
        "Invalid output stream.");
}

TEST(PrintStream, SharesOwnershipThroughAHandle) {
    auto* memory = new CMemoryOutputStream();
    CRef<CPrintStream> out;
    {
        CRef<COutputStream> handle(memory);
        out = new CPrintStream(handle, false);
    }
    out->Print("alive");
    out->Close(); // the handle keeps the closed stream, and its bytes, until destruction
    EXPECT_EQ(Bytes(*memory), "alive");
}

TEST(PrintStream, PrintingAllocatesNothing) {
    CMemoryOutputStream memory(1024, 1024);
    CPrintStream out(&memory, true);
    CString text("shared, not copied");
    EXPECT_EQ(vorn::test::CountAllocations([&] {
                  out.Print(12345);
                  out.Print(2.5);
                  out.Println(text);
                  out.Println(true);
              }),
              0u);
}

} // namespace

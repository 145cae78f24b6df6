#include <gtest/gtest.h>

#include <climits>
#include <functional>
#include <string>

#include <vorn/base/IllegalArgumentException.h>
#include <vorn/io/CRLFPrintStream.h>
#include <vorn/io/IOException.h>
#include <vorn/io/MemoryOutputStream.h>

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

// Records what reaches it, a flush as "|F" and a close as "|C"; either can be made to fail.
class CJournal : public COutputStream {
public:
    using COutputStream::Write;
    void Write(char value) override { log.push_back(value); }
    void Flush() override { Note("|F", failFlush, "Flush failed."); }
    void Close() override { Note("|C", failClose, "Close failed."); }
    void Note(const char* event, bool fail, const char* text) {
        log += event;
        if (fail)
            throw CIOException("journal", 1, text, nullptr);
    }
    std::string log;
    bool failFlush = false, failClose = false;
};

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
    CMemoryOutputStream memory;
    CPrintStream out(&memory, false);
    out.Print(CString());
    out.Print(static_cast<const char*>(nullptr));
    out.Println(CString());
    EXPECT_EQ(Bytes(memory), ZK::EOL);

    CMemoryOutputStream crlf;
    CCRLFPrintStream windows(&crlf, false);
    windows.Println();
    windows.Println(7);
    windows.Print("a\nb"); // not translated
    EXPECT_EQ(Bytes(crlf), "\r\n7\r\na\nb");

    CJournal journal;
    CPrintStream quiet(&journal, false);
    quiet.Println(1);
    CPrintStream eager(&journal, true);
    eager.Print(2);
    eager.Println("x");
    eager.Println();
    EXPECT_EQ(journal.log, "1" + std::string(ZK::EOL) + "2x" + ZK::EOL + "|F" + ZK::EOL + "|F");
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
    std::function<void()> calls[] = {[&] { out.Print(1); },         [&] { out.Print(""); },
                                     [&] { out.Println(); },        [&] { out.Println(CString()); },
                                     [&] { out.Write('a'); },       [&] { out.Write("a", 1); },
                                     [&] { out.Write("a", 0, 1); }, [&] { out.Flush(); }};
    for (auto& call : calls)
        ExpectThrow<CIOException>(call, kSource, "Stream closed.");
}

TEST(PrintStream, CloseEndsClosedWhenTheStreamBeneathFails) {
    CJournal journal;
    journal.failFlush = journal.failClose = true;
    {
        CPrintStream out(&journal, false);
        ExpectThrow<CIOException>([&] { out.Close(); }, "journal", "Flush failed.");
        EXPECT_EQ(journal.log, "|F|C"); // closed beneath all the same, its failure dropped
        ExpectThrow<CIOException>([&] { out.Print(1); }, kSource, "Stream closed.");
    }
    journal.failFlush = false;
    CPrintStream out(&journal, false);
    ExpectThrow<CIOException>([&] { out.Close(); }, "journal", "Close failed.");
    ExpectThrow<CIOException>([&] { out.Flush(); }, kSource, "Stream closed.");
}

TEST(PrintStream, NullStreamsAreRefusedWithTheirOwnWords) {
    using vorn::base::CIllegalArgumentException;
    ExpectThrow<CIllegalArgumentException>([] { CPrintStream s(CRef<COutputStream>(), false); },
                                           kSource, "Invalid ooutput stream.");
    ExpectThrow<CIllegalArgumentException>([] { CPrintStream s((COutputStream*)nullptr, false); },
                                           kSource, "Invalid output stream.");
    ExpectThrow<CIllegalArgumentException>([] { CCRLFPrintStream s(CRef<COutputStream>(), true); },
                                           kSource, "Invalid ooutput stream.");
    ExpectThrow<CIllegalArgumentException>(
        [] { CCRLFPrintStream s((COutputStream*)nullptr, true); }, kSource,
        "Invalid output stream.");
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

#include <gtest/gtest.h>

#include <climits>
#include <cstdio>
#include <functional>
#include <string>

#include <vorn/base/IllegalArgumentException.h>
#include <vorn/base/NullReferenceException.h>
#include <vorn/io/IOException.h>
#include <vorn/io/PrintWriter.h>

#include "support/AllocFailure.h"
#include "support/Throws.h"
#include "support/Utf16.h"

namespace {

using vorn::base::CRef;
using vorn::base::CString;
using vorn::base::CUnicodeString;
using vorn::io::CIOException;
using vorn::io::CPrintWriter;
using vorn::io::CWriter;
using vorn::test::ExpectThrow;
using vorn::test::W;
using vorn::test::WString;

const char* const kSource = "vorn/io/PrintWriter";

// Records the units that reach it, a flush as "|F" and a close as "|C"; either can fail.
class CJournal : public CWriter {
public:
    using CWriter::Write;
    void Write(unsigned short const* text, unsigned int offset, unsigned int count) override {
        log.append(text + offset, count);
    }
    void Flush() override { Note(u"|F", failFlush, "Flush failed."); }
    void Close() override { Note(u"|C", failClose, "Close failed."); }
    void Note(const char16_t* event, bool fail, const char* text) {
        log += W(event);
        if (fail)
            throw CIOException("journal", 1, text, nullptr);
    }
    WString log;
    bool failFlush = false, failClose = false;
};

template <typename T> void ExpectPrinted(T value, const char16_t* text) {
    CJournal journal;
    CPrintWriter out(&journal, false, nullptr);
    out.Print(value);
    out.Println(value);
    EXPECT_EQ(journal.log, W(text) + W(text) + W(u"\r\n")) << vorn::test::Narrow(journal.log);
}

TEST(PrintWriter, FormatsEachValueType) {
    ExpectPrinted('A', u"A");
    ExpectPrinted(short(65), u"65");
    ExpectPrinted((unsigned short)65, u"A"); // the character, not the number
    ExpectPrinted((unsigned short)0x20AC, u"€");
    ExpectPrinted(INT_MIN, u"-2147483648");
    ExpectPrinted(4294967295u, u"4294967295");
    ExpectPrinted(1.5f, u"1.500000");
    ExpectPrinted(0.1, u"0.100000");
    ExpectPrinted(false, u"false");
    ExpectPrinted(CString("caf\xC3\xA9"), u"café");
    ExpectPrinted(CUnicodeString(W(u"wide").c_str()), u"wide");
    ExpectPrinted(W(u"units").c_str(), u"units");
    ExpectPrinted(static_cast<unsigned short const*>(nullptr), u"");

    CJournal journal;
    CPrintWriter out(&journal, false, nullptr);
    out.Print(true);
    out.Print("caf\xC3\xA9");
    out.Print(0x100000005ULL); // "%lu" sees the low 32 bits
    out.PrintInt(-3);
    out.PrintUnsignedChar(200);
    out.PrintUnsignedInt(4000000000u);
    out.PrintUnsignedShort(65535);
    EXPECT_EQ(journal.log, W(u"truecafé5-3200400000000065535"));
}

TEST(PrintWriter, LongTextIsCutAtTheScratchArea) {
    CJournal journal;
    CPrintWriter out(&journal, false, nullptr);
    out.Print(1e300);
    char expected[400];
    std::snprintf(expected, sizeof expected, "%f", 1e300);
    EXPECT_EQ(journal.log, WString(expected, expected + 256));
}

TEST(PrintWriter, LineEndsAndAutoFlush) {
    CJournal journal;
    CUnicodeString end;
    CPrintWriter byDefault(&journal, false, nullptr);
    byDefault.GetEndOfLine(end);
    EXPECT_EQ(vorn::test::Units(end), W(u"\r\n"));
    CPrintWriter empty(&journal, false, W(u"").c_str());
    empty.GetEndOfLine(end);
    EXPECT_EQ(vorn::test::Units(end), W(u"\r\n"));
    CPrintWriter own(&journal, true, W(u"¶\n").c_str());
    own.GetEndOfLine(end);
    EXPECT_EQ(vorn::test::Units(end), W(u"¶\n"));
    own.Print(1);
    own.Println();
    empty.Println(2);
    EXPECT_EQ(journal.log, W(u"1¶\n|F2\r\n"));
}

TEST(PrintWriter, ClosedWriterThrowsEvenForEmptyText) {
    CJournal journal;
    CPrintWriter out(&journal, false, nullptr);
    out.Close();
    out.Close();
    EXPECT_EQ(journal.log, W(u"|F|C"));
    std::function<void()> calls[] = {[&] { out.Print(CString()); },
                                     [&] { out.Print(""); },
                                     [&] { out.Print(CUnicodeString()); },
                                     [&] { out.Print(1); },
                                     [&] { out.Print(true); },
                                     [&] { out.Println(); },
                                     [&] { out.Write(W(u"x").c_str()); },
                                     [&] { out.Write(static_cast<unsigned short>(1)); },
                                     [&] { out.Flush(); }};
    for (auto& call : calls)
        ExpectThrow<CIOException>(call, kSource, "Writer closed.");
    // A null text checks nothing; its line end then meets no writer.
    out.Print(static_cast<unsigned short const*>(nullptr));
    out.Print(static_cast<char const*>(nullptr));
    ExpectThrow<vorn::base::CNullReferenceException>(
        [&] { out.Println(static_cast<unsigned short const*>(nullptr)); }, kSource);
}

TEST(PrintWriter, CloseEndsClosedWhenTheWriterBeneathFails) {
    CJournal journal;
    journal.failFlush = journal.failClose = true;
    {
        CPrintWriter out(&journal, false, nullptr);
        ExpectThrow<CIOException>([&] { out.Close(); }, "journal", "Flush failed.");
        EXPECT_EQ(journal.log, W(u"|F|C"));
        ExpectThrow<CIOException>([&] { out.Flush(); }, kSource, "Writer closed.");
    }
    journal.failFlush = false;
    CPrintWriter out(&journal, false, nullptr);
    ExpectThrow<CIOException>([&] { out.Close(); }, "journal", "Close failed.");
    ExpectThrow<CIOException>([&] { out.Print(1); }, kSource, "Writer closed.");
}

TEST(PrintWriter, NullWritersAreRefused) {
    using vorn::base::CIllegalArgumentException;
    ExpectThrow<CIllegalArgumentException>(
        [] { CPrintWriter out(CRef<CWriter>(), false, nullptr); }, kSource, "Invalid writer.");
    ExpectThrow<CIllegalArgumentException>(
        [] { CPrintWriter out((CWriter*)nullptr, true, nullptr); }, kSource, "Invalid writer.");
}

TEST(PrintWriter, NumbersAllocateNothingAndNarrowTextReusesItsBuffer) {
    CJournal journal;
    journal.log.reserve(256);
    CPrintWriter out(&journal, false, nullptr);
    CString text("narrow text");
    out.Print(text);
    EXPECT_EQ(vorn::test::CountAllocations([&] {
                  out.Print(12345);
                  out.Print(2.5);
                  out.Print(true);
                  out.Print(text);
                  out.Print("short");
              }),
              0u);
}

} // namespace

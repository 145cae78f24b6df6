#include <gtest/gtest.h>

#include <climits>
#include <cstdio>
#include <string>

#include <vorn/base/IllegalArgumentException.h>
#include <vorn/base/NullReferenceException.h>
#include <vorn/io/IOException.h>
#include <vorn/io/PrintWriter.h>

#include "support/AllocFailure.h"
#include "support/Recording.h"
#include "support/Throws.h"
#include "support/Utf16.h"

namespace {

using vorn::base::CRef;
using vorn::base::CString;
using vorn::base::CUnicodeString;
using vorn::io::CIOException;
using vorn::io::CPrintWriter;
using vorn::io::CWriter;
using vorn::test::CRecordingWriter;
using vorn::test::ExpectThrow;
using vorn::test::W;
using vorn::test::WString;

const char* const kSource = "vorn/io/PrintWriter";

template <typename T> void ExpectPrinted(T value, const char16_t* text) {
    CRecordingWriter journal;
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

    CRecordingWriter journal;
    CPrintWriter out(&journal, false, nullptr);
    out.Print(true);
    out.Print("caf\xC3\xA9");
    out.Print(0x100000005ULL); // "%lu" sees the low 32 bits
    out.PrintInt(-3);
    out.PrintUnsignedChar(200);
    out.PrintUnsignedInt(4000000000u);
    out.PrintUnsignedShort(65535);
    EXPECT_EQ(journal.log, W(u"truecafé5-3200400000000065535"));
    // Long text is cut at the scratch area.
    journal.log.clear();
    out.Print(1e300);
    char expected[400];
    std::snprintf(expected, sizeof expected, "%f", 1e300);
    EXPECT_EQ(journal.log, WString(expected, expected + 256));
}

TEST(PrintWriter, LineEndsAndAutoFlush) {
    CRecordingWriter journal;
    CUnicodeString end;
    CPrintWriter empty(&journal, false, W(u"").c_str());
    empty.GetEndOfLine(end);
    EXPECT_EQ(vorn::test::Units(end), W(u"\r\n"));
    CPrintWriter own(&journal, true, W(u"¶\n").c_str());
    own.Print(1);
    own.Println();
    empty.Println(2);
    EXPECT_EQ(journal.log, W(u"1¶\n|F2\r\n"));
}

TEST(PrintWriter, ClosedWriterThrowsEvenForEmptyText) {
    CRecordingWriter journal;
    CPrintWriter out(&journal, false, nullptr);
    out.Close();
    out.Close();
    EXPECT_EQ(journal.log, W(u"|F|C"));
    for (auto call :
         {+[](CPrintWriter& w) { w.Print(CString()); }, +[](CPrintWriter& w) { w.Print(""); },
          +[](CPrintWriter& w) { w.Print(CUnicodeString()); }, +[](CPrintWriter& w) { w.Print(1); },
          +[](CPrintWriter& w) { w.Print(true); }, +[](CPrintWriter& w) { w.Println(); },
          +[](CPrintWriter& w) { w.Write(W(u"x").c_str()); },
          +[](CPrintWriter& w) { w.Write(static_cast<unsigned short>(1)); },
          +[](CPrintWriter& w) { w.Flush(); }})
        ExpectThrow<CIOException>([&] { call(out); }, kSource, "Writer closed.");
    // A null text checks nothing; its line end then meets no writer.
    out.Print(static_cast<unsigned short const*>(nullptr));
    out.Print(static_cast<char const*>(nullptr));
    ExpectThrow<vorn::base::CNullReferenceException>(
        [&] { out.Println(static_cast<unsigned short const*>(nullptr)); }, kSource);
}

TEST(PrintWriter, CloseEndsClosedWhenTheWriterBeneathFails) {
    CRecordingWriter journal;
    journal.failFlush = journal.failClose = true;
    {
        CPrintWriter out(&journal, false, nullptr);
        ExpectThrow<CIOException>([&] { out.Close(); }, "test/Recording", "Flush failed.");
        EXPECT_EQ(journal.log, W(u"|F|C"));
        ExpectThrow<CIOException>([&] { out.Flush(); }, kSource, "Writer closed.");
    }
    journal.failFlush = false;
    CPrintWriter out(&journal, false, nullptr);
    ExpectThrow<CIOException>([&] { out.Close(); }, "test/Recording", "Close failed.");
    ExpectThrow<CIOException>([&] { out.Print(1); }, kSource, "Writer closed.");
    using vorn::base::CIllegalArgumentException;
    ExpectThrow<CIllegalArgumentException>(
        [] { CPrintWriter refused(CRef<CWriter>(), false, nullptr); }, kSource, "Invalid writer.");
    ExpectThrow<CIllegalArgumentException>(
        [] { CPrintWriter refused((CWriter*)nullptr, true, nullptr); }, kSource, "Invalid writer.");
}

TEST(PrintWriter, NumbersAllocateNothingAndNarrowTextReusesItsBuffer) {
    CRecordingWriter journal;
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

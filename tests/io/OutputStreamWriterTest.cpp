#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include <unicode/ustring.h>

#include <vorn/base/IllegalArgumentException.h>
#include <vorn/base/MemoryException.h>
#include <vorn/base/UnicodeString.h>
#include <vorn/io/IOException.h>
#include <vorn/io/MemoryOutputStream.h>
#include <vorn/io/OutputStreamWriter.h>
#include <vorn/io/UnsupportedEncodingException.h>

#include "support/AllocFailure.h"
#include "support/Recording.h"
#include "support/Throws.h"
#include "support/Utf16.h"

namespace {

using vorn::base::CIllegalArgumentException;
using vorn::base::CRef;
using vorn::io::CIOException;
using vorn::io::COutputStream;
using vorn::io::COutputStreamWriter;
using vorn::test::CRecordingStream;
using vorn::test::ExpectThrow;
using vorn::test::W;
using vorn::test::WString;

void Put(COutputStreamWriter& writer, const WString& text) {
    writer.Write(text.data(), static_cast<unsigned int>(text.size()));
}

TEST(OutputStreamWriter, BytesOfSmallWrites) {
    CRecordingStream marked;
    {
        COutputStreamWriter writer(&marked, "UTF-8", true);
        EXPECT_EQ(marked.bytes, "\xEF\xBB\xBF"); // ahead of the buffer
        writer.Write(static_cast<unsigned short>('A'));
        writer.Close();
    }
    EXPECT_EQ(marked.bytes, "\xEF\xBB\xBF"
                            "A");
    CRecordingStream pair;
    COutputStreamWriter writer(&pair, "UTF-8", false);
    Put(writer, W(u"x\xD83D"));
    Put(writer, W(u"\xDE00"));
    // A high surrogate ending the last write disappears at Close.
    Put(writer, W(u"a\xD83D"));
    writer.Close();
    EXPECT_EQ(pair.bytes, "x\xF0\x9F\x98\x80"
                          "a");
    EXPECT_EQ(pair.closes, 1);
}

TEST(OutputStreamWriter, TheBufferGoesOutWhenFullOrWhenAConversionFails) {
    CRecordingStream stream;
    COutputStreamWriter writer(&stream, "UTF-8", false);
    Put(writer, WString(8195, 'a'));
    EXPECT_TRUE(stream.blocks.empty());
    writer.Write(static_cast<unsigned short>('b'));
    EXPECT_EQ(stream.blocks, (std::vector<unsigned int>{8196})); // exactly full
    // 9000 units: no room, an empty flush, still no room, the buffer doubles to 16392.
    Put(writer, WString(9000, 'c'));
    EXPECT_EQ(stream.blocks, (std::vector<unsigned int>{8196, 0}));
    Put(writer, WString(7392, 'd'));
    EXPECT_EQ(stream.blocks, (std::vector<unsigned int>{8196, 0, 16392}));
    writer.Write(static_cast<unsigned short>('e'));
    writer.Flush();
    EXPECT_EQ(stream.blocks, (std::vector<unsigned int>{8196, 0, 16392, 1}));
    EXPECT_EQ(stream.flushes, 1);
    // A write that doesn't fit behind pending bytes sends them first.
    Put(writer, WString(16000, 'f'));
    Put(writer, WString(400, 'g'));
    EXPECT_EQ(stream.blocks, (std::vector<unsigned int>{8196, 0, 16392, 1, 16000}));
    EXPECT_EQ(stream.bytes.size(), 8196u + 16392u + 1u + 16000u);
}

TEST(OutputStreamWriter, ALoneHighSurrogateExhaustsMemory) {
    CRecordingStream stream;
    COutputStreamWriter writer(&stream, "UTF-8", false);
    Put(writer, W(u"ab"));
    {
        vorn::test::FailAllocation fail(3); // doublings to 16392 and 32784, then none
        ExpectThrow<CIOException>([&] { writer.Write(static_cast<unsigned short>(0xD800)); },
                                  "vorn/io/OutputStreamWriter", "Memory full.");
    }
    EXPECT_EQ(stream.blocks, (std::vector<unsigned int>{2}));
    // Without a buffer a later write is refused, and closing still works.
    ExpectThrow<vorn::base::CNullReferenceException>([&] { Put(writer, W(u"c")); },
                                                     "vorn/io/OutputStreamWriter");
    writer.Close();
    EXPECT_EQ(stream.bytes, "ab");
}

TEST(OutputStreamWriter, ArgumentsAndClosedState) {
    CRecordingStream stream;
    ExpectThrow<CIllegalArgumentException>(
        [] { COutputStreamWriter w(CRef<COutputStream>(), "UTF-8", false); },
        "vorn/io/OutputStreamWriter", "Invalid output stream..");
    ExpectThrow<CIllegalArgumentException>([&] { COutputStreamWriter w(&stream, "", false); },
                                           "vorn/io/OutputStreamWriter", "Invalid encoding.");
    try {
        COutputStreamWriter w(&stream, "utf-8", true);
        ADD_FAILURE() << "no exception";
    } catch (const vorn::io::CUnsupportedEncodingException& e) {
        EXPECT_EQ(e.GetEncoding(), "utf-8");
    }
    // The buffer is the last allocation of a construction.
    auto build = [&] { COutputStreamWriter w(&stream, "UTF-8", false); };
    build();
    vorn::test::ExpectNoMemory(build, "vorn/io/OutputStreamWriter", 0,
                               vorn::test::CountAllocations(build));
    EXPECT_TRUE(stream.bytes.empty());

    COutputStreamWriter writer(&stream, "UTF-8", false);
    EXPECT_EQ(writer.GetEncoding(), "UTF-8");
    vorn::base::CUnicodeString text(W(u"hello").c_str());
    writer.Write(text, 1, 100); // cut at the end
    writer.Write(text, 5, 1);   // past the end
    writer.Write(text.operator const unsigned short*(), 0, 1);
    writer.Write(static_cast<const unsigned short*>(nullptr), 0, 3);
    writer.Write(W(u"!").c_str());
    writer.Close();
    writer.Close();
    EXPECT_EQ(stream.bytes, "elloh!");
    ExpectThrow<CIOException>([&] { writer.Write(static_cast<unsigned short>('a')); },
                              "vorn/io/OutputStreamWriter", "Writer closed.");
    ExpectThrow<CIOException>([&] { writer.Flush(); }, "vorn/io/OutputStreamWriter",
                              "Writer closed.");
}

TEST(OutputStreamWriter, CloseFailuresAndTheLostTail) {
    CRecordingStream stream;
    {
        COutputStreamWriter writer(&stream, "UTF-8", false);
        Put(writer, W(u"dropped"));
    }
    EXPECT_TRUE(stream.bytes.empty()); // the destructor doesn't flush

    COutputStreamWriter first(&stream, "UTF-8", false);
    Put(first, W(u"x"));
    stream.failWrite = stream.failClose = true;
    // The flush fails, the stream is closed all the same, and the first failure leaves.
    ExpectThrow<CIOException>([&] { first.Close(); }, "test/Recording", "Write failed.");
    EXPECT_EQ(stream.closes, 1);
    first.Close();
    stream.failWrite = false;
    COutputStreamWriter second(&stream, "UTF-8", false);
    ExpectThrow<CIOException>([&] { second.Close(); }, "test/Recording", "Close failed.");
    EXPECT_THROW(second.Flush(), CIOException);
    EXPECT_EQ(stream.closes, 2);
}

// Text without surrogates, written in chunks of random sizes, gives exactly ICU's UTF-8.
TEST(OutputStreamWriter, MatchesIcuOnRandomText) {
    std::mt19937 random(4242);
    for (int round = 0; round < 3; ++round) {
        WString text;
        // One-, two- and three-byte units, around the surrogate range.
        const unsigned int ranges[][2] = {
            {0x20, 0x5F}, {0x80, 0x780}, {0x800, 0xD000}, {0xE000, 0x2000}};
        while (text.size() < 60000) {
            const unsigned int* range = ranges[random() % 4];
            text.push_back(static_cast<unsigned short>(range[0] + random() % range[1]));
        }
        std::string expected(text.size() * 3, '\0');
        int32_t length = 0;
        UErrorCode status = U_ZERO_ERROR;
        u_strToUTF8(&expected[0], static_cast<int32_t>(expected.size()), &length,
                    reinterpret_cast<const UChar*>(text.data()), static_cast<int32_t>(text.size()),
                    &status);
        ASSERT_TRUE(U_SUCCESS(status));
        expected.resize(static_cast<std::size_t>(length));

        vorn::io::CMemoryOutputStream memory;
        COutputStreamWriter writer(&memory, "UTF-8", false);
        for (std::size_t at = 0; at < text.size();) {
            const std::size_t chunk = std::min<std::size_t>(
                text.size() - at, random() % 4 == 0 ? random() % 20000 : random() % 64);
            writer.Write(text.data(), static_cast<unsigned int>(at),
                         static_cast<unsigned int>(chunk));
            at += chunk;
        }
        writer.Close();
        ASSERT_EQ(memory.GetBufferSize(), expected.size());
        EXPECT_EQ(std::string(memory.GetBuffer(), memory.GetBufferSize()), expected);
    }
}

} // namespace

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <random>
#include <string>
#include <unistd.h>

#include <vorn/base/BinaryData.h>
#include <vorn/base/IllegalArgumentException.h>
#include <vorn/base/MemoryException.h>
#include <vorn/base/NumberFormatException.h>

#include "platform/Memory.h"
#include "support/AllocFailure.h"
#include "support/Files.h"
#include "support/Throws.h"
#include "support/Utf16.h"

namespace {

using vorn::base::CBinaryData;
using vorn::base::CString;
using vorn::base::CUnicodeString;
using vorn::test::ExpectThrowAt;
using vorn::test::Units;
using vorn::test::W;

constexpr const char* kSource = "vorn/base/BinaryData";
using P = char*&;
using N = unsigned int&;
using Parser = std::function<void(P, N)>;
using Call = std::function<void()>;

std::string Bytes(const CBinaryData& d) {
    return d.GetData() == nullptr ? "" : std::string(d.GetData(), d.GetDataLength());
}

// The length that the last Parse was told.
unsigned int g_reported = 0;

// Runs a parser and releases its block, also when it throws; gives the first `bytes` bytes.
std::string Parse(const Parser& parser, unsigned int bytes) {
    char* data = nullptr;
    unsigned int length = 0;
    try {
        parser(data, length);
    } catch (...) {
        ZK_free(data);
        throw;
    }
    std::string block(data, bytes);
    ZK_free(data);
    g_reported = length;
    return block;
}

// A call of `parser` that releases what it gives.
Call Parsing(const Parser& parser) {
    return [=] { Parse(parser, 0); };
}

// CBinaryData::name(arguments..., data, length), its first `bytes` bytes; or that call to come.
#define PARSE(bytes, name, ...)                                                                    \
    Parse([&](P out, N outLength) { CBinaryData::name(__VA_ARGS__, out, outLength); }, bytes)
#define PARSING(name, ...)                                                                         \
    Parsing([=](P out, N outLength) { CBinaryData::name(__VA_ARGS__, out, outLength); })

TEST(BinaryData, ValueSemantics) {
    EXPECT_EQ(CBinaryData(0u).GetData(), nullptr);
    EXPECT_EQ(Bytes(CBinaryData(3u)), std::string(3, '\0'));
    const CBinaryData abc("abc", 3), copy(abc), none, empty("x", 0);
    EXPECT_NE(copy.GetData(), abc.GetData());
    EXPECT_EQ(Bytes(copy), "abc");
    EXPECT_NE(empty.GetData(), nullptr); // a block of its own, of length 0

    const CBinaryData ff("\xff", 1), zeros("\0\0", 2), b("b", 1);
    EXPECT_EQ(ff.Compare(zeros), -1); // the shorter first, whatever the bytes
    EXPECT_EQ(zeros.Compare(ff), 1);
    EXPECT_LT(CBinaryData("a", 1).Compare(b), 0);
    EXPECT_EQ(b.Compare(CBinaryData("b", 1)), 0);
    EXPECT_TRUE(b == CBinaryData("b", 1) && b != ff && ff != zeros);
    EXPECT_TRUE(none == empty && none.Compare(empty) == 0);

    CBinaryData d("abcd", 4);
    char* block = d.GetData();
    d.Truncate(4);
    d.Truncate(2);
    EXPECT_EQ(d.GetData(), block);
    EXPECT_EQ(Bytes(d), "ab");
    d.Truncate(0);
    EXPECT_EQ(d.GetData(), nullptr);
}

TEST(BinaryData, AssignmentGivesUpTheBlockOfALongerTarget) {
    CBinaryData target;
    target = CBinaryData("abcdef", 6);
    char* old = target.GetData();
    target = CBinaryData("xy", 2);
    // The shorter source went into the old block first; then a new block took its place.
    EXPECT_NE(target.GetData(), old);
    EXPECT_EQ(Bytes(target), "xy");
    EXPECT_EQ(std::string(old, 6), "xycdef");
    const CBinaryData longer("longer", 6);
    target = longer;
    const CBinaryData& same = target;
    target = same;
    EXPECT_EQ(Bytes(target), "longer");
    target = CBinaryData();
    EXPECT_EQ(target.GetData(), nullptr);
    EXPECT_EQ(target.GetDataLength(), 0u);
}

// RFC 4648, section 10, but for the empty input, which asks for a buffer of 0x55555559 bytes.
const std::pair<const char*, const char*> kBase64[] = {
    {"f", "Zg=="},         {"fo", "Zm8="},         {"foo", "Zm9v"}, {"foob", "Zm9vYg=="},
    {"fooba", "Zm9vYmE="}, {"foobar", "Zm9vYmFy"}, {"Ma", "TWE="},  {"\xfb\xff", "+/8="}};

TEST(BinaryData, TextFormsBothWays) {
    for (const auto& vector : kBase64) {
        const char *plain = vector.first, *text = vector.second;
        const auto length = static_cast<unsigned int>(std::strlen(plain));
        EXPECT_EQ(CBinaryData::ToBase64String(plain, length), text);
        EXPECT_EQ(CBinaryData::ToBase64UnicodeString(plain, length), text);
        // One byte reported per group of four characters; the block holds all.
        EXPECT_EQ(PARSE(length, ParseBase64String, text), plain);
        EXPECT_EQ(g_reported, std::strlen(text) / 4);
        EXPECT_EQ(PARSE(length, ParseBase64UnicodeString, CUnicodeString(text)), plain);
        EXPECT_EQ(g_reported, std::strlen(text) / 4);
    }
    const std::string hundred(100, 'x');
    const CString line = CBinaryData::ToBase64String(hundred.data(), 100);
    EXPECT_EQ(line.GetLength(), 136u);
    EXPECT_EQ(line.Find('\n'), -1);
    EXPECT_EQ(PARSE(2, ParseBase64String, "TQ==TQ=="), "MM");
    EXPECT_EQ(PARSE(0, ParseBase64String, CString("")), "");
    EXPECT_EQ(g_reported, 0u);

    std::string all(256, '\0');
    for (int i = 0; i < 256; ++i)
        all[i] = static_cast<char>(i);
    const CString hex = CBinaryData::ToBinHexString(all.data(), 256);
    EXPECT_EQ(std::string(hex).substr(0x09 * 2, 6), "090A0B");
    EXPECT_EQ(PARSE(256, ParseBinHexString, hex), all);
    const CUnicodeString wideHex = CBinaryData::ToBinHexUnicodeString(all.data(), 256);
    EXPECT_EQ(wideHex, hex);
    EXPECT_EQ(PARSE(256, ParseBinHexUnicodeString, wideHex), all);
    EXPECT_EQ(PARSE(2, ParseBinHexString, "00FF7f", 4), std::string("\x00\xff", 2));

    CBinaryData data("\x0a\xff", 2);
    EXPECT_EQ(data.ToBinHexString(), "0AFF");
    EXPECT_EQ(Units(data.ToBinHexUnicodeString()), W(u"0AFF"));
    data.FromBinHexString("CAFE");
    EXPECT_EQ(Bytes(data), "\xca\xfe");
    data.FromBinHexUnicodeString(W(u"0102").c_str(), 2);
    EXPECT_EQ(Bytes(data), "\x01");
    // No bytes: an empty text, or the result left as it was.
    CBinaryData none;
    CString kept("kept");
    CUnicodeString keptWide("kept");
    none.ToBinHexString(kept);
    none.ToBinHexUnicodeString(keptWide);
    EXPECT_TRUE(none.ToBinHexString().IsEmpty() && none.ToBinHexUnicodeString().IsEmpty());
    EXPECT_EQ(kept, "kept");
    EXPECT_EQ(keptWide, "kept");
}

TEST(BinaryData, EachCheckWithItsWordsAndLine) {
    const unsigned short* noWide = nullptr;
    const auto abc = W(u"ABC");
    CBinaryData d;
    const char *buffer = "Invalid value buffer.", *bufferLength = "Invalid value buffer length.",
               *pointer = "Illegal data pointer.";
    const std::tuple<unsigned int, const char*, Call> arguments[] = {
        {422, "Invalid binary data.", [] { CBinaryData(nullptr, 0); }},
        {547, "Invalid new data length.", [] { CBinaryData(2u).Truncate(3); }},
        {585, buffer, [&] { d.FromBinHexString(""); }},
        {604, buffer, [&] { d.FromBinHexString(nullptr, 2); }},
        {606, bufferLength, [&] { d.FromBinHexString("AB", 0); }},
        {625, buffer, [&] { d.FromBinHexUnicodeString(noWide); }},
        {644, buffer, [&] { d.FromBinHexUnicodeString(nullptr, 2); }},
        {646, bufferLength, [&] { d.FromBinHexUnicodeString(abc.c_str(), 0); }},
        {833, buffer, PARSING(ParseBinHexString, "")},
        {848, buffer, PARSING(ParseBinHexString, nullptr, 2)},
        {850, bufferLength, PARSING(ParseBinHexString, "AB", 0)},
        {865, buffer, PARSING(ParseBinHexUnicodeString, noWide)},
        {880, buffer, PARSING(ParseBinHexUnicodeString, nullptr, 2)},
        {882, bufferLength, PARSING(ParseBinHexUnicodeString, abc.c_str(), 0)},
        {907, pointer, [] { CBinaryData::ToBase64String(nullptr, 0); }},
        {946, pointer, [] { CBinaryData::ToBase64UnicodeString(nullptr, 1); }},
        {985, pointer, [] { CBinaryData::ToBinHexString(nullptr, 0); }},
        {1024, pointer, [] { CBinaryData::ToBinHexUnicodeString(nullptr, 1); }}};
    for (const auto& [line, words, call] : arguments)
        ExpectThrowAt<vorn::base::CIllegalArgumentException>(call, kSource, line, words);

    const char *badChar = "Invalid base 64 char found.",
               *base64 = "Invalid base64 encoded binary data.",
               *odd = "Invalid binhex encoded binary data.", *digit = "Invalid binhex digit.";
    const std::tuple<unsigned int, const char*, Call> texts[] = {
        {202, badChar, PARSING(ParseBase64String, CString("TQ=A"))},
        {202, badChar, PARSING(ParseBase64String, CString("TW F"))},
        {172, badChar, PARSING(ParseBase64String, CString("T==="))},
        {185, badChar, PARSING(ParseBase64String, CString("T=Q="))},
        {253, badChar, PARSING(ParseBase64UnicodeString, CUnicodeString(W(u"TQ=A").c_str()))},
        {253, badChar,
         PARSING(ParseBase64UnicodeString, CUnicodeString(W(u"TWF\u0141").c_str()))}, // not 'A'
        {222, badChar, PARSING(ParseBase64UnicodeString, CUnicodeString(W(u"T===").c_str()))},
        {236, badChar, PARSING(ParseBase64UnicodeString, CUnicodeString(W(u"T=Q=").c_str()))},
        {672, base64, PARSING(ParseBase64String, CString("TWFu\n"))},
        {714, base64, PARSING(ParseBase64UnicodeString, CUnicodeString(W(u"TWF").c_str()))},
        {756, odd, PARSING(ParseBinHexString, CString("ABC"))},
        {318, odd, [&] { d.FromBinHexString("ABC"); }},
        {796, odd, PARSING(ParseBinHexUnicodeString, CUnicodeString(W(u"ABC").c_str()))},
        {356, odd, [&] { d.FromBinHexUnicodeString(abc.c_str()); }},
        {269, digit, PARSING(ParseBinHexString, CString("0aff"))},
        {269, digit, [&] { d.FromBinHexString("AG"); }},
        {285, digit, PARSING(ParseBinHexUnicodeString, CUnicodeString(W(u"0aff").c_str()))}};
    for (const auto& [line, words, call] : texts)
        ExpectThrowAt<vorn::base::CNumberFormatException>(call, kSource, line, words);
    // A bad digit leaves the partly decoded block, length and all; a bad length leaves none.
    ExpectThrowAt<vorn::base::CNumberFormatException>([&] { d.FromBinHexString("41x1"); }, kSource,
                                                      269, digit);
    EXPECT_EQ(Bytes(d).substr(0, 1), "A");
    EXPECT_EQ(d.GetDataLength(), 2u);
    ExpectThrowAt<vorn::base::CNumberFormatException>([&] { d.FromBinHexString("414"); }, kSource,
                                                      318, odd);
    EXPECT_EQ(d.GetData(), nullptr);
}

TEST(BinaryData, MemoryFailures) {
    const CBinaryData source("abc", 3);
    CBinaryData target("ab", 2);
    // Every text is made before the failure is armed.
    const CString base64("TWFu"), hex("AB");
    const CUnicodeString wideBase64("TWFu"), wideHex("AB");
    const auto ab = W(u"AB");
    const std::pair<unsigned int, std::function<void()>> failures[] = {
        {405, [] { CBinaryData(8u); }},
        {428, [] { CBinaryData("abc", 3); }},
        {449, [&] { CBinaryData copy(source); }},
        {499, [&] { target = source; }},
        {679, PARSING(ParseBase64String, base64)},
        {721, PARSING(ParseBase64UnicodeString, wideBase64)},
        {763, PARSING(ParseBinHexString, hex)},
        {325, PARSING(ParseBinHexString, "AB")},
        {803, PARSING(ParseBinHexUnicodeString, wideHex)},
        {363, PARSING(ParseBinHexUnicodeString, ab.c_str(), 2)}};
    for (const auto& [line, call] : failures)
        vorn::test::ExpectNoMemory(call, kSource, line);
    // The failed assignment released the old block first and holds nothing now.
    EXPECT_EQ(target.GetData(), nullptr);
    EXPECT_EQ(target.GetDataLength(), 0u);
    // A length of 0 asks the text buffer for 0x55555559 bytes.
    vorn::test::ExpectNoMemory([] { CBinaryData::ToBase64String("", 0); }, "vorn/base/StringBuffer",
                               297);
}

// Random blocks against the system's base64 program, both ways.
TEST(BinaryData, Base64AgreesWithTheSystemProgram) {
    if (std::system("command -v base64 >/dev/null 2>&1") != 0)
        GTEST_SKIP() << "no base64 program on this system";
    std::string name = vorn::test::UniqueName("/tmp/vorn-base64-");
    char* path = name.data();
    const int fd = mkstemp(path);
    ASSERT_GE(fd, 0);
    std::mt19937 random(20240611);
    for (unsigned int length : {1u, 2u, 3u, 4u, 5u, 57u, 58u, 59u, 1000u, 4096u}) {
        std::string block(length, '\0');
        for (char& c : block)
            c = static_cast<char>(random());
        ASSERT_EQ(pwrite(fd, block.data(), length, 0), static_cast<ssize_t>(length));
        ASSERT_EQ(ftruncate(fd, length), 0);
        FILE* tool = popen((std::string("base64 -w0 ") + path).c_str(), "r");
        std::string expected;
        char chunk[4096];
        for (size_t n; (n = std::fread(chunk, 1, sizeof chunk, tool)) > 0;)
            expected.append(chunk, n);
        ASSERT_EQ(pclose(tool), 0);
        EXPECT_EQ(std::string(CBinaryData::ToBase64String(block.data(), length)), expected);
        EXPECT_EQ(PARSE(length, ParseBase64String, expected.c_str()), block);
    }
    close(fd);
    std::remove(path);
}

} // namespace

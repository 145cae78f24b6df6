#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <unistd.h>

#include <vorn/base/BinaryData.h>
#include <vorn/base/IllegalArgumentException.h>
#include <vorn/base/MemoryException.h>
#include <vorn/base/NumberFormatException.h>

#include "platform/Memory.h"
#include "support/AllocFailure.h"
#include "support/Throws.h"
#include "support/Utf16.h"

namespace {

using vorn::base::CBinaryData;
using vorn::base::CIllegalArgumentException;
using vorn::base::CMemoryException;
using vorn::base::CNumberFormatException;
using vorn::base::CString;
using vorn::base::CUnicodeString;
using vorn::test::ExpectThrowAt;
using vorn::test::FailAllocation;
using vorn::test::Units;
using vorn::test::W;

constexpr const char* kSource = "vorn/base/BinaryData";

std::string Bytes(const CBinaryData& d) {
    return d.GetData() == nullptr ? std::string() : std::string(d.GetData(), d.GetDataLength());
}

template <typename F> void ExpectNoMemory(unsigned int line, F&& call) {
    ExpectThrowAt<CMemoryException>(
        [&] {
            FailAllocation fail(1);
            call();
        },
        kSource, line);
}

template <typename F> void ExpectBadArgument(unsigned int line, const char* words, F&& call) {
    ExpectThrowAt<CIllegalArgumentException>(call, kSource, line, words);
}

template <typename F> void ExpectBadText(unsigned int line, const char* words, F&& call) {
    ExpectThrowAt<CNumberFormatException>(call, kSource, line, words);
}

// A parser result, released when the test is done with it.
struct Parsed {
    char* data = reinterpret_cast<char*>(1);
    unsigned int length = 99;
    ~Parsed() {
        if (data != reinterpret_cast<char*>(1))
            ZK_free(data);
    }
    std::string Bytes(unsigned int n) const { return std::string(data, n); }
};

TEST(BinaryData, ConstructionAndCopies) {
    CBinaryData none;
    EXPECT_EQ(none.GetData(), nullptr);
    EXPECT_EQ(CBinaryData(0u).GetData(), nullptr);
    EXPECT_EQ(Bytes(CBinaryData(3u)), std::string(3, '\0'));
    CBinaryData abc("abc", 3);
    CBinaryData copy(abc);
    EXPECT_NE(copy.GetData(), abc.GetData());
    EXPECT_EQ(Bytes(copy), "abc");
    EXPECT_EQ(CBinaryData(none).GetData(), nullptr);
    // A non-null pointer of length 0 is copied into a block of its own.
    CBinaryData empty("x", 0);
    EXPECT_NE(empty.GetData(), nullptr);
    EXPECT_EQ(empty.GetDataLength(), 0u);

    ExpectBadArgument(422, "Invalid binary data.", [] { CBinaryData(nullptr, 0); });
    ExpectBadArgument(422, "Invalid binary data.", [] { CBinaryData(nullptr, 4); });
    ExpectNoMemory(405, [] { CBinaryData(8u); });
    ExpectNoMemory(428, [] { CBinaryData("abc", 3); });
    ExpectNoMemory(449, [&] { CBinaryData failed(abc); });
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

    CBinaryData longer("longer", 6);
    target = longer;
    EXPECT_EQ(Bytes(target), "longer");
    target = target;
    EXPECT_EQ(Bytes(target), "longer");
    target = CBinaryData();
    EXPECT_EQ(target.GetData(), nullptr);
    EXPECT_EQ(target.GetDataLength(), 0u);

    CBinaryData failing("ab", 2);
    ExpectNoMemory(499, [&] { failing = longer; });
    EXPECT_EQ(failing.GetData(), nullptr);
    EXPECT_EQ(failing.GetDataLength(), 0u);
}

TEST(BinaryData, EqualityAndOrder) {
    const CBinaryData ff("\xff", 1), zeros("\0\0", 2), a1("a", 1), b1("b", 1);
    EXPECT_EQ(ff.Compare(zeros), -1);
    EXPECT_EQ(zeros.Compare(ff), 1);
    EXPECT_LT(a1.Compare(b1), 0);
    EXPECT_GT(b1.Compare(a1), 0);
    EXPECT_EQ(a1.Compare(CBinaryData("a", 1)), 0);
    EXPECT_TRUE(a1 == CBinaryData("a", 1));
    EXPECT_TRUE(a1 != b1);
    EXPECT_TRUE(ff != zeros);
    // No block and an empty block are equal.
    EXPECT_TRUE(CBinaryData() == CBinaryData("x", 0));
    EXPECT_EQ(CBinaryData().Compare(CBinaryData("x", 0)), 0);
}

TEST(BinaryData, Truncate) {
    CBinaryData d("abcd", 4);
    char* block = d.GetData();
    ExpectBadArgument(547, "Invalid new data length.", [&] { d.Truncate(5); });
    d.Truncate(4);
    d.Truncate(2);
    EXPECT_EQ(d.GetData(), block);
    EXPECT_EQ(Bytes(d), "ab");
    d.Truncate(0);
    EXPECT_EQ(d.GetData(), nullptr);
    EXPECT_EQ(d.GetDataLength(), 0u);
}

// RFC 4648, section 10, less the empty input (see below).
const std::pair<const char*, const char*> kBase64Vectors[] = {
    {"f", "Zg=="},        {"fo", "Zm8="},        {"foo", "Zm9v"},
    {"foob", "Zm9vYg=="}, {"fooba", "Zm9vYmE="}, {"foobar", "Zm9vYmFy"},
    {"M", "TQ=="},        {"Ma", "TWE="},        {"Man", "TWFu"}};

TEST(BinaryData, Base64Encoding) {
    for (const auto& [plain, encoded] : kBase64Vectors) {
        const auto length = static_cast<unsigned int>(std::strlen(plain));
        EXPECT_EQ(CBinaryData::ToBase64String(plain, length), encoded) << plain;
        CUnicodeString wide = CBinaryData::ToBase64UnicodeString(plain, length);
        EXPECT_EQ(std::string(wide.ToUTF8()), encoded) << plain;
    }
    std::string hundred(100, '\0');
    for (int i = 0; i < 100; ++i)
        hundred[i] = static_cast<char>(i * 7);
    CString line = CBinaryData::ToBase64String(hundred.data(), 100);
    EXPECT_EQ(line.GetLength(), 136u);
    EXPECT_EQ(line.Find('\n'), -1);
    CString kept("kept");
    CBinaryData::ToBase64String("\xfb\xff", 2, kept);
    EXPECT_EQ(kept, "+/8=");

    // Length 0 isn't set apart: it asks for a text buffer of 0x55555559 bytes.
    ExpectThrowAt<CMemoryException>(
        [] {
            FailAllocation fail(1);
            CBinaryData::ToBase64String("", 0);
        },
        "vorn/base/StringBuffer", 297);
    const char* bad = "Illegal data pointer.";
    ExpectBadArgument(907, bad, [] { CBinaryData::ToBase64String(nullptr, 0); });
    ExpectBadArgument(946, bad, [] { CBinaryData::ToBase64UnicodeString(nullptr, 1); });
    ExpectBadArgument(985, bad, [] { CBinaryData::ToBinHexString(nullptr, 0); });
    ExpectBadArgument(1024, bad, [] { CBinaryData::ToBinHexUnicodeString(nullptr, 1); });
}

TEST(BinaryData, Base64DecodingReportsOneBytePerGroup) {
    for (const auto& [plain, encoded] : kBase64Vectors) {
        const auto length = std::strlen(plain);
        Parsed narrow, wide;
        CBinaryData::ParseBase64String(encoded, narrow.data, narrow.length);
        EXPECT_EQ(narrow.length, std::strlen(encoded) / 4) << encoded;
        EXPECT_EQ(narrow.Bytes(length), plain);
        CBinaryData::ParseBase64UnicodeString(CUnicodeString(encoded), wide.data, wide.length);
        EXPECT_EQ(wide.length, narrow.length);
        EXPECT_EQ(wide.Bytes(length), plain);
    }
    // Pads inside the text end a group, and decoding goes on behind it.
    Parsed twice;
    CBinaryData::ParseBase64String("TQ==TQ==", twice.data, twice.length);
    EXPECT_EQ(twice.length, 2u);
    EXPECT_EQ(twice.Bytes(2), "MM");
    // The empty text is no error: an empty block.
    Parsed empty;
    CBinaryData::ParseBase64String(CString(""), empty.data, empty.length);
    EXPECT_NE(empty.data, nullptr);
    EXPECT_EQ(empty.length, 0u);
}

TEST(BinaryData, Base64DecodingFailures) {
    const char* badChar = "Invalid base 64 char found.";
    const char* badLength = "Invalid base64 encoded binary data.";
    struct Case {
        const char16_t* text;
        unsigned int narrowLine, wideLine;
    } cases[] = {{u"TQ=A", 202, 253},
                 {u"T===", 172, 222},
                 {u"T=Q=", 185, 236},
                 {u"TW F", 202, 253},
                 {u"TWFu\nTWFu", 0, 0}};
    for (const Case& c : cases) {
        const vorn::test::WString units = W(c.text);
        const CUnicodeString wide(units.c_str());
        const CString narrow(wide.ToUTF8());
        Parsed n, w;
        if (c.narrowLine == 0) {
            ExpectBadText(672, badLength,
                          [&] { CBinaryData::ParseBase64String(narrow, n.data, n.length); });
            EXPECT_EQ(n.data, nullptr);
            ExpectBadText(714, badLength,
                          [&] { CBinaryData::ParseBase64UnicodeString(wide, w.data, w.length); });
            continue;
        }
        // The block stays with the caller, length and all.
        ExpectBadText(c.narrowLine, badChar,
                      [&] { CBinaryData::ParseBase64String(narrow, n.data, n.length); });
        EXPECT_NE(n.data, nullptr);
        EXPECT_EQ(n.length, 1u);
        ExpectBadText(c.wideLine, badChar,
                      [&] { CBinaryData::ParseBase64UnicodeString(wide, w.data, w.length); });
    }
    // A unit above 255 is refused even where its low byte would be a letter.
    const unsigned short high[] = {'T', 'W', 'F', 0x141, 0};
    Parsed h;
    ExpectBadText(253, badChar,
                  [&] { CBinaryData::ParseBase64UnicodeString(high, h.data, h.length); });
    Parsed m;
    ExpectNoMemory(679, [&] { CBinaryData::ParseBase64String("TWFu", m.data, m.length); });
    ExpectNoMemory(721, [&] {
        CUnicodeString text("TWFu");
        CBinaryData::ParseBase64UnicodeString(text, m.data, m.length);
    });
}

// Random blocks against the system's base64 program, both ways.
TEST(BinaryData, Base64MatchesTheSystemProgram) {
    if (std::system("command -v base64 >/dev/null 2>&1") != 0)
        GTEST_SKIP() << "no base64 program on this system";
    char path[] = "/tmp/vorn-base64-XXXXXX";
    const int fd = mkstemp(path);
    ASSERT_GE(fd, 0);
    close(fd);
    std::mt19937 random(20240611);
    for (unsigned int length : {1u, 2u, 3u, 4u, 5u, 57u, 58u, 59u, 255u, 1000u, 4096u}) {
        std::string block(length, '\0');
        for (char& c : block)
            c = static_cast<char>(random());
        FILE* file = std::fopen(path, "wb");
        std::fwrite(block.data(), 1, length, file);
        std::fclose(file);
        FILE* tool = popen((std::string("base64 -w0 ") + path).c_str(), "r");
        std::string expected;
        char chunk[4096];
        for (size_t n; (n = std::fread(chunk, 1, sizeof chunk, tool)) > 0;)
            expected.append(chunk, n);
        ASSERT_EQ(pclose(tool), 0);
        EXPECT_EQ(std::string(CBinaryData::ToBase64String(block.data(), length)), expected)
            << length;
        Parsed back;
        CBinaryData::ParseBase64String(expected.c_str(), back.data, back.length);
        EXPECT_EQ(back.length, (length + 2) / 3);
        EXPECT_EQ(back.Bytes(length), block);
    }
    std::remove(path);
}

TEST(BinaryData, BinHexBothWays) {
    EXPECT_EQ(CBinaryData::ToBinHexString("\x0a\xff", 2), "0AFF");
    EXPECT_EQ(Units(CBinaryData::ToBinHexUnicodeString("\x0a\xff", 2)), W(u"0AFF"));
    std::string all(256, '\0');
    for (int i = 0; i < 256; ++i)
        all[i] = static_cast<char>(i);
    const CString text = CBinaryData::ToBinHexString(all.data(), 256);
    EXPECT_EQ(text.GetLength(), 512u);
    EXPECT_EQ(std::string(text).substr(0x9A * 2, 6), "9A9B9C");
    Parsed narrow, counted, wide;
    CBinaryData::ParseBinHexString(text, narrow.data, narrow.length);
    EXPECT_EQ(narrow.length, 256u);
    EXPECT_EQ(narrow.Bytes(256), all);
    CBinaryData::ParseBinHexString("00FF7f", 4, counted.data, counted.length);
    EXPECT_EQ(counted.Bytes(counted.length), std::string("\x00\xff", 2));
    const CUnicodeString wideText = CBinaryData::ToBinHexUnicodeString(all.data(), 256);
    CBinaryData::ParseBinHexUnicodeString(wideText, wide.data, wide.length);
    EXPECT_EQ(wide.Bytes(wide.length), all);

    CBinaryData data("\x12\xab", 2);
    EXPECT_EQ(data.ToBinHexString(), "12AB");
    EXPECT_EQ(Units(data.ToBinHexUnicodeString()), W(u"12AB"));
    // No bytes: an empty text, or the result left as it was.
    CBinaryData none;
    EXPECT_TRUE(none.ToBinHexString().IsEmpty());
    EXPECT_TRUE(none.ToBinHexUnicodeString().IsEmpty());
    CString kept("kept");
    CUnicodeString keptWide("kept");
    none.ToBinHexString(kept);
    none.ToBinHexUnicodeString(keptWide);
    EXPECT_EQ(kept, "kept");
    EXPECT_EQ(keptWide, "kept");
}

TEST(BinaryData, BinHexParserChecks) {
    const char* badBuffer = "Invalid value buffer.";
    const char* badLength = "Invalid value buffer length.";
    const char* odd = "Invalid binhex encoded binary data.";
    const char* digit = "Invalid binhex digit.";
    const CUnicodeString wideOdd("ABC"), wideLower("0aff");
    const auto wideAbc = W(u"ABC");
    Parsed p;
    ExpectBadText(756, odd,
                  [&] { CBinaryData::ParseBinHexString(CString("ABC"), p.data, p.length); });
    ExpectBadText(318, odd, [&] { CBinaryData::ParseBinHexString("ABC", p.data, p.length); });
    ExpectBadText(796, odd,
                  [&] { CBinaryData::ParseBinHexUnicodeString(wideOdd, p.data, p.length); });
    ExpectBadText(356, odd, [&] {
        CBinaryData::ParseBinHexUnicodeString(wideAbc.c_str(), p.data, p.length);
    });
    EXPECT_EQ(p.data, nullptr);
    EXPECT_EQ(p.length, 0u);
    ExpectBadArgument(833, badBuffer, [&] {
        CBinaryData::ParseBinHexString(static_cast<const char*>(nullptr), p.data, p.length);
    });
    ExpectBadArgument(833, badBuffer,
                      [&] { CBinaryData::ParseBinHexString("", p.data, p.length); });
    ExpectBadArgument(848, badBuffer,
                      [&] { CBinaryData::ParseBinHexString(nullptr, 2, p.data, p.length); });
    ExpectBadArgument(850, badLength,
                      [&] { CBinaryData::ParseBinHexString("AB", 0, p.data, p.length); });
    ExpectBadArgument(865, badBuffer, [&] {
        CBinaryData::ParseBinHexUnicodeString(static_cast<const unsigned short*>(nullptr), p.data,
                                              p.length);
    });
    ExpectBadArgument(880, badBuffer,
                      [&] { CBinaryData::ParseBinHexUnicodeString(nullptr, 2, p.data, p.length); });
    ExpectBadArgument(882, badLength, [&] {
        CBinaryData::ParseBinHexUnicodeString(wideAbc.c_str(), 0, p.data, p.length);
    });

    // Small letters are no digits; the block stays with the caller, length and all.
    Parsed lower, g, wide;
    ExpectBadText(269, digit, [&] {
        CBinaryData::ParseBinHexString(CString("0aff"), lower.data, lower.length);
    });
    EXPECT_EQ(lower.length, 2u);
    ExpectBadText(269, digit, [&] { CBinaryData::ParseBinHexString("AG", g.data, g.length); });
    EXPECT_NE(g.data, nullptr);
    EXPECT_EQ(g.length, 1u);
    ExpectBadText(285, digit, [&] {
        CBinaryData::ParseBinHexUnicodeString(wideLower, wide.data, wide.length);
    });

    Parsed m;
    ExpectNoMemory(763, [&] { CBinaryData::ParseBinHexString(CString("AB"), m.data, m.length); });
    ExpectNoMemory(325, [&] { CBinaryData::ParseBinHexString("AB", m.data, m.length); });
    ExpectNoMemory(803, [&] {
        CUnicodeString text("AB");
        CBinaryData::ParseBinHexUnicodeString(text, m.data, m.length);
    });
    ExpectNoMemory(
        363, [&] { CBinaryData::ParseBinHexUnicodeString(wideAbc.c_str(), 2, m.data, m.length); });
}

TEST(BinaryData, FromBinHexReplacesTheBlock) {
    CBinaryData d("old", 3);
    d.FromBinHexString("CAFE");
    EXPECT_EQ(Bytes(d), "\xca\xfe");
    d.FromBinHexString("00FFEE", 4);
    EXPECT_EQ(Bytes(d), std::string("\x00\xff", 2));
    const auto wide = W(u"0102");
    d.FromBinHexUnicodeString(wide.c_str());
    EXPECT_EQ(Bytes(d), "\x01\x02");
    d.FromBinHexUnicodeString(wide.c_str(), 2);
    EXPECT_EQ(Bytes(d), "\x01");
    // A bad digit leaves the partly decoded block in the object; a bad length leaves none.
    ExpectBadText(269, "Invalid binhex digit.", [&] { d.FromBinHexString("41x1"); });
    EXPECT_EQ(d.GetDataLength(), 2u);
    EXPECT_EQ(d.GetData()[0], 'A');
    ExpectBadText(318, "Invalid binhex encoded binary data.", [&] { d.FromBinHexString("414"); });
    EXPECT_EQ(d.GetData(), nullptr);
    EXPECT_EQ(d.GetDataLength(), 0u);

    const char* badBuffer = "Invalid value buffer.";
    ExpectBadArgument(585, badBuffer, [&] { d.FromBinHexString(nullptr); });
    ExpectBadArgument(585, badBuffer, [&] { d.FromBinHexString(""); });
    ExpectBadArgument(604, badBuffer, [&] { d.FromBinHexString(nullptr, 2); });
    ExpectBadArgument(606, "Invalid value buffer length.", [&] { d.FromBinHexString("AB", 0); });
    ExpectBadArgument(625, badBuffer, [&] { d.FromBinHexUnicodeString(nullptr); });
    ExpectBadArgument(644, badBuffer, [&] { d.FromBinHexUnicodeString(nullptr, 2); });
    ExpectBadArgument(646, "Invalid value buffer length.",
                      [&] { d.FromBinHexUnicodeString(wide.c_str(), 0); });
}

} // namespace

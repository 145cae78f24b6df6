#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include <vorn/base/StringBuffer.h>
#include <vorn/base/UnicodeString.h>

#include "support/Throws.h"
#include "support/Utf16.h"

namespace {

using vorn::base::CString;
using vorn::base::CStringBuffer;
using vorn::base::CUnicodeString;
using vorn::test::ExpectNoMemory;
using vorn::test::W;

const char* Text(const CStringBuffer& b) {
    return b;
}

TEST(StringBuffer, IncrementsAndRounding) {
    CStringBuffer small(4);
    EXPECT_EQ(small.GetCapacityIncrement(), 8u);
    EXPECT_TRUE(small.IsEmpty());
    EXPECT_EQ(Text(small), nullptr);
    EXPECT_EQ(CStringBuffer(100, 8).GetCapacity(), 104u);
    EXPECT_EQ(CStringBuffer(100, 9).GetCapacity(), 108u);
    EXPECT_EQ(std::string(Text(CStringBuffer(5, 3)), 5), std::string(5, '\0'));

    // The first GetBuffer makes one increment holding the empty text.
    CStringBuffer b(8);
    char* text = b.GetBuffer(1);
    EXPECT_EQ(b.GetCapacity(), 8u);
    EXPECT_STREQ(text, "");
    std::strcpy(text, "written");
    EXPECT_EQ(b.GetSize(), 7u);
    b.EnsureCapacity(17);
    EXPECT_EQ(b.GetCapacity(), 24u);
    b.SetCapacityIncrement(10);
    b.EnsureCapacity(25);
    EXPECT_EQ(b.GetCapacity(), 30u);
    b.Empty();
    EXPECT_EQ(b.GetCapacity(), 30u);
    b = "abc";
    b.TrimToSize();
    EXPECT_EQ(b.GetCapacity(), 4u);
    b += "d";
    EXPECT_EQ(b.GetCapacity(), 10u);

    // Text written through the buffer without a terminator is measured to the end of the block.
    CStringBuffer raw(8);
    std::memset(raw.GetBuffer(8), 'x', 8);
    EXPECT_EQ(raw.GetSize(), 8u);
    EXPECT_STREQ(Text(CStringBuffer(raw)), "xxxxxxxx");
    raw += "y";
    EXPECT_STREQ(Text(raw), "xxxxxxxxy");
}

TEST(StringBuffer, AssignmentAsymmetries) {
    CStringBuffer b(8);
    b = "keep";
    // An empty buffer leaves the text; every other empty source clears it.
    b = CStringBuffer(8);
    EXPECT_STREQ(Text(b), "keep");
    b = CString();
    EXPECT_STREQ(Text(b), "");
    b = "again";
    b = static_cast<const char*>(nullptr);
    EXPECT_STREQ(Text(b), "");
    CStringBuffer source(16);
    source = "copied text";
    CStringBuffer copy(source);
    EXPECT_STREQ(Text(copy), "copied text");
    EXPECT_EQ(copy.GetCapacity(), 16u);
    EXPECT_EQ(CStringBuffer(CStringBuffer(12)).GetCapacity(), 0u);

    // Pieces of its own text survive the growth that they cause.
    CStringBuffer self(8);
    self = "hello world";
    self = Text(self) + 6;
    self.TrimToSize();
    self += Text(self);
    EXPECT_STREQ(Text(self), "worldworld");
}

TEST(StringBuffer, AppendingAndConversionsAlwaysEndTheText) {
    CStringBuffer b(8);
    b += "abc";
    b += CString("defgh");
    b += static_cast<const unsigned short*>(nullptr);
    b += 'i';
    // A character of 0 is stored and ends the text.
    b += '\0';
    b += 'j';
    EXPECT_STREQ(Text(b), "abcdefghij");

    CStringBuffer w(8);
    w = W(u"h\u00e9").c_str();
    EXPECT_STREQ(Text(w), "h\xc3\xa9");
    // Eight bytes with no room behind them in the rounding: one more increment is taken.
    w = CUnicodeString(W(u"abcdefgh").c_str());
    EXPECT_EQ(w.GetCapacity(), 16u);
    CStringBuffer small(8);
    small = CUnicodeString(W(u"abc").c_str());
    small += W(u"defg").c_str();
    EXPECT_EQ(small.GetCapacity(), 8u);
    small += CUnicodeString(W(u"h").c_str());
    EXPECT_STREQ(Text(small), "abcdefgh");
    EXPECT_EQ(small.GetCapacity(), 16u);
}

TEST(StringBuffer, NoMemoryKeepsTheOldBlock) {
    const char* source = "vorn/base/StringBuffer";
    CStringBuffer b(8);
    b = "abcdef";
    const char* before = b;
    ExpectNoMemory([&] { b += "ghijkl"; }, source, 297);
    ExpectNoMemory([&] { b.TrimToSize(); }, source, 328);
    ExpectNoMemory([] { CStringBuffer sized(10, 8); }, source, 357);
    EXPECT_EQ(Text(b), before);
    EXPECT_STREQ(Text(b), "abcdef");
    // A rounding that wraps would give less room than asked for.
    vorn::test::ExpectThrowAt<vorn::base::CMemoryException>([&] { b.EnsureCapacity(0xFFFFFFFFu); },
                                                            source, 297);
    EXPECT_EQ(b.GetCapacity(), 8u);
}

} // namespace

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include <vorn/base/MemoryException.h>
#include <vorn/base/StringBuffer.h>
#include <vorn/base/UnicodeString.h>

#include "support/AllocFailure.h"
#include "support/Utf16.h"

namespace {

using vorn::base::CMemoryException;
using vorn::base::CString;
using vorn::base::CStringBuffer;
using vorn::base::CUnicodeString;
using vorn::test::FailAllocation;
using vorn::test::W;

const char* Text(const CStringBuffer& b) {
    return b;
}

template <typename F> void ExpectNoMemory(unsigned int line, F&& body) {
    try {
        body();
        ADD_FAILURE() << "no exception";
    } catch (const CMemoryException& e) {
        EXPECT_STREQ(e.GetSourceFile(), "vorn/base/StringBuffer");
        EXPECT_EQ(e.GetSourceLine(), line);
    }
}

TEST(StringBuffer, IncrementsAndRounding) {
    CStringBuffer small(4);
    EXPECT_EQ(small.GetCapacityIncrement(), 8u);
    EXPECT_TRUE(small.IsEmpty());
    EXPECT_EQ(Text(small), nullptr);
    EXPECT_EQ(CStringBuffer(100, 8).GetCapacity(), 104u);
    EXPECT_EQ(CStringBuffer(100, 9).GetCapacity(), 108u);
    EXPECT_EQ(CStringBuffer(0, 9).GetCapacity(), 0u);
    CStringBuffer zeroed(5, 3);
    EXPECT_EQ(std::string(Text(zeroed), 5), std::string(5, '\0'));

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
    EXPECT_STREQ(Text(b), "written");
    b.Empty();
    EXPECT_TRUE(b.IsEmpty());
    EXPECT_EQ(b.GetCapacity(), 30u);
    b = "abc";
    b.TrimToSize();
    EXPECT_EQ(b.GetCapacity(), 4u);
    b += "d";
    EXPECT_EQ(b.GetCapacity(), 10u);
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
    b = source;
    EXPECT_STREQ(Text(b), "copied text");
    CStringBuffer copy(b);
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
    b += "";
    b += static_cast<const unsigned short*>(nullptr);
    b += 'i';
    EXPECT_STREQ(Text(b), "abcdefghi");
    // A character of 0 is stored and ends the text.
    b += '\0';
    b += 'j';
    EXPECT_STREQ(Text(b), "abcdefghij");

    CStringBuffer w(8);
    w = W(u"h\u00e9").c_str();
    EXPECT_STREQ(Text(w), "h\xc3\xa9");
    // Eight bytes with no room behind them in the rounding: one more increment is taken.
    w = CUnicodeString(W(u"abcdefgh").c_str());
    EXPECT_STREQ(Text(w), "abcdefgh");
    EXPECT_EQ(w.GetCapacity(), 16u);
    CStringBuffer small(8);
    small = CUnicodeString(W(u"abc").c_str());
    small += W(u"defg").c_str();
    EXPECT_EQ(small.GetCapacity(), 8u);
    small += CUnicodeString(W(u"h").c_str());
    EXPECT_STREQ(Text(small), "abcdefgh");
    EXPECT_EQ(small.GetCapacity(), 16u);
    const unsigned short lone[] = {'a', 0xDC00, 0};
    small = lone;
    EXPECT_STREQ(Text(small), "a\xef\xbf\xbd");
}

TEST(StringBuffer, TextWrittenWithoutATerminator) {
    CStringBuffer b(8);
    std::memset(b.GetBuffer(8), 'x', 8);
    EXPECT_EQ(b.GetSize(), 8u);
    b.TrimToSize();
    EXPECT_EQ(b.GetCapacity(), 8u);
    EXPECT_STREQ(Text(CStringBuffer(b)), "xxxxxxxx");
    b += "y";
    EXPECT_STREQ(Text(b), "xxxxxxxxy");
}

TEST(StringBuffer, NoMemoryKeepsTheOldBlock) {
    CStringBuffer b(8);
    b = "abcdef";
    const char* before = b;
    ExpectNoMemory(297, [&] {
        FailAllocation fail(1);
        b += "ghijkl";
    });
    ExpectNoMemory(328, [&] {
        FailAllocation fail(1);
        b.TrimToSize();
    });
    ExpectNoMemory(357, [&] {
        FailAllocation fail(1);
        CStringBuffer sized(10, 8);
    });
    EXPECT_EQ(Text(b), before);
    EXPECT_STREQ(Text(b), "abcdef");
    // A rounding that wraps would give less room than asked for.
    ExpectNoMemory(297, [&] { b.EnsureCapacity(0xFFFFFFFFu); });
    EXPECT_EQ(b.GetCapacity(), 8u);
}

} // namespace

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include <vorn/base/MemoryException.h>
#include <vorn/base/String.h>
#include <vorn/base/StringBuffer.h>
#include <vorn/base/UnicodeString.h>

#include "support/AllocFailure.h"
#include "support/Utf16.h"

namespace {

using vorn::base::CMemoryException;
using vorn::base::CString;
using vorn::base::CStringBuffer;
using vorn::base::CUnicodeString;
using vorn::test::CountAllocations;
using vorn::test::FailAllocation;
using vorn::test::W;

const char* Text(const CStringBuffer& b) {
    return b;
}

template <typename F> void ExpectNoMemory(F&& body, unsigned int line) {
    try {
        FailAllocation fail(1);
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
    EXPECT_EQ(small.GetCapacity(), 0u);
    EXPECT_TRUE(small.IsEmpty());
    EXPECT_EQ(Text(small), nullptr);
    EXPECT_EQ(small.GetSize(), 0u);
    EXPECT_EQ(CStringBuffer(100, 8).GetCapacity(), 104u);
    EXPECT_EQ(CStringBuffer(100, 9).GetCapacity(), 108u);
    EXPECT_EQ(CStringBuffer(0, 9).GetCapacity(), 0u);
    CStringBuffer zeroed(5, 3);
    EXPECT_EQ(zeroed.GetCapacityIncrement(), 8u);
    EXPECT_EQ(std::string(Text(zeroed), 5), std::string(5, '\0'));

    // The first GetBuffer makes one increment holding the empty text.
    CStringBuffer b(8);
    char* text = b.GetBuffer(1);
    EXPECT_EQ(b.GetCapacity(), 8u);
    EXPECT_STREQ(text, "");
    std::strcpy(text, "written");
    EXPECT_EQ(b.GetSize(), 7u);
    EXPECT_FALSE(b.IsEmpty());
    b.EnsureCapacity(17);
    EXPECT_EQ(b.GetCapacity(), 24u);
    EXPECT_STREQ(Text(b), "written");
    b.EnsureCapacity(24);
    EXPECT_EQ(b.GetCapacity(), 24u);
    b.SetCapacityIncrement(3);
    EXPECT_EQ(b.GetCapacityIncrement(), 8u);
    b.SetCapacityIncrement(10);
    b.EnsureCapacity(25);
    EXPECT_EQ(b.GetCapacity(), 30u);
    EXPECT_STREQ(Text(b), "written");
    b.Empty();
    EXPECT_TRUE(b.IsEmpty());
    EXPECT_EQ(b.GetCapacity(), 30u);
}

TEST(StringBuffer, AssignmentAsymmetries) {
    CStringBuffer b(8);
    b = "keep";
    EXPECT_EQ(b.GetCapacity(), 8u);
    // An empty buffer leaves the text; every other empty source clears it.
    b = CStringBuffer(8);
    EXPECT_STREQ(Text(b), "keep");
    b = b;
    EXPECT_STREQ(Text(b), "keep");
    b = CString();
    EXPECT_STREQ(Text(b), "");
    b = "again";
    b = static_cast<const char*>(nullptr);
    EXPECT_STREQ(Text(b), "");
    CStringBuffer fresh(8);
    fresh = "";
    EXPECT_EQ(fresh.GetCapacity(), 8u);
    EXPECT_STREQ(Text(fresh), "");

    CStringBuffer source(16);
    source = "copied text";
    b = source;
    EXPECT_STREQ(Text(b), "copied text");
    EXPECT_EQ(b.GetCapacity(), 16u);
    b = CString("from a string");
    EXPECT_STREQ(Text(b), "from a string");
    CStringBuffer copy(b);
    EXPECT_STREQ(Text(copy), "from a string");
    EXPECT_EQ(copy.GetCapacity(), 16u);
    EXPECT_EQ(CStringBuffer(CStringBuffer(12)).GetCapacity(), 0u);
    EXPECT_EQ(CStringBuffer(CStringBuffer(12)).GetCapacityIncrement(), 12u);

    // Pieces of its own text survive the growth that they cause.
    CStringBuffer self(8);
    self = "hello world";
    self = Text(self) + 6;
    EXPECT_STREQ(Text(self), "world");
    self.TrimToSize();
    self += Text(self);
    EXPECT_STREQ(Text(self), "worldworld");
    self = Text(self) + 1;
    EXPECT_STREQ(Text(self), "orldworld");
}

TEST(StringBuffer, WideConversionsAlwaysEndTheText) {
    CStringBuffer b(8);
    b = W(u"h\u00e9").c_str();
    EXPECT_STREQ(Text(b), "h\xc3\xa9");
    EXPECT_EQ(b.GetCapacity(), 8u);
    // Eight bytes with no room behind in the rounding: one more increment is taken.
    b = CUnicodeString(W(u"abcdefgh").c_str());
    EXPECT_STREQ(Text(b), "abcdefgh");
    EXPECT_EQ(b.GetCapacity(), 16u);
    CStringBuffer small(8);
    small = CUnicodeString(W(u"abc").c_str());
    EXPECT_EQ(small.GetCapacity(), 8u);
    EXPECT_STREQ(Text(small), "abc");
    small += W(u"defg").c_str();
    EXPECT_STREQ(Text(small), "abcdefg");
    small += CUnicodeString(W(u"h").c_str());
    EXPECT_STREQ(Text(small), "abcdefgh");
    EXPECT_EQ(small.GetCapacity(), 16u);
    small = CUnicodeString();
    EXPECT_STREQ(Text(small), "");
    const unsigned short lone[] = {'a', 0xDC00, 0};
    small = lone;
    EXPECT_STREQ(Text(small), "a\xef\xbf\xbd");
    small += CUnicodeString(lone);
    EXPECT_STREQ(Text(small), "a\xef\xbf\xbd"
                              "a\xef\xbf\xbd");
    small = static_cast<const unsigned short*>(nullptr);
    EXPECT_STREQ(Text(small), "");
}

TEST(StringBuffer, Appending) {
    CStringBuffer b(8);
    b += "abc";
    EXPECT_EQ(b.GetCapacity(), 8u);
    b += CString("defgh");
    EXPECT_STREQ(Text(b), "abcdefgh");
    EXPECT_EQ(b.GetCapacity(), 16u);
    b += "";
    b += static_cast<const char*>(nullptr);
    b += CString();
    b += static_cast<const unsigned short*>(nullptr);
    EXPECT_STREQ(Text(b), "abcdefgh");
    b += 'i';
    EXPECT_STREQ(Text(b), "abcdefghi");
    // A character of 0 is stored and ends the text.
    b += '\0';
    b += 'j';
    EXPECT_STREQ(Text(b), "abcdefghij");
    CStringBuffer chars(8);
    chars += 'x';
    EXPECT_STREQ(Text(chars), "x");
    // Growth within a block takes no allocation.
    CStringBuffer roomy(64, 8);
    EXPECT_EQ(CountAllocations([&] {
                  roomy += "some text";
                  roomy += '!';
              }),
              0u);
}

TEST(StringBuffer, TextWrittenWithoutATerminator) {
    CStringBuffer b(8);
    std::memset(b.GetBuffer(8), 'x', 8);
    EXPECT_EQ(b.GetSize(), 8u);
    b.TrimToSize();
    EXPECT_EQ(b.GetCapacity(), 8u);
    CStringBuffer copy(b);
    EXPECT_STREQ(Text(copy), "xxxxxxxx");
    b += "y";
    EXPECT_STREQ(Text(b), "xxxxxxxxy");
}

TEST(StringBuffer, TrimToSize) {
    CStringBuffer b(8);
    b.TrimToSize();
    EXPECT_EQ(b.GetCapacity(), 0u);
    b = "abc";
    b.TrimToSize();
    EXPECT_EQ(b.GetCapacity(), 4u);
    EXPECT_STREQ(Text(b), "abc");
    b.TrimToSize();
    EXPECT_EQ(b.GetCapacity(), 4u);
    b += "d";
    EXPECT_EQ(b.GetCapacity(), 8u);
}

TEST(StringBuffer, NoMemoryKeepsTheOldBlock) {
    CStringBuffer b(8);
    b = "abcdef";
    const char* before = b;
    ExpectNoMemory([&] { b += "ghijkl"; }, 297);
    ExpectNoMemory([&] { b.GetBuffer(100); }, 297);
    EXPECT_EQ(Text(b), before);
    EXPECT_STREQ(Text(b), "abcdef");
    EXPECT_EQ(b.GetCapacity(), 8u);
    ExpectNoMemory([&] { b.TrimToSize(); }, 328);
    EXPECT_EQ(Text(b), before);
    ExpectNoMemory([&] { CStringBuffer sized(10, 8); }, 357);
    ExpectNoMemory([&] { CStringBuffer copy(b); }, 357);
    // A rounding that wraps would give less room than asked for.
    try {
        b.EnsureCapacity(0xFFFFFFFFu);
        ADD_FAILURE() << "no exception";
    } catch (const CMemoryException& e) {
        EXPECT_EQ(e.GetSourceLine(), 297u);
    }
    EXPECT_EQ(b.GetCapacity(), 8u);
}

} // namespace

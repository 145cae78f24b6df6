#include <gtest/gtest.h>

#include <string>

#include <vorn/base/MemoryException.h>
#include <vorn/base/String.h>
#include <vorn/base/UnicodeString.h>
#include <vorn/base/UnicodeStringBuffer.h>

#include "platform/UniText.h"
#include "support/AllocFailure.h"
#include "support/Utf16.h"

namespace {

using vorn::base::CMemoryException;
using vorn::base::CString;
using vorn::base::CUnicodeString;
using vorn::base::CUnicodeStringBuffer;
using vorn::test::CountAllocations;
using vorn::test::FailAllocation;
using vorn::test::Units;
using vorn::test::W;
using vorn::test::WString;

WString Text(const CUnicodeStringBuffer& b) {
    return Units(static_cast<const unsigned short*>(b));
}

template <typename F> void ExpectNoMemory(F&& body, unsigned int line) {
    try {
        FailAllocation fail(1);
        body();
        ADD_FAILURE() << "no exception";
    } catch (const CMemoryException& e) {
        EXPECT_STREQ(e.GetSourceFile(), "vorn/base/UnicodeStringBuffer");
        EXPECT_EQ(e.GetSourceLine(), line);
    }
}

TEST(UnicodeStringBuffer, EmptyTextIsNeverNull) {
    const CUnicodeStringBuffer none(4);
    EXPECT_EQ(none.GetCapacityIncrement(), 8u);
    EXPECT_TRUE(none.IsEmpty());
    EXPECT_EQ(static_cast<const unsigned short*>(none), ZK::EmptyUTF16);
    // The writable view makes a block for the empty text.
    CUnicodeStringBuffer b(8);
    unsigned short* text = b;
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(text[0], 0);
    EXPECT_EQ(b.GetCapacity(), 8u);
    EXPECT_EQ(static_cast<const unsigned short*>(static_cast<const CUnicodeStringBuffer&>(b)),
              ZK::EmptyUTF16);
    EXPECT_EQ(CountAllocations([&] {
                  unsigned short* again = b;
                  (void)again;
              }),
              0u);
    // A sized buffer holds the empty text.
    CUnicodeStringBuffer sized(100, 9);
    EXPECT_EQ(sized.GetCapacity(), 108u);
    EXPECT_TRUE(sized.IsEmpty());
    EXPECT_EQ(sized.GetSize(), 0u);
}

TEST(UnicodeStringBuffer, AssignmentsFromWideAndNarrowText) {
    CUnicodeStringBuffer b(8);
    // Empty narrow text clears only a block that exists, and makes none.
    EXPECT_EQ(CountAllocations([&] {
                  b = "";
                  b = static_cast<const char*>(nullptr);
                  b = CString();
              }),
              0u);
    EXPECT_EQ(b.GetCapacity(), 0u);
    b = "h\xc3\xa9llo w";
    EXPECT_EQ(Text(b), W(u"h\u00e9llo w"));
    EXPECT_EQ(b.GetCapacity(), 16u);
    b = "";
    EXPECT_TRUE(b.IsEmpty());
    EXPECT_EQ(b.GetCapacity(), 16u);
    // From a CString the count with its terminator is all the room asked for.
    CUnicodeStringBuffer exact(8);
    exact = CString("abcdefg");
    EXPECT_EQ(Text(exact), W(u"abcdefg"));
    EXPECT_EQ(exact.GetCapacity(), 8u);
    CUnicodeStringBuffer roomier(8);
    roomier = "abcdefg";
    EXPECT_EQ(roomier.GetCapacity(), 16u);

    // Wide text: empty clears and makes a block, an empty buffer leaves the text.
    CUnicodeStringBuffer w(8);
    w = static_cast<const unsigned short*>(nullptr);
    EXPECT_EQ(w.GetCapacity(), 8u);
    w = W(u"wide text").c_str();
    EXPECT_EQ(Text(w), W(u"wide text"));
    EXPECT_EQ(w.GetCapacity(), 16u);
    w = CUnicodeStringBuffer(8);
    EXPECT_EQ(Text(w), W(u"wide text"));
    w = CUnicodeString();
    EXPECT_TRUE(w.IsEmpty());
    w = CUnicodeString(W(u"\U0001F600").c_str());
    EXPECT_EQ(w.GetSize(), 2u);
    CUnicodeStringBuffer copy(w);
    EXPECT_EQ(Text(copy), W(u"\U0001F600"));
    EXPECT_EQ(copy.GetCapacity(), 8u);
    b = w;
    EXPECT_EQ(Text(b), W(u"\U0001F600"));
    // Its own text, moved by the growth it causes.
    w = W(u"0123456").c_str();
    w.TrimToSize();
    EXPECT_EQ(w.GetCapacity(), 8u);
    w += static_cast<const unsigned short*>(w) + 4;
    EXPECT_EQ(Text(w), W(u"0123456456"));
    w = static_cast<const unsigned short*>(w) + 7;
    EXPECT_EQ(Text(w), W(u"456"));
}

TEST(UnicodeStringBuffer, Appending) {
    CUnicodeStringBuffer b(8);
    b += CString("abcdefg");
    // A CString asks for its count, one more, and the length.
    EXPECT_EQ(b.GetCapacity(), 16u);
    CUnicodeStringBuffer n(8);
    n += "abcdefg";
    EXPECT_EQ(n.GetCapacity(), 8u);
    n += "\xe2\x82\xac";
    EXPECT_EQ(Text(n), W(u"abcdefg\u20ac"));
    n += static_cast<unsigned short>(0x3B1);
    EXPECT_EQ(Text(n), W(u"abcdefg\u20ac\u03b1"));
    n += W(u"!").c_str();
    n += CUnicodeString(W(u"?").c_str());
    EXPECT_EQ(Text(n), W(u"abcdefg\u20ac\u03b1!?"));
    n += "";
    n += static_cast<const char*>(nullptr);
    n += CString();
    n += CUnicodeString();
    n += static_cast<const unsigned short*>(nullptr);
    EXPECT_EQ(Text(n), W(u"abcdefg\u20ac\u03b1!?"));
    // A unit of 0 is stored and ends the text.
    n += static_cast<unsigned short>(0);
    EXPECT_EQ(n.GetSize(), 0u + 11);
    n += static_cast<unsigned short>('z');
    EXPECT_EQ(Text(n), W(u"abcdefg\u20ac\u03b1!?z"));
}

TEST(UnicodeStringBuffer, TrimAndWritingThroughTheBuffer) {
    CUnicodeStringBuffer b(8);
    unsigned short* text = b.GetBuffer(8);
    for (int i = 0; i < 8; ++i)
        text[i] = 'x';
    EXPECT_EQ(b.GetSize(), 8u);
    b.TrimToSize();
    EXPECT_EQ(b.GetCapacity(), 8u);
    b += "y";
    EXPECT_EQ(Text(b), W(u"xxxxxxxxy"));
    b.TrimToSize();
    EXPECT_EQ(b.GetCapacity(), 10u);
    b.Empty();
    EXPECT_TRUE(b.IsEmpty());
    EXPECT_EQ(b.GetCapacity(), 10u);
}

TEST(UnicodeStringBuffer, NoMemoryKeepsTheOldBlock) {
    CUnicodeStringBuffer b(8);
    b = "abcdef";
    const unsigned short* before = b;
    ExpectNoMemory([&] { b += "ghijkl"; }, 289);
    ExpectNoMemory([&] { b += W(u"ghijkl").c_str(); }, 289);
    EXPECT_EQ(static_cast<const unsigned short*>(b), before);
    EXPECT_EQ(Text(b), W(u"abcdef"));
    ExpectNoMemory([&] { b.TrimToSize(); }, 319);
    ExpectNoMemory([&] { CUnicodeStringBuffer sized(10, 8); }, 348);
    ExpectNoMemory(
        [&] {
            CUnicodeStringBuffer fresh(8);
            unsigned short* p = fresh;
            (void)p;
        },
        289);
    EXPECT_EQ(Text(b), W(u"abcdef"));
}

} // namespace

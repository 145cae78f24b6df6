#include <gtest/gtest.h>

#include <vorn/base/MemoryException.h>
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

template <typename F> void ExpectNoMemory(unsigned int line, F&& body) {
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
    EXPECT_EQ(static_cast<const unsigned short*>(none), ZK::EmptyUTF16);
    // The writable view makes a block for the empty text, once.
    CUnicodeStringBuffer b(8);
    unsigned short* text = b;
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(text[0], 0);
    EXPECT_EQ(b.GetCapacity(), 8u);
    EXPECT_EQ(CountAllocations([&] { (void)static_cast<unsigned short*>(b); }), 0u);
    // A sized buffer isn't cleared but holds the empty text.
    CUnicodeStringBuffer sized(100, 9);
    EXPECT_EQ(sized.GetCapacity(), 108u);
    EXPECT_TRUE(sized.IsEmpty());
}

TEST(UnicodeStringBuffer, AssignmentsFromWideAndNarrowText) {
    CUnicodeStringBuffer b(8);
    // Empty narrow text clears only a block that exists, and makes none.
    EXPECT_EQ(CountAllocations([&] {
                  b = "";
                  b = CString();
              }),
              0u);
    b = "h\xc3\xa9llo w";
    EXPECT_EQ(Text(b), W(u"h\u00e9llo w"));
    EXPECT_EQ(b.GetCapacity(), 16u);
    b = static_cast<const char*>(nullptr);
    EXPECT_TRUE(b.IsEmpty());
    // From a CString the count with its terminator is all the room asked for.
    CUnicodeStringBuffer fromString(8);
    fromString = CString("abcdefg");
    EXPECT_EQ(fromString.GetCapacity(), 8u);
    EXPECT_EQ(Text(fromString), W(u"abcdefg"));

    // Empty wide text makes a block; an empty buffer leaves the text.
    CUnicodeStringBuffer w(8);
    w = static_cast<const unsigned short*>(nullptr);
    EXPECT_EQ(w.GetCapacity(), 8u);
    w = CUnicodeString(W(u"wide text").c_str());
    w = CUnicodeStringBuffer(8);
    EXPECT_EQ(Text(w), W(u"wide text"));
    EXPECT_EQ(w.GetCapacity(), 16u);
    CUnicodeStringBuffer copy(w);
    EXPECT_EQ(Text(copy), W(u"wide text"));
    // Its own text, moved by the growth it causes.
    w = W(u"0123456").c_str();
    w.TrimToSize();
    w += static_cast<const unsigned short*>(w) + 4;
    EXPECT_EQ(Text(w), W(u"0123456456"));
}

TEST(UnicodeStringBuffer, Appending) {
    // A CString asks for its count, one more, and the length; narrow text for length and count.
    CUnicodeStringBuffer b(8);
    b += CString("abcdefg");
    EXPECT_EQ(b.GetCapacity(), 16u);
    CUnicodeStringBuffer n(8);
    n += "abcdefg";
    EXPECT_EQ(n.GetCapacity(), 8u);
    n += "\xe2\x82\xac";
    n += static_cast<unsigned short>(0x3B1);
    n += W(u"!").c_str();
    n += CUnicodeString(W(u"?").c_str());
    n += "";
    n += CUnicodeString();
    EXPECT_EQ(Text(n), W(u"abcdefg\u20ac\u03b1!?"));
    // A unit of 0 is stored and ends the text.
    n += static_cast<unsigned short>(0);
    n += static_cast<unsigned short>('z');
    EXPECT_EQ(Text(n), W(u"abcdefg\u20ac\u03b1!?z"));
    // Text written through the buffer without a terminator is measured to the end of the block.
    CUnicodeStringBuffer raw(8);
    unsigned short* text = raw.GetBuffer(8);
    for (int i = 0; i < 8; ++i)
        text[i] = 'x';
    EXPECT_EQ(raw.GetSize(), 8u);
    raw += "y";
    EXPECT_EQ(Text(raw), W(u"xxxxxxxxy"));
    raw.TrimToSize();
    EXPECT_EQ(raw.GetCapacity(), 10u);
}

TEST(UnicodeStringBuffer, NoMemoryKeepsTheOldBlock) {
    CUnicodeStringBuffer b(8);
    b = "abcdef";
    const unsigned short* before = b;
    ExpectNoMemory(289, [&] { b += W(u"ghijkl").c_str(); });
    ExpectNoMemory(319, [&] { b.TrimToSize(); });
    ExpectNoMemory(348, [&] { CUnicodeStringBuffer sized(10, 8); });
    ExpectNoMemory(289, [&] {
        CUnicodeStringBuffer fresh(8);
        (void)static_cast<unsigned short*>(fresh);
    });
    EXPECT_EQ(static_cast<const unsigned short*>(b), before);
    EXPECT_EQ(Text(b), W(u"abcdef"));
}

} // namespace

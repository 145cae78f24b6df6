// The same rules as the narrow buffer hold in units; here what differs.
#include <gtest/gtest.h>

#include <vorn/base/UnicodeString.h>
#include <vorn/base/UnicodeStringBuffer.h>

#include "platform/UniText.h"
#include "support/AllocFailure.h"
#include "support/Throws.h"
#include "support/Utf16.h"

namespace {

using vorn::base::CString;
using vorn::base::CUnicodeString;
using vorn::base::CUnicodeStringBuffer;
using vorn::test::CountAllocations;
using vorn::test::ExpectNoMemory;
using vorn::test::Units;
using vorn::test::W;
using vorn::test::WString;

WString Text(const CUnicodeStringBuffer& b) {
    return Units(static_cast<const unsigned short*>(b));
}

TEST(UnicodeStringBuffer, EmptyTextIsNeverNull) {
    const CUnicodeStringBuffer none(4);
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

TEST(UnicodeStringBuffer, NarrowTextAndItsRoom) {
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
    // From a CString the count with its terminator is all the room asked for; appended, it
    // asks for its count, one more, and the length.
    CUnicodeStringBuffer fromString(8);
    fromString = CString("abcdefg");
    EXPECT_EQ(fromString.GetCapacity(), 8u);
    CUnicodeStringBuffer appended(8);
    appended += CString("abcdefg");
    EXPECT_EQ(appended.GetCapacity(), 16u);
    CUnicodeStringBuffer n(8);
    n += "abcdefg";
    EXPECT_EQ(n.GetCapacity(), 8u);
    n += "\xe2\x82\xac";
    n += static_cast<unsigned short>(0x3B1);
    n += CUnicodeString(W(u"?").c_str());
    n += static_cast<unsigned short>(0); // stored, and ends the text
    n += static_cast<unsigned short>('z');
    EXPECT_EQ(Text(n), W(u"abcdefg\u20ac\u03b1?z"));

    // Empty wide text makes a block; an empty buffer leaves the text; its own text survives.
    CUnicodeStringBuffer w(8);
    w = static_cast<const unsigned short*>(nullptr);
    EXPECT_EQ(w.GetCapacity(), 8u);
    w = CUnicodeString(W(u"wide text").c_str());
    w = CUnicodeStringBuffer(8);
    EXPECT_EQ(Text(w), W(u"wide text"));
    w = W(u"0123456").c_str();
    w.TrimToSize();
    w += static_cast<const unsigned short*>(w) + 4;
    EXPECT_EQ(Text(w), W(u"0123456456"));
}

TEST(UnicodeStringBuffer, NoMemoryKeepsTheOldBlock) {
    const char* source = "vorn/base/UnicodeStringBuffer";
    CUnicodeStringBuffer b(8);
    b = "abcdef";
    const unsigned short* before = b;
    ExpectNoMemory([&] { b += W(u"ghijkl").c_str(); }, source, 289);
    ExpectNoMemory([&] { b.TrimToSize(); }, source, 319);
    ExpectNoMemory([] { CUnicodeStringBuffer sized(10, 8); }, source, 348);
    ExpectNoMemory(
        [] {
            CUnicodeStringBuffer fresh(8);
            (void)static_cast<unsigned short*>(fresh);
        },
        source, 289);
    EXPECT_EQ(static_cast<const unsigned short*>(b), before);
    EXPECT_EQ(Text(b), W(u"abcdef"));
}

} // namespace

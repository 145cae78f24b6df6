#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include <vorn/base/UnicodeString.h>

#include "support/AllocFailure.h"
#include "support/Throws.h"
#include "support/Utf16.h"
#include "vorn/base/FixBlockAllocator.h"

namespace {

using vorn::base::CUnicodeString;
using vorn::base::UnicodeBlockPool;
using vorn::test::CountAllocations;
using vorn::test::ExpectNoMemory;
using vorn::test::W;
using vorn::test::WString;

const unsigned short* const kNull = nullptr;
const char* const kNarrowNull = nullptr;

const unsigned short* Text(const CUnicodeString& s) {
    return s;
}
unsigned int Capacity(const CUnicodeString& s) {
    return *reinterpret_cast<const unsigned int*>(reinterpret_cast<const char*>(Text(s)) - 12);
}
unsigned int References(const CUnicodeString& s) {
    return *reinterpret_cast<const unsigned int*>(reinterpret_cast<const char*>(Text(s)) - 4);
}
// The units up to the length, stored zeros included.
WString Whole(const CUnicodeString& s) {
    return WString(Text(s), s.GetLength());
}
CUnicodeString U(const char16_t* text) {
    return CUnicodeString(W(text).c_str());
}
int Distance(const unsigned short* from, const unsigned short* to) {
    return static_cast<int>((static_cast<std::intptr_t>(reinterpret_cast<std::uintptr_t>(to)) -
                             static_cast<std::intptr_t>(reinterpret_cast<std::uintptr_t>(from))) /
                            2);
}

TEST(UnicodeString, EmptyEqualsNullAndEmptyText) {
    CUnicodeString none, blank(W(u"").c_str()), text = U(u"abc");
    EXPECT_TRUE(none == kNull && none == "" && none == kNarrowNull && "" == blank);
    EXPECT_TRUE(none == blank && W(u"abc").c_str() == text);
    EXPECT_FALSE(text == "abd" || text == kNull || text == none);
    // Narrow text is measured in bytes first: "é" has two bytes and one unit.
    EXPECT_FALSE(U(u"\u00e9") == "\xc3\xa9");
    // An empty string equals "" in Compare too, where the narrow class answers -1.
    EXPECT_EQ(none.Compare(""), 0);
    EXPECT_EQ(none.Compare("a"), -1);
    EXPECT_EQ(U(u"\u00c9T\u00c9").CompareIgnoreCase("\xc3\xa9t\xc3\xa9"), 0);
    // In the operators null and empty are equal and "" is more than either.
    const WString wblank = W(u"");
    EXPECT_TRUE(none <= kNarrowNull && none >= kNarrowNull && !(none < kNarrowNull));
    EXPECT_TRUE(none < wblank.c_str() && "" > none && !("" <= none));
    // Units order as numbers, so a surrogate pair sorts below U+E000.
    EXPECT_TRUE(U(u"\U0001F600") < U(u"\uE000"));
    EXPECT_EQ(Whole(W(u"[").c_str() + text + U(u"n") + "o"), W(u"[abcno"));
}

TEST(UnicodeString, ConstructionAndAssignment) {
    // Narrow null and "" leave no buffer; wide null leaves an empty one.
    const unsigned int used = UnicodeBlockPool(64)->GetUsedCount();
    CUnicodeString a(kNarrowNull), b(""), c("abc", 0), d(kNull, 3);
    EXPECT_EQ(UnicodeBlockPool(64)->GetUsedCount(), used);
    CUnicodeString e(kNull);
    EXPECT_EQ(UnicodeBlockPool(64)->GetUsedCount(), used + 1);
    // A counted narrow text cut inside a character converts the piece as U+FFFD.
    EXPECT_EQ(Whole(CUnicodeString("h\xc3\xa9z", 2)), W(u"h\uFFFD"));
    // The counted wide form measures what it copied.
    EXPECT_EQ(CUnicodeString(W(u"ab").c_str(), 5).GetLength(), 2u);
    EXPECT_EQ(Whole(CUnicodeString(W(u"xyz").c_str(), 0xFFFFFFFFu)), W(u"xyz"));
    // Pieces of its own text, also with a count past their end.
    CUnicodeString s = U(u"abcdef");
    s = Text(s) + 2;
    s.Set(Text(s) + 1, 5000);
    EXPECT_EQ(Whole(s), W(u"def"));
}

TEST(UnicodeString, CopiesShareUntilAChangeAndBuffersAreReused) {
    CUnicodeString s = U(u"shared text");
    CUnicodeString t(s);
    EXPECT_EQ(References(s), 2u);
    EXPECT_EQ(CountAllocations([&] { CUnicodeString u(s); }), 0u);
    s.SetAt(0, 'S');
    EXPECT_EQ(Whole(t), W(u"shared text"));
    // Unlike the narrow class, MakeReverse unshares first.
    CUnicodeString u(t);
    u.MakeReverse();
    EXPECT_EQ(Whole(u), W(u"txet derahs"));
    EXPECT_EQ(Whole(t), W(u"shared text"));

    CUnicodeString big(WString(1500, 'c').c_str());
    big += W(u"d").c_str();
    EXPECT_EQ(Capacity(big), 1502u);
    // Empty keeps a private buffer, and appending within its room takes no allocation.
    const unsigned short* kept = big;
    big.Empty();
    big = W(u"again").c_str();
    EXPECT_EQ(Text(big), kept);
    const WString tail(100, 't');
    EXPECT_EQ(CountAllocations([&] { big += tail.c_str(); }), 0u);
}

TEST(UnicodeString, FindAndPrefixes) {
    CUnicodeString s = U(u"abcabc");
    EXPECT_EQ(s.Find("bc", 2), 4);
    EXPECT_EQ(s.Find("", 0), -1);
    // A needle longer than the rest of the text is refused before any search.
    EXPECT_EQ(s.Find("abc", 4), -1);
    EXPECT_EQ(U(u"d\u00e9j\u00e0").Find("j\xc3\xa0"), 2);
    // Case is ignored through upper-cased copies, which leave the string as it was.
    CUnicodeString mixed = U(u"xxABx");
    EXPECT_EQ(mixed.FindIgnoreCase(W(u"bX").c_str(), 3), 3);
    EXPECT_EQ(Whole(mixed), W(u"xxABx"));
    EXPECT_EQ(s.ReverseFind('a', 0), 3);
    EXPECT_EQ(s.ReverseFind(static_cast<unsigned short>('a'), 4), -1);

    CUnicodeString text = U(u"Hello World");
    EXPECT_TRUE(text.StartsWithIgnoreCase(U(u"hELLO")) && text.EndsWith(U(u"World")));
    EXPECT_FALSE(text.StartsWith("") || text.EndsWith("world") || text.EndsWith("Hello World!"));
}

TEST(UnicodeString, ReverseFindLooksForTheTailInsideTheNeedle) {
    CUnicodeString s = U(u"xxabab");
    const WString ab = W(u"ab"), b = W(u"b");
    // The tail equals the needle: the result is the distance to the needle, not a position.
    EXPECT_EQ(s.ReverseFind(ab.c_str(), 0), Distance(Text(s), ab.c_str()));
    EXPECT_EQ(s.ReverseFind(b.c_str(), 0), Distance(Text(s), b.c_str()));
    // Any other needle finds nothing, however far back the probes go.
    for (const char16_t* other : {u"xa", u"ba", u"a", u"xxabab", u"xxababx"})
        EXPECT_EQ(s.ReverseFind(W(other).c_str(), 0), -1) << vorn::test::Narrow(W(other));
    EXPECT_EQ(s.ReverseFind(ab.c_str(), 4), -1);
    // The narrow form never converts its needle and finds nothing.
    EXPECT_EQ(s.ReverseFind("ab", 0), -1);
    // Ignoring case searches inside copies, so a hit is no position either.
    CUnicodeString upper = U(u"xxABAB");
    EXPECT_NE(upper.ReverseFindIgnoreCase("ab", 0), -1);
    EXPECT_NE(upper.ReverseFindIgnoreCase("ab", 0), 4);
    EXPECT_EQ(upper.ReverseFindIgnoreCase(W(u"ba").c_str(), 0), -1);
}

TEST(UnicodeString, AppendAndInsert) {
    CUnicodeString s, tail = U(u"tail");
    s += tail;
    EXPECT_EQ(Text(s), Text(tail));
    s += "!";
    s += kNull;
    s += s;
    s += Text(s) + 8;
    EXPECT_EQ(Whole(s), W(u"tail!tail!l!"));
    EXPECT_EQ(Whole(tail), W(u"tail"));
    // Behind a stored zero the length runs on: appends go to the terminator, and zeros fill up.
    CUnicodeString zero = U(u"abcdefghijklmnop");
    zero.SetAt(9, 0);
    zero += W(u"XY").c_str();
    EXPECT_EQ(Whole(zero), W(u"abcdefghiXY") + WString(7, 0));

    // On an empty string Insert stores the unit, returns 1 and leaves the length at 0.
    CUnicodeString empty;
    EXPECT_EQ(empty.Insert(5, 'x'), 1u);
    EXPECT_TRUE(empty.IsEmpty());
    CUnicodeString word = U(u"word"), keep(word);
    EXPECT_EQ(word.Insert(0, '['), 5u);
    EXPECT_EQ(word.Insert(99, static_cast<unsigned short>(']')), 6u);
    EXPECT_EQ(word.Insert(1, "a "), 8u);
    EXPECT_EQ(word.Insert(7, Text(word) + 6), 10u);
    EXPECT_EQ(Whole(word), W(u"[a wordd]]"));
    EXPECT_EQ(Whole(keep), W(u"word"));
}

TEST(UnicodeString, DeleteRemoveReplaceAndCase) {
    CUnicodeString d = U(u"abcdef"), before(d);
    EXPECT_EQ(d.Delete(1, 1), 6u);
    EXPECT_EQ(d.Delete(2, 100), 5u);
    EXPECT_EQ(Whole(d), W(u"ac"));
    EXPECT_EQ(Whole(before), W(u"abcdef"));

    CUnicodeString r = U(u"a-b-\u00e9-");
    EXPECT_EQ(r.Remove('-'), 3u);
    EXPECT_EQ(Whole(r), W(u"ab\u00e9"));

    CUnicodeString text = U(u"one two one two one");
    EXPECT_EQ(text.Replace("one", "three"), 3u);
    EXPECT_EQ(text.Replace(W(u"three").c_str(), kNull), 3u);
    EXPECT_EQ(Whole(text), W(u" two  two "));
    CUnicodeString again = U(u"aa");
    EXPECT_EQ(again.Replace(W(u"a").c_str(), W(u"aa").c_str()), 2u);
    EXPECT_EQ(again.Replace(Text(again) + 2, W(u"b").c_str()), 2u);
    EXPECT_EQ(Whole(again), W(u"bb"));
    CUnicodeString zero = U(u"abXab");
    zero.SetAt(2, 0);
    EXPECT_EQ(zero.Replace(W(u"ab").c_str(), W(u"xyz").c_str()), 2u);
    EXPECT_EQ(Whole(zero), WString({'x', 'y', 'z', 0, 'x', 'y', 'z'}));

    CUnicodeString c = U(u"h\u00e9llo \u0131!"), shared(c);
    c.MakeUpper();
    EXPECT_EQ(Whole(c), W(u"H\u00c9LLO I!"));
    c.MakeLower();
    EXPECT_EQ(Whole(c), W(u"h\u00e9llo i!"));
    EXPECT_EQ(Whole(shared), W(u"h\u00e9llo \u0131!"));
}

TEST(UnicodeString, TrimmingWorksAtBothEnds) {
    CUnicodeString s = U(u" \t\u3000lead and trail \n\u00a0 "), shared(s);
    s.TrimLeft();
    s.TrimRight();
    EXPECT_EQ(Whole(s), W(u"lead and trail"));
    EXPECT_EQ(Whole(shared), W(u" \t\u3000lead and trail \n\u00a0 "));
    // Every TrimRight strips at the right end, unlike the narrow class.
    CUnicodeString x = U(u"xaxx");
    x.TrimRight('x');
    EXPECT_EQ(Whole(x), W(u"xa"));
    CUnicodeString set = U(u"\u00e9-\u00e9a-\u00e9-");
    set.TrimRight("-\xc3\xa9");
    EXPECT_EQ(Whole(set), W(u"\u00e9-\u00e9a"));
    set.TrimLeft(W(u"-\u00e9").c_str());
    set.TrimRight(kNull);
    EXPECT_EQ(Whole(set), W(u"a"));
    // Trimming everything empties the string and keeps its buffer.
    CUnicodeString all = U(u"aaa");
    const unsigned int used = UnicodeBlockPool(64)->GetUsedCount();
    all.TrimRight(static_cast<unsigned short>('a'));
    EXPECT_TRUE(all.IsEmpty());
    EXPECT_EQ(UnicodeBlockPool(64)->GetUsedCount(), used);
}

TEST(UnicodeString, SubstringsAndCopyTo) {
    CUnicodeString s = U(u"abcd");
    EXPECT_EQ(Whole(s.SubString(1, 100)), W(u"bcd"));
    // Right starts one unit early.
    EXPECT_EQ(Whole(U(u"abcde").Right(2)), W(u"cd"));
    EXPECT_EQ(Whole(s.Right(3)), W(u"abc"));
    EXPECT_EQ(Text(s.Right(9)), Text(s));

    unsigned short buffer[6] = {9, 9, 9, 9, 9, 9};
    s.CopyTo(buffer, 1);
    s.CopyTo(nullptr, 5);
    EXPECT_EQ(buffer[0], 9);
    s.CopyTo(buffer, 3);
    EXPECT_EQ(WString(buffer, 4), WString({'a', 'b', 0, 9}));
    s.CopyTo(buffer, 6);
    EXPECT_EQ(WString(buffer, 6), WString({'a', 'b', 'c', 'd', 0, 0}));
}

TEST(UnicodeString, FormatRetriesOnlyAtExactly1023) {
    CUnicodeString s = U(u"keep");
    s.Format(nullptr);
    EXPECT_EQ(Whole(s), W(u"keep"));
    s.Format(W(u"%d-%ls-%s").c_str(), 42, W(u"\u00e9").c_str(), "\xe2\x82\xac");
    EXPECT_EQ(Whole(s), W(u"42-\u00e9-\u20ac"));
    { CUnicodeString warm(WString(1000, 'w').c_str()); }

    const WString exact(1023, 'e'), format = W(u"%ls");
    s.Format(format.c_str(), exact.c_str());
    EXPECT_EQ(Whole(s), exact);
    const char* source = "vorn/base/UnicodeString";
    ExpectNoMemory([&] { s.Format(format.c_str(), W(u"short").c_str()); }, source, 2309);
    ExpectNoMemory([&] { s.Format(format.c_str(), exact.c_str()); }, source, 2326, 2);
    EXPECT_EQ(Whole(s), exact);
    // Output that fills the block exactly, or doesn't fit, gets no retry and stops at its end.
    s.Format(format.c_str(), WString(1024, 'g').c_str());
    EXPECT_EQ(Whole(s), WString(1024, 'g'));
    s.Format(W(u"%ls!").c_str(), WString(2046, 'h').c_str());
    EXPECT_EQ(Whole(s), WString(1024, 'h'));
}

TEST(UnicodeString, NoMemoryLeavesTheStringAsItWas) {
    CUnicodeString big(WString(1500, 'b').c_str());
    const unsigned short* before = big;
    ExpectNoMemory([&] { big += W(u"more").c_str(); }, "vorn/base/UnicodeString", 2519);
    ExpectNoMemory([&] { big += "more"; }, "vorn/base/UnicodeString", 2519);
    EXPECT_EQ(Text(big), before);
    EXPECT_EQ(Whole(big), WString(1500, 'b'));
    // A narrow argument converts in a temporary buffer, whose failure is its own.
    ExpectNoMemory([&] { big.Find("bb"); }, "vorn/base/UnicodeStringBuffer", 289);
}

} // namespace

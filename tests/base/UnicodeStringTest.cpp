#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include <vorn/base/MemoryException.h>
#include <vorn/base/UnicodeString.h>

#include "support/AllocFailure.h"
#include "support/Utf16.h"
#include "vorn/base/FixBlockAllocator.h"

namespace {

using vorn::base::CMemoryException;
using vorn::base::CUnicodeString;
using vorn::base::UnicodeBlockPool;
using vorn::test::CountAllocations;
using vorn::test::FailAllocation;
using vorn::test::Units;
using vorn::test::W;
using vorn::test::WString;

const unsigned short* const kNull = nullptr;
const char* const kNarrowNull = nullptr;

struct Header {
    unsigned int capacity;
    unsigned int length;
    unsigned int references;
};
const unsigned short* Text(const CUnicodeString& s) {
    return s;
}
const Header& HeaderOf(const CUnicodeString& s) {
    return *reinterpret_cast<const Header*>(reinterpret_cast<const char*>(Text(s)) - 12);
}
// The units of the text up to its length, stored zeros included.
WString Whole(const CUnicodeString& s) {
    return WString(Text(s), s.GetLength());
}
CUnicodeString U(const char16_t* text) {
    return CUnicodeString(W(text).c_str());
}

template <typename F> void ExpectMemoryException(F&& body, const char* file, unsigned int line) {
    try {
        body();
        ADD_FAILURE() << "no exception";
    } catch (const CMemoryException& e) {
        EXPECT_STREQ(e.GetSourceFile(), file);
        EXPECT_EQ(e.GetSourceLine(), line);
        EXPECT_EQ(e.GetErrorDescription(), nullptr);
    }
}

TEST(UnicodeString, EmptyEqualsNullAndEmptyText) {
    CUnicodeString none, blank(W(u"").c_str()), text = U(u"abc");
    EXPECT_EQ(sizeof(CUnicodeString), sizeof(unsigned short*));
    EXPECT_TRUE(none == kNull);
    EXPECT_TRUE(none == "");
    EXPECT_TRUE(none == kNarrowNull);
    EXPECT_TRUE(blank == W(u"").c_str());
    EXPECT_TRUE("" == blank);
    EXPECT_TRUE(none == blank);
    EXPECT_EQ(Text(none), Text(blank));
    EXPECT_EQ(Units(Text(none)), W(u""));
    EXPECT_TRUE(text == "abc");
    EXPECT_TRUE(W(u"abc").c_str() == text);
    EXPECT_FALSE(text == "abd");
    EXPECT_FALSE(text == kNull);
    EXPECT_FALSE(text == none);
    // Narrow text is measured in bytes before it is converted: "é" is two bytes and one unit.
    CUnicodeString e = U(u"\u00e9");
    EXPECT_FALSE(e == "\xc3\xa9");
    EXPECT_FALSE(U(u"\u00e9x") == "\xc3\xa9");
    EXPECT_TRUE(U(u"\u00e9") == U(u"\u00e9"));
    EXPECT_EQ(text.GetAt(3), 0);
    EXPECT_EQ(text[1], 'b');
}

TEST(UnicodeString, Constructors) {
    // Narrow null and "" leave no buffer; wide null leaves an empty one.
    const unsigned int used = UnicodeBlockPool(64)->GetUsedCount();
    CUnicodeString a(kNarrowNull), b(""), c(kNarrowNull, 3), d("abc", 0), e(kNull, 3);
    EXPECT_EQ(UnicodeBlockPool(64)->GetUsedCount(), used);
    CUnicodeString f(kNull);
    EXPECT_EQ(UnicodeBlockPool(64)->GetUsedCount(), used + 1);
    EXPECT_TRUE(f.IsEmpty());

    CUnicodeString narrow("h\xc3\xa9\xf0\x9f\x98\x80");
    EXPECT_EQ(Whole(narrow), W(u"h\u00e9\U0001F600"));
    EXPECT_EQ(narrow.GetLength(), 4u);
    // A counted narrow text that ends inside a character converts what it cut as U+FFFD.
    EXPECT_EQ(Whole(CUnicodeString("h\xc3\xa9z", 2)), W(u"h\uFFFD"));
    EXPECT_EQ(Whole(CUnicodeString("hi", 10)), W(u"hi"));
    // The counted wide form measures what it copied.
    CUnicodeString cut(W(u"abcdef").c_str(), 3);
    EXPECT_EQ(Whole(cut), W(u"abc"));
    CUnicodeString past(W(u"ab").c_str(), 5);
    EXPECT_EQ(past.GetLength(), 2u);
    EXPECT_EQ(HeaderOf(past).capacity, 64u);
    CUnicodeString all(W(u"xyz").c_str(), 0xFFFFFFFFu);
    EXPECT_EQ(Whole(all), W(u"xyz"));

    CUnicodeString s;
    s = "na\xc3\xafve";
    EXPECT_EQ(Whole(s), W(u"na\u00efve"));
    s = "";
    EXPECT_TRUE(s.IsEmpty());
    s = kNull;
    EXPECT_TRUE(s.IsEmpty());
    s.Set(W(u"hello").c_str(), 3);
    EXPECT_EQ(Whole(s), W(u"hel"));
    s.Set(W(u"hi").c_str(), 9);
    EXPECT_EQ(Whole(s), W(u"hi"));
    // Pieces of its own text, also with a count past their end.
    s = W(u"abcdef").c_str();
    s = Text(s) + 2;
    EXPECT_EQ(Whole(s), W(u"cdef"));
    s.Set(Text(s) + 1, 5000);
    EXPECT_EQ(Whole(s), W(u"def"));
}

TEST(UnicodeString, CopiesShareUntilAChange) {
    CUnicodeString s = U(u"shared text");
    CUnicodeString t(s);
    EXPECT_EQ(Text(s), Text(t));
    EXPECT_EQ(HeaderOf(s).references, 2u);
    EXPECT_EQ(CountAllocations([&] {
                  CUnicodeString u(s), v;
                  v = s;
              }),
              0u);
    s.SetAt(0, 'S');
    EXPECT_EQ(Whole(s), W(u"Shared text"));
    EXPECT_EQ(Whole(t), W(u"shared text"));
    // Unlike the narrow class, MakeReverse unshares first.
    CUnicodeString u(t);
    u.MakeReverse();
    EXPECT_EQ(Whole(u), W(u"txet derahs"));
    EXPECT_EQ(Whole(t), W(u"shared text"));
    CUnicodeString v;
    v = t;
    EXPECT_EQ(HeaderOf(t).references, 2u);
    v.Empty();
    EXPECT_EQ(HeaderOf(t).references, 1u);
    v = v;
    EXPECT_TRUE(v.IsEmpty());
    s.SetAt(11, 'x');
    EXPECT_EQ(Whole(s), W(u"Shared text"));
}

TEST(UnicodeString, TiersAndBufferReuse) {
    EXPECT_EQ(HeaderOf(CUnicodeString(WString(63, 'a').c_str())).capacity, 64u);
    EXPECT_EQ(HeaderOf(CUnicodeString(WString(64, 'a').c_str())).capacity, 128u);
    EXPECT_EQ(HeaderOf(CUnicodeString(WString(1023, 'a').c_str())).capacity, 1024u);
    EXPECT_EQ(HeaderOf(CUnicodeString(WString(1024, 'a').c_str())).capacity, 1025u);
    CUnicodeString s = U(u"x");
    const unsigned short* before = s;
    const WString text63(63, 'b');
    s = text63.c_str();
    EXPECT_EQ(Text(s), before);
    CUnicodeString t(s);
    s = text63.c_str();
    EXPECT_NE(Text(s), before);
    EXPECT_EQ(Text(t), before);
    CUnicodeString big(WString(1500, 'c').c_str());
    big += W(u"d").c_str();
    EXPECT_EQ(HeaderOf(big).capacity, 1502u);
    big.EnsureCapacity(3000);
    EXPECT_EQ(HeaderOf(big).capacity, 3001u);
    // Empty keeps a private buffer, and appending within its room takes no allocation.
    const unsigned short* kept = big;
    big.Empty();
    EXPECT_TRUE(big.IsEmpty());
    big = W(u"again").c_str();
    EXPECT_EQ(Text(big), kept);
    const WString tail(100, 't');
    EXPECT_EQ(CountAllocations([&] { big += tail.c_str(); }), 0u);
}

TEST(UnicodeString, ComparisonsAndPrefixes) {
    CUnicodeString none, a = U(u"apple"), b = U(u"banana");
    // An empty string is equal to "" here, where the narrow class says -1.
    EXPECT_EQ(none.Compare(W(u"").c_str()), 0);
    EXPECT_EQ(none.Compare(""), 0);
    EXPECT_EQ(none.Compare(kNull), 0);
    EXPECT_EQ(none.Compare(kNarrowNull), 0);
    EXPECT_EQ(none.Compare("a"), -1);
    EXPECT_EQ(none.Compare(a), -1);
    EXPECT_EQ(a.Compare(none), 1);
    EXPECT_EQ(a.Compare(""), 1);
    EXPECT_EQ(a.Compare(kNull), 1);
    EXPECT_LT(a.Compare(b), 0);
    EXPECT_GT(b.Compare("apple"), 0);
    EXPECT_EQ(a.Compare("apple"), 0);
    EXPECT_NE(U(u"ABC").Compare("abc"), 0);
    EXPECT_EQ(U(u"\u00c9T\u00c9").CompareIgnoreCase("\xc3\xa9t\xc3\xa9"), 0);
    EXPECT_EQ(U(u"x").CompareIgnoreCase(W(u"X").c_str()), 0);

    CUnicodeString text = U(u"Hello World");
    EXPECT_TRUE(text.StartsWith("Hello"));
    EXPECT_TRUE(text.StartsWith(W(u"Hello").c_str()));
    EXPECT_FALSE(text.StartsWith(""));
    EXPECT_FALSE(text.StartsWith(kNull));
    EXPECT_FALSE(U(u"He").StartsWith("Hello"));
    EXPECT_FALSE(none.StartsWith("a"));
    EXPECT_TRUE(text.StartsWithIgnoreCase(U(u"hELLO")));
    EXPECT_TRUE(text.StartsWithIgnoreCase("hELLO"));
    EXPECT_TRUE(text.EndsWith(U(u"World")));
    EXPECT_FALSE(text.EndsWith("world"));
    EXPECT_TRUE(text.EndsWithIgnoreCase("WORLD"));
    EXPECT_TRUE(text.EndsWithIgnoreCase(W(u"WORLD").c_str()));
    EXPECT_FALSE(text.EndsWith("Hello World!"));
}

TEST(UnicodeString, OperatorsWithEmptyAndNullSides) {
    CUnicodeString empty, text = U(u"m");
    const WString wm = W(u"m"), wl = W(u"l"), wblank = W(u"");
    auto row = [](bool lt, bool le, bool gt, bool ge) { return std::string{lt, le, gt, ge}; };
    auto ops = [&](const auto& a, const auto& b) { return row(a<b, a <= b, a> b, a >= b); };
    EXPECT_EQ(ops(empty, CUnicodeString()), row(0, 1, 0, 1));
    EXPECT_EQ(ops(empty, text), row(1, 1, 0, 0));
    EXPECT_EQ(ops(text, empty), row(0, 0, 1, 1));
    EXPECT_EQ(ops(empty, kNull), row(0, 1, 0, 1));
    EXPECT_EQ(ops(empty, kNarrowNull), row(0, 1, 0, 1));
    EXPECT_EQ(ops(empty, wblank.c_str()), row(1, 1, 0, 0));
    EXPECT_EQ(ops(empty, ""), row(1, 1, 0, 0));
    EXPECT_EQ(ops(text, kNull), row(0, 0, 1, 1));
    EXPECT_EQ(ops(text, kNarrowNull), row(0, 0, 1, 1));
    EXPECT_EQ(ops(kNull, empty), row(0, 1, 0, 1));
    EXPECT_EQ(ops(kNarrowNull, text), row(1, 1, 0, 0));
    EXPECT_EQ(ops("", empty), row(0, 0, 1, 1));
    EXPECT_EQ(ops(wblank.c_str(), empty), row(0, 0, 1, 1));
    EXPECT_EQ(ops(text, "m"), row(0, 1, 0, 1));
    EXPECT_EQ(ops(text, wm.c_str()), row(0, 1, 0, 1));
    EXPECT_EQ(ops("l", text), row(1, 1, 0, 0));
    EXPECT_EQ(ops(wl.c_str(), text), row(1, 1, 0, 0));
    EXPECT_EQ(ops(U(u"n"), text), row(0, 0, 1, 1));
    EXPECT_EQ(ops(text, ""), row(0, 0, 1, 1));
    // A surrogate sorts by its unit, below U+E000.
    EXPECT_TRUE(U(u"\U0001F600") < U(u"\uE000"));

    CUnicodeString sum = text + U(u"n") + "o" + W(u"p").c_str();
    EXPECT_EQ(Whole(sum), W(u"mnop"));
    EXPECT_EQ(Whole("<" + sum), W(u"<mnop"));
    EXPECT_EQ(Whole(W(u"[").c_str() + sum), W(u"[mnop"));
    CUnicodeString shared = kNarrowNull + sum;
    EXPECT_EQ(Text(shared), Text(sum));
    CUnicodeString same = sum + kNarrowNull;
    EXPECT_EQ(Text(same), Text(sum));
    CUnicodeString fromEmpty = empty + sum;
    EXPECT_EQ(Text(fromEmpty), Text(sum));
    EXPECT_EQ(Whole(kNull + sum), W(u"mnop"));
}

TEST(UnicodeString, Find) {
    CUnicodeString s = U(u"abcabc");
    EXPECT_EQ(s.Find(W(u"bc").c_str()), 1);
    EXPECT_EQ(s.Find("bc", 2), 4);
    EXPECT_EQ(s.Find(U(u"ca"), 0), 2);
    EXPECT_EQ(s.Find("bc", 6), -1);
    EXPECT_EQ(s.Find(""), -1);
    EXPECT_EQ(s.Find(kNull), -1);
    // A needle longer than the rest of the text is refused before any search.
    EXPECT_EQ(s.Find("abc", 4), -1);
    EXPECT_EQ(s.Find('c', 3), 5);
    EXPECT_EQ(s.Find(static_cast<unsigned short>('a'), 1), 3);
    EXPECT_EQ(s.Find('x'), -1);
    EXPECT_EQ(CUnicodeString().Find("a"), -1);
    EXPECT_EQ(U(u"d\u00e9j\u00e0").Find("j\xc3\xa0"), 2);
    EXPECT_EQ(U(u"d\u00e9j\u00e0").Find(static_cast<unsigned short>(0xE0)), 3);
    // Case is ignored through upper-cased copies, which leave the string as it was.
    CUnicodeString mixed = U(u"xxABx");
    EXPECT_EQ(mixed.FindIgnoreCase("ab"), 2);
    EXPECT_EQ(mixed.FindIgnoreCase(W(u"bX").c_str(), 3), 3);
    EXPECT_EQ(Whole(mixed), W(u"xxABx"));
    EXPECT_EQ(s.ReverseFind('a', 0), 3);
    EXPECT_EQ(s.ReverseFind(static_cast<unsigned short>('a'), 4), -1);
    EXPECT_EQ(s.ReverseFind('c', 5), 5);
}

int Distance(const unsigned short* from, const unsigned short* to) {
    return static_cast<int>((static_cast<std::intptr_t>(reinterpret_cast<std::uintptr_t>(to)) -
                             static_cast<std::intptr_t>(reinterpret_cast<std::uintptr_t>(from))) /
                            2);
}

TEST(UnicodeString, ReverseFindLooksForTheTailInsideTheNeedle) {
    CUnicodeString s = U(u"xxabab");
    const WString ab = W(u"ab");
    // The tail equals the needle: the result is the distance to the needle, not a position.
    EXPECT_EQ(s.ReverseFind(ab.c_str(), 0), Distance(Text(s), ab.c_str()));
    EXPECT_NE(s.ReverseFind(ab.c_str(), 0), 4);
    // Any other needle finds nothing, here or further back.
    EXPECT_EQ(s.ReverseFind(W(u"xa").c_str(), 0), -1);
    EXPECT_EQ(s.ReverseFind(W(u"ba").c_str(), 0), -1);
    // The probe must lie behind `start`, and limits are those of Find.
    EXPECT_EQ(s.ReverseFind(ab.c_str(), 4), -1);
    EXPECT_EQ(s.ReverseFind(W(u"xxabab").c_str(), 0), -1);
    EXPECT_EQ(s.ReverseFind(W(u"xxababx").c_str(), 0), -1);
    EXPECT_EQ(s.ReverseFind(kNull, 0), -1);
    // A one-unit needle that doesn't end the string gives -1 rather than probing forever.
    const WString b = W(u"b"), a = W(u"a");
    EXPECT_EQ(s.ReverseFind(b.c_str(), 0), Distance(Text(s), b.c_str()));
    EXPECT_EQ(s.ReverseFind(a.c_str(), 0), -1);
    // The narrow form never converts its needle and finds nothing.
    EXPECT_EQ(s.ReverseFind("ab", 0), -1);
    EXPECT_EQ(s.ReverseFind("a", 0), -1);
    // Ignoring case searches inside copies, so the result is no position either.
    CUnicodeString upper = U(u"xxABAB");
    EXPECT_NE(upper.ReverseFindIgnoreCase("ab", 0), -1);
    EXPECT_NE(upper.ReverseFindIgnoreCase("ab", 0), 4);
    EXPECT_EQ(upper.ReverseFindIgnoreCase(W(u"ba").c_str(), 0), -1);
    EXPECT_EQ(Whole(upper), W(u"xxABAB"));
}

TEST(UnicodeString, AppendInsertDelete) {
    CUnicodeString s;
    CUnicodeString tail = U(u"tail");
    s += tail;
    EXPECT_EQ(Text(s), Text(tail));
    s += "!";
    EXPECT_EQ(Whole(s), W(u"tail!"));
    EXPECT_EQ(Whole(tail), W(u"tail"));
    s += kNarrowNull;
    s += kNull;
    s += "";
    s += CUnicodeString();
    s += s;
    EXPECT_EQ(Whole(s), W(u"tail!tail!"));
    s += Text(s) + 8;
    EXPECT_EQ(Whole(s), W(u"tail!tail!l!"));
    s += "\xc3\xa9";
    EXPECT_EQ(s.GetLength(), 13u);
    CUnicodeString fresh;
    fresh += W(u"wide").c_str();
    fresh += "\xe2\x82\xac";
    EXPECT_EQ(Whole(fresh), W(u"wide\u20ac"));
    CUnicodeString narrowFirst;
    narrowFirst += "n";
    EXPECT_EQ(Whole(narrowFirst), W(u"n"));
    // Behind a stored zero the length runs on: appends go to the terminator, and zeros fill up.
    CUnicodeString zero = U(u"abcd");
    zero.SetAt(1, 0);
    zero += W(u"XY").c_str();
    EXPECT_EQ(Whole(zero), WString({'a', 'X', 'Y', 0, 0, 0}));
    zero += "Z";
    EXPECT_EQ(zero.GetLength(), 7u);
    EXPECT_EQ(zero.GetAt(3), 'Z');

    CUnicodeString empty;
    EXPECT_EQ(empty.Insert(5, 'x'), 1u);
    EXPECT_EQ(empty.GetLength(), 0u);
    EXPECT_TRUE(empty.IsEmpty());
    EXPECT_TRUE(empty == "");
    empty += "y";
    EXPECT_EQ(Whole(empty), W(u"y"));
    CUnicodeString word = U(u"word");
    CUnicodeString keep(word);
    EXPECT_EQ(word.Insert(0, '['), 5u);
    EXPECT_EQ(word.Insert(99, static_cast<unsigned short>(']')), 6u);
    EXPECT_EQ(word.Insert(1, "a "), 8u);
    EXPECT_EQ(word.Insert(1, ""), 8u);
    EXPECT_EQ(word.Insert(1, kNull), 8u);
    EXPECT_EQ(word.Insert(7, Text(word) + 6), 10u);
    EXPECT_EQ(Whole(word), W(u"[a wordd]]"));
    EXPECT_EQ(Whole(keep), W(u"word"));
    CUnicodeString inserted;
    EXPECT_EQ(inserted.Insert(3, W(u"new").c_str()), 3u);
    EXPECT_EQ(Whole(inserted), W(u"new"));
    CUnicodeString narrowInserted;
    EXPECT_EQ(narrowInserted.Insert(0, "\xc3\xa9t\xc3\xa9"), 3u);

    CUnicodeString d = U(u"abc");
    EXPECT_EQ(d.Delete(1, 1), 3u);
    EXPECT_EQ(Whole(d), W(u"ac"));
    EXPECT_EQ(d.Delete(2, 1), 2u);
    EXPECT_EQ(d.Delete(0, 0), 2u);
    EXPECT_EQ(CUnicodeString().Delete(0, 1), 0u);
    CUnicodeString longer = U(u"abcdef");
    CUnicodeString before(longer);
    EXPECT_EQ(longer.Delete(2, 100), 6u);
    EXPECT_EQ(Whole(longer), W(u"ab"));
    EXPECT_EQ(Whole(before), W(u"abcdef"));
}

TEST(UnicodeString, RemoveReplaceCase) {
    CUnicodeString r = U(u"a-b-\u00e9-");
    CUnicodeString before(r);
    EXPECT_EQ(r.Remove('-'), 3u);
    EXPECT_EQ(Whole(r), W(u"ab\u00e9"));
    EXPECT_EQ(Whole(before), W(u"a-b-\u00e9-"));
    EXPECT_EQ(r.Remove(static_cast<unsigned short>(0xE9)), 1u);
    EXPECT_EQ(CUnicodeString().Remove('a'), 0u);
    EXPECT_EQ(r.Replace('b', 'B'), 1u);
    EXPECT_EQ(r.Replace('B', 'B'), 0u);
    EXPECT_EQ(r.Replace(static_cast<unsigned short>('a'), static_cast<unsigned short>(0x3B1)), 1u);
    EXPECT_EQ(Whole(r), W(u"\u03b1B"));

    CUnicodeString text = U(u"one two one two one");
    EXPECT_EQ(text.Replace("one", "three"), 3u);
    EXPECT_EQ(Whole(text), W(u"three two three two three"));
    EXPECT_EQ(text.GetLength(), 25u);
    EXPECT_EQ(text.Replace(W(u"three").c_str(), kNull), 3u);
    EXPECT_EQ(Whole(text), W(u" two  two "));
    EXPECT_EQ(text.Replace("two", kNarrowNull), 2u);
    EXPECT_EQ(text.Replace("x", "y"), 0u);
    EXPECT_EQ(text.Replace("", "y"), 0u);
    CUnicodeString again = U(u"aa");
    EXPECT_EQ(again.Replace(W(u"a").c_str(), W(u"aa").c_str()), 2u);
    EXPECT_EQ(Whole(again), W(u"aaaa"));
    // The string's own text as an argument, and text behind a stored zero.
    EXPECT_EQ(again.Replace(Text(again) + 2, W(u"b").c_str()), 2u);
    EXPECT_EQ(Whole(again), W(u"bb"));
    CUnicodeString zero = U(u"abXab");
    zero.SetAt(2, 0);
    EXPECT_EQ(zero.Replace(W(u"ab").c_str(), W(u"xyz").c_str()), 2u);
    EXPECT_EQ(Whole(zero), WString({'x', 'y', 'z', 0, 'x', 'y', 'z'}));

    CUnicodeString c = U(u"h\u00e9llo \u0131!");
    CUnicodeString shared(c);
    c.MakeUpper();
    EXPECT_EQ(Whole(c), W(u"H\u00c9LLO I!"));
    EXPECT_EQ(Whole(shared), W(u"h\u00e9llo \u0131!"));
    c.MakeLower();
    EXPECT_EQ(Whole(c), W(u"h\u00e9llo i!"));
    CUnicodeString empty;
    empty.MakeReverse();
    empty.MakeUpper();
    EXPECT_TRUE(empty.IsEmpty());
}

TEST(UnicodeString, TrimmingWorksAtBothEnds) {
    CUnicodeString s = U(u" \t\u3000lead and trail \n\u00a0 ");
    CUnicodeString shared(s);
    s.TrimLeft();
    EXPECT_EQ(Whole(s), W(u"lead and trail \n\u00a0 "));
    s.TrimRight();
    EXPECT_EQ(Whole(s), W(u"lead and trail"));
    EXPECT_EQ(s.GetLength(), 14u);
    EXPECT_EQ(Whole(shared), W(u" \t\u3000lead and trail \n\u00a0 "));
    // Every TrimRight strips at the right end, unlike the narrow class.
    CUnicodeString x = U(u"xaxx");
    x.TrimRight('x');
    EXPECT_EQ(Whole(x), W(u"xa"));
    x.TrimLeft(static_cast<unsigned short>('x'));
    EXPECT_EQ(Whole(x), W(u"a"));
    CUnicodeString set = U(u"\u00e9-\u00e9a-\u00e9-");
    set.TrimRight("-\xc3\xa9");
    EXPECT_EQ(Whole(set), W(u"\u00e9-\u00e9a"));
    set.TrimLeft(W(u"-\u00e9").c_str());
    EXPECT_EQ(Whole(set), W(u"a"));
    CUnicodeString dots = U(u"..a.b..");
    dots.TrimRight(W(u".").c_str());
    dots.TrimLeft(".");
    EXPECT_EQ(Whole(dots), W(u"a.b"));
    dots.TrimLeft("");
    dots.TrimRight(kNull);
    dots.TrimRight(kNarrowNull);
    dots.TrimLeft(static_cast<unsigned short>('z'));
    EXPECT_EQ(Whole(dots), W(u"a.b"));
    // Trimming everything empties the string and keeps its buffer.
    const unsigned int used = UnicodeBlockPool(64)->GetUsedCount();
    CUnicodeString blank = U(u"   ");
    blank.TrimRight();
    EXPECT_TRUE(blank.IsEmpty());
    EXPECT_EQ(UnicodeBlockPool(64)->GetUsedCount(), used + 1);
    CUnicodeString all = U(u"aaa");
    all.TrimRight('a');
    EXPECT_TRUE(all.IsEmpty());
    CUnicodeString left = U(u"aaa");
    left.TrimLeft('a');
    EXPECT_TRUE(left.IsEmpty());
}

TEST(UnicodeString, SubstringsAndCopyTo) {
    CUnicodeString s = U(u"abcd");
    EXPECT_EQ(Whole(s.Mid(1, 2)), W(u"bc"));
    EXPECT_EQ(Whole(s.Mid(2)), W(u"cd"));
    EXPECT_TRUE(s.Mid(4).IsEmpty());
    EXPECT_TRUE(s.Mid(1, -1).IsEmpty());
    EXPECT_EQ(Whole(s.SubString(1, 100)), W(u"bcd"));
    EXPECT_TRUE(s.SubString(2, 2).IsEmpty());
    EXPECT_EQ(Whole(s.Left(2)), W(u"ab"));
    CUnicodeString whole = s.Left(4);
    EXPECT_EQ(Text(whole), Text(s));
    // Right starts one unit early.
    EXPECT_EQ(Whole(U(u"abcde").Right(2)), W(u"cd"));
    EXPECT_EQ(Whole(s.Right(3)), W(u"abc"));
    CUnicodeString right = s.Right(9);
    EXPECT_EQ(Text(right), Text(s));
    EXPECT_TRUE(CUnicodeString().Right(1).IsEmpty());
    EXPECT_TRUE(CUnicodeString().Left(1).IsEmpty());

    unsigned short buffer[6] = {9, 9, 9, 9, 9, 9};
    s.CopyTo(buffer, 1);
    EXPECT_EQ(buffer[0], 9);
    s.CopyTo(nullptr, 5);
    s.CopyTo(buffer, 3);
    EXPECT_EQ(WString(buffer, 4), WString({'a', 'b', 0, 9}));
    s.CopyTo(buffer, 6);
    EXPECT_EQ(WString(buffer, 6), WString({'a', 'b', 'c', 'd', 0, 0}));
    CUnicodeString().CopyTo(buffer, 2);
    EXPECT_EQ(buffer[0], 0);
}

TEST(UnicodeString, FormatRetriesOnlyAtExactly1023) {
    CUnicodeString s = U(u"keep");
    s.Format(nullptr);
    EXPECT_EQ(Whole(s), W(u"keep"));
    s.Format(W(u"%d-%ls-%s-%c").c_str(), 42, W(u"\u00e9").c_str(), "\xe2\x82\xac", 'y');
    EXPECT_EQ(Whole(s), W(u"42-\u00e9-\u20ac-y"));
    { CUnicodeString warm(WString(1000, 'w').c_str()); }

    const WString exact(1023, 'e');
    const WString format = W(u"%ls");
    s.Format(format.c_str(), exact.c_str());
    EXPECT_EQ(Whole(s), exact);
    ExpectMemoryException(
        [&] {
            FailAllocation fail(1);
            s.Format(format.c_str(), W(u"short").c_str());
        },
        "vorn/base/UnicodeString", 2309);
    ExpectMemoryException(
        [&] {
            FailAllocation fail(2);
            s.Format(format.c_str(), exact.c_str());
        },
        "vorn/base/UnicodeString", 2326);
    EXPECT_EQ(Whole(s), exact);
    {
        FailAllocation fail(2);
        s.Format(format.c_str(), WString(1022, 'f').c_str());
    }
    EXPECT_EQ(s.GetLength(), 1022u);
    // Output that fills the block exactly, or doesn't fit, gets no retry and stops at its end.
    const WString full(1024, 'g');
    s.Format(format.c_str(), full.c_str());
    EXPECT_EQ(Whole(s), full);
    s.Format(W(u"%ls!").c_str(), WString(2046, 'h').c_str());
    EXPECT_EQ(Whole(s), WString(1024, 'h'));
}

TEST(UnicodeString, NoMemoryLeavesTheStringAsItWas) {
    CUnicodeString big(WString(1500, 'b').c_str());
    const unsigned short* before = big;
    ExpectMemoryException(
        [&] {
            FailAllocation fail(1);
            big += W(u"more").c_str();
        },
        "vorn/base/UnicodeString", 2519);
    ExpectMemoryException(
        [&] {
            FailAllocation fail(1);
            big += "more";
        },
        "vorn/base/UnicodeString", 2519);
    EXPECT_EQ(Text(big), before);
    EXPECT_EQ(Whole(big), WString(1500, 'b'));
    // A narrow argument converts in a temporary buffer, whose failure is its own.
    ExpectMemoryException(
        [&] {
            FailAllocation fail(1);
            big.Find("bb");
        },
        "vorn/base/UnicodeStringBuffer", 289);
    // A new buffer above 1024 that the system refuses leaves the string null.
    CUnicodeString target = U(u"small");
    const WString text(2000, 't');
    try {
        FailAllocation fail(1);
        target = text.c_str();
        ADD_FAILURE() << "no exception";
    } catch (const CMemoryException& e) {
        EXPECT_STREQ(e.GetSourceFile(), "vorn/base/UnicodeString");
    }
    EXPECT_TRUE(target.IsEmpty());
    target = text.c_str();
    EXPECT_EQ(target.GetLength(), 2000u);
}

TEST(UnicodeString, NoMemoryInAPoolThatMustGrow) {
    vorn::base::FixBlockAllocator* pool = UnicodeBlockPool(128);
    std::vector<void*> drained;
    while (pool->GetFreeCount() > 0)
        drained.push_back(pool->Allocate());
    const unsigned int used = pool->GetUsedCount();
    CUnicodeString s = U(u"short");
    const unsigned short* before = s;
    ExpectMemoryException(
        [&] {
            FailAllocation fail(1);
            s.EnsureCapacity(100);
        },
        "vorn/base/FixBlockAllocator", 109);
    EXPECT_EQ(Text(s), before);
    EXPECT_EQ(pool->GetUsedCount(), used);
    s.EnsureCapacity(100);
    EXPECT_EQ(HeaderOf(s).capacity, 128u);
    EXPECT_EQ(Whole(s), W(u"short"));
    for (void* block : drained)
        pool->Release(block);
}

} // namespace

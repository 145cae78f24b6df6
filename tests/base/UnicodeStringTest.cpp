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

template <typename F> void ExpectNoMemory(const char* file, unsigned int line, F&& body) {
    try {
        body();
        ADD_FAILURE() << "no exception";
    } catch (const CMemoryException& e) {
        EXPECT_STREQ(e.GetSourceFile(), file);
        EXPECT_EQ(e.GetSourceLine(), line);
    }
}

TEST(UnicodeString, EmptyEqualsNullAndEmptyText) {
    CUnicodeString none, blank(W(u"").c_str()), text = U(u"abc");
    EXPECT_TRUE(none == kNull && none == "" && none == kNarrowNull && "" == blank);
    EXPECT_TRUE(none == blank);
    EXPECT_EQ(Text(none), Text(blank));
    EXPECT_TRUE(text == "abc" && W(u"abc").c_str() == text);
    EXPECT_FALSE(text == "abd" || text == kNull || text == none);
    // Narrow text is measured in bytes first: "é" has two bytes and one unit.
    EXPECT_FALSE(U(u"\u00e9") == "\xc3\xa9");
    EXPECT_EQ(text.GetAt(3), 0);
}

TEST(UnicodeString, ConstructionAndAssignment) {
    // Narrow null and "" leave no buffer; wide null leaves an empty one.
    const unsigned int used = UnicodeBlockPool(64)->GetUsedCount();
    CUnicodeString a(kNarrowNull), b(""), c("abc", 0), d(kNull, 3);
    EXPECT_EQ(UnicodeBlockPool(64)->GetUsedCount(), used);
    CUnicodeString e(kNull);
    EXPECT_EQ(UnicodeBlockPool(64)->GetUsedCount(), used + 1);
    EXPECT_EQ(Whole(CUnicodeString("h\xc3\xa9\xf0\x9f\x98\x80")), W(u"h\u00e9\U0001F600"));
    // A counted narrow text cut inside a character converts the piece as U+FFFD.
    EXPECT_EQ(Whole(CUnicodeString("h\xc3\xa9z", 2)), W(u"h\uFFFD"));
    // The counted wide form measures what it copied.
    EXPECT_EQ(Whole(CUnicodeString(W(u"abcdef").c_str(), 3)), W(u"abc"));
    EXPECT_EQ(CUnicodeString(W(u"ab").c_str(), 5).GetLength(), 2u);
    EXPECT_EQ(Whole(CUnicodeString(W(u"xyz").c_str(), 0xFFFFFFFFu)), W(u"xyz"));

    CUnicodeString s;
    s = "na\xc3\xafve";
    EXPECT_EQ(Whole(s), W(u"na\u00efve"));
    s = "";
    EXPECT_TRUE(s.IsEmpty());
    s.Set(W(u"hello").c_str(), 3);
    EXPECT_EQ(Whole(s), W(u"hel"));
    // Pieces of its own text, also with a count past their end.
    s = W(u"abcdef").c_str();
    s = Text(s) + 2;
    s.Set(Text(s) + 1, 5000);
    EXPECT_EQ(Whole(s), W(u"def"));
}

TEST(UnicodeString, CopiesShareUntilAChange) {
    CUnicodeString s = U(u"shared text");
    CUnicodeString t(s);
    EXPECT_EQ(References(s), 2u);
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
    CUnicodeString v(t);
    v.Empty();
    EXPECT_EQ(References(t), 1u);
}

TEST(UnicodeString, TiersAndBufferReuse) {
    EXPECT_EQ(Capacity(CUnicodeString(WString(63, 'a').c_str())), 64u);
    EXPECT_EQ(Capacity(CUnicodeString(WString(64, 'a').c_str())), 128u);
    EXPECT_EQ(Capacity(CUnicodeString(WString(1023, 'a').c_str())), 1024u);
    EXPECT_EQ(Capacity(CUnicodeString(WString(1024, 'a').c_str())), 1025u);
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

TEST(UnicodeString, CompareAndPrefixes) {
    CUnicodeString none, a = U(u"apple");
    // An empty string equals "" here, where the narrow class answers -1.
    for (const char* empty : {"", kNarrowNull})
        EXPECT_EQ(none.Compare(empty), 0);
    EXPECT_EQ(none.Compare(kNull), 0);
    EXPECT_EQ(none.Compare("a"), -1);
    EXPECT_EQ(a.Compare(none), 1);
    EXPECT_EQ(a.Compare(""), 1);
    EXPECT_LT(a.Compare(W(u"banana").c_str()), 0);
    EXPECT_EQ(a.Compare("apple"), 0);
    EXPECT_EQ(U(u"\u00c9T\u00c9").CompareIgnoreCase("\xc3\xa9t\xc3\xa9"), 0);

    CUnicodeString text = U(u"Hello World");
    EXPECT_TRUE(text.StartsWith("Hello") && text.StartsWithIgnoreCase(U(u"hELLO")));
    EXPECT_TRUE(text.EndsWith(U(u"World")) && text.EndsWithIgnoreCase("WORLD"));
    EXPECT_FALSE(text.StartsWith("") || text.StartsWith(kNull) || text.EndsWith("world"));
    EXPECT_FALSE(text.EndsWith("Hello World!") || none.StartsWith("a"));
}

TEST(UnicodeString, OrderWithEmptyAndNullSides) {
    CUnicodeString empty, text = U(u"m");
    const WString wm = W(u"m"), wblank = W(u"");
    auto row = [](bool lt, bool le, bool gt, bool ge) { return std::string{lt, le, gt, ge}; };
    auto ops = [&](const auto& a, const auto& b) { return row(a<b, a <= b, a> b, a >= b); };
    const std::string less = row(1, 1, 0, 0), equal = row(0, 1, 0, 1), more = row(0, 0, 1, 1);
    EXPECT_EQ(ops(empty, CUnicodeString()), equal);
    EXPECT_EQ(ops(empty, text), less);
    EXPECT_EQ(ops(empty, kNull), equal);
    EXPECT_EQ(ops(empty, kNarrowNull), equal);
    EXPECT_EQ(ops(empty, wblank.c_str()), less);
    EXPECT_EQ(ops(empty, ""), less);
    EXPECT_EQ(ops(text, kNarrowNull), more);
    EXPECT_EQ(ops(kNull, text), less);
    EXPECT_EQ(ops("", empty), more);
    EXPECT_EQ(ops(text, wm.c_str()), equal);
    EXPECT_EQ(ops("l", text), less);
    EXPECT_EQ(ops(text, ""), more);
    // Units order as numbers, so a surrogate pair sorts below U+E000.
    EXPECT_TRUE(U(u"\U0001F600") < U(u"\uE000"));

    CUnicodeString sum = text + U(u"n") + "o" + W(u"p").c_str();
    EXPECT_EQ(Whole("<" + sum), W(u"<mnop"));
    EXPECT_EQ(Whole(W(u"[").c_str() + sum), W(u"[mnop"));
    EXPECT_EQ(Text(kNarrowNull + sum), Text(sum));
    EXPECT_EQ(Text(empty + sum), Text(sum));
}

TEST(UnicodeString, Find) {
    CUnicodeString s = U(u"abcabc");
    EXPECT_EQ(s.Find(W(u"bc").c_str()), 1);
    EXPECT_EQ(s.Find("bc", 2), 4);
    EXPECT_EQ(s.Find("", 0), -1);
    EXPECT_EQ(s.Find("bc", 6), -1);
    // A needle longer than the rest of the text is refused before any search.
    EXPECT_EQ(s.Find("abc", 4), -1);
    EXPECT_EQ(s.Find('c', 3), 5);
    EXPECT_EQ(U(u"d\u00e9j\u00e0").Find("j\xc3\xa0"), 2);
    // Case is ignored through upper-cased copies, which leave the string as it was.
    CUnicodeString mixed = U(u"xxABx");
    EXPECT_EQ(mixed.FindIgnoreCase("ab"), 2);
    EXPECT_EQ(mixed.FindIgnoreCase(W(u"bX").c_str(), 3), 3);
    EXPECT_EQ(Whole(mixed), W(u"xxABx"));
    EXPECT_EQ(s.ReverseFind('a', 0), 3);
    EXPECT_EQ(s.ReverseFind(static_cast<unsigned short>('a'), 4), -1);
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
    EXPECT_EQ(s.ReverseFind("a", 0), -1);
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
    s += kNarrowNull;
    s += kNull;
    s += s;
    EXPECT_EQ(Whole(s), W(u"tail!tail!"));
    EXPECT_EQ(Whole(tail), W(u"tail"));
    s += Text(s) + 8;
    EXPECT_EQ(Whole(s), W(u"tail!tail!l!"));
    CUnicodeString fresh;
    fresh += W(u"wide").c_str();
    fresh += "\xe2\x82\xac";
    EXPECT_EQ(Whole(fresh), W(u"wide\u20ac"));
    // Behind a stored zero the length runs on: appends go to the terminator, and zeros fill up.
    CUnicodeString zero = U(u"abcdefghijklmnop");
    zero.SetAt(9, 0);
    zero += W(u"XY").c_str();
    EXPECT_EQ(Whole(zero), W(u"abcdefghiXY") + WString(7, 0));
    zero += "Z";
    EXPECT_EQ(Whole(zero), W(u"abcdefghiXYZ") + WString(7, 0));

    // On an empty string Insert stores the unit, returns 1 and leaves the length at 0.
    CUnicodeString empty;
    EXPECT_EQ(empty.Insert(5, 'x'), 1u);
    EXPECT_TRUE(empty.IsEmpty());
    empty += "y";
    EXPECT_EQ(Whole(empty), W(u"y"));
    CUnicodeString word = U(u"word"), keep(word);
    EXPECT_EQ(word.Insert(0, '['), 5u);
    EXPECT_EQ(word.Insert(99, static_cast<unsigned short>(']')), 6u);
    EXPECT_EQ(word.Insert(1, "a "), 8u);
    EXPECT_EQ(word.Insert(1, kNull), 8u);
    EXPECT_EQ(word.Insert(7, Text(word) + 6), 10u);
    EXPECT_EQ(Whole(word), W(u"[a wordd]]"));
    EXPECT_EQ(Whole(keep), W(u"word"));
    EXPECT_EQ(CUnicodeString().Insert(3, "\xc3\xa9t\xc3\xa9"), 3u);
}

TEST(UnicodeString, DeleteRemoveReplaceAndCase) {
    CUnicodeString d = U(u"abcdef"), before(d);
    EXPECT_EQ(d.Delete(1, 1), 6u);
    EXPECT_EQ(d.Delete(2, 100), 5u);
    EXPECT_EQ(Whole(d), W(u"ac"));
    EXPECT_EQ(Whole(before), W(u"abcdef"));
    EXPECT_EQ(CUnicodeString().Delete(0, 1), 0u);

    CUnicodeString r = U(u"a-b-\u00e9-");
    EXPECT_EQ(r.Remove('-'), 3u);
    EXPECT_EQ(r.Replace('b', 'b'), 0u);
    EXPECT_EQ(r.Replace(static_cast<unsigned short>(0xE9), static_cast<unsigned short>(0x3B1)), 1u);
    EXPECT_EQ(Whole(r), W(u"ab\u03b1"));

    CUnicodeString text = U(u"one two one two one");
    EXPECT_EQ(text.Replace("one", "three"), 3u);
    EXPECT_EQ(Whole(text), W(u"three two three two three"));
    EXPECT_EQ(text.Replace(W(u"three").c_str(), kNull), 3u);
    EXPECT_EQ(Whole(text), W(u" two  two "));
    EXPECT_EQ(text.Replace("", "y"), 0u);
    CUnicodeString again = U(u"aa");
    EXPECT_EQ(again.Replace(W(u"a").c_str(), W(u"aa").c_str()), 2u);
    EXPECT_EQ(again.Replace(Text(again) + 2, W(u"b").c_str()), 2u);
    EXPECT_EQ(Whole(again), W(u"bb"));
    // Text behind a stored zero is searched too.
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
    set.TrimLeft("");
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
    EXPECT_EQ(Whole(s.Mid(1, 2)), W(u"bc"));
    EXPECT_EQ(Whole(s.SubString(1, 100)), W(u"bcd"));
    EXPECT_TRUE(s.SubString(2, 2).IsEmpty());
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
    ExpectNoMemory("vorn/base/UnicodeString", 2309, [&] {
        FailAllocation fail(1);
        s.Format(format.c_str(), W(u"short").c_str());
    });
    ExpectNoMemory("vorn/base/UnicodeString", 2326, [&] {
        FailAllocation fail(2);
        s.Format(format.c_str(), exact.c_str());
    });
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
    ExpectNoMemory("vorn/base/UnicodeString", 2519, [&] {
        FailAllocation fail(1);
        big += W(u"more").c_str();
    });
    ExpectNoMemory("vorn/base/UnicodeString", 2519, [&] {
        FailAllocation fail(1);
        big += "more";
    });
    EXPECT_EQ(Text(big), before);
    EXPECT_EQ(Whole(big), WString(1500, 'b'));
    // A narrow argument converts in a temporary buffer, whose failure is its own.
    ExpectNoMemory("vorn/base/UnicodeStringBuffer", 289, [&] {
        FailAllocation fail(1);
        big.Find("bb");
    });

    vorn::base::FixBlockAllocator* pool = UnicodeBlockPool(128);
    std::vector<void*> drained;
    while (pool->GetFreeCount() > 0)
        drained.push_back(pool->Allocate());
    CUnicodeString s = U(u"short");
    ExpectNoMemory("vorn/base/FixBlockAllocator", 109, [&] {
        FailAllocation fail(1);
        s.EnsureCapacity(100);
    });
    EXPECT_EQ(Whole(s), W(u"short"));
    for (void* block : drained)
        pool->Release(block);
}

} // namespace

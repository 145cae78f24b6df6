#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include <vorn/base/MemoryException.h>
#include <vorn/base/String.h>

#include "support/AllocFailure.h"
#include "support/Utf16.h"
#include "vorn/base/FixBlockAllocator.h"

namespace {

using vorn::base::CMemoryException;
using vorn::base::CString;
using vorn::base::StringBlockPool;
using vorn::test::CountAllocations;
using vorn::test::FailAllocation;
using vorn::test::W;

// The buffer header in front of a non-empty string's text.
struct Header {
    unsigned int capacity;
    unsigned int length;
    unsigned int references;
};
const Header& HeaderOf(const CString& s) {
    return *reinterpret_cast<const Header*>(static_cast<const char*>(s) - 12);
}
const char* Text(const CString& s) {
    return s;
}
std::string Bytes(const CString& s) {
    return std::string(Text(s), s.GetLength());
}

template <typename F> void ExpectMemoryException(F&& body, const char* file, unsigned int line) {
    try {
        body();
        ADD_FAILURE() << "no exception";
    } catch (const CMemoryException& e) {
        EXPECT_STREQ(e.GetSourceFile(), file);
        EXPECT_EQ(e.GetSourceLine(), line);
        EXPECT_EQ(e.GetErrorDescription(), nullptr);
        EXPECT_EQ(e.GetMessage(), nullptr);
    }
}

TEST(String, NullAndEmptyBuffersAreBothEmpty) {
    CString none, blank(""), text("abc");
    EXPECT_EQ(sizeof(CString), sizeof(char*));
    EXPECT_TRUE(none.IsEmpty());
    EXPECT_TRUE(blank.IsEmpty());
    EXPECT_STREQ(Text(none), "");
    EXPECT_EQ(Text(none), Text(blank));
    EXPECT_TRUE(none == blank);
    EXPECT_FALSE(none == "");
    EXPECT_FALSE(blank == "");
    EXPECT_TRUE(none == static_cast<const char*>(nullptr));
    EXPECT_TRUE(text == "abc");
    EXPECT_FALSE(text == static_cast<const char*>(nullptr));
    EXPECT_FALSE("abd" == text);
    EXPECT_FALSE(text == none);
    // "" takes a buffer of its own, and a copy of it shares nothing.
    const unsigned int used = StringBlockPool(64)->GetUsedCount();
    CString another(""), copy(blank), nothing;
    EXPECT_EQ(StringBlockPool(64)->GetUsedCount(), used + 1);
    EXPECT_EQ(text.GetAt(3), '\0');
    EXPECT_EQ(text[5], '\0');
    EXPECT_EQ(text[1], 'b');
}

TEST(String, ConstructorsFromTextAndWideText) {
    // The counted form copies whole characters that fit and keeps the full length.
    CString cut("abcdef", 3);
    EXPECT_STREQ(Text(cut), "abc");
    EXPECT_EQ(cut.GetLength(), 6u);
    EXPECT_EQ(cut.GetAt(4), '\0');
    CString split("a\xc3\xa9z", 2);
    EXPECT_STREQ(Text(split), "a");
    EXPECT_EQ(split.GetLength(), 4u);
    EXPECT_TRUE(CString("abc", 0).IsEmpty());
    EXPECT_TRUE(CString(static_cast<const char*>(nullptr), 3).IsEmpty());
    // The length that runs past the text stays with the string through copies and appends.
    CString appended(cut);
    appended += "XY";
    EXPECT_STREQ(Text(appended), "abcXY");
    EXPECT_EQ(appended.GetLength(), 8u);
    EXPECT_EQ(appended.GetAt(7), '\0');

    CString wide(W(u"h\u00e9\U0001F600").c_str());
    EXPECT_EQ(Bytes(wide), "h\xc3\xa9\xf0\x9f\x98\x80");
    CString wideCut(W(u"h\u00e9llo").c_str(), 2);
    EXPECT_EQ(Bytes(wideCut), "h\xc3\xa9");
    EXPECT_TRUE(CString(static_cast<const unsigned short*>(nullptr)).IsEmpty());
    const unsigned short lone[] = {'a', 0xD800, 0};
    EXPECT_EQ(Bytes(CString(lone)), "a\xef\xbf\xbd");
    CString assigned("old");
    assigned = W(u"\u20ac").c_str();
    EXPECT_EQ(Bytes(assigned), "\xe2\x82\xac");
    assigned = static_cast<const unsigned short*>(nullptr);
    EXPECT_TRUE(assigned.IsEmpty());
}

TEST(String, CopiesShareUntilAChange) {
    CString s("shared text");
    CString t(s);
    EXPECT_EQ(Text(s), Text(t));
    EXPECT_EQ(HeaderOf(s).references, 2u);
    EXPECT_EQ(CountAllocations([&] { CString u(s); }), 0u);
    s.SetAt(0, 'S');
    EXPECT_STREQ(Text(s), "Shared text");
    EXPECT_STREQ(Text(t), "shared text");
    EXPECT_EQ(HeaderOf(t).references, 1u);
    // MakeReverse works in the shared buffer.
    CString u(t);
    u.MakeReverse();
    EXPECT_STREQ(Text(t), "txet derahs");
    // Assignments share too, and Empty only lets go of a shared buffer.
    CString v;
    v = t;
    EXPECT_EQ(HeaderOf(t).references, 3u);
    v.Empty();
    EXPECT_EQ(HeaderOf(t).references, 2u);
    v = u;
    v = v;
    EXPECT_EQ(HeaderOf(t).references, 3u);
}

TEST(String, TiersAndBufferReuse) {
    EXPECT_EQ(HeaderOf(CString(std::string(63, 'a').c_str())).capacity, 64u);
    EXPECT_EQ(HeaderOf(CString(std::string(64, 'a').c_str())).capacity, 128u);
    EXPECT_EQ(HeaderOf(CString(std::string(1023, 'a').c_str())).capacity, 1024u);
    EXPECT_EQ(HeaderOf(CString(std::string(1024, 'a').c_str())).capacity, 1025u);
    // A private buffer of 64 takes 63 bytes in place; a shared one is left to its other owner.
    CString s("x");
    const char* before = s;
    std::string text63(63, 'b');
    s = text63.c_str();
    EXPECT_EQ(Text(s), before);
    CString t(s);
    s = text63.c_str();
    EXPECT_NE(Text(s), before);
    EXPECT_EQ(Text(t), before);
    // Growth above 1024 is exact.
    CString big(std::string(1500, 'c').c_str());
    big += "d";
    EXPECT_EQ(HeaderOf(big).capacity, 1502u);
    big.EnsureCapacity(3000);
    EXPECT_EQ(HeaderOf(big).capacity, 3001u);
    EXPECT_EQ(big.GetLength(), 1501u);
    // Empty keeps a private buffer for the next text.
    const char* kept = big;
    big.Empty();
    big = "again";
    EXPECT_EQ(Text(big), kept);
}

TEST(String, AssignmentsAndSet) {
    CString s;
    const unsigned int used = StringBlockPool(64)->GetUsedCount();
    // Unlike the constructor, the assignment of null leaves a buffer of length 0.
    s = static_cast<const char*>(nullptr);
    EXPECT_TRUE(s.IsEmpty());
    EXPECT_EQ(StringBlockPool(64)->GetUsedCount(), used + 1);
    s.Set("h\xc3\xa9llo", 2);
    EXPECT_STREQ(Text(s), "h");
    EXPECT_EQ(s.GetLength(), 1u);
    s.Set("hello", 3);
    EXPECT_STREQ(Text(s), "hel");
    // Pieces of the string's own text, short or with a count past its end.
    s = "abcdef";
    s = Text(s) + 2;
    EXPECT_STREQ(Text(s), "cdef");
    s.Set(Text(s) + 1, 5000);
    EXPECT_STREQ(Text(s), "def");
    s += Text(s);
    EXPECT_STREQ(Text(s), "defdef");
    EXPECT_EQ(s.Insert(3, Text(s) + 4), 8u);
    EXPECT_STREQ(Text(s), "defefdef");
}

TEST(String, SetAtAndIndexing) {
    CString s("abc");
    s.SetAt(3, 'x');
    s.SetAt(100, 'x');
    EXPECT_STREQ(Text(s), "abc");
    s.SetAt(2, 'C');
    EXPECT_STREQ(Text(s), "abC");
    // A shared string whose length ran past its text measures it anew when unshared.
    CString cut("abcdef", 2);
    CString other(cut);
    other.SetAt(4, 'x');
    EXPECT_EQ(other.GetLength(), 2u);
    EXPECT_EQ(cut.GetLength(), 6u);
}

TEST(String, ComparisonsTreatEmptyFirst) {
    CString none, a("apple");
    EXPECT_EQ(none.Compare(CString()), 0);
    EXPECT_EQ(a.Compare(none), 1);
    EXPECT_EQ(none.Compare(a), -1);
    EXPECT_EQ(none.Compare(static_cast<const char*>(nullptr)), 0);
    EXPECT_EQ(none.Compare(""), -1);
    EXPECT_EQ(a.Compare(""), 1);
    EXPECT_EQ(a.Compare(static_cast<const char*>(nullptr)), 1);
    // Texts on both sides meet a model in StringDifferentialTest.cpp.
    EXPECT_FALSE(a.StartsWith(CString()));
    EXPECT_FALSE(none.EndsWith("a"));
    EXPECT_TRUE(a.EndsWithIgnoreCase(CString("PLE")));
}

TEST(String, OperatorsWithEmptyAndNullSides) {
    const char* null = nullptr;
    CString empty, text("m");
    // Each row: <, <=, >, >=.
    auto row = [](bool lt, bool le, bool gt, bool ge) { return std::string{lt, le, gt, ge}; };
    auto ops = [&](const auto& a, const auto& b) {
        return row((a < b), (a <= b), (a > b), (a >= b));
    };
    EXPECT_EQ(ops(empty, CString()), row(0, 1, 0, 1));
    EXPECT_EQ(ops(empty, text), row(1, 1, 0, 0));
    EXPECT_EQ(ops(text, empty), row(0, 0, 1, 1));
    EXPECT_EQ(ops(empty, null), row(0, 1, 0, 1));
    EXPECT_EQ(ops(empty, ""), row(1, 1, 0, 0));
    EXPECT_EQ(ops(text, null), row(0, 0, 1, 1));
    EXPECT_EQ(ops(null, empty), row(0, 1, 0, 1));
    EXPECT_EQ(ops(null, text), row(1, 1, 0, 0));
    EXPECT_EQ(ops("", empty), row(0, 0, 1, 1));
    EXPECT_EQ(ops(text, "m"), row(0, 1, 0, 1));
    EXPECT_EQ(ops("l", text), row(1, 1, 0, 0));
    EXPECT_EQ(ops(CString("n"), text), row(0, 0, 1, 1));
    EXPECT_EQ(ops(text, ""), row(0, 0, 1, 1));

    CString sum = text + CString("n") + "o";
    EXPECT_STREQ(Text(sum), "mno");
    EXPECT_STREQ(Text("<" + sum), "<mno");
    CString shared = null + sum;
    EXPECT_EQ(Text(shared), Text(sum));
    CString same = sum + null;
    EXPECT_EQ(Text(same), Text(sum));
    CString fromEmpty = empty + sum;
    EXPECT_EQ(Text(fromEmpty), Text(sum));
}

TEST(String, FindAndReverseFind) {
    CString s("abcabc");
    EXPECT_EQ(s.Find("bc", 6), -1);
    EXPECT_EQ(s.Find(CString("ca")), 2);
    EXPECT_EQ(s.Find('c', 3), 5);
    EXPECT_EQ(s.ReverseFind('a', 0), 3);
    // Probes step back by the needle's length and never probe `start` itself.
    EXPECT_EQ(CString("abc").ReverseFind("abc", 0), -1);
    EXPECT_EQ(s.ReverseFind("abc", 0), 3);
    EXPECT_EQ(s.ReverseFind("abc", 3), -1);
    EXPECT_EQ(CString("abcab").ReverseFind("abc", 0), -1);
    EXPECT_EQ(CString("xxabxx").ReverseFind("ab", 0), 2);
    EXPECT_EQ(CString("xxxABx").ReverseFindIgnoreCase(CString("ab"), 0), 3);
    EXPECT_EQ(s.ReverseFind("abcdefg", 0), -1);
}

TEST(String, AppendAndInsert) {
    CString s;
    CString tail("tail");
    s += tail;
    EXPECT_EQ(Text(s), Text(tail));
    s += "!";
    EXPECT_STREQ(Text(s), "tail!");
    EXPECT_STREQ(Text(tail), "tail");
    s += static_cast<const char*>(nullptr);
    s += CString();
    s += s;
    EXPECT_STREQ(Text(s), "tail!tail!");
    EXPECT_EQ(s.GetLength(), 10u);

    // On an empty string Insert stores the character but leaves the length at 0.
    CString empty;
    EXPECT_EQ(empty.Insert(5, 'x'), 1u);
    EXPECT_EQ(empty.GetLength(), 0u);
    EXPECT_TRUE(empty.IsEmpty());
    EXPECT_STREQ(Text(empty), "");
    empty += "y";
    EXPECT_STREQ(Text(empty), "y");

    CString word("word");
    CString keep(word);
    EXPECT_EQ(word.Insert(0, '['), 5u);
    EXPECT_EQ(word.Insert(99, ']'), 6u);
    EXPECT_EQ(word.Insert(1, "a "), 8u);
    EXPECT_EQ(word.Insert(1, ""), 8u);
    EXPECT_STREQ(Text(word), "[a word]");
    EXPECT_STREQ(Text(keep), "word");
    CString fresh;
    EXPECT_EQ(fresh.Insert(3, "new"), 3u);
    EXPECT_STREQ(Text(fresh), "new");
}

TEST(String, DeleteRemoveReplace) {
    CString s("abc");
    EXPECT_EQ(s.Delete(1, 1), 3u);
    EXPECT_STREQ(Text(s), "ac");
    EXPECT_EQ(s.Delete(2, 1), 2u);
    EXPECT_EQ(s.Delete(0, 0), 2u);
    EXPECT_EQ(CString().Delete(0, 1), 0u);
    // A count past the end deletes to the end.
    CString longer("abcdef");
    EXPECT_EQ(longer.Delete(2, 100), 6u);
    EXPECT_STREQ(Text(longer), "ab");
    EXPECT_EQ(longer.GetLength(), 2u);

    CString r("a-b-\xc3\xa9-");
    CString before(r);
    EXPECT_EQ(r.Remove('-'), 3u);
    EXPECT_STREQ(Text(r), "ab\xc3\xa9");
    EXPECT_EQ(r.GetLength(), 4u);
    EXPECT_STREQ(Text(before), "a-b-\xc3\xa9-");
    EXPECT_EQ(CString().Remove('a'), 0u);
    EXPECT_EQ(r.Replace('b', 'B'), 1u);
    EXPECT_EQ(r.Replace('b', 'b'), 0u);
    EXPECT_STREQ(Text(r), "aB\xc3\xa9");

    CString text("one two one two one");
    EXPECT_EQ(text.Replace("one", "three"), 3u);
    EXPECT_STREQ(Text(text), "three two three two three");
    EXPECT_EQ(text.GetLength(), 25u);
    EXPECT_EQ(text.Replace("three", static_cast<const char*>(nullptr)), 3u);
    EXPECT_STREQ(Text(text), " two  two ");
    EXPECT_EQ(text.Replace("x", "y"), 0u);
    EXPECT_EQ(text.Replace("", "y"), 0u);
    // The replacement isn't searched again.
    CString again("aa");
    EXPECT_EQ(again.Replace("a", "aa"), 2u);
    EXPECT_STREQ(Text(again), "aaaa");
    // Text behind an embedded zero byte is searched too.
    CString zero("abXab");
    zero.SetAt(2, '\0');
    EXPECT_EQ(zero.Replace("ab", "xyz"), 2u);
    EXPECT_EQ(zero.GetLength(), 7u);
    EXPECT_EQ(Bytes(zero), std::string("xyz\0xyz", 7));
}

TEST(String, CaseAndReverse) {
    CString s("h\xc3\xa9llo \xc4\xb1!");
    CString shared(s);
    s.MakeUpper();
    // "ı" would become the one-byte "I" and stays.
    EXPECT_STREQ(Text(s), "H\xc3\x89LLO \xc4\xb1!");
    EXPECT_STREQ(Text(shared), "h\xc3\xa9llo \xc4\xb1!");
    s.MakeLower();
    EXPECT_STREQ(Text(s), "h\xc3\xa9llo \xc4\xb1!");
    CString r("a\xc3\xa9\xe2\x82\xac\xf0\x9f\x98\x80z");
    r.MakeReverse();
    EXPECT_STREQ(Text(r), "z\xf0\x9f\x98\x80\xe2\x82\xac\xc3\xa9"
                          "a");
    CString empty;
    empty.MakeReverse();
    empty.MakeUpper();
    EXPECT_TRUE(empty.IsEmpty());
}

TEST(String, Trimming) {
    CString s(" \t lead and trail \n ");
    CString shared(s);
    s.TrimLeft();
    EXPECT_STREQ(Text(s), "lead and trail \n ");
    EXPECT_EQ(s.GetLength(), 17u);
    s.TrimRight();
    EXPECT_STREQ(Text(s), "lead and trail");
    EXPECT_EQ(s.GetLength(), 14u);
    EXPECT_STREQ(Text(shared), " \t lead and trail \n ");
    // Every TrimRight with an argument strips at the left end.
    CString x("xaxx");
    x.TrimRight('x');
    EXPECT_STREQ(Text(x), "axx");
    CString set("\xc3\xa9-\xc3\xa9"
                "a-");
    set.TrimLeft("-\xc3\xa9");
    EXPECT_STREQ(Text(set), "a-");
    CString fromSet("..ab");
    fromSet.TrimRight(CString("."));
    EXPECT_STREQ(Text(fromSet), "ab");
    fromSet.TrimLeft("");
    fromSet.TrimLeft(static_cast<const char*>(nullptr));
    EXPECT_STREQ(Text(fromSet), "ab");
    // Trimming everything empties the string and keeps its buffer.
    const unsigned int used = StringBlockPool(64)->GetUsedCount();
    CString blank("   ");
    blank.TrimRight();
    EXPECT_TRUE(blank.IsEmpty());
    EXPECT_EQ(StringBlockPool(64)->GetUsedCount(), used + 1);
    CString all("aaa");
    all.TrimLeft('a');
    EXPECT_TRUE(all.IsEmpty());
    CString none("abc");
    none.TrimLeft('\0');
    EXPECT_STREQ(Text(none), "abc");
}

TEST(String, Substrings) {
    CString s("abcd");
    EXPECT_STREQ(Text(s.Mid(1, 2)), "bc");
    EXPECT_STREQ(Text(s.Mid(2)), "cd");
    EXPECT_TRUE(s.Mid(4).IsEmpty());
    EXPECT_TRUE(s.Mid(1, -1).IsEmpty());
    EXPECT_STREQ(Text(s.SubString(1, 100)), "bcd");
    EXPECT_TRUE(s.SubString(2, 2).IsEmpty());
    EXPECT_STREQ(Text(s.Left(2)), "ab");
    CString whole = s.Left(4);
    EXPECT_EQ(Text(whole), Text(s));
    // Right starts one byte early.
    EXPECT_STREQ(Text(CString("abcde").Right(2)), "cd");
    EXPECT_STREQ(Text(s.Right(3)), "abc");
    CString right = s.Right(9);
    EXPECT_EQ(Text(right), Text(s));
    EXPECT_TRUE(CString().Right(1).IsEmpty());
    EXPECT_TRUE(CString().Left(1).IsEmpty());
    // A byte range that ends inside a character stops before it.
    CString accented("a\xc3\xa9z");
    EXPECT_STREQ(Text(accented.SubString(0, 2)), "a");
}

TEST(String, NoMemoryLeavesTheStringAsItWas) {
    CString big(std::string(1500, 'b').c_str());
    const char* before = big;
    ExpectMemoryException(
        [&] {
            FailAllocation fail(1);
            big += "more";
        },
        "vorn/base/String", 1967);
    EXPECT_EQ(Text(big), before);
    EXPECT_EQ(big.GetLength(), 1500u);
    ExpectMemoryException(
        [&] {
            FailAllocation fail(1);
            big.MakeReverse();
        },
        "vorn/base/String", 688);
    EXPECT_EQ(Bytes(big), std::string(1500, 'b'));

    // A new buffer above 1024 that the system refuses: the string ends up null.
    CString target("small");
    std::string text(2000, 't');
    try {
        FailAllocation fail(1);
        target = text.c_str();
        ADD_FAILURE() << "no exception";
    } catch (const CMemoryException& e) {
        EXPECT_STREQ(e.GetSourceFile(), "vorn/base/String");
    }
    EXPECT_TRUE(target.IsEmpty());
    target = text.c_str();
    EXPECT_EQ(target.GetLength(), 2000u);
}

TEST(String, NoMemoryInAPoolThatMustGrow) {
    vorn::base::FixBlockAllocator* pool = StringBlockPool(128);
    std::vector<void*> drained;
    while (pool->GetFreeCount() > 0)
        drained.push_back(pool->Allocate());
    const unsigned int used = pool->GetUsedCount();
    CString s("short");
    const char* before = s;
    ExpectMemoryException(
        [&] {
            FailAllocation fail(1);
            s.EnsureCapacity(100);
        },
        "vorn/base/FixBlockAllocator", 109);
    EXPECT_EQ(Text(s), before);
    EXPECT_EQ(pool->GetUsedCount(), used);
    EXPECT_EQ(pool->GetFreeCount(), 0u);
    s.EnsureCapacity(100);
    EXPECT_EQ(HeaderOf(s).capacity, 128u);
    EXPECT_STREQ(Text(s), "short");
    for (void* block : drained)
        pool->Release(block);
}

TEST(String, FormatRetriesOnlyAtExactly1023) {
    CString s("keep");
    s.Format(nullptr);
    EXPECT_STREQ(Text(s), "keep");
    s.Format("%d-%s-%c", 42, "x", 'y');
    EXPECT_STREQ(Text(s), "42-x-y");
    // A buffer of the result's tier is ready, so a failure below can only be the formatter's.
    { CString warm(std::string(1000, 'w').c_str()); }

    const std::string exact(1023, 'e');
    s.Format("%s", exact.c_str());
    EXPECT_EQ(Bytes(s), exact);
    ExpectMemoryException(
        [&] {
            FailAllocation fail(1);
            s.Format("%s", "short");
        },
        "vorn/base/String", 1763);
    ExpectMemoryException(
        [&] {
            FailAllocation fail(2);
            s.Format("%s", exact.c_str());
        },
        "vorn/base/String", 1780);
    EXPECT_EQ(Bytes(s), exact);
    {
        FailAllocation fail(2);
        s.Format("%s", std::string(1022, 'f').c_str());
    }
    EXPECT_EQ(s.GetLength(), 1022u);

    // Output that fills the block exactly, or doesn't fit, gets no retry and stops at its end.
    const std::string full(1024, 'g');
    s.Format("%s", full.c_str());
    EXPECT_EQ(Bytes(s), full);
    s.Format("%s!", std::string(2046, 'h').c_str());
    EXPECT_EQ(Bytes(s), std::string(1024, 'h'));
}

} // namespace

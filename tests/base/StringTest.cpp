#include <gtest/gtest.h>

#include <string>

#include <vorn/base/String.h>

#include "support/AllocFailure.h"
#include "support/Throws.h"
#include "support/Utf16.h"
#include "vorn/base/FixBlockAllocator.h"

namespace {

using vorn::base::CString;
using vorn::base::StringBlockPool;
using vorn::test::CountAllocations;
using vorn::test::ExpectNoMemory;
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

TEST(String, NullAndEmptyBuffersAreBothEmpty) {
    CString none, blank(""), text("abc");
    EXPECT_EQ(sizeof(CString), sizeof(char*));
    EXPECT_TRUE(none.IsEmpty() && blank.IsEmpty());
    EXPECT_STREQ(Text(none), "");
    EXPECT_TRUE(none == blank);
    EXPECT_FALSE(none == "" || blank == "");
    EXPECT_TRUE(none == static_cast<const char*>(nullptr));
    EXPECT_FALSE(text == static_cast<const char*>(nullptr) || text == none);
    // "" takes a buffer of its own.
    const unsigned int used = StringBlockPool(64)->GetUsedCount();
    CString another("");
    EXPECT_EQ(StringBlockPool(64)->GetUsedCount(), used + 1);
    EXPECT_EQ(text[5], '\0');
}

TEST(String, ConstructorsFromTextAndWideText) {
    // The counted form copies whole characters that fit and keeps the full length, through
    // copies and appends.
    CString cut("abcdef", 3);
    EXPECT_STREQ(Text(cut), "abc");
    EXPECT_EQ(cut.GetLength(), 6u);
    CString split("a\xc3\xa9z", 2);
    EXPECT_STREQ(Text(split), "a");
    EXPECT_EQ(split.GetLength(), 4u);
    CString appended(cut);
    appended += "XY";
    EXPECT_STREQ(Text(appended), "abcXY");
    EXPECT_EQ(appended.GetLength(), 8u);

    EXPECT_EQ(Bytes(CString(W(u"h\u00e9\U0001F600").c_str())), "h\xc3\xa9\xf0\x9f\x98\x80");
    EXPECT_EQ(Bytes(CString(W(u"h\u00e9llo").c_str(), 2)), "h\xc3\xa9");
}

TEST(String, CopiesShareUntilAChange) {
    CString s("shared text");
    CString t(s);
    EXPECT_EQ(HeaderOf(s).references, 2u);
    EXPECT_EQ(CountAllocations([&] { CString u(s); }), 0u);
    s.SetAt(0, 'S');
    EXPECT_STREQ(Text(t), "shared text");
    // MakeReverse works in the shared buffer; MakeUpper unshares.
    CString u(t), v(t);
    u.MakeReverse();
    EXPECT_STREQ(Text(t), "txet derahs");
    v.MakeUpper();
    EXPECT_STREQ(Text(t), "txet derahs");
    // Empty only lets go of a shared buffer.
    CString w(t);
    EXPECT_EQ(HeaderOf(t).references, 3u);
    w.Empty();
    EXPECT_EQ(HeaderOf(t).references, 2u);
}

TEST(String, TiersAndBufferReuse) {
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
    // Empty keeps a private buffer for the next text.
    const char* kept = big;
    big.Empty();
    big = "again";
    EXPECT_EQ(Text(big), kept);
}

TEST(String, AssignmentsSetAndTheirOwnText) {
    CString s;
    const unsigned int used = StringBlockPool(64)->GetUsedCount();
    // Unlike the constructor, the assignment of null leaves a buffer of length 0.
    s = static_cast<const char*>(nullptr);
    EXPECT_TRUE(s.IsEmpty());
    EXPECT_EQ(StringBlockPool(64)->GetUsedCount(), used + 1);
    s.Set("h\xc3\xa9llo", 2);
    EXPECT_EQ(Bytes(s), "h");
    // Pieces of the string's own text, short or with a count past its end.
    s = "abcdef";
    s = Text(s) + 2;
    s.Set(Text(s) + 1, 5000);
    EXPECT_STREQ(Text(s), "def");
    s += Text(s);
    EXPECT_EQ(s.Insert(3, Text(s) + 4), 8u);
    EXPECT_STREQ(Text(s), "defefdef");

    // SetAt past the text does nothing; a shared string whose length ran past its text measures
    // it anew when unshared.
    s.SetAt(8, 'x');
    EXPECT_STREQ(Text(s), "defefdef");
    CString cut("abcdef", 2), other(cut);
    other.SetAt(4, 'x');
    EXPECT_EQ(other.GetLength(), 2u);
    EXPECT_EQ(cut.GetLength(), 6u);
}

TEST(String, EmptyOrdersFirstAndNullEqualsIt) {
    CString none, a("apple");
    EXPECT_EQ(none.Compare(static_cast<const char*>(nullptr)), 0);
    EXPECT_EQ(none.Compare(""), -1);
    EXPECT_EQ(a.Compare(static_cast<const char*>(nullptr)), 1);
    EXPECT_FALSE(a.StartsWith(CString()));

    // Each row: <, <=, >, >=. Texts on both sides meet a model in StringDifferentialTest.cpp.
    const char* null = nullptr;
    CString empty, text("m");
    auto row = [](bool lt, bool le, bool gt, bool ge) { return std::string{lt, le, gt, ge}; };
    auto ops = [&](const auto& x, const auto& y) { return row(x<y, x <= y, x> y, x >= y); };
    const std::string less = row(1, 1, 0, 0), equal = row(0, 1, 0, 1), more = row(0, 0, 1, 1);
    EXPECT_EQ(ops(empty, null), equal);
    EXPECT_EQ(ops(empty, ""), less);
    EXPECT_EQ(ops(text, null), more);
    EXPECT_EQ(ops(null, text), less);
    EXPECT_EQ(ops("", empty), more);
    EXPECT_EQ(ops("l", text), less);

    // A sum with an empty side shares the other's buffer.
    CString sum = "<" + text + CString("n") + "o";
    EXPECT_STREQ(Text(sum), "<mno");
    EXPECT_EQ(Text(null + sum), Text(sum));
}

TEST(String, AppendInsertDelete) {
    CString s, tail("tail");
    s += tail;
    EXPECT_EQ(Text(s), Text(tail));
    s += "!";
    s += s;
    EXPECT_STREQ(Text(s), "tail!tail!");
    EXPECT_STREQ(Text(tail), "tail");

    // On an empty string Insert stores the character but leaves the length at 0.
    CString empty;
    EXPECT_EQ(empty.Insert(5, 'x'), 1u);
    EXPECT_TRUE(empty.IsEmpty());
    empty += "y";
    EXPECT_STREQ(Text(empty), "y");
    CString word("word"), keep(word);
    EXPECT_EQ(word.Insert(0, '['), 5u);
    EXPECT_EQ(word.Insert(99, ']'), 6u);
    EXPECT_EQ(word.Insert(1, "a "), 8u);
    EXPECT_STREQ(Text(word), "[a word]");
    EXPECT_STREQ(Text(keep), "word");

    // Delete returns the length before; a count past the end deletes to the end.
    CString d("abcdef");
    EXPECT_EQ(d.Delete(1, 1), 6u);
    EXPECT_EQ(d.Delete(2, 100), 5u);
    EXPECT_STREQ(Text(d), "ac");
    EXPECT_EQ(d.GetLength(), 2u);
}

TEST(String, RemoveReplaceAndReverse) {
    CString r("a-b-\xc3\xa9-"), before(r);
    EXPECT_EQ(r.Remove('-'), 3u);
    EXPECT_STREQ(Text(r), "ab\xc3\xa9");
    EXPECT_EQ(r.GetLength(), 4u);
    EXPECT_STREQ(Text(before), "a-b-\xc3\xa9-");
    EXPECT_EQ(r.Replace('b', 'b'), 0u);

    CString text("one two one two one");
    EXPECT_EQ(text.Replace("one", "three"), 3u);
    EXPECT_EQ(text.Replace("three", static_cast<const char*>(nullptr)), 3u);
    EXPECT_STREQ(Text(text), " two  two ");
    EXPECT_EQ(text.Replace("", "y"), 0u);
    // The replacement isn't searched again, and text behind a stored zero byte is.
    CString again("aa");
    EXPECT_EQ(again.Replace("a", "aa"), 2u);
    EXPECT_STREQ(Text(again), "aaaa");
    CString zero("abXab");
    zero.SetAt(2, '\0');
    EXPECT_EQ(zero.Replace("ab", "xyz"), 2u);
    EXPECT_EQ(Bytes(zero), std::string("xyz\0xyz", 7));

    CString chars("a\xc3\xa9\xe2\x82\xac\xf0\x9f\x98\x80z");
    chars.MakeReverse();
    EXPECT_STREQ(Text(chars), "z\xf0\x9f\x98\x80\xe2\x82\xac\xc3\xa9"
                              "a");
}

TEST(String, Trimming) {
    CString s(" \t lead and trail \n "), shared(s);
    s.TrimLeft();
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
    // Trimming everything empties the string and keeps its buffer.
    const unsigned int used = StringBlockPool(64)->GetUsedCount();
    CString blank("   ");
    blank.TrimRight();
    EXPECT_TRUE(blank.IsEmpty());
    EXPECT_EQ(StringBlockPool(64)->GetUsedCount(), used + 1);
}

TEST(String, Substrings) {
    CString s("abcd");
    EXPECT_STREQ(Text(s.Mid(1, 2)), "bc");
    EXPECT_TRUE(s.Mid(4).IsEmpty());
    EXPECT_TRUE(s.Mid(1, -1).IsEmpty());
    EXPECT_STREQ(Text(s.SubString(1, 100)), "bcd");
    EXPECT_TRUE(s.SubString(2, 2).IsEmpty());
    EXPECT_EQ(Text(s.Left(4)), Text(s));
    // Right starts one byte early.
    EXPECT_STREQ(Text(CString("abcde").Right(2)), "cd");
    EXPECT_STREQ(Text(s.Right(3)), "abc");
    EXPECT_EQ(Text(s.Right(9)), Text(s));
    // A byte range that ends inside a character stops before it.
    EXPECT_STREQ(Text(CString("a\xc3\xa9z").SubString(0, 2)), "a");
}

TEST(String, NoMemoryLeavesTheStringAsItWas) {
    CString big(std::string(1500, 'b').c_str());
    const char* before = big;
    ExpectNoMemory([&] { big += "more"; }, "vorn/base/String", 1967);
    ExpectNoMemory([&] { big.MakeReverse(); }, "vorn/base/String", 688);
    EXPECT_EQ(Text(big), before);
    EXPECT_EQ(Bytes(big), std::string(1500, 'b'));

    // A new buffer above 1024 that the system refuses: the string ends up null.
    CString target("small");
    std::string text(2000, 't');
    ExpectNoMemory([&] { target = text.c_str(); }, "vorn/base/String");
    EXPECT_TRUE(target.IsEmpty());
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
    ExpectNoMemory([&] { s.Format("%s", "short"); }, "vorn/base/String", 1763);
    ExpectNoMemory([&] { s.Format("%s", exact.c_str()); }, "vorn/base/String", 1780, 2);
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

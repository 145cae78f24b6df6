#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <vorn/base/ArrayIndexOutOfBoundsException.h>
#include <vorn/base/MemoryException.h>
#include <vorn/util/NoSuchElementException.h>
#include <vorn/util/StringVectorH.h>

#include "support/AllocFailure.h"
#include "support/Throws.h"

namespace {

using vorn::base::CArrayIndexOutOfBoundsException;
using vorn::base::CMemoryException;
using vorn::base::CString;
using vorn::test::CountAllocations;
using vorn::test::ExpectThrow;
using vorn::test::FailAllocation;
using vorn::util::CStringVectorH;
using Strings = std::vector<std::string>;

constexpr const char* kSource = "vorn/util/StringVectorH";

Strings Contents(CStringVectorH& v) {
    Strings out;
    for (unsigned int i = 0; i < v.GetSize(); ++i)
        out.emplace_back(static_cast<const char*>(v[i]));
    return out;
}

CStringVectorH Of(std::initializer_list<const char*> texts, unsigned int dataCapacity = 512) {
    CStringVectorH v(dataCapacity, 8);
    for (const char* text : texts)
        v.AddElement(text);
    return v;
}

TEST(StringVectorH, TwoBlocksWhateverTheCount) {
    CStringVectorH v(0, 0, 0, 0);
    std::vector<CString> texts;
    for (int i = 0; i < 100; ++i)
        texts.emplace_back(("text" + std::to_string(1000 + i)).c_str());
    // 100 texts of 9 bytes: the data grows in its 256-byte steps, the index one offset at a time.
    EXPECT_EQ(CountAllocations([&] {
                  for (const CString& text : texts)
                      v.AddElement(text);
              }),
              4u + 100u);
    EXPECT_EQ(v.GetLastIndexOf("text1099"), 99);
    EXPECT_EQ(v.GetIndexOf("text1"), -1);
    // An empty text is one zero byte, and is found by an empty argument.
    v.InsertElementAt(CString(), 100);
    EXPECT_EQ(v.GetIndexOf(""), 100);
    CStringVectorH copy(v), assigned;
    assigned = v;
    EXPECT_EQ(Contents(copy), Contents(v));
    EXPECT_EQ(Contents(assigned), Contents(v));
    assigned = CStringVectorH();
    EXPECT_TRUE(assigned.IsEmpty());
    ExpectThrow<vorn::util::CNoSuchElementException>([&] { assigned.GetFirstElement(); }, kSource);
}

TEST(StringVectorH, RemovalsKeepTheirOddRules) {
    CStringVectorH v = Of({"a", "bb", "c"});
    v.RemoveElementAt(1);
    EXPECT_EQ(Contents(v), (Strings{"a", "c"}));
    // The last one goes from the data, not from the count: its offset now marks the end.
    v.RemoveElementAt(1);
    EXPECT_EQ(v.GetSize(), 2u);
    v.AddElement("d");
    EXPECT_EQ(Contents(v), (Strings{"a", "d", "d"}));
    v.RemoveElement("absent");
    v.RemoveElement("a");
    EXPECT_EQ(Contents(v), (Strings{"d", "d"}));
    ExpectThrow<CArrayIndexOutOfBoundsException>([&] { v.RemoveElementAt(2); }, kSource);
    v.RemoveAllElements();
    EXPECT_TRUE(v.IsEmpty());
    // A text set to "" leaves a slot of no bytes, and then a copy with no data block at all.
    CStringVectorH emptied = Of({"a", "b"});
    emptied.SetElementAt(0, "");
    emptied.RemoveElementAt(1);
    CStringVectorH bare(emptied);
    bare.RemoveElementAt(0);
    EXPECT_EQ(Contents(bare), (Strings{""}));
}

TEST(StringVectorH, SetElementAtMovesByTheNewLength) {
    // The texts behind move from the new end to the old one, by a length without its zero byte.
    CStringVectorH same = Of({"ab", "cd", "ef"});
    same.SetElementAt(0, "xy");
    EXPECT_EQ(Contents(same), (Strings{"xy", "", "d"}));
    CStringVectorH shorter = Of({"ab", "cd", "ef"});
    shorter.SetElementAt(0, "x");
    EXPECT_EQ(Contents(shorter), (Strings{"x", "", ""}));
    // The last text is written in place and the data size stays, so the next text lands on its
    // terminator.
    CStringVectorH last = Of({"ab", "cd"});
    last.SetElementAt(1, "xyz");
    EXPECT_EQ(Contents(last), (Strings{"ab", "xyz"}));
    last.AddElement("q");
    EXPECT_EQ(Contents(last), (Strings{"ab", "xyzq", "q"}));
    // Room for the terminator it writes, even where the amount ensured leaves none.
    CStringVectorH tight(3, 1, 2, 1);
    tight.AddElement("ab");
    tight.SetElementAt(0, "abcdefg");
    EXPECT_EQ(Contents(tight), (Strings{"abcdefg"}));
    ExpectThrow<CArrayIndexOutOfBoundsException>([&] { tight.SetElementAt(1, "x"); }, kSource);
}

TEST(StringVectorHDeathTest, InsertBelowTheEndEndsTheProcess) {
    CStringVectorH v = Of({"a", "b"});
    EXPECT_DEATH(v.InsertElementAt("z", 0), "");
}

TEST(StringVectorH, InsertCarriesOnOnlyAfterAFailedAllocation) {
    // Data of 8 bytes: "a", "b" fill 4, and "zzzzz" needs 6 more.
    CStringVectorH front = Of({"a", "b"}, 8);
    {
        FailAllocation fail(1);
        front.InsertElementAt("zzzzz", 0);
    }
    EXPECT_EQ(Contents(front), (Strings{"zzzzz", "a", "b"}));
    // Below it stores its offset negated, which no read can follow.
    CStringVectorH middle = Of({"a", "b"}, 8);
    {
        FailAllocation fail(1);
        middle.InsertElementAt("zzzzz", 1);
    }
    EXPECT_EQ(middle.GetSize(), 3u);
    EXPECT_STREQ(middle[2], "b");
    ExpectThrow<CArrayIndexOutOfBoundsException>([&] { middle[1]; }, kSource);
    // With no memory at all it fails where the moved data would need room, and changes nothing.
    CStringVectorH none = Of({"a", "b"}, 8);
    EXPECT_THROW(
        {
            FailAllocation fail(1, true);
            none.InsertElementAt("zzzzz", 1);
        },
        CMemoryException);
    EXPECT_EQ(Contents(none), (Strings{"a", "b"}));
    ExpectThrow<CArrayIndexOutOfBoundsException>([&] { none.InsertElementAt("x", 3); }, kSource);
}

TEST(StringVectorH, AFailedAllocationEmptiesTheVector) {
    for (unsigned long nth : {1ul, 2ul}) {
        // The data grows first, the index second; either failure leaves an empty, usable vector.
        CStringVectorH v(2, 2, 1, 1);
        v.AddElement("a");
        vorn::test::ExpectNoMemory([&] { v.AddElement("b"); }, kSource, 0, nth);
        EXPECT_TRUE(v.IsEmpty());
        v.AddElement("c");
        EXPECT_EQ(Contents(v), (Strings{"c"}));
    }
    vorn::test::ExpectNoMemory([] { CStringVectorH v(16, 8, 4, 4); }, kSource, 0, 2);
}

} // namespace

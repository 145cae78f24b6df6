#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <vorn/base/IllegalArgumentException.h>
#include <vorn/base/MemoryException.h>
#include <vorn/base/NullReferenceException.h>
#include <vorn/util/Hashtable.h>
#include <vorn/util/NoSuchElementException.h>
#include <vorn/util/StringHashtable.h>

#include "support/AllocFailure.h"
#include "support/Throws.h"

namespace {

using vorn::base::CMemoryException;
using vorn::base::CString;
using vorn::test::ExpectThrow;
using vorn::test::FailAllocation;
using vorn::util::CHashtable;
using vorn::util::CNoSuchElementException;
using vorn::util::CStringHashtable;
using vorn::util::GetLongHashCode;

std::vector<std::string> Keys(const CStringHashtable<int>& table) {
    std::vector<std::string> out;
    for (auto e = table.GetKeys(); e->HasMoreElements();)
        out.emplace_back(static_cast<const char*>(e->GetNextElement()));
    return out;
}

TEST(Hashtable, ConstructionPutGetRemoveAndGrowth) {
    CHashtable<int, int> byDefault(GetLongHashCode, -4, -1.0f);
    EXPECT_EQ(byDefault.GetCapacity(), 101u);
    EXPECT_EQ(byDefault.GetThreshold(), 75u);
    ExpectThrow<vorn::base::CNullReferenceException>([] { CHashtable<int, int> none(nullptr); },
                                                     "vorn/util/Hashtable");

    CHashtable<int, int> table(GetLongHashCode, 3, 1.0f);
    int old = 0;
    EXPECT_FALSE(table.Put(1, 10));
    EXPECT_TRUE(table.Put(1, 11, &old));
    EXPECT_EQ(old, 10);
    // 3 buckets hold 3 keys; the fourth grows them to 7, the eighth to 15.
    for (int k = 2; k <= 8; ++k)
        table.Put(k * 7, k);
    EXPECT_EQ(table.GetCapacity(), 15u);
    EXPECT_EQ(table.Get(56), 8);
    EXPECT_EQ(table.Remove(1), 11);
    ExpectThrow<CNoSuchElementException>([&] { table.Get(1); }, "vorn/util/Hashtable");
    ExpectThrow<CNoSuchElementException>([&] { table.Remove(1); }, "vorn/util/Hashtable");
    table.Empty();
    EXPECT_EQ(table.GetCapacity(), 15u);

    CHashtable<CString, int> named(vorn::util::GetCStringHashCode);
    ExpectThrow<vorn::base::CIllegalArgumentException>([&] { named.Put(CString(""), 1); },
                                                       "vorn/util/Hashtable", "Invalid key.");
}

TEST(Hashtable, FailedAllocationsChangeNothing) {
    CHashtable<int, int> table(GetLongHashCode, 1, 1.0f);
    table.Put(1, 1);
    for (unsigned long n = 1; n <= 2; ++n) { // the growth's buckets, then the entry
        vorn::test::ExpectNoMemory([&] { table.Put(2, 2); }, "vorn/util/Hashtable", 0, n);
        EXPECT_EQ(table.GetSize(), 1u);
    }
    CHashtable<int, int> other(GetLongHashCode);
    for (int k = 0; k < 5; ++k)
        other.Put(k, k);
    for (unsigned long n = 1; n <= 6; ++n) {
        FailAllocation fail(n);
        EXPECT_THROW(table = other, CMemoryException);
        EXPECT_EQ(table.Get(1), 1);
        EXPECT_EQ(table.GetSize(), 1u);
    }
}

TEST(StringHashtable, TheFirstThresholdComesFromTheFactorAsPassed) {
    CStringHashtable<int> small;
    EXPECT_EQ(small.GetCapacity(), 11u);
    EXPECT_EQ(small.GetThreshold(), 8u);
    CStringHashtable<int> zero(0, 0.0f);
    EXPECT_EQ(zero.GetThreshold(), 0u);
    zero.Put("a", 1);
    EXPECT_EQ(zero.GetCapacity(), 23u);
    EXPECT_EQ(zero.GetThreshold(), 17u);
}

TEST(StringHashtable, EnumerationOrderCopiesAndEquality) {
    // "a" (97) and "l" (108) share bucket 9 of 11; "b" (98) has bucket 10.
    CStringHashtable<int> table;
    table.Put("b", 1);
    table.Put("a", 2);
    table.Put("l", 3);
    EXPECT_EQ(Keys(table), (std::vector<std::string>{"l", "a", "b"}));
    CStringHashtable<int> copy(table), wide(101);
    EXPECT_EQ(Keys(copy), (std::vector<std::string>{"a", "l", "b"}));
    wide = table;
    EXPECT_TRUE(copy == table && wide == table);
    wide.Put("a", 5);
    EXPECT_TRUE(wide != table);

    auto e = table.GetKeys();
    EXPECT_STREQ(e->GetNextElement(), "l");
    // Removing the entry under the walk doesn't leave it standing on freed memory.
    table.Remove("l");
    table.Remove("b");
    EXPECT_FALSE(e->HasMoreElements());
    ExpectThrow<CNoSuchElementException>([&] { e->GetNextElement(); }, "vorn/util/StringHashtable");
}

TEST(StringHashtable, MovesAndFailedCopies) {
    CStringHashtable<int> table;
    table.Put("x", 1);
    CStringHashtable<int> moved(std::move(table));
    // The emptied source grows again from no buckets.
    EXPECT_EQ(table.GetCapacity(), 0u);
    EXPECT_FALSE(table.ContainsKey("x"));
    table.Put("y", 2);
    EXPECT_EQ(table.GetCapacity(), 3u);
    for (unsigned long n = 1; n <= 2; ++n) {
        vorn::test::ExpectNoMemory([&] { CStringHashtable<int> copy(moved); },
                                   "vorn/util/StringHashtable", 0, n);
        vorn::test::ExpectNoMemory([&] { table = moved; }, "vorn/util/StringHashtable", 0, n);
    }
    EXPECT_EQ(Keys(table), (std::vector<std::string>{"y"}));
}

} // namespace

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

using vorn::base::CIllegalArgumentException;
using vorn::base::CMemoryException;
using vorn::base::CString;
using vorn::test::ExpectThrow;
using vorn::test::FailAllocation;
using vorn::util::CHashtable;
using vorn::util::CNoSuchElementException;
using vorn::util::CStringHashtable;
using vorn::util::GetCStringHashCode;
using vorn::util::GetLongHashCode;

template <typename V> std::vector<std::string> Keys(const CStringHashtable<V>& table) {
    std::vector<std::string> out;
    for (auto e = table.GetKeys(); e->HasMoreElements();)
        out.emplace_back(static_cast<const char*>(e->GetNextElement()));
    return out;
}

TEST(Hashtable, ConstructionReplacesBadArguments) {
    CHashtable<int, int> byDefault(GetLongHashCode);
    EXPECT_EQ(byDefault.GetCapacity(), 101u);
    EXPECT_EQ(byDefault.GetThreshold(), 75u);
    CHashtable<int, int> negative(GetLongHashCode, -4, -1.0f);
    EXPECT_EQ(negative.GetCapacity(), 101u);
    EXPECT_EQ(negative.GetLoadFactor(), 0.75f);
    EXPECT_EQ(negative.GetThreshold(), 75u);
    CHashtable<int, int> half(GetLongHashCode, 10, 0.5f);
    EXPECT_EQ(half.GetThreshold(), 5u);
    ExpectThrow<vorn::base::CNullReferenceException>([] { CHashtable<int, int> none(nullptr); },
                                                     "vorn/util/Hashtable");
}

TEST(Hashtable, PutGetRemoveAndGrowth) {
    CHashtable<int, int> table(GetLongHashCode, 3, 1.0f);
    int old = 0;
    EXPECT_FALSE(table.Put(1, 10));
    EXPECT_TRUE(table.Put(1, 11, &old));
    EXPECT_EQ(old, 10);
    // 3 buckets hold 3 keys; the fourth grows them to 7, then 15.
    for (int k = 2; k <= 8; ++k)
        table.Put(k * 7, k);
    EXPECT_EQ(table.GetSize(), 8u);
    EXPECT_EQ(table.GetCapacity(), 15u);
    EXPECT_EQ(table.GetThreshold(), 15u);
    for (int k = 2; k <= 8; ++k)
        EXPECT_EQ(table.Get(k * 7), k);
    EXPECT_EQ(table.Remove(1), 11);
    EXPECT_FALSE(table.ContainsKey(1));
    ExpectThrow<CNoSuchElementException>([&] { table.Get(1); }, "vorn/util/Hashtable");
    ExpectThrow<CNoSuchElementException>([&] { table.Remove(1); }, "vorn/util/Hashtable");
    table.Empty();
    EXPECT_TRUE(table.IsEmpty());
    EXPECT_EQ(table.GetCapacity(), 15u);
}

TEST(Hashtable, StringKeysRefuseTheEmptyKey) {
    CHashtable<CString, int> table(GetCStringHashCode);
    ExpectThrow<CIllegalArgumentException>([&] { table.Put(CString(""), 1); },
                                           "vorn/util/Hashtable", "Invalid key.");
    ExpectThrow<CIllegalArgumentException>([&] { table.Remove(CString()); }, "vorn/util/Hashtable",
                                           "Invalid key.");
    table.Put(CString("UTF-8"), 8);
    EXPECT_EQ(table.Get(CString("UTF-8")), 8);
    EXPECT_FALSE(table.ContainsKey(CString("utf-8")));
}

TEST(Hashtable, FailedAllocationsChangeNothing) {
    CHashtable<int, int> table(GetLongHashCode, 1, 1.0f);
    table.Put(1, 1);
    {
        FailAllocation fail(1); // the bucket array of the growth
        ExpectThrow<CMemoryException>([&] { table.Put(2, 2); }, "vorn/util/Hashtable");
    }
    EXPECT_EQ(table.GetCapacity(), 1u);
    {
        FailAllocation fail(2); // the entry, after a growth that succeeded
        ExpectThrow<CMemoryException>([&] { table.Put(2, 2); }, "vorn/util/Hashtable");
    }
    EXPECT_EQ(table.GetSize(), 1u);
    EXPECT_FALSE(table.ContainsKey(2));
    CHashtable<int, int> other(GetLongHashCode);
    for (int k = 0; k < 5; ++k)
        other.Put(k, k);
    for (unsigned long n = 1; n <= 6; ++n) {
        FailAllocation fail(n);
        EXPECT_THROW(table = other, CMemoryException);
        EXPECT_EQ(table.GetSize(), 1u);
        EXPECT_EQ(table.Get(1), 1);
    }
    table = other;
    EXPECT_EQ(table.GetSize(), 5u);
    EXPECT_EQ(table.GetCapacity(), 101u);
}

TEST(StringHashtable, DefaultsAndTheThresholdOfThePassedFactor) {
    CStringHashtable<int> small;
    EXPECT_EQ(small.GetCapacity(), 11u);
    EXPECT_EQ(small.GetThreshold(), 8u);
    // A factor of 0 is kept as 0.75, but the first threshold is 0: the first Put grows.
    CStringHashtable<int> zero(0, 0.0f);
    EXPECT_EQ(zero.GetCapacity(), 11u);
    EXPECT_EQ(zero.GetLoadFactor(), 0.75f);
    EXPECT_EQ(zero.GetThreshold(), 0u);
    zero.Put("a", 1);
    EXPECT_EQ(zero.GetCapacity(), 23u);
    EXPECT_EQ(zero.GetThreshold(), 17u);
    ExpectThrow<CIllegalArgumentException>([&] { zero.Put(nullptr, 1); },
                                           "vorn/util/StringHashtable", "Invalid key.");
    ExpectThrow<CNoSuchElementException>([&] { zero.Get("b"); }, "vorn/util/StringHashtable");
    EXPECT_EQ(zero.Remove("a"), 1);
}

TEST(StringHashtable, EnumerationOrderAndCopies) {
    // "a" (97) and "l" (108) share bucket 9 of 11; "b" (98) has bucket 10.
    CStringHashtable<int> table;
    table.Put("b", 1);
    table.Put("a", 2);
    table.Put("l", 3);
    EXPECT_EQ(Keys(table), (std::vector<std::string>{"l", "a", "b"}));
    CStringHashtable<int> copy(table);
    EXPECT_EQ(Keys(copy), (std::vector<std::string>{"a", "l", "b"}));
    EXPECT_TRUE(copy == table);

    auto e = table.GetKeys();
    while (e->HasMoreElements())
        e->GetNextElement();
    ExpectThrow<CNoSuchElementException>([&] { e->GetNextElement(); }, "vorn/util/StringHashtable");
    e->Reset();
    EXPECT_STREQ(e->GetNextElement(), "l");
    // Removing the entry under the walk doesn't leave it standing on freed memory.
    table.Remove("l");
    table.Remove("b");
    EXPECT_FALSE(e->HasMoreElements());
    ExpectThrow<CNoSuchElementException>([&] { e->GetNextElement(); }, "vorn/util/StringHashtable");
}

TEST(StringHashtable, EqualityLooksInTheOtherTablesBuckets) {
    CStringHashtable<int> a(11), b(101);
    for (const char* k : {"one", "two", "three"}) {
        a.Put(k, 1);
        b.Put(k, 1);
    }
    EXPECT_TRUE(a == b);
    b.Put("two", 2);
    EXPECT_TRUE(a != b);
    b.Put("two", 1);
    b.Put("four", 1);
    EXPECT_FALSE(a == b);
    EXPECT_TRUE(a == a);
}

TEST(StringHashtable, MovesAndFailedCopies) {
    CStringHashtable<int> table;
    table.Put("x", 1);
    CStringHashtable<int> moved(std::move(table));
    EXPECT_EQ(moved.Get("x"), 1);
    // The emptied source works again, growing from no buckets.
    EXPECT_EQ(table.GetCapacity(), 0u);
    EXPECT_FALSE(table.ContainsKey("x"));
    EXPECT_TRUE(table == CStringHashtable<int>());
    table.Put("y", 2);
    EXPECT_EQ(table.GetCapacity(), 3u);

    moved.Put("z", 3);
    for (unsigned long n = 1; n <= 3; ++n) {
        {
            FailAllocation fail(n);
            ExpectThrow<CMemoryException>([&] { CStringHashtable<int> copy(moved); },
                                          "vorn/util/StringHashtable");
        }
        FailAllocation fail(n);
        ExpectThrow<CMemoryException>([&] { table = moved; }, "vorn/util/StringHashtable");
    }
    EXPECT_EQ(Keys(table), (std::vector<std::string>{"y"}));
}

} // namespace

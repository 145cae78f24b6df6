#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <unordered_set>
#include <vector>

#include <vorn/base/IllegalArgumentException.h>
#include <vorn/base/MemoryException.h>
#include <vorn/util/NoSuchElementException.h>
#include <vorn/util/StringSet.h>

#include "support/AllocFailure.h"
#include "support/Throws.h"

namespace {

using vorn::base::CIllegalArgumentException;
using vorn::test::ExpectThrow;
using vorn::util::CStringSet;

std::vector<std::string> Sorted(const CStringSet& set) {
    std::vector<std::string> out;
    for (auto e = set.GetElements(); e->HasMoreElements();)
        out.emplace_back(static_cast<const char*>(e->GetNextElement()));
    std::sort(out.begin(), out.end());
    return out;
}

CStringSet Of(std::initializer_list<const char*> texts, unsigned int capacity = 101) {
    CStringSet set(capacity);
    for (const char* t : texts)
        set.Put(t);
    return set;
}

TEST(StringSet, CapacityGrowsAtTheThreshold) {
    CStringSet set;
    for (int i = 0; i < 75; ++i)
        set.Put(std::to_string(i).c_str());
    EXPECT_EQ(set.GetCapacity(), 101u);
    set.Put("75");
    EXPECT_EQ(set.GetCapacity(), 203u);

    CStringSet small(0, 0.75f);
    for (int i = 0; i < 8; ++i)
        small.Put(std::to_string(i).c_str());
    small.Put("0");
    EXPECT_EQ(small.GetSize(), 8u);
    EXPECT_EQ(small.GetCapacity(), 11u);
    small.Put("8");
    EXPECT_EQ(small.GetCapacity(), 23u);
}

TEST(StringSet, KeysAreChecked) {
    CStringSet set = Of({"a"});
    for (const char* bad : {static_cast<const char*>(nullptr), ""}) {
        ExpectThrow<CIllegalArgumentException>([&] { set.Put(bad); }, "vorn/util/StringHashtable",
                                               "Invalid key.");
        ExpectThrow<CIllegalArgumentException>([&] { set.Contains(bad); },
                                               "vorn/util/StringHashtable", "Invalid key.");
    }
    ExpectThrow<vorn::util::CNoSuchElementException>([&] { set.Remove("b"); },
                                                     "vorn/util/StringHashtable");
}

TEST(StringSet, Operators) {
    CStringSet s = Of({"a", "b", "c"});
    s += s;
    s *= s;
    EXPECT_EQ(Sorted(s), (std::vector<std::string>{"a", "b", "c"}));
    CStringSet t = Of({"b", "c", "d"}, 11);
    CStringSet u = s;
    u += t;
    EXPECT_EQ(Sorted(u), (std::vector<std::string>{"a", "b", "c", "d"}));
    u -= s;
    EXPECT_EQ(Sorted(u), (std::vector<std::string>{"d"}));
    CStringSet v = t;
    v *= s;
    EXPECT_EQ(Sorted(v), (std::vector<std::string>{"b", "c"}));
    EXPECT_EQ(v.GetCapacity(), 101u); // taken from the temporary of the intersection
    EXPECT_TRUE(v.IsSubSetOf(s) && !s.IsSubSetOf(v));
    // Equality doesn't depend on the bucket counts.
    EXPECT_TRUE(v == Of({"c", "b"}, 3));
    EXPECT_TRUE(v != t);
    const auto& self = s;
    s -= self;
    EXPECT_TRUE(s.IsEmpty());
}

TEST(StringSet, FailedPutLeavesTheSetAsItWas) {
    CStringSet set(1, 1.0f);
    set.Put("a");
    {
        vorn::test::FailAllocation fail(1, true);
        EXPECT_THROW(set.Put("b"), vorn::base::CMemoryException);
    }
    EXPECT_EQ(Sorted(set), (std::vector<std::string>{"a"}));
    EXPECT_EQ(set.GetCapacity(), 1u);
}

// Long random runs of puts, removals and look-ups against the standard set.
TEST(StringSet, BehavesLikeAnUnorderedSet) {
    std::mt19937 random(20240611);
    for (int round = 0; round < 4; ++round) {
        CStringSet set(static_cast<unsigned int>(random() % 20), 0.5f + 0.5f * (round % 3));
        std::unordered_set<std::string> model;
        for (int step = 0; step < 6000; ++step) {
            std::string key = "k" + std::to_string(random() % 400);
            if (random() % 7 == 0)
                key += std::string(20, 'x'); // long keys take the sampled hash
            switch (random() % 4) {
            case 0:
            case 1:
                set.Put(key.c_str());
                model.insert(key);
                break;
            case 2:
                if (model.erase(key) == 1)
                    set.Remove(key.c_str());
                else
                    EXPECT_THROW(set.Remove(key.c_str()), vorn::util::CNoSuchElementException);
                break;
            default:
                ASSERT_EQ(set.Contains(key.c_str()), model.count(key) == 1) << key;
            }
            ASSERT_EQ(set.GetSize(), model.size());
        }
        std::vector<std::string> expected(model.begin(), model.end());
        std::sort(expected.begin(), expected.end());
        EXPECT_EQ(Sorted(set), expected);
        CStringSet copy(set);
        EXPECT_TRUE(copy == set);
        EXPECT_TRUE(set.IsSubSetOf(copy));
    }
}

} // namespace

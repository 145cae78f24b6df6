#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <vorn/base/ArrayIndexOutOfBoundsException.h>
#include <vorn/base/IllegalArgumentException.h>
#include <vorn/base/MemoryException.h>
#include <vorn/util/NoSuchElementException.h>
#include <vorn/util/StringMap.h>

#include "support/AllocFailure.h"
#include "support/Throws.h"

namespace {

using vorn::base::CArrayIndexOutOfBoundsException;
using vorn::base::CIllegalArgumentException;
using vorn::base::CMemoryException;
using vorn::test::ExpectThrow;
using vorn::test::FailAllocation;
using vorn::util::CNoSuchElementException;
using vorn::util::CStringMap;

using Pairs = std::vector<std::pair<std::string, std::string>>;

Pairs Contents(const CStringMap& map) {
    Pairs out;
    auto keys = map.GetKeyIterator();
    auto values = map.GetValueIterator();
    while (keys.HasMoreElements())
        out.emplace_back(static_cast<const char*>(keys.GetNextElement()),
                         static_cast<const char*>(values.GetNextElement()));
    EXPECT_FALSE(values.HasMoreElements());
    return out;
}

CStringMap Numbers(int count) {
    CStringMap map;
    for (int i = 0; i < count; ++i)
        map.Put(("k" + std::to_string(i)).c_str(), std::to_string(i).c_str());
    return map;
}

TEST(StringMap, CapacityFollowsTheIncrement) {
    CStringMap map = Numbers(10);
    EXPECT_EQ(map.GetCapacity(), 10u);
    map.Put("k10", "10");
    EXPECT_EQ(map.GetCapacity(), 15u);
    map.EnsureCapacity(17);
    map.TrimToSize();
    EXPECT_EQ(map.GetCapacity(), 11u);
    CStringMap odd(true, 7, 0);
    EXPECT_EQ(odd.GetIncrement(), 5u);
    EXPECT_EQ(odd.GetCapacity(), 10u);
}

TEST(StringMap, KeysFollowTheCaseRuleValuesDoNot) {
    CStringMap map(false);
    map.Put("Key", "1");
    map.Put("KEY", "Value");
    EXPECT_EQ(Contents(map), (Pairs{{"Key", "Value"}}));
    EXPECT_EQ(map.GetIndexOf("VALUE"), -1);
    // A null value empties; a null or empty argument looks for an empty value.
    EXPECT_FALSE(map.Contains(nullptr));
    map.Put("kEY", nullptr);
    EXPECT_EQ(map.GetIndexOf(""), 0);
    map.Get("key") = "changed";
    EXPECT_EQ(map.GetAt(0), "changed");
}

TEST(StringMap, BadKeysAndIndexes) {
    CStringMap map = Numbers(2);
    for (const char* bad : {static_cast<const char*>(nullptr), ""}) {
        ExpectThrow<CIllegalArgumentException>([&] { map.Put(bad, "v"); }, "vorn/util/StringMap",
                                               "Invalid key.");
        ExpectThrow<CIllegalArgumentException>([&] { map.Get(bad); }, "vorn/util/StringMap",
                                               "Invalid key.");
    }
    ExpectThrow<CNoSuchElementException>([&] { map.Get("k2"); }, "vorn/util/StringMap");
    ExpectThrow<CNoSuchElementException>([&] { map.Remove("k2"); }, "vorn/util/StringMap");
    ExpectThrow<CArrayIndexOutOfBoundsException>([&] { map.GetKeyAt(2); }, "vorn/util/StringMap");
}

TEST(StringMap, EqualityIsOneWay) {
    CStringMap small = Numbers(2), large = Numbers(3);
    EXPECT_TRUE(small == large);
    EXPECT_FALSE(large == small);
    large.Put("k1", "other");
    EXPECT_TRUE(small != large);
    // The case-sensitive map drives when only the other ignores case; else this map drives.
    CStringMap loose(false), strict;
    loose.Put("A", "1");
    loose.Put("B", "2");
    strict.Put("a", "1");
    EXPECT_TRUE(strict == loose && loose == strict);
    strict = CStringMap(false);
    strict.Put("a", "1");
    EXPECT_TRUE(strict == loose);
    EXPECT_FALSE(loose == strict);
}

TEST(StringMap, CopiesShareTextsAndFailuresChangeNothing) {
    CStringMap map = Numbers(10);
    CStringMap copy(map), target(false, 0, 3);
    EXPECT_EQ(static_cast<const char*>(copy.GetAt(0)), static_cast<const char*>(map.GetAt(0)));
    target = map;
    EXPECT_TRUE(target.IsKeyCaseSensitive());
    EXPECT_EQ(target.GetCapacity(), 12u);
    // The key array comes first; when the value array fails the key array goes back.
    for (unsigned long n = 1; n <= 2; ++n) {
        FailAllocation fail(n);
        ExpectThrow<CMemoryException>([&] { map.Put("new", "v"); }, "vorn/util/StringMap");
        EXPECT_EQ(map.GetCapacity(), 10u);
        EXPECT_EQ(Contents(map), Contents(copy));
    }
    map.Put("k10", "10");
    {
        FailAllocation fail(1);
        EXPECT_THROW(map.Remove("k10"), CMemoryException);
    }
    EXPECT_EQ(map.GetSize(), 10u); // removed, though the arrays couldn't shrink
    EXPECT_EQ(map.GetCapacity(), 15u);
}

// Long random runs against an insertion-ordered model, in both key rules.
TEST(StringMap, BehavesLikeAnOrderedModel) {
    std::mt19937 random(7);
    for (bool caseSensitive : {true, false}) {
        auto fold = [&](std::string key) {
            for (char& c : key)
                c = caseSensitive ? c : static_cast<char>(std::tolower(c));
            return key;
        };
        CStringMap map(caseSensitive, 0, random() % 4);
        Pairs model;
        for (int step = 0; step < 4000; ++step) {
            std::string key(1 + random() % 2, 'a');
            for (char& c : key)
                c = "aAbBcCdD"[random() % 8];
            const std::string value = std::to_string(random() % 5);
            auto at = std::find_if(model.begin(), model.end(),
                                   [&](const auto& p) { return fold(p.first) == fold(key); });
            switch (random() % 3) {
            case 0:
                map.Put(key.c_str(), value.c_str());
                if (at == model.end())
                    model.emplace_back(key, value);
                else
                    at->second = value;
                break;
            case 1:
                if (at == model.end()) {
                    EXPECT_THROW(map.Remove(key.c_str()), CNoSuchElementException);
                } else {
                    map.Remove(key.c_str());
                    model.erase(at);
                }
                break;
            default:
                ASSERT_EQ(map.GetIndexOfKey(key.c_str()),
                          at == model.end() ? -1 : static_cast<int>(at - model.begin()));
                if (at != model.end()) {
                    ASSERT_EQ(map.Get(key.c_str()), at->second.c_str());
                }
            }
            ASSERT_EQ(map.GetSize(), model.size());
            if (map.GetCapacity() == 0)
                continue; // nothing put yet
            const unsigned int floor = map.GetIncrement();
            const unsigned int rounded = (map.GetSize() + floor - 1) / floor * floor;
            ASSERT_EQ(map.GetCapacity(), std::max(floor, rounded));
        }
        EXPECT_EQ(Contents(map), model);
    }
}

} // namespace

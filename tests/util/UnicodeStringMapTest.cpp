#include <gtest/gtest.h>

#include <vorn/base/IllegalArgumentException.h>
#include <vorn/base/MemoryException.h>
#include <vorn/util/NoSuchElementException.h>
#include <vorn/util/UnicodeStringMap.h>

#include "support/AllocFailure.h"
#include "support/Throws.h"
#include "support/Utf16.h"

namespace {

using vorn::test::ExpectThrow;
using vorn::test::Units;
using vorn::test::W;
using vorn::util::CNoSuchElementException;
using vorn::util::CUnicodeStringMap;

TEST(UnicodeStringMap, RemoveThrowsAfterRemoving) {
    CUnicodeStringMap map;
    map.Put(W(u"a").c_str(), W(u"1").c_str());
    map.Put(W(u"b").c_str(), W(u"2").c_str());
    ExpectThrow<CNoSuchElementException>([&] { map.Remove(W(u"a").c_str()); },
                                         "vorn/util/UnicodeStringMap");
    EXPECT_EQ(map.GetSize(), 1u);
    EXPECT_EQ(Units(map.GetKeyAt(0)), W(u"b"));
    ExpectThrow<CNoSuchElementException>([&] { map.Remove(W(u"a").c_str()); },
                                         "vorn/util/UnicodeStringMap");
    EXPECT_EQ(map.GetSize(), 1u);
    ExpectThrow<vorn::base::CIllegalArgumentException>(
        [&] { map.Remove(W(u"").c_str()); }, "vorn/util/UnicodeStringMap", "Invalid key.");
}

TEST(UnicodeStringMap, ExactKeysInsertionOrderAndEmptyValues) {
    CUnicodeStringMap map(0, 0);
    EXPECT_EQ(map.GetIncrement(), 5u);
    map.Put(W(u"Key").c_str(), W(u"\xE9t\xE9").c_str());
    map.Put(W(u"KEY").c_str(), nullptr);
    map.Put(W(u"Key").c_str(), W(u"v").c_str());
    EXPECT_EQ(map.GetSize(), 2u);
    EXPECT_EQ(Units(map.Get(W(u"Key").c_str())), W(u"v"));
    EXPECT_EQ(map.GetIndexOf(nullptr), 1);
    EXPECT_EQ(map.GetIndexOf(W(u"").c_str()), 1);
    EXPECT_FALSE(map.ContainsKey(W(u"key").c_str()));
    auto values = map.GetValueIterator();
    EXPECT_EQ(Units(values.GetNextElement()), W(u"v"));
    EXPECT_TRUE(values.GetNextElement().IsEmpty());
    EXPECT_FALSE(values.HasMoreElements());

    // One-way equality: the shorter map's keys are all in the longer one.
    CUnicodeStringMap shorter;
    shorter.Put(W(u"Key").c_str(), W(u"v").c_str());
    EXPECT_TRUE(shorter == map);
    EXPECT_TRUE(map != shorter);
    vorn::test::ExpectNoMemory([&] { map.EnsureCapacity(100); }, "vorn/util/UnicodeStringMap");
    EXPECT_EQ(map.GetCapacity(), 5u);
    CUnicodeStringMap copy(map);
    EXPECT_TRUE(copy == map && map == copy);
}

} // namespace

#include <gtest/gtest.h>

#include <vector>

#include <vorn/base/ArrayIndexOutOfBoundsException.h>
#include <vorn/base/IllegalArgumentException.h>
#include <vorn/base/MemoryException.h>
#include <vorn/base/NullReferenceException.h>
#include <vorn/base/Object.h>
#include <vorn/util/NoSuchElementException.h>
#include <vorn/util/ObjectVector.h>

#include "support/AllocFailure.h"
#include "support/Throws.h"

namespace {

using namespace vorn::base;
using vorn::test::CountAllocations;
using vorn::test::ExpectThrow;
using vorn::test::FailAllocation;
using vorn::util::CObjectVector;

const char* const kSource = "vorn/util/ObjectVector";

// Equal by value, cloneable, and counts its deaths.
struct Item : CObject {
    Item(int v, int* counter) : value(v), deaths(counter) {}
    ~Item() override { ++*deaths; }
    bool Equals(const CObject* other) const override {
        auto* item = dynamic_cast<const Item*>(other);
        return item != nullptr && item->value == value;
    }
    CObject* Clone() const override { return new Item(value, deaths); }
    int value;
    int* deaths;
};

int ValueAt(const CObjectVector& v, unsigned int i) {
    return static_cast<const Item*>(v.GetElementAt(i))->value;
}
std::vector<int> Values(const CObjectVector& v) {
    std::vector<int> out;
    for (unsigned int i = 0; i < v.GetSize(); ++i)
        out.push_back(ValueAt(v, i));
    return out;
}

void Fill(CObjectVector& v, int count, int* deaths, int first = 0) {
    for (int i = 0; i < count; ++i)
        v.AddElement(new Item(first + i, deaths));
}

TEST(ObjectVector, CapacityMovesInIncrements) {
    int deaths = 0;
    CObjectVector v;
    EXPECT_EQ(v.GetCapacity(), 10u);
    Fill(v, 11, &deaths);
    EXPECT_EQ(v.GetCapacity(), 15u);
    v.RemoveElementAt(3); // shrinks at once, no hysteresis
    EXPECT_EQ(v.GetCapacity(), 10u);
    EXPECT_EQ(ValueAt(v, 3), 4);
    v.RemoveAllElements(); // never below one increment
    EXPECT_EQ(v.GetCapacity(), 5u);
    EXPECT_EQ(deaths, 11);
    // 0xFFFFFFFE rounds, in its wrapping form, to 1: the buffer already covers it.
    EXPECT_EQ(CountAllocations([&] { v.EnsureCapacity(0xFFFFFFFEu); }), 0u);
    EXPECT_EQ(CObjectVector(7, 5).GetCapacity(), 10u);
    EXPECT_EQ(CObjectVector(7, 3).GetCapacity(), 9u);

    EXPECT_EQ(CountAllocations([] { CObjectVector none(0, 5); }), 0u);
    CObjectVector lazy(0, 5);
    Fill(lazy, 3, &deaths);
    EXPECT_EQ(lazy.GetCapacity(), 5u);
    lazy.TrimToSize(); // the one way off the increments
    EXPECT_EQ(lazy.GetCapacity(), 3u);
    lazy.RemoveAllElements();
    lazy.TrimToSize();
    EXPECT_EQ(lazy.GetCapacity(), 0u);
    lazy.Sort([](const void*, const void*) { return 0; });
    Fill(lazy, 1, &deaths);
    EXPECT_EQ(lazy.GetCapacity(), 5u);
}

TEST(ObjectVector, RemoveDeletesDetachDoesNot) {
    int deaths = 0, probeDeaths = 0;
    auto* kept = new Item(1, &deaths);
    auto* twenty = new Item(20, &deaths);
    {
        CObjectVector v;
        Fill(v, 3, &deaths, 10);
        v.AddElement(kept);
        v.RemoveElementAt(0);
        v.DetachElementAt(2);
        EXPECT_EQ(deaths, 1);
        Item probe(11, &probeDeaths);
        v.RemoveElement(&probe); // found by Equals, not by address
        EXPECT_EQ(deaths, 2);
        v.SetElementAt(twenty, 0);
        EXPECT_EQ(deaths, 3);
        v.AddElement(kept);
        v.SetElementAt(kept, 1); // the same object again stays alive
        v.DetachElement(kept);
        v.DetachAllElements();
        EXPECT_EQ(v.GetSize(), 0u);
        EXPECT_EQ(deaths, 3);
        v.AddElement(twenty);
        v.AddElement(kept);
    }
    EXPECT_EQ(deaths, 5);
}

TEST(ObjectVector, SearchInsertAndSort) {
    int deaths = 0;
    CObjectVector v;
    Fill(v, 2, &deaths);
    v.InsertElementAt(new Item(1, &deaths), v.GetSize()); // appends
    v.InsertElementAt(new Item(7, &deaths), 0);
    v.InsertElementAt(new Item(8, &deaths), 2);
    EXPECT_EQ(Values(v), (std::vector<int>{7, 0, 8, 1, 1}));
    Item one(1, &deaths), nine(9, &deaths);
    EXPECT_EQ(v.GetIndexOf(&one), 3);
    EXPECT_EQ(v.GetLastIndexOf(&one), 4);
    EXPECT_EQ(v.GetLastIndexOf(&nine), -1);
    v.RemoveElement(&nine);
    EXPECT_EQ(v.GetSize(), 5u);
    EXPECT_EQ(deaths, 0);
    // The compare function gets pointers to the slots.
    v.Sort([](const void* a, const void* b) {
        return (*static_cast<Item* const*>(a))->value - (*static_cast<Item* const*>(b))->value;
    });
    EXPECT_EQ(Values(v), (std::vector<int>{0, 1, 1, 7, 8}));
}

TEST(ObjectVector, BadArgumentsAndIndexes) {
    int deaths = 0;
    CObjectVector v;
    Fill(v, 1, &deaths);
    auto invalid = [](auto call) {
        ExpectThrow<CIllegalArgumentException>(call, kSource, "Invalid object.");
    };
    invalid([&] { v.AddElement(nullptr); });
    invalid([&] { v.InsertElementAt(nullptr, 0); });
    invalid([&] { v.SetElementAt(nullptr, 0); });
    invalid([&] { v.Contains(nullptr); });
    invalid([&] { v.GetIndexOf(nullptr); });
    invalid([&] { v.GetLastIndexOf(nullptr); });
    invalid([&] { v.RemoveElement(nullptr); });
    invalid([&] { v.DetachElement(nullptr); });
    ExpectThrow<CIllegalArgumentException>([&] { v.Sort(nullptr); }, kSource,
                                           "Invalid compare function.");
    Item spare(3, &deaths);
    auto outOfBounds = [](auto call) {
        ExpectThrow<CArrayIndexOutOfBoundsException>(call, kSource);
    };
    outOfBounds([&] { v.GetElementAt(1); });
    outOfBounds([&] { v[1]; });
    outOfBounds([&] { v.SetElementAt(&spare, 1); });
    outOfBounds([&] { v.RemoveElementAt(1); });
    outOfBounds([&] { v.DetachElementAt(1); });
    outOfBounds([&] { v.InsertElementAt(&spare, 2); });
    EXPECT_EQ(v.GetSize(), 1u);
    CObjectVector empty;
    ExpectThrow<vorn::util::CNoSuchElementException>([&] { empty.GetFirstElement(); }, kSource);
    ExpectThrow<vorn::util::CNoSuchElementException>([&] { empty.GetLastElement(); }, kSource);
}

TEST(ObjectVector, CopiesHoldClones) {
    int deaths = 0;
    CObjectVector source(2, 3);
    Fill(source, 4, &deaths);
    CObjectVector copy(source);
    EXPECT_EQ(copy.GetCapacity(), 6u); // the source's increment, room for its size
    EXPECT_NE(copy[0], source[0]);
    EXPECT_TRUE(copy == source);
    CObjectVector target; // keeps its own increment of 5
    Fill(target, 12, &deaths, 100);
    target = source;
    EXPECT_EQ(deaths, 12);
    EXPECT_EQ(target.GetCapacity(), 5u); // compacted below its old size
    CObjectVector& alias = target;
    target = alias;
    EXPECT_FALSE(target != source);
    target.SetElementAt(new Item(99, &deaths), 3);
    EXPECT_TRUE(target != source);
    target.RemoveElementAt(3);
    EXPECT_FALSE(target == source);
    CObjectVector none(0, 5);
    EXPECT_EQ(CObjectVector(none).GetCapacity(), 0u);

    // A plain CObject doesn't clone: its copy is an empty slot. Calls through it get the null
    // guard; deleting skips it.
    CObjectVector plain;
    plain.AddElement(new CObject);
    CObjectVector plainCopy(plain);
    EXPECT_EQ(plainCopy[0], nullptr);
    EXPECT_THROW((void)(plainCopy == plain), CNullReferenceException);
    EXPECT_THROW(plainCopy.GetIndexOf(plain[0]), CNullReferenceException);
    EXPECT_THROW(CObjectVector{plainCopy}, CNullReferenceException);
}

TEST(ObjectVector, FailedAllocationsKeepBufferAndSize) {
    int deaths = 0;
    CObjectVector v;
    Fill(v, 10, &deaths);
    auto* extra = new Item(10, &deaths);
    auto failing = [](auto call) { vorn::test::ExpectNoMemory(call, kSource); };
    failing([&] { v.AddElement(extra); });
    failing([&] { v.InsertElementAt(extra, 4); });
    failing([&] { v.EnsureCapacity(11); });
    failing([] { CObjectVector fresh; });
    EXPECT_EQ(v.GetCapacity(), 10u);
    EXPECT_EQ(Values(v), (std::vector<int>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
    EXPECT_EQ(deaths, 0); // a refused object stays the caller's

    v.AddElement(extra);
    failing([&] { v.RemoveElementAt(0); });
    EXPECT_EQ(deaths, 1); // removed, but the buffer couldn't shrink
    EXPECT_EQ(v.GetSize(), 10u);
    failing([&] { v.TrimToSize(); });
    EXPECT_EQ(v.GetCapacity(), 15u);
    EXPECT_EQ(ValueAt(v, 9), 10);
}

TEST(ObjectVector, FailedCopiesLeakNothing) {
    int deaths = 0;
    CObjectVector source;
    Fill(source, 4, &deaths);
    for (unsigned long nth = 1; nth <= 5; ++nth) {
        FailAllocation fail(nth); // the buffer, then each clone
        EXPECT_THROW(CObjectVector copy(source), CMemoryException);
    }
    EXPECT_EQ(deaths, 6); // the clones made before each failure (0, 0, 1, 2, 3) were deleted
    CObjectVector target;
    Fill(target, 2, &deaths, 50);
    {
        FailAllocation fail(3);
        EXPECT_THROW(target = source, CMemoryException);
    }
    // The old elements went first; the clones made so far are held and counted.
    EXPECT_EQ(deaths, 8);
    ASSERT_EQ(target.GetSize(), 2u);
    EXPECT_EQ(ValueAt(target, 1), 1);
}

} // namespace

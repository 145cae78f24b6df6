#include <gtest/gtest.h>

#include <cstdlib>

#include <vorn/base/ArrayIndexOutOfBoundsException.h>
#include <vorn/base/IllegalArgumentException.h>
#include <vorn/base/MemoryException.h>
#include <vorn/base/NullReferenceException.h>
#include <vorn/base/Object.h>
#include <vorn/util/NoSuchElementException.h>
#include <vorn/util/ObjectVector.h>

#include "support/AllocFailure.h"

namespace {

using namespace vorn::base;
using vorn::test::CountAllocations;
using vorn::test::FailAllocation;
using vorn::util::CObjectVector;

// Equal by value, cloneable, and counts its deaths.
struct Item : CObject {
    Item(int value, int* deaths) : value(value), deaths(deaths) {}
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

void Fill(CObjectVector& v, int count, int* deaths, int first = 0) {
    for (int i = 0; i < count; ++i)
        v.AddElement(new Item(first + i, deaths));
}

TEST(ObjectVector, CapacityMovesInIncrements) {
    int deaths = 0;
    CObjectVector v;
    EXPECT_EQ(v.GetCapacity(), 10u);
    Fill(v, 10, &deaths);
    EXPECT_EQ(v.GetCapacity(), 10u);
    v.AddElement(new Item(10, &deaths));
    EXPECT_EQ(v.GetCapacity(), 15u);
    v.RemoveElementAt(3); // 10 left: shrinks at once, no hysteresis
    EXPECT_EQ(v.GetCapacity(), 10u);
    EXPECT_EQ(ValueAt(v, 3), 4);
    v.RemoveAllElements(); // never below one increment
    EXPECT_EQ(v.GetCapacity(), 5u);
    EXPECT_EQ(deaths, 11);

    EXPECT_EQ(CObjectVector(7, 5).GetCapacity(), 10u);
    EXPECT_EQ(CObjectVector(7, 3).GetCapacity(), 9u);
}

TEST(ObjectVector, BufferlessStatesRecover) {
    int deaths = 0;
    unsigned long made = CountAllocations([] { CObjectVector none(0, 5); });
    EXPECT_EQ(made, 0u);
    CObjectVector v(0, 5);
    EXPECT_EQ(v.GetCapacity(), 0u);
    Fill(v, 1, &deaths);
    EXPECT_EQ(v.GetCapacity(), 5u);

    Fill(v, 2, &deaths, 1);
    v.TrimToSize(); // the one way off the increments
    EXPECT_EQ(v.GetCapacity(), 3u);
    v.AddElement(new Item(3, &deaths));
    EXPECT_EQ(v.GetCapacity(), 5u);
    v.RemoveAllElements();
    v.TrimToSize();
    EXPECT_EQ(v.GetCapacity(), 0u);
    v.Sort([](const void*, const void*) { return 0; });
    v.AddElement(new Item(4, &deaths));
    EXPECT_EQ(v.GetCapacity(), 5u);
}

TEST(ObjectVector, WrappedRoundingAsksForNothing) {
    CObjectVector v;
    // 0xFFFFFFFE rounds, in its wrapping form, to 1: the buffer of 10 already covers it.
    unsigned long made = CountAllocations([&] { v.EnsureCapacity(0xFFFFFFFEu); });
    EXPECT_EQ(made, 0u);
    EXPECT_EQ(v.GetCapacity(), 10u);
}

TEST(ObjectVector, RemoveDeletesDetachDoesNot) {
    int deaths = 0;
    auto* kept = new Item(1, &deaths);
    {
        CObjectVector v;
        Fill(v, 3, &deaths, 10);
        v.AddElement(kept);
        v.RemoveElementAt(0);
        EXPECT_EQ(deaths, 1);
        v.DetachElementAt(2);
        EXPECT_EQ(deaths, 1);
        v.AddElement(kept);
        int probeDeaths = 0;
        Item probe(11, &probeDeaths);
        v.RemoveElement(&probe); // found by Equals, not by address
        EXPECT_EQ(deaths, 2);
        v.DetachElement(kept);
        EXPECT_EQ(v.GetSize(), 1u);
        auto* twenty = new Item(20, &deaths);
        v.SetElementAt(twenty, 0);
        EXPECT_EQ(deaths, 3);
        v.AddElement(kept);
        v.SetElementAt(kept, 1); // the same object again stays alive
        EXPECT_EQ(deaths, 3);
        v.DetachAllElements();
        EXPECT_EQ(v.GetSize(), 0u);
        EXPECT_EQ(deaths, 3);
        v.AddElement(twenty);
        v.AddElement(kept);
    }
    EXPECT_EQ(deaths, 5); // the destructor deleted what was left
}

TEST(ObjectVector, SearchAsksTheStoredElement) {
    int deaths = 0;
    CObjectVector v;
    Fill(v, 3, &deaths);
    v.AddElement(new Item(1, &deaths));
    Item one(1, &deaths), nine(9, &deaths);
    EXPECT_EQ(v.GetIndexOf(&one), 1);
    EXPECT_EQ(v.GetLastIndexOf(&one), 3);
    EXPECT_TRUE(v.Contains(&one));
    EXPECT_FALSE(v.Contains(&nine));
    EXPECT_EQ(v.GetIndexOf(&nine), -1);
    EXPECT_EQ(v.GetLastIndexOf(&nine), -1);
    v.RemoveElement(&nine);
    v.DetachElement(&nine);
    EXPECT_EQ(v.GetSize(), 4u);
    EXPECT_EQ(deaths, 0);
    // A plain CObject compares by identity.
    CObject* plain = new CObject;
    v.AddElement(plain);
    CObject stranger;
    EXPECT_EQ(v.GetIndexOf(&stranger), -1);
    EXPECT_EQ(v.GetIndexOf(plain), 4);
}

TEST(ObjectVector, InsertAtEndAppendsAndInsideShifts) {
    int deaths = 0;
    CObjectVector v;
    Fill(v, 2, &deaths);
    v.InsertElementAt(new Item(5, &deaths), v.GetSize());
    v.InsertElementAt(new Item(7, &deaths), 0);
    v.InsertElementAt(new Item(8, &deaths), 2);
    int expected[] = {7, 0, 8, 1, 5};
    ASSERT_EQ(v.GetSize(), 5u);
    for (unsigned int i = 0; i < 5; ++i)
        EXPECT_EQ(ValueAt(v, i), expected[i]);
    EXPECT_EQ(static_cast<Item*>(v.GetFirstElement())->value, 7);
    EXPECT_EQ(static_cast<Item*>(v.GetLastElement())->value, 5);
    EXPECT_EQ(v[2], v.GetElementAt(2));
    Fill(v, 6, &deaths); // grows across an insert-made size
    EXPECT_EQ(v.GetCapacity(), 15u);
}

TEST(ObjectVector, BadArgumentsAndIndexes) {
    int deaths = 0;
    CObjectVector v;
    auto invalid = [](auto call) {
        try {
            call();
            ADD_FAILURE() << "no exception";
        } catch (const CIllegalArgumentException& e) {
            EXPECT_STREQ(e.GetSourceFile(), "vorn/util/ObjectVector");
            EXPECT_STREQ(e.GetErrorDescription(), "Invalid object.");
            EXPECT_EQ(e.GetMessage(), nullptr);
        }
    };
    Fill(v, 1, &deaths);
    invalid([&] { v.AddElement(nullptr); });
    invalid([&] { v.InsertElementAt(nullptr, 0); });
    invalid([&] { v.SetElementAt(nullptr, 0); });
    invalid([&] { v.Contains(nullptr); });
    invalid([&] { v.GetIndexOf(nullptr); });
    invalid([&] { v.GetLastIndexOf(nullptr); });
    invalid([&] { v.RemoveElement(nullptr); });
    invalid([&] { v.DetachElement(nullptr); });
    try {
        v.Sort(nullptr);
        FAIL();
    } catch (const CIllegalArgumentException& e) {
        EXPECT_STREQ(e.GetErrorDescription(), "Invalid compare function.");
    }

    auto outOfBounds = [](auto call) {
        try {
            call();
            ADD_FAILURE() << "no exception";
        } catch (const CArrayIndexOutOfBoundsException& e) {
            EXPECT_STREQ(e.GetSourceFile(), "vorn/util/ObjectVector");
            EXPECT_EQ(e.GetErrorDescription(), nullptr);
        }
    };
    Item spare(3, &deaths);
    outOfBounds([&] { v.GetElementAt(1); });
    outOfBounds([&] { v[1]; });
    outOfBounds([&] { v.SetElementAt(&spare, 1); });
    outOfBounds([&] { v.RemoveElementAt(1); });
    outOfBounds([&] { v.DetachElementAt(1); });
    outOfBounds([&] { v.InsertElementAt(&spare, 2); });
    EXPECT_EQ(v.GetSize(), 1u);

    CObjectVector empty;
    EXPECT_THROW(empty.GetFirstElement(), vorn::util::CNoSuchElementException);
    try {
        empty.GetLastElement();
        FAIL();
    } catch (const vorn::util::CNoSuchElementException& e) {
        EXPECT_STREQ(e.GetSourceFile(), "vorn/util/ObjectVector");
    }
}

TEST(ObjectVector, CopiesHoldClones) {
    int deaths = 0;
    CObjectVector source(2, 3);
    Fill(source, 4, &deaths);
    CObjectVector copy(source);
    EXPECT_EQ(copy.GetCapacity(), 6u); // the source's increment, room for its size
    ASSERT_EQ(copy.GetSize(), 4u);
    EXPECT_NE(copy[0], source[0]);
    EXPECT_TRUE(copy == source);
    EXPECT_FALSE(copy != source);

    CObjectVector target; // keeps its own increment of 5
    Fill(target, 12, &deaths, 100);
    target = source;
    EXPECT_EQ(deaths, 12);
    EXPECT_EQ(target.GetCapacity(), 5u); // compacted below its old size
    EXPECT_TRUE(target == source);
    CObjectVector& alias = target;
    target = alias;
    EXPECT_EQ(target.GetSize(), 4u);
    target.RemoveElementAt(3);
    EXPECT_TRUE(target != source);
    target.AddElement(new Item(99, &deaths));
    EXPECT_FALSE(target == source);

    CObjectVector none(0, 5);
    CObjectVector noneCopy(none);
    EXPECT_EQ(noneCopy.GetCapacity(), 0u);
}

TEST(ObjectVector, UncloneableElementsLeaveEmptySlots) {
    CObjectVector source;
    source.AddElement(new CObject);
    CObjectVector copy(source);
    ASSERT_EQ(copy.GetSize(), 1u);
    EXPECT_EQ(copy[0], nullptr);
    // Calls through the empty slot get the null guard; deleting skips it.
    EXPECT_THROW((void)(copy == source), CNullReferenceException);
    EXPECT_THROW(copy.GetIndexOf(source[0]), CNullReferenceException);
    EXPECT_THROW(CObjectVector{copy}, CNullReferenceException);
    copy.RemoveAllElements();
}

TEST(ObjectVector, SortHandsPointersToSlots) {
    int deaths = 0;
    CObjectVector v;
    int values[] = {5, 3, 9, 1, 7};
    for (int value : values)
        v.AddElement(new Item(value, &deaths));
    v.Sort([](const void* a, const void* b) {
        auto* x = *static_cast<Item* const*>(a);
        auto* y = *static_cast<Item* const*>(b);
        return x->value - y->value;
    });
    int sorted[] = {1, 3, 5, 7, 9};
    for (unsigned int i = 0; i < 5; ++i)
        EXPECT_EQ(ValueAt(v, i), sorted[i]);
}

TEST(ObjectVector, FailedAllocationsKeepBufferAndSize) {
    int deaths = 0;
    CObjectVector v;
    Fill(v, 10, &deaths);
    auto* extra = new Item(10, &deaths);
    auto expectMemory = [&](auto call) {
        FailAllocation fail(1);
        try {
            call();
            ADD_FAILURE() << "no exception";
        } catch (const CMemoryException& e) {
            EXPECT_STREQ(e.GetSourceFile(), "vorn/util/ObjectVector");
            EXPECT_NE(e.GetSourceLine(), 0u);
        }
    };
    expectMemory([&] { v.AddElement(extra); });
    expectMemory([&] { v.InsertElementAt(extra, 4); });
    expectMemory([&] { v.EnsureCapacity(11); });
    ASSERT_EQ(v.GetSize(), 10u);
    EXPECT_EQ(v.GetCapacity(), 10u);
    for (unsigned int i = 0; i < 10; ++i)
        EXPECT_EQ(ValueAt(v, i), static_cast<int>(i));
    EXPECT_EQ(deaths, 0); // a refused object stays the caller's

    v.AddElement(extra);
    ASSERT_EQ(v.GetCapacity(), 15u);
    // Shrinking after a removal fails: the element is gone, the larger buffer stays.
    expectMemory([&] { v.RemoveElementAt(0); });
    EXPECT_EQ(deaths, 1);
    EXPECT_EQ(v.GetSize(), 10u);
    EXPECT_EQ(v.GetCapacity(), 15u);
    EXPECT_EQ(ValueAt(v, 0), 1);
    expectMemory([&] { v.TrimToSize(); });
    EXPECT_EQ(v.GetCapacity(), 15u);
    EXPECT_EQ(ValueAt(v, 9), 10);
}

TEST(ObjectVector, FailedCopiesLeakNothing) {
    int deaths = 0;
    {
        FailAllocation fail(1);
        EXPECT_THROW(CObjectVector v, CMemoryException);
    }
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
    // Old elements went first; the clones made so far are held and counted.
    EXPECT_EQ(deaths, 8);
    ASSERT_EQ(target.GetSize(), 2u);
    EXPECT_EQ(ValueAt(target, 1), 1);
}

TEST(ObjectVectorDeathTest, ZeroIncrementFaultsOnRounding) {
    int deaths = 0;
    CObjectVector v(0, 0); // nothing rounded yet
    EXPECT_EQ(v.GetCapacity(), 0u);
    EXPECT_DEATH(v.AddElement(new Item(1, &deaths)), "");
    EXPECT_DEATH(CObjectVector(1, 0), "");
}

} // namespace

#include <gtest/gtest.h>

#include <vector>

#include <vorn/base/ArrayIndexOutOfBoundsException.h>
#include <vorn/base/MemoryException.h>
#include <vorn/base/Object.h>
#include <vorn/base/Ref.h>
#include <vorn/util/NoSuchElementException.h>
#include <vorn/util/Vector.h>

#include "support/AllocFailure.h"

namespace {

using namespace vorn::base;
using vorn::test::CountAllocations;
using vorn::test::FailAllocation;
using vorn::util::CVector;
using vorn::util::detail::RoundCapacity;

// Counts live copies, so that every construction has its destruction.
struct Tracked {
    static int live;
    static bool failCopies;
    explicit Tracked(int v) : value(v) { ++live; }
    Tracked(const Tracked& other) : value(other.value) {
        if (failCopies)
            throw CMemoryException("test", 1);
        ++live;
    }
    Tracked& operator=(const Tracked&) = default;
    ~Tracked() { --live; }
    bool operator==(const Tracked& other) const { return value == other.value; }
    int value;
};
int Tracked::live = 0;
bool Tracked::failCopies = false;

std::vector<int> Values(const CVector<Tracked>& v) {
    std::vector<int> out;
    for (unsigned int i = 0; i < v.GetSize(); ++i)
        out.push_back(v[i].value);
    return out;
}

CVector<Tracked> Numbers(int count, unsigned int increment = 5) {
    CVector<Tracked> v(10, increment);
    for (int i = 0; i < count; ++i)
        v.AddElement(Tracked(i));
    return v;
}

TEST(Vector, RoundingWrapsForHugeSizes) {
    EXPECT_EQ(RoundCapacity(0, 5), 0u);
    EXPECT_EQ(RoundCapacity(10, 5), 10u);
    EXPECT_EQ(RoundCapacity(11, 5), 15u);
    EXPECT_EQ(RoundCapacity(7, 1), 7u);
    // The product (g - 1) * n wraps: a plain rounding up would give 0xFFFFFFFF and 0x80000001.
    EXPECT_EQ(RoundCapacity(0xFFFFFFFEu, 5), 1u);
    EXPECT_EQ(RoundCapacity(0x80000000u, 3), 0x80000000u);
}

TEST(Vector, CapacityMovesInIncrements) {
    CVector<int> v;
    EXPECT_EQ(v.GetCapacity(), 10u);
    for (int i = 0; i < 11; ++i)
        v.AddElement(i);
    EXPECT_EQ(v.GetCapacity(), 15u);
    v.RemoveElementAt(0);
    EXPECT_EQ(v.GetCapacity(), 10u);
    v.RemoveAllElements();
    EXPECT_EQ(v.GetCapacity(), 5u);
    v.TrimToSize();
    EXPECT_EQ(v.GetCapacity(), 0u);
    v.InsertElementAt(4, 0);
    EXPECT_EQ(v.GetCapacity(), 5u);
    EXPECT_EQ(CVector<int>(7, 5).GetCapacity(), 10u);
    EXPECT_EQ(CountAllocations([] { CVector<int> none(0, 5); }), 0u);
    unsigned long asked = CountAllocations([&] { v.EnsureCapacity(0xFFFFFFFEu); });
    EXPECT_EQ(asked, 0u);
}

TEST(Vector, ElementsLiveExactlyAsLongAsTheyAreHeld) {
    {
        CVector<Tracked> v = Numbers(12);
        EXPECT_EQ(Tracked::live, 12);
        v.InsertElementAt(Tracked(100), 3);
        v.RemoveElementAt(0);
        v.RemoveElementAt(v.GetSize() - 1);
        v.SetElementAt(Tracked(200), 0);
        EXPECT_EQ(Tracked::live, 11);
        EXPECT_EQ(Values(v), (std::vector<int>{200, 2, 100, 3, 4, 5, 6, 7, 8, 9, 10}));
        CVector<Tracked> copy(v);
        EXPECT_EQ(Tracked::live, 22);
        copy = Numbers(2);
        EXPECT_EQ(Tracked::live, 13);
        EXPECT_EQ(copy.GetCapacity(), 5u); // compacted after shrinking from 11 to 2
        v.RemoveAllElements();
        EXPECT_EQ(Tracked::live, 2);
    }
    EXPECT_EQ(Tracked::live, 0);
}

// The removed element's destructor runs once the vector is whole and smaller.
struct Witness {
    int value;
    ~Witness();
};
CVector<Witness>* g_watched = nullptr;
std::vector<int> g_sizesSeen;
Witness::~Witness() {
    if (g_watched != nullptr)
        g_sizesSeen.push_back(static_cast<int>(g_watched->GetSize()) * 100 +
                              g_watched->GetLastElement().value);
}

TEST(Vector, RemovedElementDiesAfterTheGapCloses) {
    CVector<Witness> v;
    for (int i = 1; i <= 3; ++i)
        v.AddElement(Witness{i});
    g_watched = &v;
    v.RemoveElementAt(0);
    g_watched = nullptr;
    EXPECT_EQ(g_sizesSeen, (std::vector<int>{203}));
}

TEST(Vector, OwnElementsCanBeAddedAcrossGrowth) {
    CVector<Tracked> v = Numbers(10);
    ASSERT_EQ(v.GetCapacity(), 10u);
    v.AddElement(v[4]); // the buffer moves while the value is read
    v.InsertElementAt(v[10], 0);
    EXPECT_EQ(v.GetSize(), 12u);
    EXPECT_EQ(v[0].value, 4);
    EXPECT_EQ(v.GetLastElement().value, 4);
    EXPECT_EQ(v.GetIndexOf(Tracked(4)), 0);
    EXPECT_FALSE(v.Contains(Tracked(42)));
}

TEST(Vector, CountedHandlesSurviveRelocation) {
    CRef<CObject> object(new CObject);
    {
        CVector<CRef<CObject>> v(1, 1);
        for (int i = 0; i < 20; ++i)
            v.AddElement(object);
        EXPECT_EQ(object.GetBlock()->GetCount(), 21);
        while (v.GetSize() > 3)
            v.RemoveElementAt(1);
        EXPECT_EQ(object.GetBlock()->GetCount(), 4);
        EXPECT_EQ(v[2].GetPointer(), object.GetPointer());
    }
    EXPECT_EQ(object.GetBlock()->GetCount(), 1);
}

TEST(Vector, BadIndexesAndEmptyEnds) {
    CVector<int> v;
    v.AddElement(1);
    const CVector<int>& constant = v;
    auto outOfBounds = [](auto call) {
        try {
            call();
            ADD_FAILURE() << "no exception";
        } catch (const CArrayIndexOutOfBoundsException& e) {
            EXPECT_STREQ(e.GetSourceFile(), "vorn/util/Vector");
            EXPECT_EQ(e.GetErrorDescription(), nullptr);
        }
    };
    outOfBounds([&] { v.GetElementAt(1); });
    outOfBounds([&] { constant[1]; });
    outOfBounds([&] { v.SetElementAt(5, 1); });
    outOfBounds([&] { v.RemoveElementAt(1); });
    outOfBounds([&] { v.InsertElementAt(5, 2); });
    EXPECT_EQ(v.GetSize(), 1u);
    v.RemoveElementAt(0);
    try {
        constant.GetFirstElement();
        FAIL();
    } catch (const vorn::util::CNoSuchElementException& e) {
        EXPECT_STREQ(e.GetSourceFile(), "vorn/util/Vector");
        EXPECT_EQ(e.GetMessage(), nullptr);
    }
    EXPECT_THROW(v.GetLastElement(), vorn::util::CNoSuchElementException);
}

TEST(Vector, FailuresKeepBufferAndSize) {
    {
        CVector<Tracked> v = Numbers(10);
        auto expectMemory = [](auto call) {
            FailAllocation fail(1);
            try {
                call();
                ADD_FAILURE() << "no exception";
            } catch (const CMemoryException& e) {
                EXPECT_STREQ(e.GetSourceFile(), "vorn/util/Vector");
            }
        };
        expectMemory([&] { v.AddElement(Tracked(10)); });
        expectMemory([&] { v.InsertElementAt(Tracked(10), 2); });
        expectMemory([&] { v.EnsureCapacity(11); });
        EXPECT_EQ(v.GetCapacity(), 10u);
        EXPECT_EQ(Values(v), (std::vector<int>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
        EXPECT_EQ(Tracked::live, 10);

        // A copy that throws part-way changes nothing either.
        Tracked::failCopies = true;
        EXPECT_THROW(v.InsertElementAt(v[0], 1), CMemoryException);
        EXPECT_THROW(CVector<Tracked>{v}, CMemoryException);
        Tracked::failCopies = false;
        EXPECT_EQ(v.GetSize(), 10u);

        v.AddElement(Tracked(10));
        ASSERT_EQ(v.GetCapacity(), 15u);
        expectMemory([&] { v.RemoveElementAt(10); });
        EXPECT_EQ(v.GetSize(), 10u); // removed, but the buffer couldn't shrink
        EXPECT_EQ(v.GetCapacity(), 15u);
        expectMemory([&] { v.TrimToSize(); });
        EXPECT_EQ(v.GetCapacity(), 15u);
        EXPECT_EQ(Tracked::live, 10);

        {
            FailAllocation fail(1);
            EXPECT_THROW(CVector<Tracked>{v}, CMemoryException);
        }
        EXPECT_EQ(Tracked::live, 10);
    }
    EXPECT_EQ(Tracked::live, 0);
}

TEST(VectorDeathTest, ZeroIncrementFaultsOnRounding) {
    CVector<int> v(0, 0);
    EXPECT_DEATH(v.AddElement(1), "");
}

} // namespace

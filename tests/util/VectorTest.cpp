#include <gtest/gtest.h>

#include <vector>

#include <vorn/base/ArrayIndexOutOfBoundsException.h>
#include <vorn/base/MemoryException.h>
#include <vorn/util/NoSuchElementException.h>
#include <vorn/util/Vector.h>

#include "support/AllocFailure.h"
#include "support/Throws.h"

namespace {

using vorn::base::CMemoryException;
using vorn::test::ExpectThrow;
using vorn::test::FailAllocation;
using vorn::util::CVector;

// Counts live copies, so that every construction has its destruction; copies can be made to fail.
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

CVector<Tracked> Numbers(int count) {
    CVector<Tracked> v;
    for (int i = 0; i < count; ++i)
        v.AddElement(Tracked(i));
    return v;
}

TEST(Vector, ElementsLiveExactlyAsLongAsTheyAreHeld) {
    {
        CVector<Tracked> v = Numbers(12);
        EXPECT_EQ(v.GetCapacity(), 15u);
        v.InsertElementAt(Tracked(100), 3);
        v.RemoveElementAt(0);
        v.RemoveElementAt(v.GetSize() - 1);
        v.SetElementAt(Tracked(200), 0);
        EXPECT_EQ(Values(v), (std::vector<int>{200, 2, 100, 3, 4, 5, 6, 7, 8, 9, 10}));
        EXPECT_EQ(Tracked::live, 11);
        CVector<Tracked> copy(v);
        copy = Numbers(2);
        EXPECT_EQ(Tracked::live, 13);
        EXPECT_EQ(copy.GetCapacity(), 5u); // compacted after shrinking from 11 to 2
        v.RemoveAllElements();
        EXPECT_EQ(v.GetCapacity(), 5u);
        v.TrimToSize();
        EXPECT_EQ(v.GetCapacity(), 0u);
        v.AddElement(Tracked(1));
        EXPECT_EQ(v.GetCapacity(), 5u);
    }
    EXPECT_EQ(Tracked::live, 0);
}

// A removed element is destroyed once the vector is whole again.
struct Witness {
    int value;
    ~Witness();
};
CVector<Witness>* g_watched = nullptr;
int g_seen = 0;
Witness::~Witness() {
    if (g_watched != nullptr)
        g_seen = static_cast<int>(g_watched->GetSize()) * 100 + g_watched->GetLastElement().value;
}

TEST(Vector, RemovedElementDiesAfterTheGapCloses) {
    CVector<Witness> v;
    for (int i = 1; i <= 3; ++i)
        v.AddElement(Witness{i});
    g_watched = &v;
    v.RemoveElementAt(0);
    g_watched = nullptr;
    EXPECT_EQ(g_seen, 203);
}

TEST(Vector, OwnElementsCanBeAddedAcrossGrowth) {
    CVector<Tracked> v = Numbers(10);
    v.AddElement(v[4]); // the buffer moves while the value is read
    v.InsertElementAt(v[10], 0);
    EXPECT_EQ(v[0].value, 4);
    EXPECT_EQ(v.GetLastElement().value, 4);
    EXPECT_EQ(v.GetIndexOf(Tracked(4)), 0);
    EXPECT_FALSE(v.Contains(Tracked(42)));
}

TEST(Vector, BadIndexesAndEmptyEnds) {
    using vorn::base::CArrayIndexOutOfBoundsException;
    CVector<int> v;
    v.AddElement(1);
    for (auto call : {+[](CVector<int>& w) { w.GetElementAt(1); },
                      +[](CVector<int>& w) { w.SetElementAt(5, 1); },
                      +[](CVector<int>& w) { w.RemoveElementAt(1); },
                      +[](CVector<int>& w) { w.InsertElementAt(5, 2); }})
        ExpectThrow<CArrayIndexOutOfBoundsException>([&] { call(v); }, "vorn/util/Vector");
    EXPECT_EQ(v.GetSize(), 1u);
    v.RemoveElementAt(0);
    ExpectThrow<vorn::util::CNoSuchElementException>([&] { v.GetFirstElement(); },
                                                     "vorn/util/Vector");
    ExpectThrow<vorn::util::CNoSuchElementException>([&] { v.GetLastElement(); },
                                                     "vorn/util/Vector");
}

TEST(Vector, FailuresKeepBufferAndSize) {
    {
        CVector<Tracked> v = Numbers(10);
        auto failing = [](auto call) { vorn::test::ExpectNoMemory(call, "vorn/util/Vector"); };
        failing([&] { v.AddElement(Tracked(10)); });
        failing([&] { v.InsertElementAt(Tracked(10), 2); });
        failing([&] { CVector<Tracked>{v}; });
        // A copy that throws part-way changes nothing either.
        Tracked::failCopies = true;
        EXPECT_THROW(v.InsertElementAt(v[0], 1), CMemoryException);
        EXPECT_THROW(CVector<Tracked>{v}, CMemoryException);
        Tracked::failCopies = false;
        EXPECT_EQ(v.GetCapacity(), 10u);
        EXPECT_EQ(Values(v), (std::vector<int>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9}));

        v.AddElement(Tracked(10));
        failing([&] { v.RemoveElementAt(10); });
        EXPECT_EQ(v.GetSize(), 10u); // removed, but the buffer couldn't shrink
        failing([&] { v.TrimToSize(); });
        EXPECT_EQ(v.GetCapacity(), 15u);
        EXPECT_EQ(Tracked::live, 10);
    }
    EXPECT_EQ(Tracked::live, 0);
}

TEST(VectorDeathTest, ZeroIncrementFaultsOnRounding) {
    CVector<int> v(0, 0); // nothing rounded yet
    EXPECT_DEATH(v.AddElement(1), "");
}

} // namespace

#include <gtest/gtest.h>

#include <vorn/base/Atomic.h>
#include <vorn/base/Object.h>
#include <vorn/base/Ref.h>

#include "support/AllocFailure.h"
#include "support/Throws.h"

namespace {

using namespace vorn::base;
using vorn::test::ExpectNoMemory;
using vorn::test::ExpectThrowAt;

struct Counted : CObject {
    explicit Counted(int* counter) : deaths(counter) {}
    ~Counted() override { ++*deaths; }
    int* deaths;
};

struct Other : CObject {};

struct IFace {
    virtual ~IFace() {}
    virtual int Value() const = 0;
};
struct Both : CObject, IFace {
    int Value() const override { return 5; }
};

TEST(Ref, EmptyHandlesAllocateNothingAndRefuseAccess) {
    unsigned long n = vorn::test::CountAllocations([] {
        CRef<Other> a(nullptr), b(a), c;
        c = b;
        c = static_cast<Other*>(nullptr);
        EXPECT_TRUE(c.IsNull());
    });
    EXPECT_EQ(n, 0u);
    EXPECT_EQ(sizeof(CRef<Other>), 2 * sizeof(void*));
    CRef<Other> empty;
    const CRef<Other>& constEmpty = empty;
    ExpectThrowAt<CNullReferenceException>([&] { constEmpty->GetHashCode(); }, "vorn/base/Ref",
                                           424);
    ExpectThrowAt<CNullReferenceException>([&] { empty->GetHashCode(); }, "vorn/base/Ref", 438);
}

TEST(Ref, CopiesAndAssignmentsCountAndTheLastDeletesOnce) {
    int deaths = 0;
    auto* a = new CRef<Counted>(new Counted(&deaths));
    auto* b = new CRef<Counted>(*a);
    CRef<Counted> c(*b);
    EXPECT_EQ(c.GetBlock()->GetCount(), 3);
    delete b;
    delete a;
    EXPECT_EQ(c.GetBlock()->GetCount(), 1);
    CRef<Counted> d(c);
    const CRef<Counted>& self = c;
    c = self;
    d = c; // same block: drops and regains one
    EXPECT_EQ(c.GetBlock()->GetCount(), 2);
    EXPECT_EQ(deaths, 0);
    d = new Counted(&deaths);
    c = d;
    EXPECT_EQ(deaths, 1);
    c = vorn::null;
    EXPECT_TRUE(c == vorn::null && d != vorn::null);
    EXPECT_EQ(d.GetBlock()->GetCount(), 1);
}

TEST(Ref, FailedBlockAllocationLeavesHandleAsItWas) {
    int deaths = 0;
    CRef<Counted> a(new Counted(&deaths));
    Counted* fresh = new Counted(&deaths);
    ExpectNoMemory([&] { a = fresh; }, "vorn/base/Ref", 280);
    EXPECT_NE(a.GetPointer(), fresh);
    EXPECT_EQ(a.GetBlock()->GetCount(), 1);
    ExpectNoMemory([&] { CRef<Counted> b(fresh); }, "vorn/base/Ref", 186);
    delete fresh;
}

TEST(Ref, ConversionChecksTheType) {
    CRef<CObject> object(new Both);
    CRef<IFace> face(object);
    EXPECT_EQ(face->Value(), 5);
    EXPECT_EQ(object.GetBlock(), face.GetBlock());
    CRef<CObject> back(face);
    EXPECT_TRUE(back == object);
    ExpectThrowAt<CClassCastException>([&] { CRef<Other> wrong(object); }, "vorn/base/Ref", 61);
    EXPECT_EQ(object.GetBlock()->GetCount(), 3);
    EXPECT_TRUE(CRef<Other>(CRef<CObject>{}).IsNull());
    // The last handle deletes through its own pointer, here the interface.
    object = vorn::null;
    back = vorn::null;
}

TEST(Ref, UnownedBlockIsHonoured) {
    Other local;
    RefCountedPtr<Other> block(&local, false);
    EXPECT_TRUE(block.Release());
    EXPECT_EQ(block.GetCount(), 0);
    EXPECT_TRUE(block.Release()); // stays at 0
    ExpectThrowAt<CIllegalArgumentException>([] { RefCountedPtr<Other> bad(nullptr, true); },
                                             "vorn/base/RefCountedPtr", 96, "Invalid pointer.");
}

TEST(Atomic, Helpers) {
    int volatile target = 5;
    EXPECT_FALSE(AtomicCompareAndSwap(target, 9, 4));
    EXPECT_EQ(target, 5);
    EXPECT_TRUE(AtomicCompareAndSwap(target, 9, 5));
    EXPECT_EQ(AtomicIncrement(target), 10);
    EXPECT_EQ(AtomicDecrement(target), 9);
}

} // namespace

#include <gtest/gtest.h>

#include <vorn/base/Atomic.h>
#include <vorn/base/Object.h>
#include <vorn/base/Ref.h>

#include "support/AllocFailure.h"

namespace {

using namespace vorn::base;

struct Counted : CObject {
    explicit Counted(int* deaths) : deaths(deaths) {}
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

TEST(Ref, EmptyHandlesAllocateNothing) {
    unsigned long n = vorn::test::CountAllocations([] {
        CRef<Other> a(nullptr);
        CRef<Other> b(a);
        CRef<Other> c;
        c = b;
        c = static_cast<Other*>(nullptr);
        EXPECT_TRUE(c.IsNull());
        EXPECT_EQ(a.GetBlock(), nullptr);
    });
    EXPECT_EQ(n, 0u);
    EXPECT_EQ(sizeof(CRef<Other>), 2 * sizeof(void*));
}

TEST(Ref, NullAccessThrowsWithItsLine) {
    CRef<Other> empty;
    const CRef<Other>& constEmpty = empty;
    try {
        constEmpty->GetHashCode();
        FAIL();
    } catch (const CNullReferenceException& e) {
        EXPECT_STREQ(e.GetSourceFile(), "vorn/base/Ref");
        EXPECT_EQ(e.GetSourceLine(), 424u);
        EXPECT_EQ(e.GetErrorDescription(), nullptr);
        EXPECT_EQ(e.GetMessage(), nullptr);
    }
    try {
        empty->GetHashCode();
        FAIL();
    } catch (const CNullReferenceException& e) {
        EXPECT_EQ(e.GetSourceLine(), 438u);
    }
}

TEST(Ref, LastOfThreeCopiesDeletesOnce) {
    int deaths = 0;
    auto* a = new CRef<Counted>(new Counted(&deaths));
    auto* b = new CRef<Counted>(*a);
    auto* c = new CRef<Counted>(*b);
    EXPECT_EQ(a->GetBlock()->GetCount(), 3);
    delete b;
    delete a;
    EXPECT_EQ(deaths, 0);
    EXPECT_EQ(c->GetBlock()->GetCount(), 1);
    delete c;
    EXPECT_EQ(deaths, 1);
}

TEST(Ref, AssignmentsKeepCountsRight) {
    int deaths = 0;
    CRef<Counted> a(new Counted(&deaths));
    CRef<Counted> b(a);
    a = a;
    EXPECT_EQ(a.GetBlock()->GetCount(), 2);
    b = a; // same block: drops and regains one
    EXPECT_EQ(a.GetBlock()->GetCount(), 2);
    EXPECT_EQ(deaths, 0);
    b = new Counted(&deaths);
    EXPECT_EQ(a.GetBlock()->GetCount(), 1);
    a = b;
    EXPECT_EQ(deaths, 1);
    a = vorn::null;
    EXPECT_TRUE(a == vorn::null);
    EXPECT_TRUE(b != vorn::null);
    EXPECT_EQ(b.GetBlock()->GetCount(), 1);
}

TEST(Ref, FailedBlockAllocationLeavesHandleAsItWas) {
    int deaths = 0;
    CRef<Counted> a(new Counted(&deaths));
    Counted* fresh = new Counted(&deaths);
    try {
        vorn::test::FailAllocation fail(1);
        a = fresh;
        FAIL();
    } catch (const CMemoryException& e) {
        EXPECT_STREQ(e.GetSourceFile(), "vorn/base/Ref");
        EXPECT_EQ(e.GetSourceLine(), 280u);
    }
    EXPECT_NE(a.GetPointer(), fresh);
    EXPECT_EQ(a.GetBlock()->GetCount(), 1);
    delete fresh;
    Counted* lost = new Counted(&deaths);
    try {
        vorn::test::FailAllocation fail(1);
        CRef<Counted> b(lost);
        FAIL();
    } catch (const CMemoryException& e) {
        EXPECT_EQ(e.GetSourceLine(), 186u);
    }
    delete lost;
}

TEST(Ref, ConversionChecksTheType) {
    CRef<CObject> object(new Both);
    CRef<IFace> face(object);
    EXPECT_EQ(face->Value(), 5);
    EXPECT_EQ(object.GetBlock(), face.GetBlock());
    EXPECT_EQ(object.GetBlock()->GetCount(), 2);
    CRef<CObject> back(face);
    EXPECT_TRUE(back == object);
    try {
        CRef<Other> wrong(object);
        FAIL();
    } catch (const CClassCastException& e) {
        EXPECT_STREQ(e.GetSourceFile(), "vorn/base/Ref");
        EXPECT_EQ(e.GetSourceLine(), 61u);
    }
    EXPECT_EQ(object.GetBlock()->GetCount(), 3);
    CRef<Other> none(CRef<CObject>{});
    EXPECT_TRUE(none.IsNull());
    // The last handle deletes through its own pointer, here the interface.
    object = vorn::null;
    back = vorn::null;
}

TEST(Ref, UnownedBlockIsHonoured) {
    Other local;
    RefCountedPtr<Other> block(&local, false);
    EXPECT_EQ(block.GetPointer(), &local);
    EXPECT_FALSE(block.IsOwned());
    EXPECT_TRUE(block.Release());
    EXPECT_EQ(block.GetCount(), 0);
    EXPECT_TRUE(block.Release()); // stays at 0
    try {
        RefCountedPtr<Other> bad(nullptr, true);
        FAIL();
    } catch (const CIllegalArgumentException& e) {
        EXPECT_STREQ(e.GetSourceFile(), "vorn/base/RefCountedPtr");
        EXPECT_EQ(e.GetSourceLine(), 96u);
        EXPECT_STREQ(e.GetErrorDescription(), "Invalid pointer.");
    }
}

TEST(Atomic, Helpers) {
    int volatile target = 5;
    EXPECT_FALSE(AtomicCompareAndSwap(target, 9, 4));
    EXPECT_EQ(target, 5);
    EXPECT_TRUE(AtomicCompareAndSwap(target, 9, 5));
    EXPECT_EQ(target, 9);
    EXPECT_EQ(AtomicIncrement(target), 10);
    EXPECT_EQ(AtomicDecrement(target), 9);
}

} // namespace

#include <gtest/gtest.h>

#include <new>

#include <vorn/base/Base.h>
#include <vorn/base/MemoryException.h>

#include "support/AllocFailure.h"

namespace {

using namespace vorn::base;

struct Plain : CBase {
    int value = 7;
};

struct Throwing : CBase {
    Throwing() { throw 42; }
};

template <typename F> CMemoryException CatchMemory(F&& body) {
    try {
        body();
    } catch (const CMemoryException& e) {
        return e;
    }
    ADD_FAILURE() << "no CMemoryException";
    return CMemoryException(nullptr, 0);
}

TEST(BaseOperators, PlainNewFailsWithTheirOwnLines) {
    vorn::test::FailAllocation fail(1);
    CMemoryException e = CatchMemory([] { delete new Plain; });
    EXPECT_STREQ(e.GetSourceFile(), "vorn/base/Base");
    EXPECT_EQ(e.GetSourceLine(), 148u);
    EXPECT_EQ(e.GetErrorDescription(), nullptr);
    EXPECT_EQ(e.GetMessage(), nullptr);
}

TEST(BaseOperators, ArrayNewFailsAtLine196) {
    vorn::test::FailAllocation fail(1);
    CMemoryException e = CatchMemory([] { delete[] new Plain[3]; });
    EXPECT_STREQ(e.GetSourceFile(), "vorn/base/Base");
    EXPECT_EQ(e.GetSourceLine(), 196u);
}

TEST(BaseOperators, SourceFormsReportTheCallersPlace) {
    {
        vorn::test::FailAllocation fail(1);
        CMemoryException e = CatchMemory([] { delete new ("caller.cpp", 12) Plain; });
        EXPECT_STREQ(e.GetSourceFile(), "caller.cpp");
        EXPECT_EQ(e.GetSourceLine(), 12u);
    }
    {
        vorn::test::FailAllocation fail(1);
        CMemoryException e = CatchMemory([] { delete[] new ("array.cpp", 99) Plain[2]; });
        EXPECT_STREQ(e.GetSourceFile(), "array.cpp");
        EXPECT_EQ(e.GetSourceLine(), 99u);
    }
    Plain* p = new ("caller.cpp", 12) Plain;
    EXPECT_EQ(p->value, 7);
    delete p;
}

TEST(BaseOperators, PlacementFormsReturnThePlaceAndAllocateNothing) {
    alignas(Plain) unsigned char storage[sizeof(Plain) * 4];
    unsigned long count = vorn::test::CountAllocations([&] {
        EXPECT_EQ(CBase::operator new(1000, storage), storage);
        EXPECT_EQ(CBase::operator new[](1000, storage), storage);
        EXPECT_EQ(CBase::operator new(5, storage, "f", 1), storage);
        EXPECT_EQ(CBase::operator new[](5, storage, "f", 1), storage);
        Plain* p = new (static_cast<void*>(storage)) Plain;
        EXPECT_EQ(static_cast<void*>(p), storage);
        // Called through pointers, as the compiler would otherwise treat the storage as freed.
        void (*volatile del)(void*, void*) noexcept = &CBase::operator delete;
        void (*volatile delArray)(void*, void*, const char*, int) noexcept =
            &CBase::operator delete[];
        del(p, storage);
        delArray(p, storage, "f", 1);
        EXPECT_EQ(p->value, 7);
    });
    EXPECT_EQ(count, 0u);
}

TEST(BaseOperators, ConstructorFailureGivesTheBlockBack) {
    // The matching placement delete frees the block; LeakSanitizer would see it otherwise.
    EXPECT_THROW(new ("f.cpp", 1) Throwing, int);
    EXPECT_THROW(new Throwing, int);
}

TEST(Null, AssignmentsDoNothing) {
    CNull a;
    CNull b;
    a = b;
    a = CNull();
    (void)vorn::null;
    SUCCEED();
}

} // namespace

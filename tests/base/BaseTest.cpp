#include <gtest/gtest.h>

#include <new>

#include <vorn/base/Base.h>

#include "support/AllocFailure.h"
#include "support/Throws.h"

namespace {

using namespace vorn::base;
using vorn::test::ExpectNoMemory;

struct Plain : CBase {
    int value = 7;
};

struct Throwing : CBase {
    Throwing() { throw 42; }
};

TEST(BaseOperators, FailuresReportTheirOwnLinesOrTheCallersPlace) {
    ExpectNoMemory([] { delete new Plain; }, "vorn/base/Base", 148);
    ExpectNoMemory([] { delete[] new Plain[3]; }, "vorn/base/Base", 196);
    ExpectNoMemory([] { delete new ("caller.cpp", 12) Plain; }, "caller.cpp", 12);
    ExpectNoMemory([] { delete[] new ("array.cpp", 99) Plain[2]; }, "array.cpp", 99);
    Plain* p = new ("caller.cpp", 12) Plain;
    EXPECT_EQ(p->value, 7);
    delete p;
}

TEST(BaseOperators, PlacementFormsReturnThePlaceAndAllocateNothing) {
    alignas(Plain) unsigned char storage[sizeof(Plain) * 4];
    unsigned long count = vorn::test::CountAllocations([&] {
        EXPECT_EQ(CBase::operator new(1000, storage), storage);
        EXPECT_EQ(CBase::operator new[](5, storage, "f", 1), storage);
        Plain* p = new (static_cast<void*>(storage)) Plain;
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

} // namespace

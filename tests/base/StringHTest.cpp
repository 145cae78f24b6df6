#include <gtest/gtest.h>

#include <vorn/base/MemoryException.h>
#include <vorn/base/StringH.h>

#include "support/AllocFailure.h"
#include "support/Throws.h"

namespace {

using vorn::base::CString;
using vorn::base::CStringH;
using vorn::test::CountAllocations;

TEST(StringH, EmptyWritesTheDigitZero) {
    CStringH s("abc");
    s.Empty();
    EXPECT_EQ(s.GetLength(), 0u);
    EXPECT_TRUE(s.IsEmpty());
    EXPECT_STREQ(s, "0bc");
    // An empty source empties the same way, and the next text reuses the handle.
    CStringH t("xyz");
    t = CString();
    EXPECT_STREQ(t, "0yz");
    EXPECT_EQ(CountAllocations([&] { t = "ab"; }), 0u);
    EXPECT_STREQ(t, "ab");
    // What the copies take is the length, not the bytes behind it.
    EXPECT_TRUE(CString(s).IsEmpty());
    EXPECT_EQ(static_cast<const char*>(CStringH(s)), nullptr);
    CString fromHandle("old");
    fromHandle = s;
    EXPECT_TRUE(fromHandle.IsEmpty());
    fromHandle = t;
    EXPECT_STREQ(fromHandle, "ab");
}

TEST(StringH, GrowsToTheExactSizeAndKeepsItsTextWhenItCannot) {
    CStringH s("");
    EXPECT_STREQ(s, "");
    EXPECT_EQ(CountAllocations([&] { s = "abc"; }), 1u);
    EXPECT_EQ(CountAllocations([&] { s = "xyz"; }), 0u);
    EXPECT_EQ(CountAllocations([&] { s = "abcd"; }), 1u); // no rounding: one byte more grows
    vorn::test::ExpectNoMemory([&] { s = "abcdefgh"; }, "vorn/base/StringH", 232);
    EXPECT_STREQ(s, "abcd");
    EXPECT_EQ(s.GetLength(), 4u);
    vorn::test::ExpectNoMemory([] { CStringH fresh(CString("text")); }, "vorn/base/StringH", 232);
    CStringH copy(s), assigned;
    assigned = copy;
    EXPECT_STREQ(assigned, "abcd");
    EXPECT_NE(static_cast<const char*>(assigned), static_cast<const char*>(s));
}

TEST(StringH, ComparesWithEmptinessFirst) {
    EXPECT_EQ(static_cast<const char*>(CStringH()), nullptr);
    EXPECT_TRUE(CStringH() == CString());
    EXPECT_TRUE(CString() == CStringH(""));
    EXPECT_EQ(CStringH("").Compare(nullptr), 0);
    EXPECT_EQ(CStringH("").Compare(""), 0);
    EXPECT_LT(CStringH("abc").Compare("abd"), 0);
    EXPECT_EQ(CStringH("a").Compare(CStringH()), 1);
    EXPECT_EQ(CStringH().Compare(CString("a")), -1);
    CStringH a("a");
    const char* null = nullptr;
    EXPECT_TRUE(a == "a" && "a" == a && a == CString("a") && CString("a") == a && a == CStringH(a));
    EXPECT_TRUE(a != "b" && "b" != a && a != CString("b") && CString("b") != a && a != CStringH());
    EXPECT_TRUE(CStringH() == null && null == CStringH(""));
    EXPECT_FALSE(a == null);
}

} // namespace

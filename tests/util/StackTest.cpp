#include <gtest/gtest.h>

#include <vorn/util/EmptyStackException.h>
#include <vorn/util/Stack.h>

#include "support/Throws.h"

namespace {

using vorn::util::CEmptyStackException;
using vorn::util::CStack;

TEST(Stack, LastInFirstOut) {
    CStack<int> s;
    for (int i = 0; i < 11; ++i)
        s.Push(i);
    EXPECT_EQ(s.GetCapacity(), 15u);
    s.Peek() = 42;
    EXPECT_EQ(s.Pop(), 42);
    EXPECT_EQ(s.GetCapacity(), 10u); // popping gives memory back
    EXPECT_EQ(s.Pop(), 9);
    EXPECT_EQ(static_cast<const CStack<int>&>(s).Peek(), 8);
}

TEST(Stack, EmptyStackRefuses) {
    CStack<int> s;
    s.Push(1);
    s.Pop();
    vorn::test::ExpectThrow<CEmptyStackException>([&] { s.Pop(); }, "vorn/util/Stack");
    vorn::test::ExpectThrow<CEmptyStackException>([&] { s.Peek(); }, "vorn/util/Stack");
}

} // namespace

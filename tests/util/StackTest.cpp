#include <gtest/gtest.h>

#include <vorn/util/EmptyStackException.h>
#include <vorn/util/Stack.h>

namespace {

using vorn::util::CEmptyStackException;
using vorn::util::CStack;

TEST(Stack, LastInFirstOut) {
    CStack<int> s;
    for (int i = 0; i < 11; ++i)
        s.Push(i);
    EXPECT_EQ(s.GetCapacity(), 15u);
    EXPECT_EQ(s.Peek(), 10);
    s.Peek() = 42;
    EXPECT_EQ(s.Pop(), 42);
    EXPECT_EQ(s.GetCapacity(), 10u); // popping gives memory back
    EXPECT_EQ(s.Pop(), 9);
    const CStack<int>& constant = s;
    EXPECT_EQ(constant.Peek(), 8);
    EXPECT_EQ(s.GetSize(), 9u);
}

TEST(Stack, EmptyStackRefuses) {
    CStack<int> s;
    s.Push(1);
    s.Pop();
    for (int which = 0; which < 2; ++which) {
        try {
            (void)(which == 0 ? s.Pop() : s.Peek());
            ADD_FAILURE() << "no exception";
        } catch (const CEmptyStackException& e) {
            EXPECT_STREQ(e.GetSourceFile(), "vorn/util/Stack");
            EXPECT_EQ(e.GetErrorDescription(), nullptr);
            EXPECT_EQ(e.GetMessage(), nullptr);
        }
    }
    EXPECT_THROW(static_cast<const CStack<int>&>(s).Peek(), CEmptyStackException);
}

} // namespace

// Checks that a call throws an exception of the family of one type, from one source.
#pragma once

#include <gtest/gtest.h>

namespace vorn::test {

// `description` null means none; the message must be null either way.
template <typename E, typename F>
void ExpectThrow(F&& call, const char* source, const char* description = nullptr) {
    try {
        call();
        ADD_FAILURE() << "no exception";
    } catch (const E& e) {
        EXPECT_STREQ(e.GetSourceFile(), source);
        EXPECT_STREQ(e.GetErrorDescription(), description);
        EXPECT_EQ(e.GetMessage(), nullptr);
    }
}

} // namespace vorn::test

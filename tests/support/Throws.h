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

// The same with the line of the throw, and a message that may be checked too (null: none).
template <typename E, typename F>
void ExpectThrowAt(F&& call, const char* source, unsigned int line,
                   const char* description = nullptr, const char* message = nullptr) {
    try {
        call();
        ADD_FAILURE() << "no exception from " << source << ":" << line;
    } catch (const E& e) {
        EXPECT_STREQ(e.GetSourceFile(), source);
        EXPECT_EQ(e.GetSourceLine(), line);
        EXPECT_STREQ(e.GetErrorDescription(), description);
        EXPECT_STREQ(e.GetMessage(), message);
    }
}

} // namespace vorn::test

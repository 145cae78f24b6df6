// Checks that a call throws an exception of the family of one type, from one source.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include <vorn/base/Class.h>
#include <vorn/base/MemoryException.h>
#include <vorn/base/win/WinSystemErrorException.h>

#include "support/AllocFailure.h"

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

// `call` with its `nth` allocation failing throws CMemoryException from `source`, at `line`
// unless that is 0.
template <typename F>
void ExpectNoMemory(F&& call, const char* source, unsigned int line = 0, unsigned long nth = 1) {
    try {
        FailAllocation fail(nth);
        call();
        ADD_FAILURE() << "no exception from " << source << ":" << line;
    } catch (const vorn::base::CMemoryException& e) {
        EXPECT_STREQ(e.GetSourceFile(), source);
        if (line != 0) {
            EXPECT_EQ(e.GetSourceLine(), line);
        }
        EXPECT_EQ(e.GetErrorDescription(), nullptr);
        EXPECT_EQ(e.GetMessage(), nullptr);
    }
}

// `call` throws CWinSystemErrorException from `source` with `description` and the system's
// `code`, whose text is the message.
template <typename F>
void ExpectSystemError(F&& call, const char* source, const char* description, unsigned long code) {
    try {
        call();
        ADD_FAILURE() << "no exception";
    } catch (const vorn::base::win::CWinSystemErrorException& e) {
        EXPECT_STREQ(e.GetSourceFile(), source);
        EXPECT_STREQ(e.GetErrorDescription(), description);
        EXPECT_EQ(e.GetErrorCode(), code);
        EXPECT_NE(e.GetMessage(), nullptr);
    }
}

// What `call` threw, as "CClassName: description" ("-" for none), or "nothing"; for checks that
// gather several outcomes into one text, such as those made in a child process.
template <typename F> std::string Thrown(F&& call) {
    try {
        call();
        return "nothing";
    } catch (const vorn::base::CException& e) {
        const char* words = e.GetErrorDescription();
        return std::string(e.GetClass()->GetName()) + ": " + (words != nullptr ? words : "-");
    }
}

} // namespace vorn::test

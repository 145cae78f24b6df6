// What the pull readers share: their two token references, on the heap so that the const
// GetCurrentToken can hand out a reference to `current` that stays put, and their way of failing.
#pragma once

#include <vorn/base/Base.h>
#include <vorn/base/Ref.h>
#include <vorn/base/System.h>
#include <vorn/io/IOException.h>
#include <vorn/io/XMLToken.h>

namespace vorn::io {

struct XMLReaderState : public vorn::base::CBase {
    // The token the reader stands on: empty before the first read and after the end.
    vorn::base::CRef<IXMLToken> current;
    // A token read ahead, given out next.
    vorn::base::CRef<IXMLToken> pending;
};

[[noreturn]] inline void ThrowIO(const char* source, unsigned int line, const char* words) {
    throw CIOException(source, line, words, nullptr);
}

// Prints what was caught to the debug output and throws `words` in its place.
[[noreturn]] inline void ReplaceWith(const vorn::base::CException& caught, const char* source,
                                     unsigned int line, const char* words) {
    caught.Print(vorn::base::CSystem::debugOut);
    ThrowIO(source, line, words);
}

} // namespace vorn::io

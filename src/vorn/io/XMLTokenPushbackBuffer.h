// The tokens waiting in a CXMLPushbackReader: a fixed array filled from the top down, so that the
// last token in is the first out. It never grows. Internal.
#pragma once

#include <new>

#include <vorn/base/Base.h>
#include <vorn/base/Ref.h>
#include <vorn/io/XMLToken.h>

#include "vorn/io/BufferedUnits.h"

namespace vorn::io {

struct XMLTokenPushbackBuffer : public vorn::base::CBase {
    XMLTokenPushbackBuffer(unsigned int size, const char* source, unsigned int line)
        : m_tokens(buffered::Allocate<vorn::base::CRef<IXMLToken>>(size, source, line)),
          m_size(size), m_next(size) {
        for (unsigned int i = 0; i < size; ++i)
            ::new (static_cast<void*>(m_tokens + i)) vorn::base::CRef<IXMLToken>();
    }
    ~XMLTokenPushbackBuffer() {
        for (unsigned int i = 0; i < m_size; ++i)
            m_tokens[i].~CRef();
        ZK_free(m_tokens);
    }
    XMLTokenPushbackBuffer(const XMLTokenPushbackBuffer&) = delete;
    XMLTokenPushbackBuffer& operator=(const XMLTokenPushbackBuffer&) = delete;

    bool IsEmpty() const { return m_next == m_size; }
    bool IsFull() const { return m_next == 0; }

    vorn::base::CRef<IXMLToken>* m_tokens;
    unsigned int m_size;
    unsigned int m_next; // the next token to read; m_size when empty
};

} // namespace vorn::io

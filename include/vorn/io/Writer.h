// CWriter: the interface of every UTF-16 sink. Only the counted write of units is required; the
// other forms reduce to it.
#pragma once

#include <vorn/base/Object.h>
#include <vorn/base/UnicodeString.h>

namespace vorn::io {

class VORN_API CWriter : public vorn::base::CObject {
    VORN_DECLARE_CLASS(CWriter)

public:
    // Nothing for an empty text or an offset at or past its length; a count reaching past the
    // end is cut there.
    virtual void Write(vorn::base::CUnicodeString const& text, unsigned int offset,
                       unsigned int count);
    virtual void Write(vorn::base::CUnicodeString const& text);
    virtual void Write(unsigned short const* text, unsigned int offset, unsigned int count) = 0;
    // A null pointer writes nothing in this form and the next.
    virtual void Write(unsigned short const* text, unsigned int count);
    // NUL-terminated.
    virtual void Write(unsigned short const* text);
    virtual void Write(unsigned short value);
    virtual void Flush() = 0;
    virtual void Close() = 0;
};

} // namespace vorn::io

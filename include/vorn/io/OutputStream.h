// COutputStream: the interface of every byte sink. Only the single-byte write is required; the
// block writes default to a loop over it.
#pragma once

#include <vorn/base/Object.h>

namespace vorn::io {

class VORN_API COutputStream : public vorn::base::CObject {
    VORN_DECLARE_CLASS(COutputStream)

public:
    // Nothing for a null buffer or when `offset + count` does not lie above `offset` (a count of
    // 0, or one that wraps).
    virtual void Write(char const* buffer, unsigned int offset, unsigned int count);
    virtual void Write(char const* buffer, unsigned int count);
    virtual void Write(char value) = 0;
    virtual void Flush() = 0;
    virtual void Close() = 0;
};

} // namespace vorn::io

// CInputStream: the interface of every byte source. Subclasses give the counted read and the state
// operations; the single-byte read and the skip come as byte-at-a-time defaults.
#pragma once

#include <vorn/base/Object.h>

namespace vorn::io {

class VORN_API CInputStream : public vorn::base::CObject {
    VORN_DECLARE_CLASS(CInputStream)

public:
    // What the single-byte Read() gives at the end; counted reads give -1 instead.
    static constexpr int EOS = 65535;

    virtual unsigned int GetAvailable() const = 0;
    // Reads up to `count` bytes to `buffer + offset`: the number read, or -1 at the end.
    virtual int Read(char* buffer, unsigned int offset, unsigned int count) = 0;
    virtual int Read(char* buffer, unsigned int count);
    // The next byte sign-extended (0xFF reads as -1), or EOS: compare with EOS, never with < 0.
    virtual int Read();
    // The base returns how many bytes were NOT skipped; every overriding Skip returns how many
    // were. Callers of the base rely on the difference.
    virtual int Skip(unsigned int count);
    virtual void Reset() = 0;
    virtual void Close() = 0;
};

} // namespace vorn::io

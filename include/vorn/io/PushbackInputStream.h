// CPushbackInputStream: a byte stream that takes bytes back, up to a number fixed at construction.
// Bytes given back are read again before anything from the stream beneath; they need not be bytes
// that were read.
#pragma once

#include <vorn/base/Ref.h>
#include <vorn/io/InputStream.h>

namespace vorn::io {

class VORN_API CPushbackInputStream : public CInputStream {
    VORN_DECLARE_CLASS(CPushbackInputStream)

public:
    // `size` is the most bytes held back at once; 0 is refused. The handle shares ownership of
    // `stream`; the raw pointer leaves it with the caller.
    CPushbackInputStream(vorn::base::CRef<CInputStream> const& stream, unsigned int size);
    CPushbackInputStream(CInputStream* stream, unsigned int size);
    // Neither closes nor drains.
    ~CPushbackInputStream() override;

    // Single bytes come back last one first; a block comes back in its own order. Beyond the
    // room left: "Pushback buffer is full.", and nothing changes. A closed stream takes them too.
    void Unread(char value);
    void Unread(char const* buffer, unsigned int count);
    void Unread(char const* buffer, unsigned int offset, unsigned int count);

    // Held bytes plus what the stream beneath has.
    unsigned int GetAvailable() const override;
    // Held bytes first, then the rest from beneath. Mind the sum: with bytes held and the stream
    // beneath at its end, its -1 is added, so the result is one less than the bytes stored.
    int Read(char* buffer, unsigned int offset, unsigned int count) override;
    int Read(char* buffer, unsigned int count) override;
    int Read() override;
    int Skip(unsigned int count) override;
    // Forgets the held bytes and resets the stream beneath.
    void Reset() override;
    // Closes the stream beneath, and counts as closed even when that fails; a second Close throws.
    void Close() override;

    CPushbackInputStream(const CPushbackInputStream&) = delete;
    CPushbackInputStream& operator=(const CPushbackInputStream&) = delete;

private:
    void Init(CInputStream* stream, unsigned int size);

    CInputStream* m_stream; // null once closed
    vorn::base::CRef<CInputStream> m_streamRef;
    char* m_buffer;
    unsigned int m_size;
    unsigned int m_position; // the next held byte; m_size when none is held
};

} // namespace vorn::io

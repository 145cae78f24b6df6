// CBufferedInputStream: a fixed buffer in front of a byte stream. Each refill is one read beneath,
// and a call refills at most once, so it may return fewer bytes than both the request and what is
// left. A request larger than the buffer goes straight beneath, ahead of what is still buffered:
// those bytes come later, after bytes from further on.
#pragma once

#include <vorn/base/Ref.h>
#include <vorn/io/InputStream.h>

namespace vorn::io {

class VORN_API CBufferedInputStream : public CInputStream {
    VORN_DECLARE_CLASS(CBufferedInputStream)

public:
    // A size of 0 means 512 bytes. The handle shares ownership of `stream`; the raw pointer leaves
    // it with the caller.
    CBufferedInputStream(vorn::base::CRef<CInputStream> const& stream, unsigned int size);
    CBufferedInputStream(CInputStream* stream, unsigned int size);
    // Neither closes nor releases the stream beneath.
    ~CBufferedInputStream() override;

    unsigned int GetAvailable() const override;
    // 0 at the end, not -1; a null destination skips `count` bytes instead.
    int Read(char* buffer, unsigned int offset, unsigned int count) override;
    int Read(char* buffer, unsigned int count) override;
    int Read() override;
    // The buffered bytes plus what the Skip beneath reports.
    int Skip(unsigned int count) override;
    // Drops the buffer and resets the stream beneath.
    void Reset() override;
    // Closes the stream beneath, and counts as closed even when that fails; a second Close throws.
    void Close() override;

    CBufferedInputStream(const CBufferedInputStream&) = delete;
    CBufferedInputStream& operator=(const CBufferedInputStream&) = delete;

private:
    void CreateBuffer(unsigned int size);
    void FillBuffer();
    int ReadBuffered(char* target, unsigned int count);

    CInputStream* m_stream; // null once closed
    vorn::base::CRef<CInputStream> m_streamRef;
    char* m_buffer;
    unsigned int m_capacity;
    unsigned int m_count;
    unsigned int m_position;
};

} // namespace vorn::io

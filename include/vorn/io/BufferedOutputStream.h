// CBufferedOutputStream: a fixed buffer in front of a byte stream. A single byte that meets a full
// buffer sends it first; a block fills the buffer and sends it each time it is full; a block at
// least as large as the buffer goes straight beneath after what is pending. The destructor drops
// what is pending: Flush or Close first.
#pragma once

#include <vorn/base/Ref.h>
#include <vorn/io/OutputStream.h>

namespace vorn::io {

class VORN_API CBufferedOutputStream : public COutputStream {
    VORN_DECLARE_CLASS(CBufferedOutputStream)

public:
    // `size` must not be 0. The handle shares ownership of `stream`; the raw pointer leaves it
    // with the caller.
    CBufferedOutputStream(vorn::base::CRef<COutputStream> const& stream, unsigned int size);
    CBufferedOutputStream(COutputStream* stream, unsigned int size);
    ~CBufferedOutputStream() override;

    // A null or refused source writes nothing, even on a closed stream.
    void Write(char const* buffer, unsigned int offset, unsigned int count) override;
    void Write(char const* buffer, unsigned int count) override;
    void Write(char value) override;
    void Flush() override;
    // Sends what is pending and closes the stream beneath; closed afterwards even when either
    // fails. A second Close does nothing.
    void Close() override;

    CBufferedOutputStream(const CBufferedOutputStream&) = delete;
    CBufferedOutputStream& operator=(const CBufferedOutputStream&) = delete;

protected:
    void Init(unsigned int size);
    // A failed write beneath leaves the bytes pending, to be offered again.
    void FlushBuffer();
    void InternalClose();
    void InternalWrite(char const* buffer, unsigned int offset, unsigned int count);

private:
    COutputStream* m_stream; // null once closed
    vorn::base::CRef<COutputStream> m_streamRef;
    char* m_buffer;
    unsigned int m_capacity;
    unsigned int m_count;
};

} // namespace vorn::io

// CMemoryOutputStream: collects bytes in a block that grows by a fixed granule. The bytes outlive
// Close, so a caller collects the result of a closed chain of decorators here.
#pragma once

#include <vorn/io/OutputStream.h>
#include <vorn/platform/Memory.h>

namespace vorn::io {

class VORN_API CMemoryOutputStream : public COutputStream {
    VORN_DECLARE_CLASS(CMemoryOutputStream)

public:
    CMemoryOutputStream();
    // A growth of 0 means 64. Throws CMemoryException when the first block can't be had.
    CMemoryOutputStream(unsigned int initialCapacity, unsigned int growth);
    ~CMemoryOutputStream() override;

    // Out of memory is "Memory full." (a CIOException); the failed write stores nothing.
    void Write(char const* buffer, unsigned int offset, unsigned int count) override;
    void Write(char const* buffer, unsigned int count) override;
    void Write(char value) override;
    void Flush() override;
    // Repeatable; the bytes stay readable.
    void Close() override;

    char const* GetBuffer() const { return m_buffer; }
    unsigned int GetBufferSize() const { return m_size; }
    // Hands the block to the caller (ZK_free it); the stream stays open and starts a new block.
    char* DetachBuffer();
    // Forgets the bytes, keeps the block; works on a closed stream without reopening it.
    void Reset();
    // Grows the block to `capacity` rounded up to the granule; false when memory is short, and
    // then nothing has changed.
    bool EnsureBufferCapacity(unsigned int capacity);

private:
    CMemoryOutputStream(const CMemoryOutputStream&) = delete;
    CMemoryOutputStream& operator=(const CMemoryOutputStream&) = delete;

    void Append(char const* source, unsigned int count, unsigned int line);
    void CheckOpen(unsigned int line) const;

    char* m_buffer;
    unsigned int m_size;
    unsigned int m_capacity;
    unsigned int m_growth;
    bool m_open;
};

} // namespace vorn::io

// CMemoryInputStream: reads a block of bytes in place, without copying it.
#pragma once

#include <vorn/io/InputStream.h>
#include <vorn/platform/Memory.h>

namespace vorn::io {

class VORN_API CMemoryInputStream : public CInputStream {
    VORN_DECLARE_CLASS(CMemoryInputStream)

public:
    // The block is adopted, not copied; with `ownsBuffer` the stream ZK_frees it on Close or
    // destruction.
    CMemoryInputStream(char const* buffer, unsigned int size, bool ownsBuffer);
    ~CMemoryInputStream() override;

    unsigned int GetAvailable() const override;
    // A null destination skips `count` bytes instead.
    int Read(char* buffer, unsigned int offset, unsigned int count) override;
    int Read(char* buffer, unsigned int count) override;
    int Read() override;
    // The number of bytes skipped.
    int Skip(unsigned int count) override;
    void Reset() override;
    // A second Close throws, as every other call on a closed stream does.
    void Close() override;

private:
    CMemoryInputStream(const CMemoryInputStream&) = delete;
    CMemoryInputStream& operator=(const CMemoryInputStream&) = delete;

    int ReadInto(char* target, unsigned int count);
    void CheckOpen(unsigned int line) const;

    char const* m_buffer;
    unsigned int m_size;
    unsigned int m_position;
    bool m_ownsBuffer;
};

} // namespace vorn::io

// CBufferedReader: a fixed buffer of UTF-16 units in front of a reader. As CBufferedInputStream,
// except that a request which spans a refill loses the units that were still buffered: the refill
// is copied over them at the start of the destination.
#pragma once

#include <vorn/base/Ref.h>
#include <vorn/io/Reader.h>

namespace vorn::io {

class VORN_API CBufferedReader : public CReader {
    VORN_DECLARE_CLASS(CBufferedReader)

public:
    // `size` counts units and must not be 0. The handle shares ownership of `reader`; the raw
    // pointer leaves it with the caller.
    CBufferedReader(vorn::base::CRef<CReader> const& reader, unsigned int size);
    CBufferedReader(CReader* reader, unsigned int size);
    // Neither closes nor releases the reader beneath.
    ~CBufferedReader() override;

    // The pointer check covers `buffer` itself, whatever the offset.
    int Read(unsigned short* buffer, unsigned int offset, unsigned int count) override;
    int Read(unsigned short* buffer, unsigned int count) override;
    int Read() override;
    int Skip(unsigned int count) override;
    void Reset() override;
    // Closes the reader beneath, and counts as closed even when that fails; a second Close throws.
    void Close() override;

    CBufferedReader(const CBufferedReader&) = delete;
    CBufferedReader& operator=(const CBufferedReader&) = delete;

private:
    void Init(unsigned int size);
    void FillBuffer();
    int ReadBuffered(unsigned short* target, unsigned int count);

    CReader* m_stream; // null once closed
    vorn::base::CRef<CReader> m_streamRef;
    unsigned short* m_buffer;
    unsigned int m_capacity;
    unsigned int m_count;
    unsigned int m_position;
};

} // namespace vorn::io

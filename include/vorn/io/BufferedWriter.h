// CBufferedWriter: a fixed buffer of UTF-16 units in front of a writer, as CBufferedOutputStream
// is for bytes. The destructor drops what is pending: Flush or Close first.
#pragma once

#include <vorn/base/Ref.h>
#include <vorn/io/Writer.h>

namespace vorn::io {

class VORN_API CBufferedWriter : public CWriter {
    VORN_DECLARE_CLASS(CBufferedWriter)

public:
    // `size` counts units and must not be 0. The handle shares ownership of `writer`; the raw
    // pointer leaves it with the caller.
    CBufferedWriter(vorn::base::CRef<CWriter> const& writer, unsigned int size);
    CBufferedWriter(CWriter* writer, unsigned int size);
    ~CBufferedWriter() override;

    // The text forms are CWriter's, which end in the counted form below.
    using CWriter::Write;
    // These two write nothing for a null or refused source, even when closed.
    void Write(unsigned short const* text, unsigned int offset, unsigned int count) override;
    void Write(unsigned short const* text, unsigned int count) override;
    void Write(unsigned short value) override;
    void Flush() override;
    // Sends what is pending and closes the writer beneath; closed afterwards even when either
    // fails. A second Close does nothing.
    void Close() override;

    CBufferedWriter(const CBufferedWriter&) = delete;
    CBufferedWriter& operator=(const CBufferedWriter&) = delete;

protected:
    void Init(unsigned int size);
    void FlushBuffer();
    void InternalClose();
    void InternalWrite(unsigned short const* text, unsigned int offset, unsigned int count);

private:
    CWriter* m_stream; // null once closed
    vorn::base::CRef<CWriter> m_streamRef;
    unsigned short* m_buffer;
    unsigned int m_capacity;
    unsigned int m_count;
};

} // namespace vorn::io

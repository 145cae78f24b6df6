// CPushbackReader: CPushbackInputStream in UTF-16 units, in front of a reader.
#pragma once

#include <vorn/base/Ref.h>
#include <vorn/io/Reader.h>

namespace vorn::io {

class VORN_API CPushbackReader : public CReader {
    VORN_DECLARE_CLASS(CPushbackReader)

public:
    // `size` counts units; 0 is refused.
    CPushbackReader(vorn::base::CRef<CReader> const& reader, unsigned int size);
    CPushbackReader(CReader* reader, unsigned int size);
    ~CPushbackReader() override;

    void Unread(unsigned short value);
    void Unread(unsigned short const* buffer, unsigned int count);
    void Unread(unsigned short const* buffer, unsigned int offset, unsigned int count);

    int Read(unsigned short* buffer, unsigned int offset, unsigned int count) override;
    int Read(unsigned short* buffer, unsigned int count) override;
    // A held unit zero-extended, or the reader's next (CReader::EOS at its end).
    int Read() override;
    int Skip(unsigned int count) override;
    void Reset() override;
    void Close() override;

    CPushbackReader(const CPushbackReader&) = delete;
    CPushbackReader& operator=(const CPushbackReader&) = delete;

private:
    void Init(CReader* reader, unsigned int size);

    CReader* m_stream; // null once closed
    vorn::base::CRef<CReader> m_streamRef;
    unsigned short* m_buffer;
    unsigned int m_size;
    unsigned int m_position;
};

} // namespace vorn::io

// COutputStreamWriter: writes UTF-16 text as the bytes of an encoding onto a byte stream, through
// a converter of that encoding and a buffer of pending bytes. The buffer goes out when a
// conversion doesn't fit or when it is exactly full, and on Flush or Close; the destructor drops
// what is pending.
#pragma once

#include <vorn/base/Ref.h>
#include <vorn/base/String.h>
#include <vorn/io/OutputStream.h>
#include <vorn/io/WCharToCharConverter.h>
#include <vorn/io/Writer.h>

namespace vorn::io {

class VORN_API COutputStreamWriter : public CWriter {
    VORN_DECLARE_CLASS(COutputStreamWriter)

public:
    // Refuses a null stream ("Invalid output stream..") and an empty or null encoding ("Invalid
    // encoding."); an encoding without a registered converter is CUnsupportedEncodingException.
    // The byte order mark goes straight to the stream.
    COutputStreamWriter(const vorn::base::CRef<COutputStream>& stream, const char* encoding,
                        bool writeByteOrderMark);
    // The caller keeps ownership of `stream`.
    COutputStreamWriter(COutputStream* stream, const char* encoding, bool writeByteOrderMark);
    ~COutputStreamWriter() override;

    const vorn::base::CString& GetEncoding() const { return m_encoding; }

    void Write(const vorn::base::CUnicodeString& text, unsigned int offset,
               unsigned int count) override;
    void Write(const vorn::base::CUnicodeString& text) override;
    // These two also drop a write whose source fails the pointer check.
    void Write(const unsigned short* text, unsigned int offset, unsigned int count) override;
    void Write(const unsigned short* text, unsigned int count) override;
    void Write(const unsigned short* text) override;
    void Write(unsigned short value) override;
    void Flush() override;
    // Closes the stream beneath, and counts as closed even when that fails.
    void Close() override;

    COutputStreamWriter(const COutputStreamWriter&) = delete;
    COutputStreamWriter& operator=(const COutputStreamWriter&) = delete;

private:
    void Init(COutputStream* stream, const char* encoding, bool writeByteOrderMark);
    // Converts the whole range, or retries it whole: first after a flush, then after each doubling
    // of the buffer. A retry drops the converter's pending surrogate.
    void InternalWrite(const unsigned short* text, unsigned int offset, unsigned int count);
    void FlushBuffer();

    COutputStream* m_stream;
    vorn::base::CRef<COutputStream> m_streamRef;
    vorn::base::CString m_encoding;
    vorn::base::CRef<CWCharToCharConverter> m_converter;
    char* m_buffer;
    unsigned int m_capacity;
    unsigned int m_used;
};

} // namespace vorn::io

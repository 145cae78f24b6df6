// CBase64OutputStream: encodes the bytes written to it as base64 (RFC 4648 alphabet, '=' for
// padding) and writes the text to the stream beneath, with CR LF line breaks when a line length is
// given. It works on groups of three bytes: Flush encodes a partial group with its padding, so
// bytes written after a Flush start a new group. Close only closes the stream beneath and encodes
// nothing: Flush, then Close, for a complete text. It has no closed state of its own; after Close
// every call goes to the closed stream beneath.
#pragma once

#include <vorn/base/Ref.h>
#include <vorn/io/OutputStream.h>

namespace vorn::io {

class VORN_API CBase64OutputStream : public COutputStream {
    VORN_DECLARE_CLASS(CBase64OutputStream)

public:
    // A line length of 0 writes one line. The handle shares ownership of `stream`; the raw
    // pointer leaves it with the caller. A null stream is refused.
    CBase64OutputStream(vorn::base::CRef<COutputStream> const& stream, unsigned int lineLength);
    CBase64OutputStream(COutputStream* stream, unsigned int lineLength);
    // Neither flushes nor closes.
    ~CBase64OutputStream() override;

    using COutputStream::Write;
    // Once a write beneath has failed, the full group it was writing stays pending: a further
    // Write(char) is refused with CArrayIndexOutOfBoundsException, and Flush writes the group.
    void Write(char value) override;
    void Flush() override;
    void Close() override;

    unsigned int GetLineLength() const { return m_lineLength; }

private:
    CBase64OutputStream(const CBase64OutputStream&) = delete;
    CBase64OutputStream& operator=(const CBase64OutputStream&) = delete;

    unsigned int EncodeGroup(char const* data, unsigned int offset, unsigned int count,
                             char* target, unsigned int targetOffset);
    void InternalWrite(char const* buffer, unsigned int offset, unsigned int count);

    COutputStream* m_stream;
    vorn::base::CRef<COutputStream> m_streamRef;
    unsigned int m_lineLength;
    char m_group[3];
    unsigned int m_groupCount;
    unsigned int m_column;
};

} // namespace vorn::io

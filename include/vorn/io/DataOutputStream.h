// CDataOutputStream: writes typed values on the byte stream beneath in the library's binary
// format: integers big-endian, floats and doubles as they lie in memory, strings as a 32-bit
// big-endian byte count and UTF-8. Each value is one write to the stream beneath.
#pragma once

#include <vorn/base/Ref.h>
#include <vorn/base/UnicodeString.h>
#include <vorn/io/OutputStream.h>
#include <vorn/io/Serializable.h>

namespace vorn::io {

class VORN_API CDataOutputStream : public COutputStream {
    VORN_DECLARE_CLASS(CDataOutputStream)

public:
    // The handle shares ownership of `stream`; the raw pointer leaves it with the caller.
    CDataOutputStream(vorn::base::CRef<COutputStream> const& stream);
    CDataOutputStream(COutputStream* stream);
    ~CDataOutputStream() override;

    void Write(char const* buffer, unsigned int offset, unsigned int count) override;
    void Write(char const* buffer, unsigned int count) override;
    void Write(char value) override;
    void Flush() override;
    // Closes the stream beneath, and counts as closed even when that fails. Doesn't flush.
    void Close() override;

    virtual void WriteBool(bool value);
    virtual void WriteByte(char value);
    virtual void WriteUByte(unsigned char value);
    virtual void WriteInt16(short value);
    virtual void WriteInt32(int value);
    virtual void WriteUInt16(unsigned short value);
    virtual void WriteUInt32(unsigned int value);
    virtual void WriteFloat(float value);
    virtual void WriteDouble(double value);
    virtual void WriteString(vorn::base::CUnicodeString const& text);
    // A null or empty text writes nothing at all, not even a count, and doesn't look whether the
    // stream is closed: a reader then takes the next four bytes for the count.
    virtual void WriteString(unsigned short const* text);
    virtual void WriteObject(ISerializable const& object);

protected:
    // The text as UTF-8, its count of `countBytes` bytes first, big-endian.
    void WriteCounted(vorn::base::CString const& utf8, unsigned int countBytes);

    vorn::base::CRef<COutputStream> m_streamRef;
    COutputStream* m_stream; // null once closed

private:
    CDataOutputStream(const CDataOutputStream&) = delete;
    CDataOutputStream& operator=(const CDataOutputStream&) = delete;
};

VORN_API CDataOutputStream& operator<<(CDataOutputStream& stream, bool value);
VORN_API CDataOutputStream& operator<<(CDataOutputStream& stream, char value);
VORN_API CDataOutputStream& operator<<(CDataOutputStream& stream, unsigned char value);
VORN_API CDataOutputStream& operator<<(CDataOutputStream& stream, short value);
VORN_API CDataOutputStream& operator<<(CDataOutputStream& stream, unsigned short value);
VORN_API CDataOutputStream& operator<<(CDataOutputStream& stream, int value);
VORN_API CDataOutputStream& operator<<(CDataOutputStream& stream, unsigned int value);
VORN_API CDataOutputStream& operator<<(CDataOutputStream& stream, float value);
VORN_API CDataOutputStream& operator<<(CDataOutputStream& stream, double value);
VORN_API CDataOutputStream& operator<<(CDataOutputStream& stream,
                                       vorn::base::CUnicodeString const& text);
VORN_API CDataOutputStream& operator<<(CDataOutputStream& stream, ISerializable const& object);
VORN_API CDataOutputStream& operator<<(CDataOutputStream& stream, unsigned short const* text);
// Narrow text would otherwise turn into a bool and go out as one byte.
CDataOutputStream& operator<<(CDataOutputStream& stream, char const* text) = delete;

} // namespace vorn::io

// CDataInputStream: reads the typed values that CDataOutputStream writes. Each value is one read
// from the stream beneath, whose count isn't looked at: a short read or the end of the stream
// gives a value made partly or wholly of zero bytes, and no exception.
#pragma once

#include <vorn/base/Ref.h>
#include <vorn/base/UnicodeString.h>
#include <vorn/io/InputStream.h>
#include <vorn/io/Serializable.h>

namespace vorn::io {

class VORN_API CDataInputStream : public CInputStream {
    VORN_DECLARE_CLASS(CDataInputStream)

public:
    // The handle shares ownership of `stream`; the raw pointer leaves it with the caller.
    CDataInputStream(vorn::base::CRef<CInputStream> const& stream);
    CDataInputStream(CInputStream* stream);
    ~CDataInputStream() override;

    unsigned int GetAvailable() const override;
    int Read(char* buffer, unsigned int offset, unsigned int count) override;
    int Read(char* buffer, unsigned int count) override;
    int Read() override;
    int Skip(unsigned int count) override;
    void Reset() override;
    // Closes the stream beneath, and counts as closed even when that fails.
    void Close() override;

    // True only for the byte 1.
    virtual bool ReadBool();
    // The signed byte; at the end of the stream 0xFF.
    virtual char ReadByte();
    // The unsigned byte, despite the name; at the end of the stream 0xFF.
    virtual unsigned char ReadSByte();
    virtual short ReadInt16();
    virtual int ReadInt32();
    virtual unsigned short ReadUInt16();
    virtual unsigned int ReadUInt32();
    virtual float ReadFloat();
    virtual double ReadDouble();
    // The text ends at the first NUL byte of the data, whatever the count said.
    virtual vorn::base::CUnicodeString ReadString();
    virtual void ReadObject(ISerializable& object);

protected:
    // `count` bytes of UTF-8 as text, in one read.
    vorn::base::CUnicodeString ReadText(unsigned int count);

    vorn::base::CRef<CInputStream> m_streamRef;
    CInputStream* m_stream; // null once closed

private:
    CDataInputStream(const CDataInputStream&) = delete;
    CDataInputStream& operator=(const CDataInputStream&) = delete;
};

VORN_API CDataInputStream& operator>>(CDataInputStream& stream, bool& value);
VORN_API CDataInputStream& operator>>(CDataInputStream& stream, char& value);
VORN_API CDataInputStream& operator>>(CDataInputStream& stream, unsigned char& value);
VORN_API CDataInputStream& operator>>(CDataInputStream& stream, short& value);
VORN_API CDataInputStream& operator>>(CDataInputStream& stream, unsigned short& value);
VORN_API CDataInputStream& operator>>(CDataInputStream& stream, int& value);
VORN_API CDataInputStream& operator>>(CDataInputStream& stream, unsigned int& value);
VORN_API CDataInputStream& operator>>(CDataInputStream& stream, float& value);
VORN_API CDataInputStream& operator>>(CDataInputStream& stream, double& value);
VORN_API CDataInputStream& operator>>(CDataInputStream& stream, vorn::base::CUnicodeString& text);
VORN_API CDataInputStream& operator>>(CDataInputStream& stream, ISerializable& object);

} // namespace vorn::io

#include <vorn/base/IllegalArgumentException.h>
#include <vorn/base/String.h>
#include <vorn/io/DataOutputStream.h>
#include <vorn/io/IOException.h>

#include "vorn/io/StreamBeneath.h"

namespace vorn::io {

using vorn::base::CString;
using vorn::base::CUnicodeString;

namespace {

constexpr const char* kSource = "vorn/io/DataOutputStream";
constexpr beneath::ClosedRule kClosed{kSource, __LINE__, "Stream closed.",
                                      beneath::SecondClose::kQuiet};

// The low `n` bytes of `value`, most significant first.
template <unsigned int n> void BigEndian(unsigned int value, char (&buffer)[n]) {
    for (unsigned int i = 0; i < n; ++i)
        buffer[i] = static_cast<char>(value >> (8 * (n - 1 - i)));
}

} // namespace

VORN_DEFINE_CLASS_BASE(CDataOutputStream, "vorn::io::CDataOutputStream", "vorn::io::COutputStream")

CDataOutputStream::CDataOutputStream(vorn::base::CRef<COutputStream> const& stream)
    : m_streamRef(stream),
      m_stream(beneath::Require(stream.GetPointer(), kSource, __LINE__, "Invalid output stream.")) {
}

CDataOutputStream::CDataOutputStream(COutputStream* stream)
    : m_streamRef(),
      m_stream(beneath::Require(stream, kSource, __LINE__, "Invalid output stream.")) {}

CDataOutputStream::~CDataOutputStream() {}

// ---- Bytes, passed on

void CDataOutputStream::Write(char const* buffer, unsigned int offset, unsigned int count) {
    beneath::Open(m_stream, kClosed)->Write(buffer, offset, count);
}

void CDataOutputStream::Write(char const* buffer, unsigned int count) {
    beneath::Open(m_stream, kClosed)->Write(buffer, count);
}

void CDataOutputStream::Write(char value) {
    beneath::Open(m_stream, kClosed)->Write(value);
}

void CDataOutputStream::Flush() {
    beneath::Open(m_stream, kClosed)->Flush();
}

void CDataOutputStream::Close() {
    beneath::Close(m_stream, kClosed);
}

// ---- Values

void CDataOutputStream::WriteBool(bool value) {
    beneath::Open(m_stream, kClosed)->Write(static_cast<char>(value ? 1 : 0));
}

void CDataOutputStream::WriteByte(char value) {
    beneath::Open(m_stream, kClosed)->Write(value);
}

void CDataOutputStream::WriteUByte(unsigned char value) {
    beneath::Open(m_stream, kClosed)->Write(static_cast<char>(value));
}

void CDataOutputStream::WriteInt16(short value) {
    beneath::Open(m_stream, kClosed);
    char buffer[2];
    BigEndian(static_cast<unsigned short>(value), buffer);
    m_stream->Write(buffer, 2);
}

void CDataOutputStream::WriteUInt16(unsigned short value) {
    beneath::Open(m_stream, kClosed);
    char buffer[2];
    BigEndian(value, buffer);
    m_stream->Write(buffer, 2);
}

void CDataOutputStream::WriteInt32(int value) {
    beneath::Open(m_stream, kClosed);
    char buffer[4];
    BigEndian(static_cast<unsigned int>(value), buffer);
    m_stream->Write(buffer, 4);
}

void CDataOutputStream::WriteUInt32(unsigned int value) {
    beneath::Open(m_stream, kClosed);
    char buffer[4];
    BigEndian(value, buffer);
    m_stream->Write(buffer, 4);
}

// Deliberate: floating values go out in the machine's own byte order, unlike the integers.
void CDataOutputStream::WriteFloat(float value) {
    beneath::Open(m_stream, kClosed)->Write(reinterpret_cast<const char*>(&value), 4);
}

void CDataOutputStream::WriteDouble(double value) {
    beneath::Open(m_stream, kClosed)->Write(reinterpret_cast<const char*>(&value), 8);
}

void CDataOutputStream::WriteCounted(CString const& utf8, unsigned int countBytes) {
    char count[4];
    BigEndian(utf8.GetLength(), count);
    m_stream->Write(count + 4 - countBytes, countBytes);
    // Made for an empty text as well.
    m_stream->Write(static_cast<const char*>(utf8), utf8.GetLength());
}

void CDataOutputStream::WriteString(CUnicodeString const& text) {
    beneath::Open(m_stream, kClosed);
    WriteCounted(text.ToUTF8(), 4);
}

void CDataOutputStream::WriteString(unsigned short const* text) {
    // Deliberate: no count and no closed check for an empty text, unlike the other overload.
    if (text == nullptr || *text == 0)
        return;
    WriteString(CUnicodeString(text));
}

void CDataOutputStream::WriteObject(ISerializable const& object) {
    beneath::Open(m_stream, kClosed);
    object.Write(*this);
}

// ---- Operators

CDataOutputStream& operator<<(CDataOutputStream& stream, bool value) {
    stream.WriteBool(value);
    return stream;
}
CDataOutputStream& operator<<(CDataOutputStream& stream, char value) {
    stream.WriteByte(value);
    return stream;
}
CDataOutputStream& operator<<(CDataOutputStream& stream, unsigned char value) {
    stream.WriteUByte(value);
    return stream;
}
CDataOutputStream& operator<<(CDataOutputStream& stream, short value) {
    stream.WriteInt16(value);
    return stream;
}
CDataOutputStream& operator<<(CDataOutputStream& stream, unsigned short value) {
    stream.WriteUInt16(value);
    return stream;
}
CDataOutputStream& operator<<(CDataOutputStream& stream, int value) {
    stream.WriteInt32(value);
    return stream;
}
CDataOutputStream& operator<<(CDataOutputStream& stream, unsigned int value) {
    stream.WriteUInt32(value);
    return stream;
}
CDataOutputStream& operator<<(CDataOutputStream& stream, float value) {
    stream.WriteFloat(value);
    return stream;
}
CDataOutputStream& operator<<(CDataOutputStream& stream, double value) {
    stream.WriteDouble(value);
    return stream;
}
CDataOutputStream& operator<<(CDataOutputStream& stream, CUnicodeString const& text) {
    stream.WriteString(text);
    return stream;
}
CDataOutputStream& operator<<(CDataOutputStream& stream, ISerializable const& object) {
    stream.WriteObject(object);
    return stream;
}
CDataOutputStream& operator<<(CDataOutputStream& stream, unsigned short const* text) {
    stream.WriteString(text);
    return stream;
}

} // namespace vorn::io

#include <vorn/base/IllegalArgumentException.h>
#include <vorn/base/MemoryException.h>
#include <vorn/base/StringBuffer.h>
#include <vorn/io/DataInputStream.h>
#include <vorn/io/IOException.h>

#include "vorn/io/StreamBeneath.h"

namespace vorn::io {

using vorn::base::CUnicodeString;

namespace {

constexpr const char* kSource = "vorn/io/DataInputStream";
constexpr beneath::ClosedRule kClosed{kSource, __LINE__, "Stream closed.",
                                      beneath::SecondClose::kQuiet};

template <unsigned int n> unsigned int FromBigEndian(const char (&buffer)[n]) {
    unsigned int value = 0;
    for (unsigned int i = 0; i < n; ++i)
        value = value << 8 | static_cast<unsigned char>(buffer[i]);
    return value;
}

} // namespace

VORN_DEFINE_CLASS_BASE(CDataInputStream, "vorn::io::CDataInputStream", "vorn::io::CInputStream")

CDataInputStream::CDataInputStream(vorn::base::CRef<CInputStream> const& stream)
    : m_streamRef(stream),
      m_stream(beneath::Require(stream.GetPointer(), kSource, __LINE__, "Invalid input stream.")) {}

// The spelling "intput" is deliberate, and differs from the other constructor's.
CDataInputStream::CDataInputStream(CInputStream* stream)
    : m_streamRef(),
      m_stream(beneath::Require(stream, kSource, __LINE__, "Invalid intput stream.")) {}

CDataInputStream::~CDataInputStream() {}

// ---- Bytes, passed on

unsigned int CDataInputStream::GetAvailable() const {
    return beneath::Open(m_stream, kClosed)->GetAvailable();
}

int CDataInputStream::Read(char* buffer, unsigned int offset, unsigned int count) {
    return beneath::Open(m_stream, kClosed)->Read(buffer, offset, count);
}

int CDataInputStream::Read(char* buffer, unsigned int count) {
    return beneath::Open(m_stream, kClosed)->Read(buffer, count);
}

int CDataInputStream::Read() {
    return beneath::Open(m_stream, kClosed)->Read();
}

int CDataInputStream::Skip(unsigned int count) {
    return beneath::Open(m_stream, kClosed)->Skip(count);
}

void CDataInputStream::Reset() {
    beneath::Open(m_stream, kClosed)->Reset();
}

void CDataInputStream::Close() {
    beneath::Close(m_stream, kClosed);
}

// ---- Values. The buffers start zeroed: what a short read leaves unfilled reads as zero bytes.

bool CDataInputStream::ReadBool() {
    return beneath::Open(m_stream, kClosed)->Read() == 1;
}

char CDataInputStream::ReadByte() {
    beneath::Open(m_stream, kClosed);
    return static_cast<char>(m_stream->Read());
}

unsigned char CDataInputStream::ReadSByte() {
    beneath::Open(m_stream, kClosed);
    return static_cast<unsigned char>(m_stream->Read());
}

short CDataInputStream::ReadInt16() {
    beneath::Open(m_stream, kClosed);
    char buffer[2] = {};
    m_stream->Read(buffer, 2);
    return static_cast<short>(FromBigEndian(buffer));
}

unsigned short CDataInputStream::ReadUInt16() {
    beneath::Open(m_stream, kClosed);
    char buffer[2] = {};
    m_stream->Read(buffer, 2);
    return static_cast<unsigned short>(FromBigEndian(buffer));
}

int CDataInputStream::ReadInt32() {
    beneath::Open(m_stream, kClosed);
    char buffer[4] = {};
    m_stream->Read(buffer, 4);
    return static_cast<int>(FromBigEndian(buffer));
}

unsigned int CDataInputStream::ReadUInt32() {
    beneath::Open(m_stream, kClosed);
    char buffer[4] = {};
    m_stream->Read(buffer, 4);
    return FromBigEndian(buffer);
}

float CDataInputStream::ReadFloat() {
    beneath::Open(m_stream, kClosed);
    float value = 0;
    m_stream->Read(reinterpret_cast<char*>(&value), 4);
    return value;
}

double CDataInputStream::ReadDouble() {
    beneath::Open(m_stream, kClosed);
    double value = 0;
    m_stream->Read(reinterpret_cast<char*>(&value), 8);
    return value;
}

CUnicodeString CDataInputStream::ReadText(unsigned int count) {
    vorn::base::CStringBuffer buffer(32);
    // Room for the count and a terminator can't be counted in 32 bits, so it can't be had.
    if (count == 0xFFFFFFFFu)
        throw vorn::base::CMemoryException(kSource, __LINE__);
    char* bytes = buffer.GetBuffer(count + 1);
    const int read = m_stream->Read(bytes, count);
    bytes[count] = '\0';
    // A short read is cut off where it ends rather than the rest zeroed: a corrupt count then
    // costs the allocation and no more.
    const unsigned int arrived = read < 0 ? 0u : static_cast<unsigned int>(read);
    if (arrived < count)
        bytes[arrived] = '\0';
    CUnicodeString text;
    text.FromUTF8(bytes, -1);
    return text;
}

CUnicodeString CDataInputStream::ReadString() {
    beneath::Open(m_stream, kClosed);
    char count[4] = {};
    m_stream->Read(count, 4);
    return ReadText(FromBigEndian(count));
}

void CDataInputStream::ReadObject(ISerializable& object) {
    beneath::Open(m_stream, kClosed);
    object.Read(*this);
}

// ---- Operators

CDataInputStream& operator>>(CDataInputStream& stream, bool& value) {
    value = stream.ReadBool();
    return stream;
}
CDataInputStream& operator>>(CDataInputStream& stream, char& value) {
    value = stream.ReadByte();
    return stream;
}
CDataInputStream& operator>>(CDataInputStream& stream, unsigned char& value) {
    value = stream.ReadSByte();
    return stream;
}
CDataInputStream& operator>>(CDataInputStream& stream, short& value) {
    value = stream.ReadInt16();
    return stream;
}
CDataInputStream& operator>>(CDataInputStream& stream, unsigned short& value) {
    value = stream.ReadUInt16();
    return stream;
}
CDataInputStream& operator>>(CDataInputStream& stream, int& value) {
    value = stream.ReadInt32();
    return stream;
}
CDataInputStream& operator>>(CDataInputStream& stream, unsigned int& value) {
    value = stream.ReadUInt32();
    return stream;
}
CDataInputStream& operator>>(CDataInputStream& stream, float& value) {
    value = stream.ReadFloat();
    return stream;
}
CDataInputStream& operator>>(CDataInputStream& stream, double& value) {
    value = stream.ReadDouble();
    return stream;
}
CDataInputStream& operator>>(CDataInputStream& stream, CUnicodeString& text) {
    text = stream.ReadString();
    return stream;
}
CDataInputStream& operator>>(CDataInputStream& stream, ISerializable& object) {
    stream.ReadObject(object);
    return stream;
}

} // namespace vorn::io

#include <vorn/base/ArrayIndexOutOfBoundsException.h>
#include <vorn/io/Base64OutputStream.h>

#include "vorn/io/StreamBeneath.h"

namespace vorn::io {

namespace {

constexpr const char* kSource = "vorn/io/Base64OutputStream";
// No closed state of its own: every call, Close included, goes to the stream beneath.
constexpr beneath::ClosedRule kClosed{kSource, __LINE__, "Stream closed.",
                                      beneath::SecondClose::kNoState};

// This stream's own copy, apart from the encoders of CBinaryData.
constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

} // namespace

VORN_DEFINE_CLASS_BASE(CBase64OutputStream, "vorn::io::CBase64OutputStream",
                       "vorn::io::COutputStream")

CBase64OutputStream::CBase64OutputStream(vorn::base::CRef<COutputStream> const& stream,
                                         unsigned int lineLength)
    : m_stream(beneath::Require(stream.GetPointer(), kSource, __LINE__, "Invalid output stream.")),
      m_streamRef(stream), m_lineLength(lineLength), m_group{}, m_groupCount(0), m_column(0) {}

CBase64OutputStream::CBase64OutputStream(COutputStream* stream, unsigned int lineLength)
    : m_stream(beneath::Require(stream, kSource, __LINE__, "Invalid output stream.")),
      m_streamRef(), m_lineLength(lineLength), m_group{}, m_groupCount(0), m_column(0) {}

CBase64OutputStream::~CBase64OutputStream() {}

void CBase64OutputStream::Write(char value) {
    // A group left full by a failed write beneath has no room: the store would land outside it.
    if (m_groupCount >= 3)
        throw vorn::base::CArrayIndexOutOfBoundsException(kSource, __LINE__);
    m_group[m_groupCount++] = value;
    if (m_groupCount == 3) {
        char text[4];
        EncodeGroup(m_group, 0, 3, text, 0);
        InternalWrite(text, 0, 4);
        m_groupCount = 0;
    }
}

void CBase64OutputStream::Flush() {
    if (m_groupCount != 0) {
        char text[4];
        EncodeGroup(m_group, 0, m_groupCount, text, 0);
        InternalWrite(text, 0, 4);
        m_groupCount = 0;
    }
    m_stream->Flush();
}

void CBase64OutputStream::Close() {
    beneath::Close(m_stream, kClosed);
}

// Always 4: a partial group is padded with '='. A count of 0 (mod 4) writes nothing.
unsigned int CBase64OutputStream::EncodeGroup(char const* data, unsigned int offset,
                                              unsigned int count, char* target,
                                              unsigned int targetOffset) {
    const auto* in = reinterpret_cast<const unsigned char*>(data + offset);
    char* out = target + targetOffset;
    count %= 4;
    if (count == 0)
        return 4;
    const unsigned int b0 = in[0];
    const unsigned int b1 = count > 1 ? in[1] : 0;
    const unsigned int b2 = count > 2 ? in[2] : 0;
    out[0] = kAlphabet[b0 >> 2];
    out[1] = kAlphabet[((b0 & 0x03) << 4) | (b1 >> 4)];
    out[2] = count > 1 ? kAlphabet[((b1 & 0x0F) << 2) | (b2 >> 6)] : '=';
    out[3] = count > 2 ? kAlphabet[b2 & 0x3F] : '=';
    return 4;
}

// A line break goes out only in front of a further character, so the text never ends in one.
void CBase64OutputStream::InternalWrite(char const* buffer, unsigned int offset,
                                        unsigned int count) {
    if (m_lineLength == 0) {
        m_stream->Write(buffer, offset, count);
        return;
    }
    for (unsigned int i = 0; i < count; ++i) {
        if (m_column >= m_lineLength) {
            m_stream->Write('\r');
            m_stream->Write('\n');
            m_column = 0;
        }
        m_stream->Write(buffer[offset + i]);
        ++m_column;
    }
}

} // namespace vorn::io

#include <vorn/io/BufferedOutputStream.h>

#include "platform/PtrCheck.h"
#include "vorn/io/BufferedUnits.h"
#include "vorn/io/StreamBeneath.h"

namespace vorn::io {

namespace {

constexpr const char* kSource = "vorn/io/BufferedOutputStream";
constexpr beneath::ClosedRule kClosed{kSource, __LINE__, "Stream closed.",
                                      beneath::SecondClose::kQuiet};

} // namespace

VORN_DEFINE_CLASS_BASE(CBufferedOutputStream, "vorn::io::CBufferedOutputStream",
                       "vorn::io::COutputStream")

CBufferedOutputStream::CBufferedOutputStream(vorn::base::CRef<COutputStream> const& stream,
                                             unsigned int size)
    : m_stream(beneath::Require(stream.GetPointer(), kSource, __LINE__, "Invalid output stream.")),
      m_streamRef(stream), m_buffer(nullptr), m_capacity(0), m_count(0) {
    Init(size);
}

CBufferedOutputStream::CBufferedOutputStream(COutputStream* stream, unsigned int size)
    : m_stream(beneath::Require(stream, kSource, __LINE__, "Invalid output stream.")),
      m_buffer(nullptr), m_capacity(0), m_count(0) {
    Init(size);
}

CBufferedOutputStream::~CBufferedOutputStream() {
    ZK_free(m_buffer);
}

void CBufferedOutputStream::Init(unsigned int size) {
    if (size == 0) // the words are this class's own, misspelt
        throw vorn::base::CIllegalArgumentException(kSource, __LINE__, "Invaid buffer size.");
    m_buffer = buffered::Allocate<char>(size, kSource, __LINE__);
    m_capacity = size;
}

void CBufferedOutputStream::Write(char value) {
    beneath::Open(m_stream, kClosed);
    if (m_count == m_capacity)
        FlushBuffer();
    m_buffer[m_count++] = value;
}

void CBufferedOutputStream::Write(char const* buffer, unsigned int offset, unsigned int count) {
    if (buffer == nullptr || !BNValidReadPtr(buffer + offset, count))
        return;
    InternalWrite(buffer, offset, count);
}

void CBufferedOutputStream::Write(char const* buffer, unsigned int count) {
    if (buffer == nullptr || !BNValidReadPtr(buffer, count))
        return;
    InternalWrite(buffer, 0, count);
}

void CBufferedOutputStream::InternalWrite(char const* buffer, unsigned int offset,
                                          unsigned int count) {
    buffered::Put(beneath::Open(m_stream, kClosed), m_buffer, m_capacity, m_count, buffer, offset,
                  count, [this] { FlushBuffer(); });
}

void CBufferedOutputStream::FlushBuffer() {
    buffered::Drain(beneath::Open(m_stream, kClosed), m_buffer, m_count);
}

void CBufferedOutputStream::Flush() {
    COutputStream* stream = beneath::Open(m_stream, kClosed);
    FlushBuffer();
    stream->Flush();
}

void CBufferedOutputStream::Close() {
    beneath::Close(m_stream, kClosed, [this] { FlushBuffer(); });
}

void CBufferedOutputStream::InternalClose() {
    beneath::Close(m_stream, kClosed);
}

} // namespace vorn::io

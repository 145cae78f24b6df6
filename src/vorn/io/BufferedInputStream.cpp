#include <cstring>

#include <vorn/io/BufferedInputStream.h>

#include "platform/PtrCheck.h"
#include "vorn/io/BufferedUnits.h"
#include "vorn/io/StreamBeneath.h"

namespace vorn::io {

namespace {

constexpr const char* kSource = "vorn/io/BufferedInputStream";
constexpr beneath::ClosedRule kClosed{kSource, __LINE__, "Stream closed.",
                                      beneath::SecondClose::kThrows};
constexpr unsigned int kDefaultSize = 512;

} // namespace

VORN_DEFINE_CLASS_BASE(CBufferedInputStream, "vorn::io::CBufferedInputStream",
                       "vorn::io::CInputStream")

CBufferedInputStream::CBufferedInputStream(vorn::base::CRef<CInputStream> const& stream,
                                           unsigned int size)
    : m_stream(beneath::Require(stream.GetPointer(), kSource, __LINE__, "Invalid input stream.")),
      m_streamRef(stream), m_buffer(nullptr), m_capacity(0), m_count(0), m_position(0) {
    CreateBuffer(size);
}

CBufferedInputStream::CBufferedInputStream(CInputStream* stream, unsigned int size)
    : m_stream(beneath::Require(stream, kSource, __LINE__, "Invalid input stream.")),
      m_buffer(nullptr), m_capacity(0), m_count(0), m_position(0) {
    CreateBuffer(size);
}

CBufferedInputStream::~CBufferedInputStream() {
    ZK_free(m_buffer);
}

void CBufferedInputStream::CreateBuffer(unsigned int size) {
    m_capacity = size == 0 ? kDefaultSize : size;
    m_buffer = buffered::Allocate<char>(m_capacity, kSource, __LINE__);
}

void CBufferedInputStream::FillBuffer() {
    buffered::Fill(m_stream, m_buffer, m_capacity, m_count, m_position);
}

unsigned int CBufferedInputStream::GetAvailable() const {
    return beneath::Open(m_stream, kClosed)->GetAvailable() + (m_count - m_position);
}

int CBufferedInputStream::Read() {
    beneath::Open(m_stream, kClosed);
    if (m_position >= m_count) {
        FillBuffer();
        if (m_position >= m_count)
            return EOS;
    }
    return static_cast<signed char>(m_buffer[m_position++]);
}

// What is buffered, then at most one refill's worth.
int CBufferedInputStream::ReadBuffered(char* target, unsigned int count) {
    const unsigned int buffered = m_count - m_position;
    if (count <= buffered) {
        std::memcpy(target, m_buffer + m_position, count);
        m_position += count;
        return static_cast<int>(count);
    }
    std::memcpy(target, m_buffer + m_position, buffered);
    m_position = m_count;
    FillBuffer();
    if (m_count == m_position)
        return static_cast<int>(buffered); // 0 at the end, not -1
    const unsigned int more =
        count - buffered < m_count - m_position ? count - buffered : m_count - m_position;
    std::memcpy(target + buffered, m_buffer + m_position, more);
    m_position += more;
    return static_cast<int>(buffered + more);
}

int CBufferedInputStream::Read(char* buffer, unsigned int offset, unsigned int count) {
    CInputStream* stream = beneath::Open(m_stream, kClosed);
    if (buffer == nullptr || !BNValidWritePtr(buffer + offset, count))
        return count == 0 ? 0 : Skip(count);
    if (count == 0)
        return 0;
    if (count > m_capacity)
        return stream->Read(buffer, offset, count);
    return ReadBuffered(buffer + offset, count);
}

int CBufferedInputStream::Read(char* buffer, unsigned int count) {
    CInputStream* stream = beneath::Open(m_stream, kClosed);
    if (buffer == nullptr || !BNValidWritePtr(buffer, count))
        return count == 0 ? 0 : Skip(count);
    if (count == 0)
        return 0;
    if (count > m_capacity)
        return stream->Read(buffer, count);
    return ReadBuffered(buffer, count);
}

int CBufferedInputStream::Skip(unsigned int count) {
    CInputStream* stream = beneath::Open(m_stream, kClosed);
    if (count == 0)
        return 0;
    return buffered::Skip(stream, m_count, m_position, count);
}

void CBufferedInputStream::Reset() {
    CInputStream* stream = beneath::Open(m_stream, kClosed);
    m_count = 0;
    m_position = 0;
    stream->Reset();
}

void CBufferedInputStream::Close() {
    beneath::Close(m_stream, kClosed);
}

} // namespace vorn::io

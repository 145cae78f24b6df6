#include <cstring>

#include <vorn/io/BufferedReader.h>

#include "platform/PtrCheck.h"
#include "vorn/io/BufferedUnits.h"
#include "vorn/io/StreamBeneath.h"

namespace vorn::io {

namespace {

constexpr const char* kSource = "vorn/io/BufferedReader";
constexpr beneath::ClosedRule kClosed{kSource, __LINE__, "Reader closed.",
                                      beneath::SecondClose::kThrows};

} // namespace

VORN_DEFINE_CLASS_BASE(CBufferedReader, "vorn::io::CBufferedReader", "vorn::io::CReader")

CBufferedReader::CBufferedReader(vorn::base::CRef<CReader> const& reader, unsigned int size)
    : m_stream(beneath::Require(reader.GetPointer(), kSource, __LINE__, "Invalid reader.")),
      m_streamRef(reader), m_buffer(nullptr), m_capacity(0), m_count(0), m_position(0) {
    Init(size);
}

CBufferedReader::CBufferedReader(CReader* reader, unsigned int size)
    : m_stream(beneath::Require(reader, kSource, __LINE__, "Invalid reader.")), m_buffer(nullptr),
      m_capacity(0), m_count(0), m_position(0) {
    Init(size);
}

CBufferedReader::~CBufferedReader() {
    ZK_free(m_buffer);
}

void CBufferedReader::Init(unsigned int size) {
    if (size == 0)
        throw vorn::base::CIllegalArgumentException(kSource, __LINE__, "Invalid buffer size.");
    m_buffer = buffered::Allocate<unsigned short>(size, kSource, __LINE__);
    m_capacity = size;
}

void CBufferedReader::FillBuffer() {
    buffered::Fill(m_stream, m_buffer, m_capacity, m_count, m_position);
}

int CBufferedReader::Read() {
    beneath::Open(m_stream, kClosed);
    if (m_position >= m_count) {
        FillBuffer();
        if (m_position >= m_count)
            return EOS;
    }
    return m_buffer[m_position++];
}

// Only a request below what is buffered is served from the buffer alone. Otherwise the buffered
// units go to the start of the destination, and what the refill brings is copied over them.
int CBufferedReader::ReadBuffered(unsigned short* target, unsigned int count) {
    const unsigned int buffered = m_count - m_position;
    if (count < buffered) {
        std::memcpy(target, m_buffer + m_position, 2 * std::size_t{count});
        m_position += count;
        return static_cast<int>(count);
    }
    std::memcpy(target, m_buffer + m_position, 2 * std::size_t{buffered});
    m_position = m_count;
    FillBuffer();
    if (m_count == m_position)
        return 0;
    const unsigned int n = count < m_count - m_position ? count : m_count - m_position;
    std::memcpy(target, m_buffer + m_position, 2 * std::size_t{n});
    m_position += n;
    return static_cast<int>(n);
}

int CBufferedReader::Read(unsigned short* buffer, unsigned int offset, unsigned int count) {
    CReader* reader = beneath::Open(m_stream, kClosed);
    if (buffer == nullptr || !BNValidWritePtr(buffer, 2 * std::size_t{count}))
        return count == 0 ? 0 : Skip(count);
    if (count == 0)
        return 0;
    if (count > m_capacity)
        return reader->Read(buffer, offset, count);
    return ReadBuffered(buffer + offset, count);
}

int CBufferedReader::Read(unsigned short* buffer, unsigned int count) {
    CReader* reader = beneath::Open(m_stream, kClosed);
    if (buffer == nullptr || !BNValidWritePtr(buffer, 2 * std::size_t{count}))
        return count == 0 ? 0 : Skip(count);
    if (count == 0)
        return 0;
    if (count > m_capacity)
        return reader->Read(buffer, count);
    return ReadBuffered(buffer, count);
}

int CBufferedReader::Skip(unsigned int count) {
    CReader* reader = beneath::Open(m_stream, kClosed);
    if (count == 0)
        return 0;
    return buffered::Skip(reader, m_count, m_position, count);
}

void CBufferedReader::Reset() {
    CReader* reader = beneath::Open(m_stream, kClosed);
    m_count = 0;
    m_position = 0;
    reader->Reset();
}

void CBufferedReader::Close() {
    beneath::Close(m_stream, kClosed);
}

} // namespace vorn::io

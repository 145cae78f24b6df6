#include <vorn/io/PushbackInputStream.h>

#include "platform/PtrCheck.h"
#include "vorn/io/BufferedUnits.h"
#include "vorn/io/PushbackUnits.h"
#include "vorn/io/StreamBeneath.h"

namespace vorn::io {

namespace {

constexpr const char* kSource = "vorn/io/PushbackInputStream";
constexpr beneath::ClosedRule kClosed{kSource, __LINE__, "Stream closed.",
                                      beneath::SecondClose::kThrows};

} // namespace

VORN_DEFINE_CLASS_BASE(CPushbackInputStream, "vorn::io::CPushbackInputStream",
                       "vorn::io::CInputStream")

CPushbackInputStream::CPushbackInputStream(vorn::base::CRef<CInputStream> const& stream,
                                           unsigned int size)
    : m_stream(nullptr), m_streamRef(stream), m_buffer(nullptr), m_size(0), m_position(0) {
    Init(stream.GetPointer(), size);
}

CPushbackInputStream::CPushbackInputStream(CInputStream* stream, unsigned int size)
    : m_stream(nullptr), m_buffer(nullptr), m_size(0), m_position(0) {
    Init(stream, size);
}

CPushbackInputStream::~CPushbackInputStream() {
    ZK_free(m_buffer);
}

void CPushbackInputStream::Init(CInputStream* stream, unsigned int size) {
    m_stream = beneath::Require(stream, kSource, __LINE__, "Invalid input stream.");
    if (size == 0)
        throw vorn::base::CIllegalArgumentException(kSource, __LINE__,
                                                    "Invalid pushback buffer size.");
    m_buffer = buffered::Allocate<char>(size, kSource, __LINE__);
    m_size = size;
    m_position = size;
}

void CPushbackInputStream::Unread(char value) {
    pushback::UnreadOne(m_buffer, m_position, value, kSource, __LINE__);
}

void CPushbackInputStream::Unread(char const* buffer, unsigned int count) {
    pushback::UnreadBlock(m_buffer, m_position, buffer, count, kSource, __LINE__);
}

void CPushbackInputStream::Unread(char const* buffer, unsigned int offset, unsigned int count) {
    pushback::UnreadBlock(m_buffer, m_position, pushback::At(buffer, offset), count, kSource,
                          __LINE__);
}

unsigned int CPushbackInputStream::GetAvailable() const {
    return beneath::Open(m_stream, kClosed)->GetAvailable() + (m_size - m_position);
}

int CPushbackInputStream::Read() {
    CInputStream* stream = beneath::Open(m_stream, kClosed);
    if (m_position < m_size)
        return static_cast<signed char>(m_buffer[m_position++]);
    return stream->Read();
}

int CPushbackInputStream::Read(char* buffer, unsigned int offset, unsigned int count) {
    CInputStream* stream = beneath::Open(m_stream, kClosed);
    if (buffer == nullptr || !BNValidWritePtr(buffer + offset, count))
        return count == 0 ? 0 : Skip(count);
    if (count == 0)
        return 0;
    return pushback::ReadBlock(stream, m_buffer, m_size, m_position, buffer, offset, count);
}

int CPushbackInputStream::Read(char* buffer, unsigned int count) {
    CInputStream* stream = beneath::Open(m_stream, kClosed);
    if (buffer == nullptr || !BNValidWritePtr(buffer, count))
        return count == 0 ? 0 : Skip(count);
    if (count == 0)
        return 0;
    return pushback::ReadBlock(stream, m_buffer, m_size, m_position, buffer, 0, count);
}

int CPushbackInputStream::Skip(unsigned int count) {
    CInputStream* stream = beneath::Open(m_stream, kClosed);
    if (count == 0)
        return 0;
    return pushback::Skip(stream, m_size, m_position, count);
}

void CPushbackInputStream::Reset() {
    CInputStream* stream = beneath::Open(m_stream, kClosed);
    m_position = m_size;
    stream->Reset();
}

void CPushbackInputStream::Close() {
    beneath::Close(m_stream, kClosed);
}

} // namespace vorn::io

#include <vorn/io/PushbackReader.h>

#include "platform/PtrCheck.h"
#include "vorn/io/BufferedUnits.h"
#include "vorn/io/PushbackUnits.h"
#include "vorn/io/StreamBeneath.h"

namespace vorn::io {

namespace {

constexpr const char* kSource = "vorn/io/PushbackReader";
constexpr beneath::ClosedRule kClosed{kSource, __LINE__, "Reader closed.",
                                      beneath::SecondClose::kThrows};

} // namespace

VORN_DEFINE_CLASS_BASE(CPushbackReader, "vorn::io::CPushbackReader", "vorn::io::CReader")

CPushbackReader::CPushbackReader(vorn::base::CRef<CReader> const& reader, unsigned int size)
    : m_stream(nullptr), m_streamRef(reader), m_buffer(nullptr), m_size(0), m_position(0) {
    Init(reader.GetPointer(), size);
}

CPushbackReader::CPushbackReader(CReader* reader, unsigned int size)
    : m_stream(nullptr), m_buffer(nullptr), m_size(0), m_position(0) {
    Init(reader, size);
}

CPushbackReader::~CPushbackReader() {
    ZK_free(m_buffer);
}

void CPushbackReader::Init(CReader* reader, unsigned int size) {
    m_stream = beneath::Require(reader, kSource, __LINE__, "Invalid reader.");
    if (size == 0)
        throw vorn::base::CIllegalArgumentException(kSource, __LINE__,
                                                    "Invalid pushback buffer size.");
    m_buffer = buffered::Allocate<unsigned short>(size, kSource, __LINE__);
    m_size = size;
    m_position = size;
}

void CPushbackReader::Unread(unsigned short value) {
    pushback::UnreadOne(m_buffer, m_position, value, kSource, __LINE__);
}

void CPushbackReader::Unread(unsigned short const* buffer, unsigned int count) {
    pushback::UnreadBlock(m_buffer, m_position, buffer, count, kSource, __LINE__);
}

void CPushbackReader::Unread(unsigned short const* buffer, unsigned int offset,
                             unsigned int count) {
    pushback::UnreadBlock(m_buffer, m_position, pushback::At(buffer, offset), count, kSource,
                          __LINE__);
}

int CPushbackReader::Read() {
    CReader* reader = beneath::Open(m_stream, kClosed);
    if (m_position < m_size)
        return m_buffer[m_position++];
    return reader->Read();
}

int CPushbackReader::Read(unsigned short* buffer, unsigned int offset, unsigned int count) {
    CReader* reader = beneath::Open(m_stream, kClosed);
    if (buffer == nullptr || !BNValidWritePtr(buffer + offset, 2 * std::size_t{count}))
        return count == 0 ? 0 : Skip(count);
    if (count == 0)
        return 0;
    return pushback::ReadBlock(reader, m_buffer, m_size, m_position, buffer, offset, count);
}

int CPushbackReader::Read(unsigned short* buffer, unsigned int count) {
    CReader* reader = beneath::Open(m_stream, kClosed);
    if (buffer == nullptr || !BNValidWritePtr(buffer, 2 * std::size_t{count}))
        return count == 0 ? 0 : Skip(count);
    if (count == 0)
        return 0;
    return pushback::ReadBlock(reader, m_buffer, m_size, m_position, buffer, 0, count);
}

int CPushbackReader::Skip(unsigned int count) {
    CReader* reader = beneath::Open(m_stream, kClosed);
    if (count == 0)
        return 0;
    return pushback::Skip(reader, m_size, m_position, count);
}

void CPushbackReader::Reset() {
    CReader* reader = beneath::Open(m_stream, kClosed);
    m_position = m_size;
    reader->Reset();
}

void CPushbackReader::Close() {
    beneath::Close(m_stream, kClosed);
}

} // namespace vorn::io

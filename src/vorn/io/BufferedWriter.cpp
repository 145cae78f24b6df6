#include <vorn/io/BufferedWriter.h>

#include "platform/PtrCheck.h"
#include "vorn/io/BufferedUnits.h"
#include "vorn/io/StreamBeneath.h"

namespace vorn::io {

namespace {

constexpr const char* kSource = "vorn/io/BufferedWriter";
constexpr beneath::ClosedRule kClosed{kSource, __LINE__, "Writer closed.",
                                      beneath::SecondClose::kQuiet};

} // namespace

VORN_DEFINE_CLASS_BASE(CBufferedWriter, "vorn::io::CBufferedWriter", "vorn::io::CWriter")

CBufferedWriter::CBufferedWriter(vorn::base::CRef<CWriter> const& writer, unsigned int size)
    : m_stream(beneath::Require(writer.GetPointer(), kSource, __LINE__, "Invalid writer.")),
      m_streamRef(writer), m_buffer(nullptr), m_capacity(0), m_count(0) {
    Init(size);
}

CBufferedWriter::CBufferedWriter(CWriter* writer, unsigned int size)
    : m_stream(beneath::Require(writer, kSource, __LINE__, "Invalid writer.")), m_buffer(nullptr),
      m_capacity(0), m_count(0) {
    Init(size);
}

CBufferedWriter::~CBufferedWriter() {
    ZK_free(m_buffer);
}

void CBufferedWriter::Init(unsigned int size) {
    if (size == 0)
        throw vorn::base::CIllegalArgumentException(kSource, __LINE__, "Invalid buffer size.");
    m_buffer = buffered::Allocate<unsigned short>(size, kSource, __LINE__);
    m_capacity = size;
}

void CBufferedWriter::Write(unsigned short value) {
    beneath::Open(m_stream, kClosed);
    if (m_count == m_capacity)
        FlushBuffer();
    m_buffer[m_count++] = value;
}

void CBufferedWriter::Write(unsigned short const* text, unsigned int offset, unsigned int count) {
    if (text == nullptr || !BNValidReadPtr(text + offset, 2 * std::size_t{count}))
        return;
    InternalWrite(text, offset, count);
}

void CBufferedWriter::Write(unsigned short const* text, unsigned int count) {
    if (text == nullptr || !BNValidReadPtr(text, 2 * std::size_t{count}))
        return;
    InternalWrite(text, 0, count);
}

void CBufferedWriter::InternalWrite(unsigned short const* text, unsigned int offset,
                                    unsigned int count) {
    buffered::Put(beneath::Open(m_stream, kClosed), m_buffer, m_capacity, m_count, text, offset,
                  count, [this] { FlushBuffer(); });
}

void CBufferedWriter::FlushBuffer() {
    buffered::Drain(beneath::Open(m_stream, kClosed), m_buffer, m_count);
}

void CBufferedWriter::Flush() {
    CWriter* writer = beneath::Open(m_stream, kClosed);
    FlushBuffer();
    writer->Flush();
}

void CBufferedWriter::Close() {
    beneath::Close(m_stream, kClosed, [this] { FlushBuffer(); });
}

void CBufferedWriter::InternalClose() {
    beneath::Close(m_stream, kClosed);
}

} // namespace vorn::io

#include <vorn/base/IllegalArgumentException.h>
#include <vorn/base/MemoryException.h>
#include <vorn/base/NullReferenceException.h>
#include <vorn/base/UnicodeString.h>
#include <vorn/io/IOException.h>
#include <vorn/io/OutputStreamWriter.h>

#include "platform/Memory.h"
#include "platform/PtrCheck.h"
#include "platform/UniText.h"
#include "vorn/io/StreamBeneath.h"

namespace vorn::io {

using vorn::base::CUnicodeString;

VORN_DEFINE_CLASS_BASE(COutputStreamWriter, "vorn::io::COutputStreamWriter", "vorn::io::CWriter")

namespace {

constexpr const char* kSource = "vorn/io/OutputStreamWriter";
constexpr beneath::ClosedRule kClosed{kSource, __LINE__, "Writer closed.",
                                      beneath::SecondClose::kQuiet};
const unsigned int kInitialCapacity = 8196;

} // namespace

COutputStreamWriter::COutputStreamWriter(const vorn::base::CRef<COutputStream>& stream,
                                         const char* encoding, bool writeByteOrderMark)
    : m_stream(nullptr), m_streamRef(stream), m_encoding(encoding), m_buffer(nullptr),
      m_capacity(0), m_used(0) {
    Init(stream.GetPointer(), encoding, writeByteOrderMark);
}

COutputStreamWriter::COutputStreamWriter(COutputStream* stream, const char* encoding,
                                         bool writeByteOrderMark)
    : m_stream(nullptr), m_encoding(encoding), m_buffer(nullptr), m_capacity(0), m_used(0) {
    Init(stream, encoding, writeByteOrderMark);
}

COutputStreamWriter::~COutputStreamWriter() {
    ZK_free(m_buffer);
}

void COutputStreamWriter::Init(COutputStream* stream, const char* encoding,
                               bool writeByteOrderMark) {
    beneath::Require(stream, kSource, __LINE__, "Invalid output stream.."); // both stops deliberate
    if (encoding == nullptr || *encoding == '\0')
        throw vorn::base::CIllegalArgumentException(kSource, __LINE__, "Invalid encoding.");
    m_stream = stream;
    m_converter = CWCharToCharConverter::GetConverter(m_encoding);
    if (writeByteOrderMark) {
        char mark[16];
        unsigned int size = sizeof(mark);
        m_converter->GetByteOrderMark(mark, &size);
        m_stream->Write(mark, 0, size);
    }
    m_capacity = kInitialCapacity;
    m_buffer = static_cast<char*>(ZK_malloc(m_capacity));
    if (m_buffer == nullptr)
        throw vorn::base::CMemoryException(kSource, __LINE__);
    m_used = 0;
}

void COutputStreamWriter::Write(const CUnicodeString& text, unsigned int offset,
                                unsigned int count) {
    const unsigned int length = text.GetLength();
    if (length == 0 || offset >= length)
        return;
    if (count > length - offset)
        count = length - offset;
    InternalWrite(text, offset, count);
}

void COutputStreamWriter::Write(const CUnicodeString& text) {
    if (text.IsEmpty())
        return;
    InternalWrite(text, 0, text.GetLength());
}

void COutputStreamWriter::Write(const unsigned short* text, unsigned int offset,
                                unsigned int count) {
    if (text == nullptr || !BNValidReadPtr(text + offset, 2 * static_cast<std::size_t>(count)))
        return;
    InternalWrite(text, offset, count);
}

void COutputStreamWriter::Write(const unsigned short* text, unsigned int count) {
    if (text == nullptr || !BNValidReadPtr(text, 2 * static_cast<std::size_t>(count)))
        return;
    InternalWrite(text, 0, count);
}

void COutputStreamWriter::Write(const unsigned short* text) {
    if (text == nullptr)
        return;
    InternalWrite(text, 0, static_cast<unsigned int>(ZK::ucslen(text)));
}

void COutputStreamWriter::Write(unsigned short value) {
    InternalWrite(&value, 0, 1);
}

void COutputStreamWriter::InternalWrite(const unsigned short* text, unsigned int offset,
                                        unsigned int count) {
    beneath::Open(m_stream, kClosed);
    // After "Memory full." no buffer is left, and a conversion would write through null.
    if (m_buffer == nullptr)
        throw vorn::base::CNullReferenceException(kSource, __LINE__);
    bool flushed = false;
    unsigned int i = offset;
    const unsigned int end = offset + count;
    while (i < end) {
        bool overflow = false;
        const int n = m_converter->Convert(text, i, end - i, m_buffer, m_used, m_capacity - m_used);
        // Deliberate: 0 (a lone high surrogate held back) takes the overflow path too, so such a
        // write doubles the buffer until memory runs out.
        if (n > 0) {
            m_used += static_cast<unsigned int>(n);
            i = end;
        } else {
            m_converter->Reset();
            if (flushed) {
                ZK_free(m_buffer);
                m_buffer = nullptr;
                const unsigned int doubled = m_capacity * 2;
                // Past 32 bits the doubling would wrap and loop for ever: memory is full there.
                if (doubled <= m_capacity)
                    throw CIOException(kSource, __LINE__, "Memory full.", nullptr);
                m_capacity = doubled;
                m_buffer = static_cast<char*>(ZK_malloc(m_capacity));
                if (m_buffer == nullptr)
                    throw CIOException(kSource, __LINE__, "Memory full.", nullptr);
            } else {
                overflow = true;
            }
        }
        if (m_used >= m_capacity || overflow) {
            m_stream->Write(m_buffer, 0, m_used);
            m_used = 0;
            flushed = true;
        }
    }
}

void COutputStreamWriter::FlushBuffer() {
    beneath::Open(m_stream, kClosed);
    if (m_used > 0) {
        m_stream->Write(m_buffer, 0, m_used);
        m_used = 0;
    }
}

void COutputStreamWriter::Flush() {
    beneath::Open(m_stream, kClosed);
    FlushBuffer();
    m_stream->Flush();
}

void COutputStreamWriter::Close() {
    beneath::Close(m_stream, kClosed, [this] { FlushBuffer(); });
}

} // namespace vorn::io

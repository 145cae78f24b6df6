#include <vorn/io/MemoryInputStream.h>

#include <cstring>

#include <vorn/base/IllegalArgumentException.h>
#include <vorn/io/IOException.h>

#include "platform/Memory.h"
#include "platform/PtrCheck.h"

namespace vorn::io {

namespace {
const char* const kSource = "vorn/io/MemoryInputStream";
}

VORN_DEFINE_CLASS_BASE(CMemoryInputStream, "vorn::io::CMemoryInputStream", "vorn::io::CInputStream")

CMemoryInputStream::CMemoryInputStream(char const* buffer, unsigned int size, bool ownsBuffer)
    : m_buffer(buffer), m_size(size), m_position(0), m_ownsBuffer(ownsBuffer) {
    if (buffer == nullptr || !BNValidReadPtr(buffer, size))
        throw vorn::base::CIllegalArgumentException(kSource, __LINE__, "Invalid source buffer.");
}

CMemoryInputStream::~CMemoryInputStream() {
    if (m_ownsBuffer && m_buffer != nullptr)
        ZK_free(const_cast<char*>(m_buffer));
}

void CMemoryInputStream::CheckOpen(unsigned int line) const {
    if (m_buffer == nullptr)
        throw CIOException(kSource, line, "Stream closed.", nullptr);
}

unsigned int CMemoryInputStream::GetAvailable() const {
    CheckOpen(__LINE__);
    return m_size - m_position;
}

int CMemoryInputStream::ReadInto(char* target, unsigned int count) {
    if (count == 0)
        return 0;
    if (m_position >= m_size)
        return -1;
    unsigned int n = m_size - m_position;
    if (count < n)
        n = count;
    std::memcpy(target, m_buffer + m_position, n);
    m_position += n;
    return static_cast<int>(n);
}

int CMemoryInputStream::Read(char* buffer, unsigned int offset, unsigned int count) {
    CheckOpen(__LINE__);
    if (buffer == nullptr || !BNValidWritePtr(buffer + offset, count))
        return count == 0 ? 0 : Skip(count);
    return ReadInto(buffer + offset, count);
}

int CMemoryInputStream::Read(char* buffer, unsigned int count) {
    CheckOpen(__LINE__);
    if (buffer == nullptr || !BNValidWritePtr(buffer, count))
        return count == 0 ? 0 : Skip(count);
    return ReadInto(buffer, count);
}

int CMemoryInputStream::Read() {
    CheckOpen(__LINE__);
    if (m_position >= m_size)
        return EOS;
    return static_cast<signed char>(m_buffer[m_position++]);
}

int CMemoryInputStream::Skip(unsigned int count) {
    CheckOpen(__LINE__);
    if (count == 0)
        return 0;
    unsigned int remainder = m_size - m_position;
    if (count < remainder) {
        m_position += count;
        return static_cast<int>(count);
    }
    m_position = m_size;
    return static_cast<int>(remainder);
}

void CMemoryInputStream::Reset() {
    CheckOpen(__LINE__);
    m_position = 0;
}

void CMemoryInputStream::Close() {
    CheckOpen(__LINE__);
    if (m_ownsBuffer)
        ZK_free(const_cast<char*>(m_buffer));
    m_buffer = nullptr;
}

} // namespace vorn::io

#include <vorn/io/MemoryOutputStream.h>

#include <climits>
#include <cstdint>
#include <cstring>

#include <vorn/base/MemoryException.h>
#include <vorn/io/IOException.h>

#include "platform/Memory.h"
#include "platform/PtrCheck.h"

namespace vorn::io {

namespace {

const char* const kSource = "vorn/io/MemoryOutputStream";

// Where the granule times the capacity can't wrap, the capacity is a multiple of the granule and
// any request up to it rounds to at most it: room that is there is found without the division of
// the rounding, which every byte written would otherwise pay.
inline bool HasRoomFor(unsigned int capacity, unsigned int have, unsigned int growth) {
    return capacity <= have && std::uint64_t{growth - 1} * have <= std::uint64_t{UINT_MAX};
}

[[noreturn]] __attribute__((noinline, cold)) void Throw(unsigned int line, const char* message) {
    throw CIOException(kSource, line, message, nullptr);
}

} // namespace

VORN_DEFINE_CLASS_BASE(CMemoryOutputStream, "vorn::io::CMemoryOutputStream",
                       "vorn::io::COutputStream")

CMemoryOutputStream::CMemoryOutputStream() : CMemoryOutputStream(256, 64) {}

CMemoryOutputStream::CMemoryOutputStream(unsigned int initialCapacity, unsigned int growth)
    : m_buffer(nullptr), m_size(0), m_capacity(0), m_growth(growth == 0 ? 64 : growth),
      m_open(true) {
    if (!EnsureBufferCapacity(initialCapacity))
        throw vorn::base::CMemoryException(kSource, __LINE__);
}

CMemoryOutputStream::~CMemoryOutputStream() {
    ZK_free(m_buffer);
}

bool CMemoryOutputStream::EnsureBufferCapacity(unsigned int capacity) {
    if (HasRoomFor(capacity, m_capacity, m_growth))
        return true;
    // Deliberate form of the rounding: a product that wraps is left to wrap.
    unsigned int target = capacity + (((m_growth - 1) * capacity) % m_growth);
    // A sum past 4 GiB would claim room it doesn't have: refuse it as the allocation would.
    if (target < capacity)
        return false;
    if (m_capacity >= target)
        return true;
    char* block = static_cast<char*>(ZK_malloc(target));
    if (block == nullptr)
        return false;
    if (m_buffer != nullptr) {
        std::memcpy(block, m_buffer, m_size);
        ZK_free(m_buffer);
    }
    m_buffer = block;
    m_capacity = target;
    return true;
}

inline void CMemoryOutputStream::CheckOpen(unsigned int line) const {
    if (!m_open)
        Throw(line, "Stream closed.");
}

void CMemoryOutputStream::Append(char const* source, unsigned int count, unsigned int line) {
    // A size that wraps could pass the capacity check with room for far less.
    if (count > UINT_MAX - m_size ||
        !(HasRoomFor(m_size + count, m_capacity, m_growth) || EnsureBufferCapacity(m_size + count)))
        Throw(line, "Memory full.");
    if (count != 0)
        std::memcpy(m_buffer + m_size, source, count);
    m_size += count;
}

void CMemoryOutputStream::Write(char const* buffer, unsigned int offset, unsigned int count) {
    CheckOpen(__LINE__);
    if (buffer == nullptr && !BNValidReadPtr(buffer, count))
        return;
    Append(buffer == nullptr ? nullptr : buffer + offset, count, __LINE__);
}

void CMemoryOutputStream::Write(char const* buffer, unsigned int count) {
    CheckOpen(__LINE__);
    if (buffer == nullptr && !BNValidReadPtr(buffer, count))
        return;
    Append(buffer, count, __LINE__);
}

void CMemoryOutputStream::Write(char value) {
    CheckOpen(__LINE__);
    // m_size below m_capacity is room for m_size + 1, with no sum to wrap.
    if (!(m_size < m_capacity && HasRoomFor(m_size + 1, m_capacity, m_growth)) &&
        (m_size == UINT_MAX || !EnsureBufferCapacity(m_size + 1)))
        Throw(__LINE__, "Memory full.");
    m_buffer[m_size++] = value;
}

void CMemoryOutputStream::Flush() {
    CheckOpen(__LINE__);
}

void CMemoryOutputStream::Close() {
    m_open = false;
}

char* CMemoryOutputStream::DetachBuffer() {
    char* block = m_buffer;
    m_buffer = nullptr;
    m_size = 0;
    m_capacity = 0;
    return block;
}

void CMemoryOutputStream::Reset() {
    m_size = 0;
}

} // namespace vorn::io

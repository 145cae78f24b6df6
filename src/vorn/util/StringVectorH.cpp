#include <vorn/util/StringVectorH.h>

#include <climits>
#include <cstring>

#include <vorn/base/ArrayIndexOutOfBoundsException.h>
#include <vorn/base/MemoryException.h>
#include <vorn/util/NoSuchElementException.h>
#include <vorn/util/detail/Storage.h>

#include "platform/Memory.h"

namespace vorn::util {

using vorn::base::CArrayIndexOutOfBoundsException;
using vorn::base::CMemoryException;
using vorn::base::CString;

namespace {

constexpr const char* kSource = "vorn/util/StringVectorH";

// Resizes that may drop the contents, keep them while growing, keep them while shrinking.
constexpr unsigned int kFresh = 2;
constexpr unsigned int kKeep = 0;
constexpr unsigned int kShrink = 16;

// The data block has one byte behind its capacity that stays zero, so every text read from it is
// terminated whatever the offsets and moves have left in the data.
constexpr std::size_t kGuard = 1;

// Resizes `handle` to `bytes`, allocating it when there is none; false when no memory is left,
// with the old block untouched.
bool Resize(char**& handle, std::size_t bytes, unsigned int flags) {
    char** resized = handle != nullptr ? BMReallocHandle(handle, bytes, flags, 0)
                                       : BMAllocateHandle(bytes, kFresh, 0);
    if (resized == nullptr)
        return false;
    handle = resized;
    return true;
}

} // namespace

CStringVectorH::CStringVectorH(unsigned int dataCapacity, unsigned int dataIncrement,
                               unsigned int indexCapacity, unsigned int indexIncrement)
    : m_count(0), m_dataHandle(nullptr), m_dataSize(0), m_dataCapacity(0),
      m_dataIncrement(dataIncrement == 0 ? 256 : dataIncrement), m_indexHandle(nullptr),
      m_indexCapacity(0), m_indexIncrement(indexIncrement == 0 ? 1 : indexIncrement) {
    try {
        AllocStringDataBuffer(dataCapacity);
        AllocStringIndexBuffer(indexCapacity);
    } catch (...) {
        ReleaseStringDataBuffer();
        throw;
    }
}

CStringVectorH::CStringVectorH(const CStringVectorH& other)
    : m_count(0), m_dataHandle(nullptr), m_dataSize(0), m_dataCapacity(0),
      m_dataIncrement(other.m_dataIncrement), m_indexHandle(nullptr), m_indexCapacity(0),
      m_indexIncrement(other.m_indexIncrement) {
    if (other.m_count == 0)
        return;
    try {
        AllocStringDataBuffer(other.m_dataSize);
        AllocStringIndexBuffer(other.m_count);
    } catch (...) {
        ReleaseStringDataBuffer();
        throw;
    }
    if (other.m_dataSize != 0)
        std::memcpy(Data(), other.Data(), other.m_dataSize);
    std::memcpy(Offsets(), other.Offsets(), std::size_t{other.m_count} * 4);
    m_count = other.m_count;
    m_dataSize = other.m_dataSize;
}

// A failure before the data is replaced leaves the vector as it was; one after it empties it.
CStringVectorH& CStringVectorH::operator=(const CStringVectorH& other) {
    if (this == &other)
        return *this;
    if (other.m_count == 0) {
        RemoveAllElements();
        return *this;
    }
    AllocStringDataBuffer(other.m_dataSize);
    try {
        AllocStringIndexBuffer(other.m_count);
    } catch (const CMemoryException&) {
        m_count = 0;
        m_dataSize = 0;
        throw;
    }
    if (other.m_dataSize != 0)
        std::memcpy(Data(), other.Data(), other.m_dataSize);
    std::memcpy(Offsets(), other.Offsets(), std::size_t{other.m_count} * 4);
    m_count = other.m_count;
    m_dataSize = other.m_dataSize;
    return *this;
}

CStringVectorH::~CStringVectorH() {
    ReleaseStringDataBuffer();
    ReleaseStringIndexBuffer();
}

// ---- Blocks

void CStringVectorH::AllocStringDataBuffer(unsigned int size) {
    GrowData(size, kFresh, __LINE__);
}

void CStringVectorH::AllocStringIndexBuffer(unsigned int size) {
    GrowIndex(size, kFresh, __LINE__);
}

void CStringVectorH::EnsureStringDataCapacity(unsigned int size) {
    GrowData(size, kKeep, __LINE__);
}

void CStringVectorH::EnsureStringIndexCapacity(unsigned int size) {
    GrowIndex(size, kKeep, __LINE__);
}

void CStringVectorH::GrowData(unsigned int size, unsigned int flags, unsigned int line) {
    const unsigned int rounded = detail::RoundCapacity(size, m_dataIncrement);
    if (rounded <= m_dataCapacity)
        return;
    if (!Resize(m_dataHandle, rounded + kGuard, flags)) {
        m_dataCapacity = 0;
        throw CMemoryException(kSource, line);
    }
    m_dataCapacity = rounded;
    Data()[rounded] = '\0';
}

void CStringVectorH::GrowIndex(unsigned int size, unsigned int flags, unsigned int line) {
    const unsigned int rounded = detail::RoundCapacity(size, m_indexIncrement);
    if (rounded <= m_indexCapacity)
        return;
    if (!Resize(m_indexHandle, std::size_t{rounded} * 4, flags)) {
        m_indexCapacity = 0;
        throw CMemoryException(kSource, line);
    }
    m_indexCapacity = rounded;
}

// One increment of slack stays. A shrink that fails keeps the larger block.
void CStringVectorH::CompactStringDataBuffer() {
    const unsigned int wanted =
        detail::RoundCapacity(m_dataSize + m_dataIncrement, m_dataIncrement);
    if (wanted < m_dataCapacity && Resize(m_dataHandle, wanted + kGuard, kShrink)) {
        m_dataCapacity = wanted;
        Data()[wanted] = '\0';
    }
}

void CStringVectorH::CompactStringIndexBuffer() {
    const unsigned int wanted = detail::RoundCapacity(m_count + m_indexIncrement, m_indexIncrement);
    if (wanted < m_indexCapacity && Resize(m_indexHandle, std::size_t{wanted} * 4, kShrink))
        m_indexCapacity = wanted;
}

void CStringVectorH::ReleaseStringDataBuffer() {
    BMKillHandle(&m_dataHandle);
    m_dataCapacity = 0;
}

void CStringVectorH::ReleaseStringIndexBuffer() {
    BMKillHandle(&m_indexHandle);
    m_indexCapacity = 0;
}

char* CStringVectorH::Data() const {
    return m_dataHandle == nullptr ? nullptr : *m_dataHandle;
}

unsigned int* CStringVectorH::Offsets() const {
    return m_indexHandle == nullptr ? nullptr : reinterpret_cast<unsigned int*>(*m_indexHandle);
}

// Bytes of the data block that texts may use, whatever the capacity says after a failure.
unsigned long long CStringVectorH::Usable() const {
    const std::size_t size = BMGetHandleSize(m_dataHandle);
    return size == 0 ? 0 : size - kGuard;
}

// Every data range an operation touches lies within the data and one text of `length` behind it.
// The amounts some operations ensure fall one byte short of the terminator they write, and after a
// failed allocation an insertion has no room at all: such a range grows the block first. A range
// outside those bounds comes from an offset that an insertion stored negated, and raises
// CArrayIndexOutOfBoundsException where the access would fault.
void CStringVectorH::Cover(unsigned long long offset, unsigned long long count, unsigned int length,
                           unsigned int line) {
    const unsigned long long end = offset + count;
    if (end > 1ull + m_dataSize + length)
        throw CArrayIndexOutOfBoundsException(kSource, line);
    if (end <= Usable())
        return;
    // At the 32-bit limit nothing more fits.
    if (end > UINT_MAX)
        throw CMemoryException(kSource, line);
    EnsureStringDataCapacity(static_cast<unsigned int>(end));
}

// ---- Adding

void CStringVectorH::AddElement(const CString& text) {
    const unsigned int length = text.GetLength();
    try {
        EnsureStringDataCapacity(m_dataSize + 1 + length);
    } catch (const CMemoryException&) {
        ReleaseStringIndexBuffer();
        m_count = 0;
        m_dataSize = 0;
        throw;
    }
    EnsureIndexOrEmpty(__LINE__);
    Cover(m_dataSize, 1ull + length, length, __LINE__);
    std::memcpy(Data() + m_dataSize, static_cast<const char*>(text), length + 1);
    Offsets()[m_count] = m_dataSize;
    ++m_count;
    m_dataSize += length + 1;
}

void CStringVectorH::EnsureIndexOrEmpty(unsigned int line) {
    try {
        EnsureStringIndexCapacity(m_count + 1);
        // At the 32-bit limit the rounding wraps and grants no room: nothing more fits.
        if (m_indexCapacity <= m_count)
            throw CMemoryException(kSource, line);
    } catch (const CMemoryException&) {
        ReleaseStringDataBuffer();
        m_count = 0;
        m_dataSize = 0;
        throw;
    }
}

void CStringVectorH::InsertElementAt(const CString& text, unsigned int index) {
    if (index == m_count) {
        AddElement(text);
        return;
    }
    if (index > m_count)
        throw CArrayIndexOutOfBoundsException(kSource, __LINE__);
    const unsigned int length = text.GetLength();
    try {
        EnsureStringDataCapacity(m_dataSize + 1 + length);
        ReleaseStringIndexBuffer();
        m_count = 0;
        m_dataSize = 0;
        // A re-raise with no exception in flight: std::terminate ends the process here.
        throw;
    } catch (const CMemoryException&) {
    }
    EnsureIndexOrEmpty(__LINE__);
    unsigned int* offsets = Offsets();
    const unsigned int offset = offsets[index];
    const unsigned int tail = m_dataSize - offset;
    // The data block didn't grow: the moves below get their room here, or fail here.
    Cover(offset, 1ull + length + tail, length, __LINE__);
    char* start = Data() + offset;
    std::memmove(start + length + 1, start, tail);
    std::memcpy(start, static_cast<const char*>(text), length + 1);
    for (unsigned int i = m_count; i-- > index;)
        offsets[i + 1] = offsets[i] + length + 1;
    // The data start minus the element's address: the offset negated.
    offsets[index] = 0u - offset;
    ++m_count;
    m_dataSize += length + 1;
}

// ---- Reading

const char* CStringVectorH::TextAt(unsigned int index, unsigned int line) const {
    if (index >= m_count)
        throw CArrayIndexOutOfBoundsException(kSource, line);
    const unsigned int offset = Offsets()[index];
    if (m_dataHandle == nullptr && offset == 0)
        return "";
    if (m_dataHandle == nullptr || offset > Usable())
        throw CArrayIndexOutOfBoundsException(kSource, line);
    return Data() + offset;
}

CString CStringVectorH::GetElementAt(unsigned int index) {
    return CString(TextAt(index, __LINE__));
}

void CStringVectorH::GetElementAt(unsigned int index, CString& text) const {
    text = TextAt(index, __LINE__);
}

CString CStringVectorH::GetFirstElement() {
    if (m_count == 0)
        throw CNoSuchElementException(kSource, __LINE__);
    return CString(TextAt(0, __LINE__));
}

void CStringVectorH::GetFirstElement(CString& text) const {
    if (m_count == 0)
        throw CNoSuchElementException(kSource, __LINE__);
    text = TextAt(0, __LINE__);
}

CString CStringVectorH::GetLastElement() {
    if (m_count == 0)
        throw CNoSuchElementException(kSource, __LINE__);
    return CString(TextAt(m_count - 1, __LINE__));
}

void CStringVectorH::GetLastElement(CString& text) const {
    if (m_count == 0)
        throw CNoSuchElementException(kSource, __LINE__);
    text = TextAt(m_count - 1, __LINE__);
}

CString CStringVectorH::operator[](unsigned int index) {
    return CString(TextAt(index, __LINE__));
}

int CStringVectorH::Find(const CString& text, bool fromEnd) const {
    for (unsigned int n = 0; n < m_count; ++n) {
        const unsigned int i = fromEnd ? m_count - 1 - n : n;
        if (std::strcmp(TextAt(i, __LINE__), text) == 0)
            return static_cast<int>(i);
    }
    return -1;
}

bool CStringVectorH::Contains(const CString& text) const {
    return Find(text, false) >= 0;
}

int CStringVectorH::GetIndexOf(const CString& text) const {
    return Find(text, false);
}

int CStringVectorH::GetLastIndexOf(const CString& text) const {
    return Find(text, true);
}

// ---- Changing and removing

void CStringVectorH::SetElementAt(unsigned int index, const CString& text) {
    if (index >= m_count)
        throw CArrayIndexOutOfBoundsException(kSource, __LINE__);
    const unsigned int length = text.GetLength();
    const unsigned int offset = Offsets()[index];
    if (index == m_count - 1) {
        if (m_dataSize - offset < length)
            EnsureStringDataCapacity(offset + length);
        Cover(offset, 1ull + length, length, __LINE__);
        std::memcpy(Data() + offset, static_cast<const char*>(text), length + 1);
        return;
    }
    const unsigned int slot = Offsets()[index + 1] - offset;
    if (slot < length)
        EnsureStringDataCapacity(m_dataSize - slot + length);
    const unsigned int moved = m_dataSize - offset - slot;
    Cover(offset + static_cast<unsigned long long>(length), moved, length, __LINE__);
    Cover(offset + static_cast<unsigned long long>(slot), moved, length, __LINE__);
    Cover(offset, 1ull + length, length, __LINE__);
    char* start = Data() + offset;
    // From the new end to the old one, as the texts behind were laid out: they come out garbled
    // when the length changes.
    std::memmove(start + slot, start + length, moved);
    std::memcpy(start, static_cast<const char*>(text), length + 1);
    unsigned int* offsets = Offsets();
    for (unsigned int i = index + 1; i < m_count; ++i)
        offsets[i] += length - slot;
    m_dataSize += length - slot;
}

void CStringVectorH::RemoveElement(const CString& text) {
    const int index = GetIndexOf(text);
    if (index >= 0)
        RemoveElementAt(static_cast<unsigned int>(index));
}

void CStringVectorH::RemoveElementAt(unsigned int index) {
    if (index >= m_count)
        throw CArrayIndexOutOfBoundsException(kSource, __LINE__);
    unsigned int* offsets = Offsets();
    const unsigned int offset = offsets[index];
    if (index == m_count - 1) {
        // The count stays: the last offset now points at the end of the data.
        m_dataSize = offset;
    } else {
        const unsigned int next = offsets[index + 1];
        const unsigned int slot = next - offset;
        const unsigned int moved = m_dataSize - next;
        Cover(offset, moved, 0, __LINE__);
        Cover(next, moved, 0, __LINE__);
        // Texts emptied to nothing by SetElementAt can leave no data, and no block, to move in.
        if (moved != 0)
            std::memmove(Data() + offset, Data() + next, moved);
        for (unsigned int i = index + 1; i < m_count; ++i)
            offsets[i - 1] = offsets[i] - slot;
        --m_count;
        m_dataSize -= slot;
    }
    CompactStringDataBuffer();
    CompactStringIndexBuffer();
}

void CStringVectorH::RemoveAllElements() {
    m_count = 0;
    m_dataSize = 0;
    CompactStringDataBuffer();
    CompactStringIndexBuffer();
}

} // namespace vorn::util

#include <vorn/util/ObjectVector.h>

#include <cstdlib>
#include <cstring>

#include <vorn/base/ArrayIndexOutOfBoundsException.h>
#include <vorn/base/IllegalArgumentException.h>
#include <vorn/base/MemoryException.h>
#include <vorn/base/NullReferenceException.h>
#include <vorn/base/Object.h>
#include <vorn/util/NoSuchElementException.h>
#include <vorn/util/detail/Storage.h>

namespace vorn::util {

using vorn::base::CArrayIndexOutOfBoundsException;
using vorn::base::CIllegalArgumentException;
using vorn::base::CObject;

namespace {

const char* const kSource = "vorn/util/ObjectVector";

void CheckObject(const CObject* object, unsigned int line) {
    if (object == nullptr)
        throw CIllegalArgumentException(kSource, line, "Invalid object.");
}

} // namespace

CObjectVector::CObjectVector(unsigned int initialCapacity, unsigned int increment)
    : m_buffer(nullptr), m_size(0), m_capacity(0), m_increment(increment) {
    Init(initialCapacity);
}

CObjectVector::CObjectVector(const CObjectVector& other)
    : m_buffer(nullptr), m_size(0), m_capacity(0), m_increment(other.m_increment) {
    if (other.m_size == 0)
        return;
    AllocBuffer(other.m_size);
    try {
        CloneElements(other);
    } catch (...) {
        DeleteElements();
        ReleaseBuffer();
        throw;
    }
}

CObjectVector& CObjectVector::operator=(const CObjectVector& other) {
    if (this == &other)
        return *this;
    const unsigned int oldSize = m_size;
    DeleteElements();
    if (other.m_size != 0) {
        AllocBuffer(other.m_size);
        CloneElements(other);
    }
    if (m_size < oldSize)
        CompactBuffer();
    return *this;
}

CObjectVector::~CObjectVector() {
    DeleteElements();
    ReleaseBuffer();
}

bool CObjectVector::operator==(const CObjectVector& other) const {
    if (this == &other)
        return true;
    if (m_size != other.m_size)
        return false;
    for (unsigned int i = 0; i < m_size; ++i)
        if (!Stored(i, __LINE__)->Equals(other.m_buffer[i]))
            return false;
    return true;
}

bool CObjectVector::operator!=(const CObjectVector& other) const {
    return !(*this == other);
}

CObject* CObjectVector::operator[](unsigned int index) const {
    if (index >= m_size)
        throw CArrayIndexOutOfBoundsException(kSource, __LINE__);
    return m_buffer[index];
}

void CObjectVector::AddElement(CObject* object) {
    CheckObject(object, __LINE__);
    MakeRoomForOne(__LINE__);
    m_buffer[m_size++] = object;
}

void CObjectVector::InsertElementAt(CObject* object, unsigned int index) {
    CheckObject(object, __LINE__);
    if (index == m_size) {
        AddElement(object);
        return;
    }
    if (index > m_size)
        throw CArrayIndexOutOfBoundsException(kSource, __LINE__);
    MakeRoomForOne(__LINE__);
    std::memmove(m_buffer + index + 1, m_buffer + index, (m_size - index) * sizeof(CObject*));
    m_buffer[index] = object;
    ++m_size;
}

void CObjectVector::SetElementAt(CObject* object, unsigned int index) {
    CheckObject(object, __LINE__);
    if (index >= m_size)
        throw CArrayIndexOutOfBoundsException(kSource, __LINE__);
    CObject* old = m_buffer[index];
    // Storing the object already there would delete it under the vector.
    if (old == object)
        return;
    m_buffer[index] = object;
    delete old;
}

CObject* CObjectVector::GetElementAt(unsigned int index) const {
    if (index >= m_size)
        throw CArrayIndexOutOfBoundsException(kSource, __LINE__);
    return m_buffer[index];
}

CObject* CObjectVector::GetFirstElement() const {
    if (m_size == 0)
        throw CNoSuchElementException(kSource, __LINE__);
    return m_buffer[0];
}

CObject* CObjectVector::GetLastElement() const {
    if (m_size == 0)
        throw CNoSuchElementException(kSource, __LINE__);
    return m_buffer[m_size - 1];
}

bool CObjectVector::Contains(const CObject* object) const {
    CheckObject(object, __LINE__);
    return GetIndexOf(object) >= 0;
}

int CObjectVector::GetIndexOf(const CObject* object) const {
    CheckObject(object, __LINE__);
    for (unsigned int i = 0; i < m_size; ++i)
        if (Stored(i, __LINE__)->Equals(object))
            return static_cast<int>(i);
    return -1;
}

int CObjectVector::GetLastIndexOf(const CObject* object) const {
    CheckObject(object, __LINE__);
    for (unsigned int i = m_size; i-- > 0;)
        if (Stored(i, __LINE__)->Equals(object))
            return static_cast<int>(i);
    return -1;
}

void CObjectVector::RemoveElement(const CObject* object) {
    CheckObject(object, __LINE__);
    const int index = GetIndexOf(object);
    if (index >= 0)
        RemoveElementAt(static_cast<unsigned int>(index));
}

void CObjectVector::RemoveElementAt(unsigned int index) {
    if (index >= m_size)
        throw CArrayIndexOutOfBoundsException(kSource, __LINE__);
    delete m_buffer[index];
    CloseGap(index);
}

void CObjectVector::RemoveAllElements() {
    DeleteElements();
    CompactBuffer();
}

void CObjectVector::DetachElement(const CObject* object) {
    CheckObject(object, __LINE__);
    const int index = GetIndexOf(object);
    if (index >= 0)
        DetachElementAt(static_cast<unsigned int>(index));
}

void CObjectVector::DetachElementAt(unsigned int index) {
    if (index >= m_size)
        throw CArrayIndexOutOfBoundsException(kSource, __LINE__);
    CloseGap(index);
}

void CObjectVector::DetachAllElements() {
    m_size = 0;
    CompactBuffer();
}

// Copies every allocated slot, used or not, into the larger buffer.
void CObjectVector::EnsureCapacity(unsigned int wanted) {
    const unsigned int target = detail::RoundCapacity(wanted, m_increment);
    if (m_capacity >= target)
        return;
    Relocate(target, m_capacity, __LINE__);
}

void CObjectVector::TrimToSize() {
    if (m_size >= m_capacity)
        return;
    if (m_size == 0)
        ReleaseBuffer();
    else
        Relocate(m_size, m_size, __LINE__);
}

void CObjectVector::Sort(int (*compare)(const void*, const void*)) {
    if (compare == nullptr)
        throw CIllegalArgumentException(kSource, __LINE__, "Invalid compare function.");
    // An emptied vector may have no buffer at all, which the runtime's qsort must not see.
    if (m_size != 0)
        std::qsort(m_buffer, m_size, sizeof(CObject*), compare);
}

void CObjectVector::Init(unsigned int initialCapacity) {
    if (initialCapacity != 0)
        AllocBuffer(initialCapacity);
}

void CObjectVector::AllocBuffer(unsigned int wanted) {
    const unsigned int target = detail::RoundCapacity(wanted, m_increment);
    if (m_capacity >= target)
        return;
    CObject** fresh = Allocate(target, __LINE__);
    detail::FreeBlock(m_buffer);
    m_buffer = fresh;
    m_capacity = target;
}

// No hysteresis: the buffer shrinks as soon as it exceeds the rounded size, down to one increment.
void CObjectVector::CompactBuffer() {
    unsigned int target = detail::RoundCapacity(m_size, m_increment);
    if (target < m_increment)
        target = m_increment;
    if (target >= m_capacity)
        return;
    Relocate(target, m_size, __LINE__);
}

void CObjectVector::ReleaseBuffer() {
    detail::FreeBlock(m_buffer);
    m_buffer = nullptr;
    m_capacity = 0;
}

CObject** CObjectVector::Allocate(unsigned int count, unsigned int line) const {
    return static_cast<CObject**>(
        detail::AllocateBlock(static_cast<std::size_t>(count) * sizeof(CObject*), kSource, line));
}

void CObjectVector::Relocate(unsigned int capacity, unsigned int copied, unsigned int line) {
    CObject** fresh = Allocate(capacity, line);
    if (copied != 0)
        std::memcpy(fresh, m_buffer, copied * sizeof(CObject*));
    detail::FreeBlock(m_buffer);
    m_buffer = fresh;
    m_capacity = capacity;
}

void CObjectVector::MakeRoomForOne(unsigned int line) {
    EnsureCapacity(m_size + 1);
    // At the 32-bit limit the rounding wraps and grants no room: nothing more fits.
    if (m_size >= m_capacity)
        throw vorn::base::CMemoryException(kSource, line);
}

// Calling through an empty slot (one left by a Clone that gave null) raises the null guard's
// exception where the call itself would fault.
CObject* CObjectVector::Stored(unsigned int index, unsigned int line) const {
    CObject* object = m_buffer[index];
    if (object == nullptr)
        throw vorn::base::CNullReferenceException(kSource, line);
    return object;
}

void CObjectVector::CloneElements(const CObjectVector& other) {
    for (unsigned int i = 0; i < other.m_size; ++i) {
        m_buffer[m_size] = other.Stored(i, __LINE__)->Clone();
        ++m_size;
    }
}

void CObjectVector::DeleteElements() {
    for (unsigned int i = 0; i < m_size; ++i)
        delete m_buffer[i];
    m_size = 0;
}

void CObjectVector::CloseGap(unsigned int index) {
    if (index + 1 < m_size)
        std::memmove(m_buffer + index, m_buffer + index + 1,
                     (m_size - index - 1) * sizeof(CObject*));
    --m_size;
    CompactBuffer();
}

} // namespace vorn::util

#include <vorn/base/ArrayIndexOutOfBoundsException.h>
#include <vorn/base/IllegalArgumentException.h>
#include <vorn/util/NoSuchElementException.h>
#include <vorn/util/UnicodeStringMap.h>

namespace vorn::util {

using vorn::base::CUnicodeString;

namespace {

const char* const kSource = "vorn/util/UnicodeStringMap";

void CheckKey(const unsigned short* key, unsigned int line) {
    if (key == nullptr || *key == 0)
        throw vorn::base::CIllegalArgumentException(kSource, line, "Invalid key.");
}

} // namespace

CUnicodeStringMap::CUnicodeStringMap(unsigned int initialCapacity, unsigned int increment)
    : m_pairs(initialCapacity, increment, kSource, __LINE__) {}

CUnicodeStringMap::CUnicodeStringMap(const CUnicodeStringMap& other)
    : m_pairs(other.m_pairs, kSource, __LINE__) {}

CUnicodeStringMap& CUnicodeStringMap::operator=(const CUnicodeStringMap& other) {
    m_pairs.Assign(other.m_pairs, kSource, __LINE__);
    return *this;
}

CUnicodeStringMap::~CUnicodeStringMap() = default;

bool CUnicodeStringMap::operator==(const CUnicodeStringMap& other) const {
    for (unsigned int i = 0; i < GetSize(); ++i) {
        const int j = other.GetIndexOfKey(m_pairs.Key(i));
        if (j < 0 || !(m_pairs.Value(i) == other.m_pairs.Value(static_cast<unsigned int>(j))))
            return false;
    }
    return true;
}

bool CUnicodeStringMap::operator!=(const CUnicodeStringMap& other) const {
    return !(*this == other);
}

void CUnicodeStringMap::Put(const unsigned short* key, const unsigned short* value) {
    CheckKey(key, __LINE__);
    const int index = GetIndexOfKey(key);
    if (index < 0) {
        m_pairs.Append(key, value, kSource, __LINE__);
        return;
    }
    CUnicodeString& stored = m_pairs.Value(static_cast<unsigned int>(index));
    if (value == nullptr)
        stored.Empty();
    else
        stored = value;
}

void CUnicodeStringMap::Remove(const unsigned short* key) {
    m_pairs.RemoveAt(FindKey(key, __LINE__), kSource, __LINE__);
    // Deliberate: the element is gone and the exception leaves all the same.
    throw CNoSuchElementException(kSource, __LINE__);
}

void CUnicodeStringMap::RemoveAll() {
    m_pairs.RemoveAll(kSource, __LINE__);
}

CUnicodeString& CUnicodeStringMap::Get(const unsigned short* key) {
    return m_pairs.Value(FindKey(key, __LINE__));
}

const CUnicodeString& CUnicodeStringMap::Get(const unsigned short* key) const {
    return m_pairs.Value(FindKey(key, __LINE__));
}

CUnicodeString& CUnicodeStringMap::GetAt(unsigned int index) {
    if (index >= GetSize())
        throw vorn::base::CArrayIndexOutOfBoundsException(kSource, __LINE__);
    return m_pairs.Value(index);
}

const CUnicodeString& CUnicodeStringMap::GetAt(unsigned int index) const {
    if (index >= GetSize())
        throw vorn::base::CArrayIndexOutOfBoundsException(kSource, __LINE__);
    return m_pairs.Value(index);
}

CUnicodeString& CUnicodeStringMap::GetKeyAt(unsigned int index) {
    if (index >= GetSize())
        throw vorn::base::CArrayIndexOutOfBoundsException(kSource, __LINE__);
    return m_pairs.Key(index);
}

const CUnicodeString& CUnicodeStringMap::GetKeyAt(unsigned int index) const {
    if (index >= GetSize())
        throw vorn::base::CArrayIndexOutOfBoundsException(kSource, __LINE__);
    return m_pairs.Key(index);
}

bool CUnicodeStringMap::ContainsKey(const unsigned short* key) const {
    return GetIndexOfKey(key) >= 0;
}

bool CUnicodeStringMap::Contains(const unsigned short* value) const {
    return GetIndexOf(value) >= 0;
}

int CUnicodeStringMap::GetIndexOfKey(const unsigned short* key) const {
    for (unsigned int i = 0; i < GetSize(); ++i)
        if (m_pairs.Key(i).Compare(key) == 0)
            return static_cast<int>(i);
    return -1;
}

int CUnicodeStringMap::GetIndexOf(const unsigned short* value) const {
    const bool empty = value == nullptr || *value == 0;
    for (unsigned int i = 0; i < GetSize(); ++i) {
        const CUnicodeString& stored = m_pairs.Value(i);
        if (empty ? stored.IsEmpty() : stored.Compare(value) == 0)
            return static_cast<int>(i);
    }
    return -1;
}

void CUnicodeStringMap::EnsureCapacity(unsigned int capacity) {
    m_pairs.EnsureCapacity(capacity, kSource, __LINE__);
}

void CUnicodeStringMap::TrimToSize() {
    m_pairs.TrimToSize(kSource, __LINE__);
}

unsigned int CUnicodeStringMap::FindKey(const unsigned short* key, unsigned int line) const {
    CheckKey(key, line);
    const int index = GetIndexOfKey(key);
    if (index < 0)
        throw CNoSuchElementException(kSource, line);
    return static_cast<unsigned int>(index);
}

} // namespace vorn::util

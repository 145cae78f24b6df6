#include <vorn/base/ArrayIndexOutOfBoundsException.h>
#include <vorn/base/IllegalArgumentException.h>
#include <vorn/util/NoSuchElementException.h>
#include <vorn/util/StringMap.h>

namespace vorn::util {

using vorn::base::CString;

namespace {

const char* const kSource = "vorn/util/StringMap";

void CheckKey(const char* key, unsigned int line) {
    if (key == nullptr || *key == '\0')
        throw vorn::base::CIllegalArgumentException(kSource, line, "Invalid key.");
}

} // namespace

CStringMap::CStringMap(bool caseSensitive, unsigned int initialCapacity, unsigned int increment)
    : m_caseSensitive(caseSensitive), m_pairs(initialCapacity, increment, kSource, __LINE__) {}

CStringMap::CStringMap(const CStringMap& other)
    : m_caseSensitive(other.m_caseSensitive), m_pairs(other.m_pairs, kSource, __LINE__) {}

CStringMap& CStringMap::operator=(const CStringMap& other) {
    m_pairs.Assign(other.m_pairs, kSource, __LINE__);
    m_caseSensitive = other.m_caseSensitive;
    return *this;
}

CStringMap::~CStringMap() = default;

bool CStringMap::operator==(const CStringMap& other) const {
    const CStringMap* driver = this;
    const CStringMap* second = &other;
    if (!m_caseSensitive && other.m_caseSensitive) {
        driver = &other;
        second = this;
    }
    for (unsigned int i = 0; i < driver->GetSize(); ++i) {
        const int j = second->GetIndexOfKey(driver->m_pairs.Key(i));
        if (j < 0)
            return false;
        if (!(driver->m_pairs.Value(i) == second->m_pairs.Value(static_cast<unsigned int>(j))))
            return false;
    }
    return true;
}

bool CStringMap::operator!=(const CStringMap& other) const {
    return !(*this == other);
}

void CStringMap::Put(const char* key, const char* value) {
    CheckKey(key, __LINE__);
    const int index = GetIndexOfKey(key);
    if (index < 0) {
        m_pairs.Append(key, value, kSource, __LINE__);
        return;
    }
    CString& stored = m_pairs.Value(static_cast<unsigned int>(index));
    if (value == nullptr)
        stored.Empty();
    else
        stored = value;
}

void CStringMap::Remove(const char* key) {
    m_pairs.RemoveAt(FindKey(key, __LINE__), kSource, __LINE__);
}

void CStringMap::RemoveAll() {
    m_pairs.RemoveAll(kSource, __LINE__);
}

CString& CStringMap::Get(const char* key) {
    return m_pairs.Value(FindKey(key, __LINE__));
}

const CString& CStringMap::Get(const char* key) const {
    return m_pairs.Value(FindKey(key, __LINE__));
}

CString& CStringMap::GetAt(unsigned int index) {
    if (index >= GetSize())
        throw vorn::base::CArrayIndexOutOfBoundsException(kSource, __LINE__);
    return m_pairs.Value(index);
}

const CString& CStringMap::GetAt(unsigned int index) const {
    if (index >= GetSize())
        throw vorn::base::CArrayIndexOutOfBoundsException(kSource, __LINE__);
    return m_pairs.Value(index);
}

CString& CStringMap::GetKeyAt(unsigned int index) {
    if (index >= GetSize())
        throw vorn::base::CArrayIndexOutOfBoundsException(kSource, __LINE__);
    return m_pairs.Key(index);
}

const CString& CStringMap::GetKeyAt(unsigned int index) const {
    if (index >= GetSize())
        throw vorn::base::CArrayIndexOutOfBoundsException(kSource, __LINE__);
    return m_pairs.Key(index);
}

bool CStringMap::ContainsKey(const char* key) const {
    return GetIndexOfKey(key) >= 0;
}

bool CStringMap::Contains(const char* value) const {
    return GetIndexOf(value) >= 0;
}

int CStringMap::GetIndexOfKey(const char* key) const {
    for (unsigned int i = 0; i < GetSize(); ++i) {
        const CString& stored = m_pairs.Key(i);
        if ((m_caseSensitive ? stored.Compare(key) : stored.CompareIgnoreCase(key)) == 0)
            return static_cast<int>(i);
    }
    return -1;
}

int CStringMap::GetIndexOf(const char* value) const {
    const bool empty = value == nullptr || *value == '\0';
    for (unsigned int i = 0; i < GetSize(); ++i) {
        const CString& stored = m_pairs.Value(i);
        if (empty ? stored.IsEmpty() : stored.Compare(value) == 0)
            return static_cast<int>(i);
    }
    return -1;
}

void CStringMap::EnsureCapacity(unsigned int capacity) {
    m_pairs.EnsureCapacity(capacity, kSource, __LINE__);
}

void CStringMap::TrimToSize() {
    m_pairs.TrimToSize(kSource, __LINE__);
}

unsigned int CStringMap::FindKey(const char* key, unsigned int line) const {
    CheckKey(key, line);
    const int index = GetIndexOfKey(key);
    if (index < 0)
        throw CNoSuchElementException(kSource, line);
    return static_cast<unsigned int>(index);
}

} // namespace vorn::util

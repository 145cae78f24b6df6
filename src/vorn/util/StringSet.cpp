#include <vorn/util/StringSet.h>

#include <utility>

namespace vorn::util {

using vorn::base::CString;

CStringSet::CStringSet(unsigned int capacity, float loadFactor) : m_table(capacity, loadFactor) {}

CStringSet::CStringSet(const CStringSet& other) : m_table(other.m_table) {}

CStringSet::CStringSet(CStringSet&& other) noexcept : m_table(std::move(other.m_table)) {}

CStringSet& CStringSet::operator=(const CStringSet& other) {
    m_table = other.m_table;
    return *this;
}

CStringSet& CStringSet::operator=(CStringSet&& other) noexcept {
    m_table = std::move(other.m_table);
    return *this;
}

CStringSet::~CStringSet() = default;

void CStringSet::Put(const char* text) {
    m_table.Put(text, true);
}

void CStringSet::Remove(const char* text) {
    m_table.Remove(text);
}

bool CStringSet::Contains(const char* text) const {
    return m_table.ContainsKey(text);
}

void CStringSet::Empty() {
    m_table.Empty();
}

unsigned int CStringSet::GetSize() const {
    return m_table.GetSize();
}

bool CStringSet::IsEmpty() const {
    return m_table.IsEmpty();
}

unsigned int CStringSet::GetCapacity() const {
    return m_table.GetCapacity();
}

CEnumeration<CString> CStringSet::GetElements() const {
    return m_table.GetKeys();
}

bool CStringSet::operator==(const CStringSet& other) const {
    return m_table == other.m_table;
}

bool CStringSet::operator!=(const CStringSet& other) const {
    return !(m_table == other.m_table);
}

CStringSet& CStringSet::operator+=(const CStringSet& other) {
    if (this == &other)
        return *this;
    for (CEnumeration<CString> e = other.GetElements(); e->HasMoreElements();) {
        const CString& text = e->GetNextElement();
        if (!Contains(text))
            Put(text);
    }
    return *this;
}

CStringSet& CStringSet::operator-=(const CStringSet& other) {
    if (this == &other) {
        Empty();
        return *this;
    }
    for (CEnumeration<CString> e = other.GetElements(); e->HasMoreElements();) {
        const CString& text = e->GetNextElement();
        if (Contains(text))
            Remove(text);
    }
    return *this;
}

CStringSet& CStringSet::operator*=(const CStringSet& other) {
    if (this == &other)
        return *this;
    CStringSet common(101);
    for (CEnumeration<CString> e = other.GetElements(); e->HasMoreElements();) {
        const CString& text = e->GetNextElement();
        if (Contains(text))
            common.Put(text);
    }
    *this = common;
    return *this;
}

bool CStringSet::IsSubSetOf(const CStringSet& other) const {
    for (CEnumeration<CString> e = GetElements(); e->HasMoreElements();)
        if (!other.Contains(e->GetNextElement()))
            return false;
    return true;
}

bool CStringSet::IsSuperSetOf(const CStringSet& other) const {
    return other.IsSubSetOf(*this);
}

} // namespace vorn::util

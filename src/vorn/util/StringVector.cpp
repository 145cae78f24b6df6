#include <vorn/util/StringVector.h>

#include "vorn/util/TextVector.h"

namespace vorn::util {

using vorn::base::CString;

namespace {
constexpr char kSource[] = "vorn/util/StringVector";
using Rules = detail::TextVector<CString, char>;
} // namespace

class CStringVectorEnumeration final
    : public detail::TextVectorEnumeration<CStringVector, CString, kSource> {
public:
    using TextVectorEnumeration::TextVectorEnumeration;
};

CStringVector::CStringVector(unsigned int initialCapacity, unsigned int increment)
    : m_elements(initialCapacity, increment == 0 ? 5 : increment) {}

CStringVector::CStringVector(const CStringVector& other) : m_elements(other.m_elements) {}

CStringVector& CStringVector::operator=(const CStringVector& other) {
    m_elements = other.m_elements;
    return *this;
}

CStringVector::~CStringVector() = default;

bool CStringVector::operator==(const CStringVector& other) const {
    if (this == &other)
        return true;
    if (GetSize() != other.GetSize())
        return false;
    for (unsigned int i = 0; i < GetSize(); ++i)
        if (!(m_elements[i] == other.m_elements[i]))
            return false;
    return true;
}

bool CStringVector::operator!=(const CStringVector& other) const {
    return !(*this == other);
}

CString& CStringVector::operator[](unsigned int index) {
    return Rules::At(m_elements, index, kSource, __LINE__);
}

const CString& CStringVector::operator[](unsigned int index) const {
    return Rules::At(m_elements, index, kSource, __LINE__);
}

void CStringVector::AddElement(const char* element) {
    Rules::Check(element, kSource, __LINE__);
    m_elements.AddElement(CString(element));
}

void CStringVector::InsertElementAt(const char* element, unsigned int index) {
    Rules::Check(element, kSource, __LINE__);
    if (index > GetSize())
        throw vorn::base::CArrayIndexOutOfBoundsException(kSource, __LINE__);
    m_elements.InsertElementAt(CString(element), index);
}

void CStringVector::SetElementAt(const char* element, unsigned int index) {
    Rules::Check(element, kSource, __LINE__);
    Rules::Set(m_elements, element, index);
}

CString& CStringVector::GetElementAt(unsigned int index) {
    return Rules::At(m_elements, index, kSource, __LINE__);
}

const CString& CStringVector::GetElementAt(unsigned int index) const {
    return Rules::At(m_elements, index, kSource, __LINE__);
}

CString& CStringVector::GetFirstElement() {
    return Rules::First(m_elements, kSource, __LINE__);
}

const CString& CStringVector::GetFirstElement() const {
    return Rules::First(m_elements, kSource, __LINE__);
}

CString& CStringVector::GetLastElement() {
    return Rules::Last(m_elements, kSource, __LINE__);
}

const CString& CStringVector::GetLastElement() const {
    return Rules::Last(m_elements, kSource, __LINE__);
}

CEnumeration<CString> CStringVector::GetElements() {
    return CEnumeration<CString>(new CStringVectorEnumeration(this));
}

bool CStringVector::Contains(const char* element) const {
    Rules::Check(element, kSource, __LINE__);
    return Rules::IndexOf(m_elements, element) >= 0;
}

int CStringVector::GetIndexOf(const char* element) const {
    Rules::Check(element, kSource, __LINE__);
    return Rules::IndexOf(m_elements, element);
}

int CStringVector::GetLastIndexOf(const char* element) const {
    Rules::Check(element, kSource, __LINE__);
    return Rules::LastIndexOf(m_elements, element);
}

void CStringVector::RemoveElement(const char* element) {
    Rules::Check(element, kSource, __LINE__);
    Rules::Remove(m_elements, element, kSource, __LINE__);
}

void CStringVector::RemoveElementAt(unsigned int index) {
    if (index >= GetSize())
        throw vorn::base::CArrayIndexOutOfBoundsException(kSource, __LINE__);
    m_elements.RemoveElementAt(index);
}

void CStringVector::RemoveAllElements() {
    m_elements.RemoveAllElements();
}

void CStringVector::EnsureCapacity(unsigned int capacity) {
    m_elements.EnsureCapacity(capacity);
}

void CStringVector::TrimToSize() {
    m_elements.TrimToSize();
}

unsigned int CStringVector::GetSize() const {
    return m_elements.GetSize();
}

bool CStringVector::IsEmpty() const {
    return m_elements.IsEmpty();
}

unsigned int CStringVector::GetCapacity() const {
    return m_elements.GetCapacity();
}

void CStringVector::Sort(int (*compare)(const void*, const void*)) {
    Rules::Sort(m_elements, compare, kSource, __LINE__);
}

} // namespace vorn::util

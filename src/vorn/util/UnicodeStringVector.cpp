#include <vorn/util/UnicodeStringVector.h>

#include "vorn/util/TextVector.h"

namespace vorn::util {

using vorn::base::CUnicodeString;

namespace {
constexpr char kSource[] = "vorn/util/UnicodeStringVector";
using Rules = detail::TextVector<CUnicodeString, unsigned short>;
} // namespace

class CUnicodeStringVectorEnumeration final
    : public detail::TextVectorEnumeration<CUnicodeStringVector, CUnicodeString, kSource> {
public:
    using TextVectorEnumeration::TextVectorEnumeration;
};

CUnicodeStringVector::CUnicodeStringVector(unsigned int initialCapacity, unsigned int increment)
    : m_elements(initialCapacity, increment == 0 ? 5 : increment) {}

CUnicodeStringVector::CUnicodeStringVector(const CUnicodeStringVector& other)
    : m_elements(other.m_elements) {}

CUnicodeStringVector& CUnicodeStringVector::operator=(const CUnicodeStringVector& other) {
    m_elements = other.m_elements;
    return *this;
}

CUnicodeStringVector::~CUnicodeStringVector() = default;

bool CUnicodeStringVector::operator==(const CUnicodeStringVector& other) const {
    if (this == &other)
        return true;
    if (GetSize() != other.GetSize())
        return false;
    for (unsigned int i = 0; i < GetSize(); ++i)
        if (!(m_elements[i] == other.m_elements[i]))
            return false;
    return true;
}

bool CUnicodeStringVector::operator!=(const CUnicodeStringVector& other) const {
    return !(*this == other);
}

CUnicodeString& CUnicodeStringVector::operator[](unsigned int index) {
    return Rules::At(m_elements, index, kSource, __LINE__);
}

const CUnicodeString& CUnicodeStringVector::operator[](unsigned int index) const {
    return Rules::At(m_elements, index, kSource, __LINE__);
}

void CUnicodeStringVector::AddElement(const unsigned short* element) {
    Rules::Check(element, kSource, __LINE__);
    m_elements.AddElement(CUnicodeString(element));
}

void CUnicodeStringVector::InsertElementAt(const unsigned short* element, unsigned int index) {
    Rules::Check(element, kSource, __LINE__);
    if (index > GetSize())
        throw vorn::base::CArrayIndexOutOfBoundsException(kSource, __LINE__);
    m_elements.InsertElementAt(CUnicodeString(element), index);
}

void CUnicodeStringVector::SetElementAt(const unsigned short* element, unsigned int index) {
    Rules::Check(element, kSource, __LINE__);
    Rules::Set(m_elements, element, index);
}

CUnicodeString& CUnicodeStringVector::GetElementAt(unsigned int index) {
    return Rules::At(m_elements, index, kSource, __LINE__);
}

const CUnicodeString& CUnicodeStringVector::GetElementAt(unsigned int index) const {
    return Rules::At(m_elements, index, kSource, __LINE__);
}

CUnicodeString& CUnicodeStringVector::GetFirstElement() {
    return Rules::First(m_elements, kSource, __LINE__);
}

const CUnicodeString& CUnicodeStringVector::GetFirstElement() const {
    return Rules::First(m_elements, kSource, __LINE__);
}

CUnicodeString& CUnicodeStringVector::GetLastElement() {
    return Rules::Last(m_elements, kSource, __LINE__);
}

const CUnicodeString& CUnicodeStringVector::GetLastElement() const {
    return Rules::Last(m_elements, kSource, __LINE__);
}

CEnumeration<CUnicodeString> CUnicodeStringVector::GetElements() {
    return CEnumeration<CUnicodeString>(new CUnicodeStringVectorEnumeration(this));
}

bool CUnicodeStringVector::Contains(const unsigned short* element) const {
    Rules::Check(element, kSource, __LINE__);
    return Rules::IndexOf(m_elements, element) >= 0;
}

int CUnicodeStringVector::GetIndexOf(const unsigned short* element) const {
    Rules::Check(element, kSource, __LINE__);
    return Rules::IndexOf(m_elements, element);
}

int CUnicodeStringVector::GetLastIndexOf(const unsigned short* element) const {
    Rules::Check(element, kSource, __LINE__);
    return Rules::LastIndexOf(m_elements, element);
}

void CUnicodeStringVector::RemoveElement(const unsigned short* element) {
    Rules::Check(element, kSource, __LINE__);
    Rules::Remove(m_elements, element, kSource, __LINE__);
}

void CUnicodeStringVector::RemoveElementAt(unsigned int index) {
    if (index >= GetSize())
        throw vorn::base::CArrayIndexOutOfBoundsException(kSource, __LINE__);
    m_elements.RemoveElementAt(index);
}

void CUnicodeStringVector::RemoveAllElements() {
    m_elements.RemoveAllElements();
}

void CUnicodeStringVector::EnsureCapacity(unsigned int capacity) {
    m_elements.EnsureCapacity(capacity);
}

void CUnicodeStringVector::TrimToSize() {
    m_elements.TrimToSize();
}

unsigned int CUnicodeStringVector::GetSize() const {
    return m_elements.GetSize();
}

bool CUnicodeStringVector::IsEmpty() const {
    return m_elements.IsEmpty();
}

unsigned int CUnicodeStringVector::GetCapacity() const {
    return m_elements.GetCapacity();
}

void CUnicodeStringVector::Sort(int (*compare)(const void*, const void*)) {
    Rules::Sort(m_elements, compare, kSource, __LINE__);
}

} // namespace vorn::util

// CUnicodeStringVector: a growable sequence of CUnicodeString values, with the capacity rules of
// the library's vectors. Elements are copies of the texts given; searches compare the stored texts
// exactly.
#pragma once

#include <vorn/base/Export.h>
#include <vorn/base/UnicodeString.h>
#include <vorn/util/Enumeration.h>
#include <vorn/util/Vector.h>

namespace vorn::util {

class VORN_API CUnicodeStringVector {
public:
    // An increment of 0 becomes 5.
    explicit CUnicodeStringVector(unsigned int initialCapacity = 10, unsigned int increment = 5);
    CUnicodeStringVector(const CUnicodeStringVector& other);
    // Keeps its own increment.
    CUnicodeStringVector& operator=(const CUnicodeStringVector& other);
    ~CUnicodeStringVector();

    bool operator==(const CUnicodeStringVector& other) const;
    bool operator!=(const CUnicodeStringVector& other) const;
    vorn::base::CUnicodeString& operator[](unsigned int index);
    const vorn::base::CUnicodeString& operator[](unsigned int index) const;

    // A null element is refused with "Invalid element.", here and in the searches.
    void AddElement(const unsigned short* element);
    void InsertElementAt(const unsigned short* element, unsigned int index);
    // At or past the end it does nothing.
    void SetElementAt(const unsigned short* element, unsigned int index);

    vorn::base::CUnicodeString& GetElementAt(unsigned int index);
    const vorn::base::CUnicodeString& GetElementAt(unsigned int index) const;
    vorn::base::CUnicodeString& GetFirstElement();
    const vorn::base::CUnicodeString& GetFirstElement() const;
    vorn::base::CUnicodeString& GetLastElement();
    const vorn::base::CUnicodeString& GetLastElement() const;
    // A view, not a copy: the vector must outlive it and stay unchanged during the walk.
    CEnumeration<vorn::base::CUnicodeString> GetElements();

    bool Contains(const unsigned short* element) const;
    int GetIndexOf(const unsigned short* element) const;
    int GetLastIndexOf(const unsigned short* element) const;

    // Throws CNoSuchElementException for a text that isn't there.
    void RemoveElement(const unsigned short* element);
    void RemoveElementAt(unsigned int index);
    void RemoveAllElements();

    void EnsureCapacity(unsigned int capacity);
    void TrimToSize();
    unsigned int GetSize() const;
    bool IsEmpty() const;
    unsigned int GetCapacity() const;

    // The runtime's qsort: `compare` receives pointers to the CUnicodeString slots.
    void Sort(int (*compare)(const void*, const void*));

private:
    CVector<vorn::base::CUnicodeString> m_elements;
};

} // namespace vorn::util

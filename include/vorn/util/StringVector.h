// CStringVector: a growable sequence of CString values, with the capacity rules of the library's
// vectors. Elements are copies of the texts given; searches compare the stored texts exactly.
#pragma once

#include <vorn/base/Export.h>
#include <vorn/base/String.h>
#include <vorn/util/Enumeration.h>
#include <vorn/util/Vector.h>

namespace vorn::util {

class VORN_API CStringVector {
public:
    // An increment of 0 becomes 5.
    explicit CStringVector(unsigned int initialCapacity = 10, unsigned int increment = 5);
    CStringVector(const CStringVector& other);
    // Keeps its own increment.
    CStringVector& operator=(const CStringVector& other);
    ~CStringVector();

    bool operator==(const CStringVector& other) const;
    bool operator!=(const CStringVector& other) const;
    vorn::base::CString& operator[](unsigned int index);
    const vorn::base::CString& operator[](unsigned int index) const;

    // A null element is refused with "Invalid element.", here and in the searches.
    void AddElement(const char* element);
    void InsertElementAt(const char* element, unsigned int index);
    // At or past the end it does nothing.
    void SetElementAt(const char* element, unsigned int index);

    vorn::base::CString& GetElementAt(unsigned int index);
    const vorn::base::CString& GetElementAt(unsigned int index) const;
    vorn::base::CString& GetFirstElement();
    const vorn::base::CString& GetFirstElement() const;
    vorn::base::CString& GetLastElement();
    const vorn::base::CString& GetLastElement() const;
    // A view, not a copy: the vector must outlive it and stay unchanged during the walk.
    CEnumeration<vorn::base::CString> GetElements();

    bool Contains(const char* element) const;
    int GetIndexOf(const char* element) const;
    int GetLastIndexOf(const char* element) const;

    // Throws CNoSuchElementException for a text that isn't there.
    void RemoveElement(const char* element);
    void RemoveElementAt(unsigned int index);
    void RemoveAllElements();

    void EnsureCapacity(unsigned int capacity);
    void TrimToSize();
    unsigned int GetSize() const;
    bool IsEmpty() const;
    unsigned int GetCapacity() const;

    // The runtime's qsort: `compare` receives pointers to the CString slots.
    void Sort(int (*compare)(const void*, const void*));

private:
    CVector<vorn::base::CString> m_elements;
};

} // namespace vorn::util

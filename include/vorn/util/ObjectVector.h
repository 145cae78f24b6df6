// CObjectVector: a growable sequence of object pointers that owns the objects. Removing an
// element deletes its object; detaching hands it back to the caller.
#pragma once

#include <vorn/base/Export.h>

namespace vorn::base {
class CObject;
}

namespace vorn::util {

class VORN_API CObjectVector {
public:
    explicit CObjectVector(unsigned int initialCapacity = 10, unsigned int increment = 5);
    // Holds a Clone() of each element of `other` (null where an object isn't cloneable).
    CObjectVector(const CObjectVector& other);
    // Deletes the present objects and holds clones of `other`'s; keeps its own increment.
    CObjectVector& operator=(const CObjectVector& other);
    ~CObjectVector();

    // Element-wise Equals, in order.
    bool operator==(const CObjectVector& other) const;
    bool operator!=(const CObjectVector& other) const;
    vorn::base::CObject* operator[](unsigned int index) const;

    void AddElement(vorn::base::CObject* object);
    void InsertElementAt(vorn::base::CObject* object, unsigned int index);
    // Deletes the object it replaces.
    void SetElementAt(vorn::base::CObject* object, unsigned int index);

    vorn::base::CObject* GetElementAt(unsigned int index) const;
    vorn::base::CObject* GetFirstElement() const;
    vorn::base::CObject* GetLastElement() const;

    // Searches ask each stored element whether it Equals `object`; the first match wins.
    bool Contains(const vorn::base::CObject* object) const;
    int GetIndexOf(const vorn::base::CObject* object) const;
    int GetLastIndexOf(const vorn::base::CObject* object) const;

    // Remove deletes the objects, Detach doesn't. An absent object is no error.
    void RemoveElement(const vorn::base::CObject* object);
    void RemoveElementAt(unsigned int index);
    void RemoveAllElements();
    void DetachElement(const vorn::base::CObject* object);
    void DetachElementAt(unsigned int index);
    void DetachAllElements();

    void EnsureCapacity(unsigned int wanted);
    void TrimToSize();
    unsigned int GetSize() const { return m_size; }
    bool IsEmpty() const { return m_size == 0; }
    unsigned int GetCapacity() const { return m_capacity; }

    // Runs the C runtime's qsort over the slots: `compare` receives pointers to the pointers.
    void Sort(int (*compare)(const void*, const void*));

private:
    void Init(unsigned int initialCapacity);
    void AllocBuffer(unsigned int wanted);
    void CompactBuffer();
    void ReleaseBuffer();

    vorn::base::CObject** Allocate(unsigned int count, unsigned int line) const;
    void Relocate(unsigned int capacity, unsigned int copied, unsigned int line);
    void MakeRoomForOne(unsigned int line);
    vorn::base::CObject* Stored(unsigned int index, unsigned int line) const;
    void CloneElements(const CObjectVector& other);
    void DeleteElements();
    void CloseGap(unsigned int index);

    vorn::base::CObject** m_buffer;
    unsigned int m_size;
    unsigned int m_capacity;
    unsigned int m_increment;
};

} // namespace vorn::util

// CStringVectorH: many narrow texts packed in two relocatable blocks, for a small footprint: the
// texts end to end, each with its zero byte, and one 32-bit offset per text. Every read builds a
// CString. The blocks grow and shrink in steps of their increments.
//
// Some operations keep rules that don't keep the texts intact: RemoveElementAt of the last text
// leaves the size as it was, SetElementAt moves the texts behind by amounts that leave them
// garbled when the length changes, and InsertElementAt below the end ends the process unless its
// first allocation fails. Add, read and remove from the front or the middle for plain use.
#pragma once

#include <vorn/base/Export.h>
#include <vorn/base/String.h>

namespace vorn::util {

class VORN_API CStringVectorH {
public:
    // A data increment of 0 becomes 256, an index increment of 0 becomes 1.
    explicit CStringVectorH(unsigned int dataCapacity = 512, unsigned int dataIncrement = 256,
                            unsigned int indexCapacity = 10, unsigned int indexIncrement = 5);
    // Takes the other's increments.
    CStringVectorH(const CStringVectorH& other);
    // Keeps its own increments.
    CStringVectorH& operator=(const CStringVectorH& other);
    ~CStringVectorH();

    // A failed allocation empties the vector before the CMemoryException leaves.
    void AddElement(const vorn::base::CString& text);
    void InsertElementAt(const vorn::base::CString& text, unsigned int index);
    void SetElementAt(unsigned int index, const vorn::base::CString& text);

    vorn::base::CString GetElementAt(unsigned int index);
    void GetElementAt(unsigned int index, vorn::base::CString& text) const;
    vorn::base::CString GetFirstElement();
    void GetFirstElement(vorn::base::CString& text) const;
    vorn::base::CString GetLastElement();
    void GetLastElement(vorn::base::CString& text) const;
    vorn::base::CString operator[](unsigned int index);

    // Exact comparisons of the texts; -1 when nothing matches.
    bool Contains(const vorn::base::CString& text) const;
    int GetIndexOf(const vorn::base::CString& text) const;
    int GetLastIndexOf(const vorn::base::CString& text) const;

    // An absent text is no error.
    void RemoveElement(const vorn::base::CString& text);
    void RemoveElementAt(unsigned int index);
    void RemoveAllElements();

    unsigned int GetSize() const { return m_count; }
    bool IsEmpty() const { return m_count == 0; }

private:
    void AllocStringDataBuffer(unsigned int size);
    void AllocStringIndexBuffer(unsigned int size);
    void EnsureStringDataCapacity(unsigned int size);
    void EnsureStringIndexCapacity(unsigned int size);
    void CompactStringDataBuffer();
    void CompactStringIndexBuffer();
    void ReleaseStringDataBuffer();
    void ReleaseStringIndexBuffer();

    void GrowData(unsigned int size, unsigned int flags, unsigned int line);
    void GrowIndex(unsigned int size, unsigned int flags, unsigned int line);
    void EnsureIndexOrEmpty(unsigned int line);
    unsigned long long Usable() const;
    void Cover(unsigned long long offset, unsigned long long count, unsigned int length,
               unsigned int line);
    char* Data() const;
    unsigned int* Offsets() const;
    const char* TextAt(unsigned int index, unsigned int line) const;
    int Find(const vorn::base::CString& text, bool fromEnd) const;

    unsigned int m_count;
    char** m_dataHandle;
    unsigned int m_dataSize;
    unsigned int m_dataCapacity;
    unsigned int m_dataIncrement;
    char** m_indexHandle;
    unsigned int m_indexCapacity;
    unsigned int m_indexIncrement;
};

} // namespace vorn::util

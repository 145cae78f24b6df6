// CUnicodeStringBuffer: the UTF-16 twin of CStringBuffer, with capacities counted in units.
// Narrow text is converted from the default character set on the way in.
#pragma once

#include <vorn/base/Export.h>

namespace vorn::base {

class CString;
class CUnicodeString;

class VORN_API CUnicodeStringBuffer {
public:
    // No block yet. An increment below 8 is taken as 8.
    explicit CUnicodeStringBuffer(unsigned int increment);
    // Room for `size` units, holding the empty text; none for a size of 0.
    CUnicodeStringBuffer(unsigned int size, unsigned int increment);
    CUnicodeStringBuffer(const CUnicodeStringBuffer& other);
    ~CUnicodeStringBuffer();

    // Each assignment replaces the text, except that an empty CUnicodeStringBuffer leaves it as
    // it is, and empty narrow text only clears a block that exists.
    CUnicodeStringBuffer& operator=(const CUnicodeStringBuffer& s);
    CUnicodeStringBuffer& operator=(const CUnicodeString& s);
    CUnicodeStringBuffer& operator=(const unsigned short* s);
    CUnicodeStringBuffer& operator=(const CString& s);
    CUnicodeStringBuffer& operator=(const char* s);

    // An empty or null text appends nothing; a unit is always stored, 0 included.
    CUnicodeStringBuffer& operator+=(const CUnicodeString& s);
    CUnicodeStringBuffer& operator+=(const unsigned short* s);
    CUnicodeStringBuffer& operator+=(const CString& s);
    CUnicodeStringBuffer& operator+=(const char* s);
    CUnicodeStringBuffer& operator+=(unsigned short c);

    // Never null: without a block, one is made for the empty text.
    operator unsigned short*();
    // Never null: a stable empty text stands for no text.
    operator const unsigned short*() const;
    // Room for `size` units, keeping the text, and the writable text.
    unsigned short* GetBuffer(unsigned int size);

    unsigned int GetCapacity() const { return m_capacity; }
    unsigned int GetCapacityIncrement() const { return m_increment; }
    // An increment below 8 is taken as 8; the block stays as it is.
    void SetCapacityIncrement(unsigned int increment);
    // The units before the terminator.
    unsigned int GetSize() const;
    bool IsEmpty() const { return m_text == nullptr || m_capacity == 0 || m_text[0] == 0; }
    // Keeps the block.
    void Empty();
    // Room for `size` units, rounded up to a multiple of the increment; keeps the text.
    void EnsureCapacity(unsigned int size);
    // Shrinks the block to the text and its terminator.
    void TrimToSize();

private:
    void AllocBuffer(unsigned int size);
    void AssignWide(const unsigned short* s);
    void AppendWide(const unsigned short* s);
    unsigned int Measure() const;

    unsigned short* m_text;
    unsigned int m_capacity;
    unsigned int m_increment;
};

} // namespace vorn::base

// CStringBuffer: a private, growing narrow text builder. It owns its block alone, grows in
// multiples of its capacity increment, and hands out a writable pointer. The length isn't kept:
// each operation measures the text, so a caller may write through GetBuffer without telling it.
#pragma once

#include <vorn/base/Export.h>

namespace vorn::base {

class CString;
class CUnicodeString;

class VORN_API CStringBuffer {
public:
    // No block yet. An increment below 8 is taken as 8.
    explicit CStringBuffer(unsigned int increment);
    // Room for `size` bytes, all zero; none for a size of 0.
    CStringBuffer(unsigned int size, unsigned int increment);
    CStringBuffer(const CStringBuffer& other);
    ~CStringBuffer();

    // Each assignment replaces the text, except that an empty CStringBuffer leaves it as it is.
    CStringBuffer& operator=(const CStringBuffer& s);
    CStringBuffer& operator=(const CString& s);
    CStringBuffer& operator=(const char* s);
    CStringBuffer& operator=(const unsigned short* s);
    CStringBuffer& operator=(const CUnicodeString& s);

    // An empty or null text appends nothing; a character is always stored, 0 included.
    CStringBuffer& operator+=(const CString& s);
    CStringBuffer& operator+=(const char* s);
    CStringBuffer& operator+=(char c);
    CStringBuffer& operator+=(const CUnicodeString& s);
    CStringBuffer& operator+=(const unsigned short* s);

    // The text, null before the first block.
    operator char*() { return m_text; }
    operator const char*() const { return m_text; }
    // Room for `size` bytes, keeping the text, and the writable text.
    char* GetBuffer(unsigned int size);

    unsigned int GetCapacity() const { return m_capacity; }
    unsigned int GetCapacityIncrement() const { return m_increment; }
    // An increment below 8 is taken as 8; the block stays as it is.
    void SetCapacityIncrement(unsigned int increment);
    // The bytes before the terminator.
    unsigned int GetSize() const;
    bool IsEmpty() const { return m_text == nullptr || m_capacity == 0 || m_text[0] == '\0'; }
    // Keeps the block.
    void Empty();
    // Room for `size` bytes, rounded up to a multiple of the increment; keeps the text.
    void EnsureCapacity(unsigned int size);
    // Shrinks the block to the text and its terminator.
    void TrimToSize();

private:
    void AllocBuffer(unsigned int size);
    void EnsureCapacityForConversion(unsigned int bytes);
    void AssignText(const char* s);
    void AppendText(const char* s);
    void AppendWide(const unsigned short* s);
    unsigned int Measure() const;

    char* m_text;
    unsigned int m_capacity;
    unsigned int m_increment;
};

} // namespace vorn::base

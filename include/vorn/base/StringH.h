// CStringH: a narrow text in a relocatable memory handle of its own, with no sharing and no
// count. The handle grows to the exact size asked for and survives Empty, so a later text reuses
// it. A pointer from the conversion is valid only until the next change of the object.
#pragma once

#include <vorn/base/Export.h>
#include <vorn/base/String.h>

namespace vorn::base {

class VORN_API CStringH {
public:
    CStringH() : m_handle(nullptr), m_capacity(0), m_length(0) {}
    CStringH(const CStringH& s);
    CStringH(const CString& s);
    // Null stays empty with no handle; "" takes a handle of one byte.
    CStringH(const char* s);
    ~CStringH();

    CStringH& operator=(const CStringH& s);
    CStringH& operator=(const CString& s);
    CStringH& operator=(const char* s);

    // The text, or null when no handle was ever taken.
    operator const char*() const { return m_handle == nullptr ? nullptr : *m_handle; }
    unsigned int GetLength() const { return m_length; }
    bool IsEmpty() const { return m_length == 0; }
    // Sets the length to 0 and writes the digit '0' over the first byte, not a terminator: the
    // text then reads as "0" followed by the rest of the old one.
    void Empty();

    // Negative, zero or positive. An empty or null argument equals an empty string and orders
    // before any text.
    int Compare(const CStringH& s) const;
    int Compare(const CString& s) const;
    int Compare(const char* s) const;

private:
    int CompareText(const char* s, bool sEmpty) const;
    void AllocBuffer(unsigned int n);
    void EnsureBufferCapacity(unsigned int n);
    void Grow(unsigned int n, unsigned int line);
    void ReleaseBuffer();
    // `count` -1 copies the whole text and measures it; any other count copies the characters
    // that fit in `count` bytes with the terminator, and takes `count` as the length.
    void AllocCopy(const char* text, int count);
    void AllocCopy(char** text, int count);
    void AllocCopy(unsigned int capacity, const char* text, int count);
    void AllocCopy(unsigned int capacity, char** text, int count);

    char** m_handle;
    unsigned int m_capacity;
    unsigned int m_length;
};

VORN_API bool operator==(const CString& a, const CStringH& b);
VORN_API bool operator==(const CStringH& a, const CStringH& b);
VORN_API bool operator==(const CStringH& a, const CString& b);
VORN_API bool operator==(const CStringH& a, const char* b);
VORN_API bool operator==(const char* a, const CStringH& b);
VORN_API bool operator!=(const CString& a, const CStringH& b);
VORN_API bool operator!=(const CStringH& a, const CStringH& b);
VORN_API bool operator!=(const CStringH& a, const CString& b);
VORN_API bool operator!=(const CStringH& a, const char* b);
VORN_API bool operator!=(const char* a, const CStringH& b);

} // namespace vorn::base

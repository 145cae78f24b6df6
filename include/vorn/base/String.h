// CString: the library's narrow text value, in the default character set (UTF-8). It is one
// pointer wide, and copies share a counted buffer until one of them changes it. Buffers up to 1024
// bytes come from the string pools. The count isn't atomic: a CString that crosses threads is to
// be unshared first.
#pragma once

#include <cstdarg>

#include <vorn/base/Export.h>

namespace vorn::base {

namespace detail {
template <typename S> class TextBuffer;
}
class CStringH;

class VORN_API CString {
public:
    constexpr CString() : m_pchData(nullptr) {}
    // Shares the buffer of a non-empty `s`.
    CString(const CString& s) : m_pchData(nullptr) { Share(s); }
    // A copy of the handle string's text; empty when its length is 0.
    CString(const CStringH& s);
    // Null leaves the string null; "" gives a buffer of length 0.
    CString(const char* s);
    // The characters of `s` that fit in `n` bytes, with the length of the whole of `s`:
    // CString("abcdef", 3) holds "abc" and has the length 6.
    CString(const char* s, unsigned int n);
    // From UTF-16: the whole text, or its first `n` units.
    CString(const unsigned short* s);
    CString(const unsigned short* s, unsigned int n);
    ~CString() {
        if (m_pchData != nullptr)
            ReleaseBuffer();
    }

    CString& operator=(const CString& s);
    CString& operator=(const CStringH& s);
    // A null `s` gives a buffer of length 0.
    CString& operator=(const char* s);
    CString& operator=(const unsigned short* s);
    // The characters of `s` that fit in `n` bytes.
    void Set(const char* s, unsigned int n);
    // Drops the text; a private buffer stays for reuse.
    void Empty();
    // Room for `n` bytes of text, keeping the text.
    void EnsureCapacity(unsigned int n);

    unsigned int GetLength() const { return m_pchData == nullptr ? 0 : GetData()->length; }
    bool IsEmpty() const { return GetLength() == 0; }
    // Never null: an empty string gives a static empty text.
    operator const char*() const { return IsEmpty() ? m_emptyText : m_pchData; }
    // The byte at `i`, or 0 at or past the length.
    char GetAt(unsigned int i) const { return i < GetLength() ? m_pchData[i] : '\0'; }
    char operator[](unsigned int i) const { return GetAt(i); }
    // Spares callers with an int index the ambiguity against the conversion to const char*.
    char operator[](int i) const { return GetAt(static_cast<unsigned int>(i)); }
    // Does nothing at or past the length.
    void SetAt(unsigned int i, char c);

    // Negative, zero or positive; an empty string orders before any text.
    int Compare(const CString& s) const;
    int Compare(const char* s) const;
    int CompareIgnoreCase(const CString& s) const;
    int CompareIgnoreCase(const char* s) const;
    // False for an empty `s`.
    bool StartsWith(const CString& s) const;
    bool StartsWith(const char* s) const;
    bool EndsWith(const CString& s) const;
    bool EndsWith(const char* s) const;
    bool StartsWithIgnoreCase(const CString& s) const;
    bool StartsWithIgnoreCase(const char* s) const;
    bool EndsWithIgnoreCase(const CString& s) const;
    bool EndsWithIgnoreCase(const char* s) const;

    // Offsets from the start of the text, or -1. A search begins at `start` and finds nothing
    // when `start` is at or past the length.
    int Find(const CString& s, unsigned int start = 0) const;
    int Find(const char* s, unsigned int start = 0) const;
    int Find(char c, unsigned int start = 0) const;
    int FindIgnoreCase(const CString& s, unsigned int start = 0) const;
    int FindIgnoreCase(const char* s, unsigned int start = 0) const;
    // The last `c` at or behind `start`.
    int ReverseFind(char c, unsigned int start = 0) const;
    // Probes backwards from the end in steps of the length of `s`, each probe searching forward,
    // and never probes `start` itself: CString("abc").ReverseFind("abc", 0) is -1.
    int ReverseFind(const CString& s, unsigned int start = 0) const;
    int ReverseFind(const char* s, unsigned int start = 0) const;
    int ReverseFindIgnoreCase(const CString& s, unsigned int start = 0) const;
    int ReverseFindIgnoreCase(const char* s, unsigned int start = 0) const;

    CString& operator+=(const CString& s);
    CString& operator+=(const char* s);
    // Returns the new length. On an empty string it returns 1 but leaves the length at 0.
    unsigned int Insert(unsigned int pos, char c);
    unsigned int Insert(unsigned int pos, const char* s);
    // Returns the length from before the call.
    unsigned int Delete(unsigned int pos, unsigned int count);
    // Each returns the number of bytes removed or replaced.
    unsigned int Remove(char c);
    unsigned int Replace(char from, char to);
    // Returns the number of non-overlapping matches replaced.
    unsigned int Replace(const char* from, const char* to);
    void MakeUpper();
    void MakeLower();
    // Reverses the characters in the shared buffer: every copy sees the result.
    void MakeReverse();
    void TrimLeft();
    void TrimLeft(char c);
    void TrimLeft(const char* set);
    void TrimLeft(const CString& set);
    // Only this form works at the right end; the others strip at the left end, as TrimLeft does.
    void TrimRight();
    void TrimRight(char c);
    void TrimRight(const char* set);
    void TrimRight(const CString& set);

    CString SubString(unsigned int start);
    // The bytes from `start` up to `end`, or to the end of the text.
    CString SubString(unsigned int start, unsigned int end);
    CString Mid(unsigned int start);
    CString Mid(unsigned int start, int count);
    CString Left(unsigned int n);
    // Ends one byte short of the end of the text: CString("abcde").Right(2) is "cd".
    CString Right(unsigned int n);

    // printf-style, with the library formatter's rules; a null format does nothing.
    void Format(const char* format, ...);
    void FormatV(const char* format, va_list arguments);

private:
    // Its UTF-8 output is written straight into a CString's buffer.
    friend class CUnicodeString;
    // The buffer plan that this class shares with CUnicodeString.
    template <typename S> friend class detail::TextBuffer;

    struct CStringData {
        unsigned int capacity;   // bytes of room, terminator included
        unsigned int length;     // bytes of text
        unsigned int references; // strings that share the buffer
    };

    CStringData* GetData() const {
        return m_pchData == nullptr ? nullptr : reinterpret_cast<CStringData*>(m_pchData) - 1;
    }
    void Share(const CString& s) {
        CStringData* data = s.GetData();
        if (data != nullptr && data->length > 0 && data->references > 0) {
            ++data->references;
            m_pchData = s.m_pchData;
        }
    }

    void AllocBuffer(unsigned int n);
    void EnsureBufferCapacity(unsigned int n);
    void ReleaseBuffer();
    void CopyRefBeforeModify();
    void AllocCopy(const char* text, int count);

    int CompareWith(const char* s, int caseSensitive) const;
    int CompareWith(const CString& s, int caseSensitive) const;
    bool HasPrefix(const char* s, unsigned int n, int caseSensitive) const;
    bool HasSuffix(const char* s, unsigned int n, int caseSensitive) const;
    int FindText(const char* s, unsigned int start, int caseSensitive) const;
    int ReverseFindText(const char* s, unsigned int start, int caseSensitive) const;
    bool Owns(const char* s) const;

    static const char m_emptyText[1];

    char* m_pchData;
};

// Byte comparison. An empty CString equals another empty one and a null text, but not "".
VORN_API bool operator==(const CString& a, const CString& b);
VORN_API bool operator==(const CString& a, const char* b);
VORN_API bool operator==(const char* a, const CString& b);

// There is no inequality of two texts; these stop `!=` from comparing the pointers instead.
bool operator!=(const CString& a, const CString& b) = delete;
bool operator!=(const CString& a, const char* b) = delete;
bool operator!=(const char* a, const CString& b) = delete;

// Case-sensitive order. An empty CString or a null text orders before any other; an empty CString
// and a null text are equal, and "" orders after an empty CString.
VORN_API bool operator<(const CString& a, const CString& b);
VORN_API bool operator<=(const CString& a, const CString& b);
VORN_API bool operator>(const CString& a, const CString& b);
VORN_API bool operator>=(const CString& a, const CString& b);
VORN_API bool operator<(const CString& a, const char* b);
VORN_API bool operator<=(const CString& a, const char* b);
VORN_API bool operator>(const CString& a, const char* b);
VORN_API bool operator>=(const CString& a, const char* b);
VORN_API bool operator<(const char* a, const CString& b);
VORN_API bool operator<=(const char* a, const CString& b);
VORN_API bool operator>(const char* a, const CString& b);
VORN_API bool operator>=(const char* a, const CString& b);

// The left side, shared or copied, with the right one appended.
VORN_API CString operator+(const CString& a, const CString& b);
VORN_API CString operator+(const CString& a, const char* b);
VORN_API CString operator+(const char* a, const CString& b);

} // namespace vorn::base

// CUnicodeString: the library's UTF-16 text value, the twin of CString. It is one pointer wide,
// and copies share a counted buffer until one of them changes it. Buffers up to 1024 units come
// from the UTF-16 string pools. Its text functions treat every unit as a character and know
// nothing of surrogates. Narrow (UTF-8) arguments are converted to UTF-16 before the wide logic
// runs. The count isn't atomic: a CUnicodeString that crosses threads is to be unshared first.
#pragma once

#include <cstdarg>

#include <vorn/base/Export.h>
#include <vorn/base/String.h>

namespace vorn::base {

namespace detail {
template <typename S> class TextBuffer;
}

class VORN_API CUnicodeString {
public:
    CUnicodeString() : m_pchData(nullptr) {}
    // Shares the buffer of a non-empty `s`.
    CUnicodeString(const CUnicodeString& s) : m_pchData(nullptr) { Share(s); }
    // From narrow text; null or "" leaves the string null.
    CUnicodeString(const char* s);
    // The characters of the first `n` bytes of `s`.
    CUnicodeString(const char* s, unsigned int n);
    // A null `s` gives a buffer of length 0.
    CUnicodeString(const unsigned short* s);
    // The first `n` units of `s`, up to its terminator.
    CUnicodeString(const unsigned short* s, unsigned int n);
    ~CUnicodeString() {
        if (m_pchData != nullptr)
            ReleaseBuffer();
    }

    CUnicodeString& operator=(const CUnicodeString& s);
    // Null or "" empties the string.
    CUnicodeString& operator=(const char* s);
    // A null `s` gives a buffer of length 0.
    CUnicodeString& operator=(const unsigned short* s);
    // The first `n` units of `s`.
    void Set(const unsigned short* s, unsigned int n);
    // Drops the text; a private buffer stays for reuse.
    void Empty();
    // Room for `n` units of text, keeping the text.
    void EnsureCapacity(unsigned int n);
    // Up to `size - 1` units and a terminator; nothing for a null target or a size below 2.
    void CopyTo(unsigned short* target, unsigned int size) const;

    unsigned int GetLength() const { return m_pchData == nullptr ? 0 : GetData()->length; }
    bool IsEmpty() const { return GetLength() == 0; }
    // Never null: an empty string gives a stable empty text.
    operator const unsigned short*() const;
    // The unit at `i`, or 0 at or past the length.
    unsigned short GetAt(unsigned int i) const { return i < GetLength() ? m_pchData[i] : 0; }
    unsigned short operator[](unsigned int i) const { return GetAt(i); }
    // Spares callers with an int index the ambiguity against the conversion to a pointer.
    unsigned short operator[](int i) const { return GetAt(static_cast<unsigned int>(i)); }
    // Does nothing at or past the length.
    void SetAt(unsigned int i, unsigned short c);

    // Negative, zero or positive. An empty string equals a null or empty text and orders before
    // any other.
    int Compare(const unsigned short* s) const;
    int Compare(const char* s) const;
    int CompareIgnoreCase(const unsigned short* s) const;
    int CompareIgnoreCase(const char* s) const;
    // False for an empty `s`.
    bool StartsWith(const unsigned short* s) const;
    bool StartsWith(const char* s) const;
    bool EndsWith(const unsigned short* s) const;
    bool EndsWith(const char* s) const;
    bool StartsWithIgnoreCase(const unsigned short* s) const;
    bool StartsWithIgnoreCase(const char* s) const;
    bool EndsWithIgnoreCase(const unsigned short* s) const;
    bool EndsWithIgnoreCase(const char* s) const;

    // Offsets in units from the start of the text, or -1. A search begins at `start` and finds
    // nothing when `start` is at or past the length, or the needle is longer than what is left.
    int Find(const unsigned short* s, unsigned int start = 0) const;
    int Find(const char* s, unsigned int start = 0) const;
    int Find(unsigned short c, unsigned int start = 0) const;
    int Find(char c, unsigned int start = 0) const;
    // Searches upper-cased copies.
    int FindIgnoreCase(const unsigned short* s, unsigned int start = 0) const;
    int FindIgnoreCase(const char* s, unsigned int start = 0) const;
    // The last `c` at or behind `start`.
    int ReverseFind(unsigned short c, unsigned int start = 0) const;
    int ReverseFind(char c, unsigned int start = 0) const;
    // Probes back from the end, looking for the text from each probe on inside `s`: only a
    // needle that ends the string is found, and the result is the distance from this text to
    // the needle's, not a position. The narrow form never finds anything.
    int ReverseFind(const unsigned short* s, unsigned int start = 0) const;
    int ReverseFind(const char* s, unsigned int start = 0) const;
    int ReverseFindIgnoreCase(const unsigned short* s, unsigned int start = 0) const;
    int ReverseFindIgnoreCase(const char* s, unsigned int start = 0) const;

    // A null or empty argument appends nothing.
    CUnicodeString& operator+=(const CUnicodeString& s);
    CUnicodeString& operator+=(const char* s);
    CUnicodeString& operator+=(const unsigned short* s);
    // Returns the new length. On an empty string it returns 1 but leaves the length at 0.
    unsigned int Insert(unsigned int pos, unsigned short c);
    unsigned int Insert(unsigned int pos, char c);
    unsigned int Insert(unsigned int pos, const unsigned short* s);
    unsigned int Insert(unsigned int pos, const char* s);
    // Returns the length from before the call.
    unsigned int Delete(unsigned int pos, unsigned int count);
    // Each returns the number of units removed or replaced.
    unsigned int Remove(unsigned short c);
    unsigned int Remove(char c);
    unsigned int Replace(unsigned short from, unsigned short to);
    unsigned int Replace(char from, char to);
    // Returns the number of non-overlapping matches replaced; a null `to` counts as empty.
    unsigned int Replace(const unsigned short* from, const unsigned short* to);
    unsigned int Replace(const char* from, const char* to);
    void MakeUpper();
    void MakeLower();
    void MakeReverse();
    void TrimLeft();
    void TrimLeft(unsigned short c);
    void TrimLeft(char c);
    void TrimLeft(const unsigned short* set);
    void TrimLeft(const char* set);
    // All of these strip at the right end.
    void TrimRight();
    void TrimRight(unsigned short c);
    void TrimRight(char c);
    void TrimRight(const unsigned short* set);
    void TrimRight(const char* set);

    CUnicodeString SubString(unsigned int start);
    // The units from `start` up to `end`, or to the end of the text.
    CUnicodeString SubString(unsigned int start, unsigned int end);
    CUnicodeString Mid(unsigned int start);
    CUnicodeString Mid(unsigned int start, int count);
    CUnicodeString Left(unsigned int n);
    // Ends one unit short of the end of the text: "abcde".Right(2) is "cd".
    CUnicodeString Right(unsigned int n);

    // printf-style over a UTF-16 format, with the library formatter's rules; a null format does
    // nothing.
    void Format(const unsigned short* format, ...);
    void FormatV(const unsigned short* format, va_list arguments);

    // Replaces the text by the UTF-8 of `text`, `length` bytes or -1 for up to the terminator.
    // Decoding stops silently at the first sequence that is incomplete or invalid.
    void FromUTF8(const char* text, int length);
    // UTF-8 into `target`: returns the byte count without the terminator, the room needed (count
    // plus 1) for a size of -1, or -1 when `size` is too small. A surrogate pair comes out as one
    // '?', and a high surrogate that ends the text as two.
    int ToUTF8(char* target, int size) const;
    CString ToUTF8() const;

private:
    // The buffer plan that this class shares with CString.
    template <typename S> friend class detail::TextBuffer;

    struct CUnicodeStringData {
        unsigned int capacity;   // units of room, terminator included
        unsigned int length;     // units of text
        unsigned int references; // strings that share the buffer
    };

    CUnicodeStringData* GetData() const {
        return m_pchData == nullptr ? nullptr
                                    : reinterpret_cast<CUnicodeStringData*>(m_pchData) - 1;
    }
    void Share(const CUnicodeString& s) {
        CUnicodeStringData* data = s.GetData();
        if (data != nullptr && data->length > 0 && data->references > 0) {
            ++data->references;
            m_pchData = s.m_pchData;
        }
    }

    void AllocBuffer(unsigned int n);
    void EnsureBufferCapacity(unsigned int n);
    void ReleaseBuffer();
    void CopyRefBeforeModify();
    void AllocCopy(const unsigned short* text, int count);
    bool Owns(const unsigned short* s) const;
    void Append(const unsigned short* s, unsigned int added);

    int CompareWith(const unsigned short* s, bool caseSensitive) const;
    bool HasPrefix(const unsigned short* s, bool caseSensitive) const;
    bool HasSuffix(const unsigned short* s, bool caseSensitive) const;
    int ReverseFindText(const unsigned short* s, unsigned int start) const;

    unsigned short* m_pchData;
};

// Lengths first: an empty string equals another empty one, a null text and "". Narrow text
// must have as many bytes as the string has units before it is converted and compared.
VORN_API bool operator==(const CUnicodeString& a, const CUnicodeString& b);
VORN_API bool operator==(const CUnicodeString& a, const unsigned short* b);
VORN_API bool operator==(const unsigned short* a, const CUnicodeString& b);
VORN_API bool operator==(const CUnicodeString& a, const char* b);
VORN_API bool operator==(const char* a, const CUnicodeString& b);

// There is no inequality of two texts; these stop `!=` from comparing the pointers instead.
bool operator!=(const CUnicodeString& a, const CUnicodeString& b) = delete;
bool operator!=(const CUnicodeString& a, const unsigned short* b) = delete;
bool operator!=(const unsigned short* a, const CUnicodeString& b) = delete;
bool operator!=(const CUnicodeString& a, const char* b) = delete;
bool operator!=(const char* a, const CUnicodeString& b) = delete;

// Order by unit value. An empty string or a null text orders before any other; an empty string
// and a null text are equal, and "" orders after an empty string.
VORN_API bool operator<(const CUnicodeString& a, const CUnicodeString& b);
VORN_API bool operator<=(const CUnicodeString& a, const CUnicodeString& b);
VORN_API bool operator>(const CUnicodeString& a, const CUnicodeString& b);
VORN_API bool operator>=(const CUnicodeString& a, const CUnicodeString& b);
VORN_API bool operator<(const CUnicodeString& a, const unsigned short* b);
VORN_API bool operator<=(const CUnicodeString& a, const unsigned short* b);
VORN_API bool operator>(const CUnicodeString& a, const unsigned short* b);
VORN_API bool operator>=(const CUnicodeString& a, const unsigned short* b);
VORN_API bool operator<(const unsigned short* a, const CUnicodeString& b);
VORN_API bool operator<=(const unsigned short* a, const CUnicodeString& b);
VORN_API bool operator>(const unsigned short* a, const CUnicodeString& b);
VORN_API bool operator>=(const unsigned short* a, const CUnicodeString& b);
VORN_API bool operator<(const CUnicodeString& a, const char* b);
VORN_API bool operator<=(const CUnicodeString& a, const char* b);
VORN_API bool operator>(const CUnicodeString& a, const char* b);
VORN_API bool operator>=(const CUnicodeString& a, const char* b);
VORN_API bool operator<(const char* a, const CUnicodeString& b);
VORN_API bool operator<=(const char* a, const CUnicodeString& b);
VORN_API bool operator>(const char* a, const CUnicodeString& b);
VORN_API bool operator>=(const char* a, const CUnicodeString& b);

// The left side, shared or copied, with the right one appended.
VORN_API CUnicodeString operator+(const CUnicodeString& a, const CUnicodeString& b);
VORN_API CUnicodeString operator+(const CUnicodeString& a, const char* b);
VORN_API CUnicodeString operator+(const CUnicodeString& a, const unsigned short* b);
VORN_API CUnicodeString operator+(const char* a, const CUnicodeString& b);
VORN_API CUnicodeString operator+(const unsigned short* a, const CUnicodeString& b);

} // namespace vorn::base

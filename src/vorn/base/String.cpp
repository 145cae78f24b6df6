#include <vorn/base/MemoryException.h>
#include <vorn/base/String.h>

#include <cctype>
#include <climits>
#include <cstdint>
#include <cstring>
#include <new>

#include "platform/Format.h"
#include "platform/Memory.h"
#include "platform/Text.h"
#include "platform/TextConvert.h"
#include "vorn/base/FixBlockAllocator.h"

// Every buffer keeps two rules beyond those of its header: the length plus the terminator fit in
// the capacity, and the byte at the length is 0. So no walk to a terminator leaves the block, even
// when the length runs past the text.

namespace vorn::base {

const char CString::m_emptyText[1] = {'\0'};

namespace {

constexpr unsigned int kHeader = 12;

// A block with room for `n` bytes by the tier table; `capacity` gets the room it stores. Null when
// the system refuses a block above 1024; the pools throw for themselves.
void* TakeBlock(unsigned int n, unsigned int& capacity) {
    capacity = BlockPoolCapacity(n);
    if (FixBlockAllocator* pool = StringBlockPool(capacity))
        return pool->Allocate();
    return ZK_malloc(static_cast<std::size_t>(capacity) + kHeader);
}

void GiveBlock(void* block, unsigned int capacity) {
    if (FixBlockAllocator* pool = StringBlockPool(capacity))
        pool->Release(block);
    else
        ZK_free(block);
}

int FormatInto(char* buffer, std::size_t size, const char* format, va_list arguments) {
    va_list copy;
    va_copy(copy, arguments);
    int result = vorn::platform::FormatLegacyV(buffer, size, format, copy);
    va_end(copy);
    return result;
}

unsigned int Length(const char* s) {
    return s == nullptr ? 0 : static_cast<unsigned int>(std::strlen(s));
}

} // namespace

// ---- Buffers

void CString::AllocBuffer(unsigned int n) {
    CStringData* data = GetData();
    if (data != nullptr && data->capacity >= n && data->references <= 1)
        return;
    if (data != nullptr)
        ReleaseBuffer();
    unsigned int capacity;
    void* block = TakeBlock(n, capacity);
    // Left unchecked, a refused block would be written through; it is reported as what it is.
    if (block == nullptr)
        throw CMemoryException("vorn/base/String", __LINE__);
    data = new (block) CStringData{capacity, 0, 1};
    m_pchData = reinterpret_cast<char*>(data + 1);
    m_pchData[0] = '\0';
}

void CString::EnsureBufferCapacity(unsigned int n) {
    CStringData* old = GetData();
    if (old != nullptr && old->capacity >= n && old->references < 2)
        return;
    // A shared buffer is copied whole, even when less room is asked for.
    if (old != nullptr && n < old->length + 1)
        n = old->length + 1;
    unsigned int capacity;
    void* block = TakeBlock(n, capacity);
    if (block == nullptr)
        throw CMemoryException("vorn/base/String", 1967);
    auto* data = new (block) CStringData{capacity, 0, 1};
    char* text = reinterpret_cast<char*>(data + 1);
    if (old != nullptr) {
        // The whole length is copied, so bytes behind an embedded zero stay what they were.
        std::memcpy(text, m_pchData, old->length);
        text[old->length] = '\0';
        data->length = old->length;
        ReleaseBuffer();
    } else {
        text[0] = '\0';
    }
    m_pchData = text;
}

void CString::ReleaseBuffer() {
    CStringData* data = GetData();
    if (data == nullptr)
        return;
    if (data->references <= 1)
        GiveBlock(data, data->capacity);
    else
        --data->references;
    m_pchData = nullptr;
}

void CString::CopyRefBeforeModify() {
    CStringData* data = GetData();
    if (data != nullptr && data->references >= 2)
        AllocCopy(m_pchData, -1);
}

void CString::AllocCopy(const char* text, int count) {
    // A count past the end of this string's own text must not free that text before it is read,
    // and one beyond the int range can't index the buffer: both stop at the end of the text.
    if (count < -1 || (count > 0 && Owns(text) && static_cast<unsigned int>(count) > Length(text)))
        count = static_cast<int>(Length(text));
    unsigned int size = count == -1 ? Length(text) : static_cast<unsigned int>(count);
    AllocBuffer(size + 1);
    CStringData* data = GetData();
    if (text == nullptr) {
        m_pchData[0] = '\0';
        data->length = 0;
        return;
    }
    if (count == -1) {
        CHCopyC(text, m_pchData);
    } else {
        CHTruncate(text, m_pchData, count + 1, 0);
        m_pchData[count] = '\0';
    }
    data->length = Length(m_pchData);
}

bool CString::Owns(const char* s) const {
    if (m_pchData == nullptr || s == nullptr)
        return false;
    auto p = reinterpret_cast<std::uintptr_t>(s);
    auto begin = reinterpret_cast<std::uintptr_t>(m_pchData);
    return p >= begin && p < begin + GetData()->capacity;
}

// ---- Construction and assignment

CString::CString(const char* s) : m_pchData(nullptr) {
    if (s == nullptr)
        return;
    unsigned int length = Length(s);
    AllocBuffer(length + 1);
    std::memcpy(m_pchData, s, length + 1);
    GetData()->length = length;
}

CString::CString(const char* s, unsigned int n) : m_pchData(nullptr) {
    if (s == nullptr || n == 0)
        return;
    unsigned int length = Length(s);
    // Room for the whole length, so that every byte up to it lies in the block; the bytes behind
    // the copied characters are zeros.
    unsigned int room = n > length ? n : length;
    AllocBuffer(room < UINT_MAX ? room + 1 : length + 1);
    int copied = CHTruncate(s, m_pchData, static_cast<int>((n < length ? n : length) + 1), 0);
    std::memset(m_pchData + copied, 0, length - static_cast<unsigned int>(copied) + 1);
    GetData()->length = length;
}

CString::CString(const unsigned short* s) : m_pchData(nullptr) {
    operator=(s);
}

CString::CString(const unsigned short* s, unsigned int n) : m_pchData(nullptr) {
    if (s == nullptr || n == 0)
        return;
    int count = CHUnicode2ANSI(s, static_cast<int>(n), nullptr, 0, 0, true, nullptr);
    AllocBuffer(static_cast<unsigned int>(count) + 1);
    CHUnicode2ANSI(s, static_cast<int>(n), m_pchData, count, 0, true, nullptr);
    m_pchData[count] = '\0';
    GetData()->length = static_cast<unsigned int>(count);
}

CString& CString::operator=(const CString& s) {
    if (this == &s)
        return *this;
    if (!s.IsEmpty()) {
        ReleaseBuffer();
        Share(s);
    } else {
        Empty();
    }
    return *this;
}

CString& CString::operator=(const char* s) {
    AllocCopy(s, -1);
    return *this;
}

CString& CString::operator=(const unsigned short* s) {
    if (s == nullptr) {
        Empty();
        return *this;
    }
    int count = CHUnicode2ANSI(s, -1, nullptr, 0, 0, true, nullptr);
    AllocBuffer(static_cast<unsigned int>(count) + 1);
    CHUnicode2ANSI(s, -1, m_pchData, count, 0, true, nullptr);
    m_pchData[count] = '\0';
    GetData()->length = static_cast<unsigned int>(count);
    return *this;
}

void CString::Set(const char* s, unsigned int n) {
    AllocCopy(s, static_cast<int>(n));
}

void CString::Empty() {
    CStringData* data = GetData();
    if (data == nullptr)
        return;
    if (data->references > 1) {
        --data->references;
        m_pchData = nullptr;
        return;
    }
    data->length = 0;
    m_pchData[0] = '\0';
}

void CString::EnsureCapacity(unsigned int n) {
    EnsureBufferCapacity(n + 1);
}

void CString::SetAt(unsigned int i, char c) {
    if (i >= GetLength())
        return;
    CopyRefBeforeModify();
    // Unsharing measures the text anew, and a length that ran past the text may have shrunk.
    if (i < GetLength())
        m_pchData[i] = c;
}

// ---- Comparison and search

int CString::CompareWith(const CString& s, int caseSensitive) const {
    bool thisEmpty = IsEmpty(), otherEmpty = s.IsEmpty();
    if (thisEmpty && otherEmpty)
        return 0;
    if (otherEmpty)
        return 1;
    if (thisEmpty)
        return -1;
    return CHCompareTexts(m_pchData, -1, s.m_pchData, -1, caseSensitive, 0);
}

int CString::CompareWith(const char* s, int caseSensitive) const {
    if (IsEmpty())
        return s == nullptr ? 0 : -1;
    if (s == nullptr || *s == '\0')
        return 1;
    return CHCompareTexts(m_pchData, -1, s, -1, caseSensitive, 0);
}

int CString::Compare(const CString& s) const {
    return CompareWith(s, 1);
}
int CString::Compare(const char* s) const {
    return CompareWith(s, 1);
}
int CString::CompareIgnoreCase(const CString& s) const {
    return CompareWith(s, 0);
}
int CString::CompareIgnoreCase(const char* s) const {
    return CompareWith(s, 0);
}

bool CString::HasPrefix(const char* s, unsigned int n, int caseSensitive) const {
    if (n == 0 || n > GetLength())
        return false;
    return CHCompareTexts(m_pchData, static_cast<int>(n), s, static_cast<int>(n), caseSensitive,
                          0) == 0;
}

bool CString::HasSuffix(const char* s, unsigned int n, int caseSensitive) const {
    if (n == 0 || n > GetLength())
        return false;
    return CHCompareTexts(m_pchData + GetLength() - n, static_cast<int>(n), s, static_cast<int>(n),
                          caseSensitive, 0) == 0;
}

bool CString::StartsWith(const CString& s) const {
    return HasPrefix(s, s.GetLength(), 1);
}
bool CString::StartsWith(const char* s) const {
    return HasPrefix(s, Length(s), 1);
}
bool CString::EndsWith(const CString& s) const {
    return HasSuffix(s, s.GetLength(), 1);
}
bool CString::EndsWith(const char* s) const {
    return HasSuffix(s, Length(s), 1);
}
bool CString::StartsWithIgnoreCase(const CString& s) const {
    return HasPrefix(s, s.GetLength(), 0);
}
bool CString::StartsWithIgnoreCase(const char* s) const {
    return HasPrefix(s, Length(s), 0);
}
bool CString::EndsWithIgnoreCase(const CString& s) const {
    return HasSuffix(s, s.GetLength(), 0);
}
bool CString::EndsWithIgnoreCase(const char* s) const {
    return HasSuffix(s, Length(s), 0);
}

int CString::FindText(const char* s, unsigned int start, int caseSensitive) const {
    if (IsEmpty() || start >= GetLength() || s == nullptr || *s == '\0')
        return -1;
    const char* found = CHSearchSubstring(s, m_pchData + start, -1, caseSensitive, 0);
    return found == nullptr ? -1 : static_cast<int>(found - m_pchData);
}

int CString::Find(const CString& s, unsigned int start) const {
    return FindText(s, start, 1);
}
int CString::Find(const char* s, unsigned int start) const {
    return FindText(s, start, 1);
}
int CString::FindIgnoreCase(const CString& s, unsigned int start) const {
    return FindText(s, start, 0);
}
int CString::FindIgnoreCase(const char* s, unsigned int start) const {
    return FindText(s, start, 0);
}

int CString::Find(char c, unsigned int start) const {
    if (IsEmpty() || start >= GetLength())
        return -1;
    // Passed terminated, so that a lone lead byte is read as the one byte it is.
    const char character[2] = {c, '\0'};
    const char* found = CHSearchCharLeft(character, m_pchData + start, -1, 0);
    return found == nullptr ? -1 : static_cast<int>(found - m_pchData);
}

int CString::ReverseFind(char c, unsigned int start) const {
    if (IsEmpty() || start >= GetLength())
        return -1;
    const char character[2] = {c, '\0'};
    const char* found = CHSearchCharRight(character, m_pchData + start, -1, 0);
    return found == nullptr ? -1 : static_cast<int>(found - m_pchData);
}

int CString::ReverseFindText(const char* s, unsigned int start, int caseSensitive) const {
    if (IsEmpty() || start >= GetLength() || s == nullptr || *s == '\0')
        return -1;
    const long long step = Length(s);
    for (long long probe = static_cast<long long>(GetLength()) - step;
         probe > static_cast<long long>(start); probe -= step) {
        const char* found = CHSearchSubstring(s, m_pchData + probe, -1, caseSensitive, 0);
        if (found != nullptr)
            return static_cast<int>(found - m_pchData);
    }
    return -1;
}

int CString::ReverseFind(const CString& s, unsigned int start) const {
    return ReverseFindText(s, start, 1);
}
int CString::ReverseFind(const char* s, unsigned int start) const {
    return ReverseFindText(s, start, 1);
}
int CString::ReverseFindIgnoreCase(const CString& s, unsigned int start) const {
    return ReverseFindText(s, start, 0);
}
int CString::ReverseFindIgnoreCase(const char* s, unsigned int start) const {
    return ReverseFindText(s, start, 0);
}

// ---- Changes

CString& CString::operator+=(const CString& s) {
    if (s.IsEmpty())
        return *this;
    if (IsEmpty())
        return operator=(s);
    const unsigned int length = GetLength();
    const unsigned int added = s.GetLength();
    EnsureBufferCapacity(length + 1 + added);
    // `s` may be this string: its text is read only now, where the move has put it.
    char* end = m_pchData + std::strlen(m_pchData);
    std::memmove(end, s.m_pchData, added);
    const unsigned int newLength = length + added;
    // A length that ran past the text runs past it still; the bytes up to it are zeros.
    std::memset(end + added, 0,
                static_cast<std::size_t>(m_pchData + newLength - (end + added)) + 1);
    GetData()->length = newLength;
    return *this;
}

CString& CString::operator+=(const char* s) {
    if (s == nullptr)
        return *this;
    if (IsEmpty()) {
        AllocCopy(s, -1);
        return *this;
    }
    if (Owns(s)) {
        // A piece of this string's own text must survive the move of its buffer.
        CString copy(s);
        return operator+=(copy);
    }
    const unsigned int length = GetLength();
    const unsigned int added = Length(s);
    EnsureBufferCapacity(length + 1 + added);
    char* end = m_pchData + std::strlen(m_pchData);
    std::memcpy(end, s, added);
    const unsigned int newLength = length + added;
    std::memset(end + added, 0,
                static_cast<std::size_t>(m_pchData + newLength - (end + added)) + 1);
    GetData()->length = newLength;
    return *this;
}

unsigned int CString::Insert(unsigned int pos, char c) {
    if (IsEmpty()) {
        AllocBuffer(2);
        m_pchData[0] = c;
        // The length stays 0; the zero behind keeps any later walk inside the block.
        m_pchData[1] = '\0';
        return 1;
    }
    CopyRefBeforeModify();
    const unsigned int length = GetLength();
    if (pos > length)
        pos = length;
    EnsureBufferCapacity(length + 2);
    std::memmove(m_pchData + pos + 1, m_pchData + pos, length - pos + 1);
    m_pchData[pos] = c;
    return ++GetData()->length;
}

unsigned int CString::Insert(unsigned int pos, const char* s) {
    if (IsEmpty()) {
        AllocCopy(s, -1);
        return GetLength();
    }
    if (s == nullptr || *s == '\0')
        return GetLength();
    if (Owns(s)) {
        CString copy(s);
        return Insert(pos, static_cast<const char*>(copy));
    }
    CopyRefBeforeModify();
    const unsigned int length = GetLength();
    const unsigned int added = Length(s);
    if (pos > length)
        pos = length;
    EnsureBufferCapacity(length + added + 1);
    std::memmove(m_pchData + pos + added, m_pchData + pos, length - pos + 1);
    std::memcpy(m_pchData + pos, s, added);
    GetData()->length = length + added;
    return length + added;
}

unsigned int CString::Delete(unsigned int pos, unsigned int count) {
    if (m_pchData == nullptr)
        return 0;
    const unsigned int length = GetLength();
    if (length == 0 || count == 0 || pos >= length)
        return length;
    CopyRefBeforeModify();
    const unsigned int now = GetLength();
    if (pos >= now)
        return length;
    // A count past the end would move bytes from outside the text: the rest is deleted instead.
    if (count > now - pos)
        count = now - pos;
    std::memmove(m_pchData + pos, m_pchData + pos + count, now - pos - count + 1);
    GetData()->length = now - count;
    return length;
}

unsigned int CString::Remove(char c) {
    if (IsEmpty())
        return 0;
    CopyRefBeforeModify();
    const char* read = m_pchData;
    char* write = m_pchData;
    while (*read != '\0') {
        const char* next = CHGetNextCharPtr(read, 0);
        if (*read != c) {
            std::memmove(write, read, static_cast<std::size_t>(next - read));
            write += next - read;
        }
        read = next;
    }
    *write = '\0';
    const auto removed = static_cast<unsigned int>(read - write);
    CStringData* data = GetData();
    data->length -= removed;
    m_pchData[data->length] = '\0';
    return removed;
}

unsigned int CString::Replace(char from, char to) {
    if (IsEmpty() || from == to)
        return 0;
    CopyRefBeforeModify();
    unsigned int replaced = 0;
    for (char* p = m_pchData; *p != '\0';) {
        char* next = m_pchData + (CHGetNextCharPtr(p, 0) - m_pchData);
        if (*p == from) {
            *p = to;
            ++replaced;
        }
        p = next;
    }
    return replaced;
}

unsigned int CString::Replace(const char* from, const char* to) {
    if (IsEmpty() || from == nullptr || *from == '\0')
        return 0;
    if (to == nullptr)
        to = "";
    const long long fromLength = Length(from);
    const long long toLength = Length(to);

    // Matches are counted on the text and, behind each embedded zero, on the rest of the length.
    unsigned int matches = 0;
    {
        const char* text = m_pchData;
        const char* end = text + GetLength();
        for (const char* p = text; p < end;) {
            const char* found = CHSearchSubstring(from, p, -1, 1, 0);
            if (found != nullptr) {
                ++matches;
                p = found + fromLength;
            } else {
                p += std::strlen(p) + 1;
            }
        }
    }
    if (matches == 0)
        return 0;

    CopyRefBeforeModify();
    const long long newLength =
        static_cast<long long>(GetLength()) + matches * (toLength - fromLength);
    EnsureBufferCapacity(static_cast<unsigned int>(newLength) + 1);
    char* text = m_pchData;
    long long length = GetLength();
    unsigned int done = 0;
    for (long long pos = 0; pos < length && done < matches;) {
        const char* found = CHSearchSubstring(from, text + pos, -1, 1, 0);
        if (found == nullptr) {
            pos += static_cast<long long>(std::strlen(text + pos)) + 1;
            continue;
        }
        const long long at = found - text;
        std::memmove(text + at + toLength, text + at + fromLength,
                     static_cast<std::size_t>(length - at - fromLength + 1));
        std::memcpy(text + at, to, static_cast<std::size_t>(toLength));
        length += toLength - fromLength;
        text[length] = '\0';
        pos = at + toLength;
        ++done;
    }
    GetData()->length = static_cast<unsigned int>(length);
    return matches;
}

void CString::MakeUpper() {
    if (IsEmpty())
        return;
    CopyRefBeforeModify();
    CHtoUpper(m_pchData, -1, 0);
}

void CString::MakeLower() {
    if (IsEmpty())
        return;
    CopyRefBeforeModify();
    CHtoLower(m_pchData, -1, 0);
}

void CString::MakeReverse() {
    if (IsEmpty())
        return;
    const unsigned int length = GetLength();
    char* reversed = static_cast<char*>(ZK_malloc(length + 1));
    if (reversed == nullptr)
        throw CMemoryException("vorn/base/String", 688);
    for (unsigned int i = 0; i < length;) {
        auto size = static_cast<unsigned int>(CHGetNextCharPtr(m_pchData + i, 0) - (m_pchData + i));
        std::memcpy(reversed + length - i - size, m_pchData + i, size);
        i += size;
    }
    reversed[length] = '\0';
    std::memcpy(m_pchData, reversed, length + 1);
    ZK_free(reversed);
}

template <typename Qualifies> void CString::TrimLeftWhile(Qualifies qualifies) {
    CopyRefBeforeModify();
    const char* p = m_pchData;
    while (*p != '\0' && qualifies(p))
        p = CHGetNextCharPtr(p, 0);
    if (p == m_pchData)
        return;
    if (*p == '\0') {
        Empty();
        return;
    }
    const auto shift = static_cast<unsigned int>(p - m_pchData);
    std::memmove(m_pchData, p, std::strlen(p) + 1);
    CStringData* data = GetData();
    data->length -= shift;
    m_pchData[data->length] = '\0';
}

void CString::TrimLeft() {
    if (IsEmpty())
        return;
    TrimLeftWhile([](const char* p) { return std::isspace(static_cast<unsigned char>(*p)) != 0; });
}

void CString::TrimLeft(char c) {
    if (IsEmpty())
        return;
    TrimLeftWhile([c](const char* p) { return *p == c; });
}

void CString::TrimLeft(const char* set) {
    if (IsEmpty() || set == nullptr || *set == '\0')
        return;
    TrimLeftWhile([set](const char* p) { return CHSearchCharLeft(p, set, -1, 0) != nullptr; });
}

void CString::TrimLeft(const CString& set) {
    TrimLeft(static_cast<const char*>(set));
}

void CString::TrimRight() {
    if (IsEmpty())
        return;
    CopyRefBeforeModify();
    const char* run = nullptr;
    for (const char* p = m_pchData; *p != '\0'; p = CHGetNextCharPtr(p, 0)) {
        if (std::isspace(static_cast<unsigned char>(*p)) == 0)
            run = nullptr;
        else if (run == nullptr)
            run = p;
    }
    if (run == nullptr)
        return;
    if (run == m_pchData) {
        Empty();
        return;
    }
    m_pchData[run - m_pchData] = '\0';
    GetData()->length = Length(m_pchData);
}

void CString::TrimRight(char c) {
    TrimLeft(c);
}
void CString::TrimRight(const char* set) {
    TrimLeft(set);
}
void CString::TrimRight(const CString& set) {
    TrimLeft(set);
}

// ---- Substrings

CString CString::SubString(unsigned int start) {
    CString result;
    if (IsEmpty() || start >= GetLength())
        return result;
    result.AllocCopy(m_pchData + start, -1);
    return result;
}

CString CString::SubString(unsigned int start, unsigned int end) {
    CString result;
    const unsigned int length = GetLength();
    if (IsEmpty() || start >= length || start >= end)
        return result;
    const unsigned int stop = end < length ? end : length;
    result.AllocCopy(m_pchData + start, static_cast<int>(stop - start));
    return result;
}

CString CString::Mid(unsigned int start) {
    return SubString(start);
}

CString CString::Mid(unsigned int start, int count) {
    return SubString(start, start + static_cast<unsigned int>(count));
}

CString CString::Left(unsigned int n) {
    if (IsEmpty())
        return CString();
    if (n >= GetLength())
        return *this;
    return Mid(0, static_cast<int>(n));
}

CString CString::Right(unsigned int n) {
    if (IsEmpty())
        return CString();
    if (n >= GetLength())
        return *this;
    return Mid(GetLength() - n - 1, static_cast<int>(n));
}

// ---- Formatting

void CString::Format(const char* format, ...) {
    if (format == nullptr)
        return;
    va_list arguments;
    va_start(arguments, format);
    try {
        FormatV(format, arguments);
    } catch (...) {
        va_end(arguments);
        throw;
    }
    va_end(arguments);
}

void CString::FormatV(const char* format, va_list arguments) {
    std::size_t size = 1024;
    // One byte more than the formatter may fill: output that filled the whole size, or didn't
    // fit, has no terminator of its own.
    char* buffer = static_cast<char*>(ZK_malloc(size + 1));
    if (buffer == nullptr)
        throw CMemoryException("vorn/base/String", 1763);
    int result = FormatInto(buffer, size, format, arguments);
    while (result == static_cast<int>(size) - 1) {
        ZK_free(buffer);
        size += 1024;
        buffer = static_cast<char*>(ZK_malloc(size + 1));
        if (buffer == nullptr)
            throw CMemoryException("vorn/base/String", 1780);
        result = FormatInto(buffer, size, format, arguments);
    }
    buffer[size] = '\0';
    try {
        AllocCopy(buffer, -1);
    } catch (...) {
        ZK_free(buffer);
        throw;
    }
    ZK_free(buffer);
}

// ---- Free operators

namespace {

int Order(const CString& a, const CString& b) {
    if (a.IsEmpty() || b.IsEmpty())
        return (a.IsEmpty() ? 0 : 1) - (b.IsEmpty() ? 0 : 1);
    return CHCompareTexts(a, -1, b, -1, 1, 0);
}

int Order(const CString& a, const char* b) {
    if (a.IsEmpty() || b == nullptr)
        return (a.IsEmpty() ? 0 : 1) - (b == nullptr ? 0 : 1);
    return CHCompareTexts(a, -1, b, -1, 1, 0);
}

} // namespace

bool operator==(const CString& a, const CString& b) {
    if (a.IsEmpty() || b.IsEmpty())
        return a.IsEmpty() && b.IsEmpty();
    return std::strcmp(a, b) == 0;
}

bool operator==(const CString& a, const char* b) {
    if (a.IsEmpty())
        return b == nullptr;
    return b != nullptr && std::strcmp(a, b) == 0;
}

bool operator==(const char* a, const CString& b) {
    return b == a;
}

bool operator<(const CString& a, const CString& b) {
    return Order(a, b) < 0;
}
bool operator<=(const CString& a, const CString& b) {
    return Order(a, b) <= 0;
}
bool operator>(const CString& a, const CString& b) {
    return Order(a, b) > 0;
}
bool operator>=(const CString& a, const CString& b) {
    return Order(a, b) >= 0;
}
bool operator<(const CString& a, const char* b) {
    return Order(a, b) < 0;
}
bool operator<=(const CString& a, const char* b) {
    return Order(a, b) <= 0;
}
bool operator>(const CString& a, const char* b) {
    return Order(a, b) > 0;
}
bool operator>=(const CString& a, const char* b) {
    return Order(a, b) >= 0;
}
bool operator<(const char* a, const CString& b) {
    return Order(b, a) > 0;
}
bool operator<=(const char* a, const CString& b) {
    return Order(b, a) >= 0;
}
bool operator>(const char* a, const CString& b) {
    return Order(b, a) < 0;
}
bool operator>=(const char* a, const CString& b) {
    return Order(b, a) <= 0;
}

CString operator+(const CString& a, const CString& b) {
    CString result(a);
    result += b;
    return result;
}

CString operator+(const CString& a, const char* b) {
    CString result(a);
    result += b;
    return result;
}

CString operator+(const char* a, const CString& b) {
    CString result(a);
    result += b;
    return result;
}

} // namespace vorn::base

#include <vorn/base/MemoryException.h>
#include <vorn/base/String.h>
#include <vorn/base/StringH.h>

#include <cctype>
#include <climits>
#include <cstring>

#include "platform/Format.h"
#include "platform/Memory.h"
#include "platform/Text.h"
#include "platform/TextConvert.h"
#include "vorn/base/TextBuffer.h"

namespace vorn::base {

const char CString::m_emptyText[1] = {'\0'};

namespace {

using Text = detail::TextBuffer<CString>;
using detail::Length;

constexpr const char* kSource = "vorn/base/String";

int FormatInto(char* buffer, std::size_t size, const char* format, va_list arguments) {
    va_list copy;
    va_copy(copy, arguments);
    int result = vorn::platform::FormatLegacyV(buffer, size, format, copy);
    va_end(copy);
    return result;
}

// The copy step of AllocCopy: the whole text for a count of -1, else the characters that fit in
// `count` bytes. The length is measured from what was copied.
unsigned int CopyText(char* target, const char* text, int count, unsigned int /*size*/) {
    if (count == -1) {
        CHCopyC(text, target);
    } else {
        CHTruncate(text, target, count + 1, 0);
        target[count] = '\0';
    }
    return Length(target);
}

const char* NextChar(const char* p) {
    return CHGetNextCharPtr(p, 0);
}

bool IsSpace(const char* p) {
    return std::isspace(static_cast<unsigned char>(*p)) != 0;
}

} // namespace

// ---- Buffers

void CString::AllocBuffer(unsigned int n) {
    Text::AllocBuffer(*this, n, kSource, __LINE__);
}

void CString::EnsureBufferCapacity(unsigned int n) {
    Text::EnsureBufferCapacity(*this, n, kSource, 1967);
}

void CString::ReleaseBuffer() {
    Text::ReleaseBuffer(*this);
}

void CString::CopyRefBeforeModify() {
    Text::CopyRefBeforeModify(*this);
}

void CString::AllocCopy(const char* text, int count) {
    Text::AllocCopy(*this, text, count, CopyText);
}

bool CString::Owns(const char* s) const {
    return Text::Owns(*this, s);
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

CString::CString(const CStringH& s) : m_pchData(nullptr) {
    if (!s.IsEmpty())
        AllocCopy(s, -1);
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
    return Text::Assign(*this, s);
}

CString& CString::operator=(const CStringH& s) {
    if (s.IsEmpty())
        Empty();
    else
        AllocCopy(s, -1);
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
    Text::SetAt(*this, i, c);
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
    // Deliberate: the probes step by the needle's length and never reach `start` itself.
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
    return Text::Insert(*this, pos, c);
}

unsigned int CString::Insert(unsigned int pos, const char* s) {
    return Text::Insert(*this, pos, s);
}

unsigned int CString::Delete(unsigned int pos, unsigned int count) {
    return Text::Delete(*this, pos, count);
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
    return Text::Replace(*this, from, to == nullptr ? "" : to, [](const char* p, const char* f) {
        return CHSearchSubstring(f, p, -1, 1, 0);
    });
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

void CString::TrimLeft() {
    if (IsEmpty())
        return;
    Text::TrimLeftWhile(*this, IsSpace, NextChar);
}

void CString::TrimLeft(char c) {
    if (IsEmpty())
        return;
    Text::TrimLeftWhile(
        *this, [c](const char* p) { return *p == c; }, NextChar);
}

void CString::TrimLeft(const char* set) {
    if (IsEmpty() || set == nullptr || *set == '\0')
        return;
    Text::TrimLeftWhile(
        *this, [set](const char* p) { return CHSearchCharLeft(p, set, -1, 0) != nullptr; },
        NextChar);
}

void CString::TrimLeft(const CString& set) {
    TrimLeft(static_cast<const char*>(set));
}

void CString::TrimRight() {
    if (IsEmpty())
        return;
    Text::TrimRightWhile(*this, IsSpace, NextChar);
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
    return Text::SubString(*this, start);
}

CString CString::SubString(unsigned int start, unsigned int end) {
    return Text::SubString(*this, start, end);
}

CString CString::Mid(unsigned int start) {
    return Text::SubString(*this, start);
}

CString CString::Mid(unsigned int start, int count) {
    return Text::Mid(*this, start, count);
}

CString CString::Left(unsigned int n) {
    return Text::Left(*this, n);
}

CString CString::Right(unsigned int n) {
    return Text::Right(*this, n);
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
    Text::FormatV(*this, format, arguments, FormatInto, kSource, 1763, 1780);
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

#include <vorn/base/MemoryException.h>
#include <vorn/base/UnicodeString.h>
#include <vorn/base/UnicodeStringBuffer.h>

#include <climits>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "platform/Format.h"
#include "platform/Memory.h"
#include "platform/TextConvert.h"
#include "platform/UniText.h"
#include "vorn/base/TextBuffer.h"

namespace vorn::base {

namespace {

using Text = detail::TextBuffer<CUnicodeString>;
using detail::Length;

constexpr const char* kSource = "vorn/base/UnicodeString";
constexpr std::size_t kUnit = sizeof(unsigned short);

// The first zero unit of a buffer's text, which has one at `length` at the latest. Appending
// scans for it from the start; eight units at a time, the scan reads nothing past the length.
unsigned short* EndOfText(unsigned short* text, unsigned int length) {
    unsigned int i = 0;
#if defined(__SSE2__)
    const __m128i zero = _mm_setzero_si128();
    for (; i + 8 <= length; i += 8) {
        const __m128i units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + i));
        if (_mm_movemask_epi8(_mm_cmpeq_epi16(units, zero)) != 0)
            break;
    }
#endif
    while (text[i] != 0)
        ++i;
    return text + i;
}

bool IsEmptyText(const unsigned short* s) {
    return s == nullptr || *s == 0;
}

// One narrow character as one unit; a byte that starts no character gives U+FFFD, and 0 gives 0.
unsigned short Unit(char c) {
    unsigned short unit = 0;
    CHANSI2Unicode(&c, 1, &unit, 1, 0, nullptr);
    return unit;
}

// Narrow text as UTF-16, for the narrow forms that run the wide logic. Null and "" both give the
// empty text, without an allocation.
class WideText {
public:
    explicit WideText(const char* s) : m_buffer(32) { m_buffer = s; }
    operator const unsigned short*() const { return m_buffer; }

private:
    CUnicodeStringBuffer m_buffer;
};

// The copy step of AllocCopy: `count` units, or all `size` of them with the terminator for -1.
unsigned int CopyUnits(unsigned short* target, const unsigned short* text, int count,
                       unsigned int size) {
    if (count == -1) {
        // The measured text with its terminator; it may lie behind the target in this buffer.
        std::memmove(target, text, (std::size_t{size} + 1) * kUnit);
        return size;
    }
    ZK::ucsncpy(target, text, static_cast<std::size_t>(count));
    target[count] = 0;
    return Length(target);
}

int FormatInto(unsigned short* buffer, std::size_t units, const unsigned short* format,
               va_list arguments) {
    va_list copy;
    va_copy(copy, arguments);
    int result = ZK::vsnuprintf(buffer, units, format, copy);
    va_end(copy);
    return result;
}

} // namespace

// ---- Buffers

void CUnicodeString::AllocBuffer(unsigned int n) {
    Text::AllocBuffer(*this, n, kSource, __LINE__);
}

void CUnicodeString::EnsureBufferCapacity(unsigned int n) {
    Text::EnsureBufferCapacity(*this, n, kSource, 2519);
}

void CUnicodeString::ReleaseBuffer() {
    Text::ReleaseBuffer(*this);
}

void CUnicodeString::CopyRefBeforeModify() {
    Text::CopyRefBeforeModify(*this);
}

void CUnicodeString::AllocCopy(const unsigned short* text, int count) {
    Text::AllocCopy(*this, text, count, CopyUnits);
}

bool CUnicodeString::Owns(const unsigned short* s) const {
    return Text::Owns(*this, s);
}

// ---- Construction and assignment

CUnicodeString::CUnicodeString(const char* s) : m_pchData(nullptr) {
    if (s == nullptr || *s == '\0')
        return;
    const int count = CHANSI2Unicode(s, -1, nullptr, 0, 0, nullptr);
    AllocBuffer(static_cast<unsigned int>(count));
    CHANSI2Unicode(s, -1, m_pchData, count, 0, nullptr);
    GetData()->length = static_cast<unsigned int>(count) - 1;
}

CUnicodeString::CUnicodeString(const char* s, unsigned int n) : m_pchData(nullptr) {
    if (s == nullptr || n == 0)
        return;
    // A counted source still ends at its terminator, so the largest int count reads it whole.
    const int bytes = n > INT_MAX ? INT_MAX : static_cast<int>(n);
    const int count = CHANSI2Unicode(s, bytes, nullptr, 0, 0, nullptr);
    AllocBuffer(static_cast<unsigned int>(count) + 1);
    CHANSI2Unicode(s, bytes, m_pchData, count, 0, nullptr);
    m_pchData[count] = 0;
    GetData()->length = static_cast<unsigned int>(count);
}

CUnicodeString::CUnicodeString(const unsigned short* s) : m_pchData(nullptr) {
    AllocCopy(s, -1);
}

CUnicodeString::CUnicodeString(const unsigned short* s, unsigned int n) : m_pchData(nullptr) {
    if (s == nullptr || n == 0)
        return;
    // The whole unsigned range leaves no room for a terminator: the text is measured instead.
    if (n == UINT_MAX)
        n = Length(s);
    AllocBuffer(n + 1);
    ZK::ucsncpy(m_pchData, s, n);
    m_pchData[n] = 0;
    GetData()->length = Length(m_pchData);
}

CUnicodeString& CUnicodeString::operator=(const CUnicodeString& s) {
    return Text::Assign(*this, s);
}

CUnicodeString& CUnicodeString::operator=(const char* s) {
    if (s == nullptr || *s == '\0') {
        Empty();
        return *this;
    }
    const int count = CHANSI2Unicode(s, -1, nullptr, 0, 0, nullptr);
    EnsureBufferCapacity(static_cast<unsigned int>(count));
    CHANSI2Unicode(s, -1, m_pchData, count, 0, nullptr);
    GetData()->length = static_cast<unsigned int>(count) - 1;
    return *this;
}

CUnicodeString& CUnicodeString::operator=(const unsigned short* s) {
    AllocCopy(s, -1);
    return *this;
}

void CUnicodeString::Set(const unsigned short* s, unsigned int n) {
    AllocCopy(s, static_cast<int>(n));
}

void CUnicodeString::Empty() {
    CUnicodeStringData* data = GetData();
    if (data == nullptr)
        return;
    if (data->references > 1) {
        --data->references;
        m_pchData = nullptr;
        return;
    }
    if (data->length != 0) {
        data->length = 0;
        m_pchData[0] = 0;
    }
}

void CUnicodeString::EnsureCapacity(unsigned int n) {
    EnsureBufferCapacity(n + 1);
}

void CUnicodeString::CopyTo(unsigned short* target, unsigned int size) const {
    if (target == nullptr || size < 2)
        return;
    ZK::ucsncpy(target, *this, size);
    target[size - 1] = 0;
}

CUnicodeString::operator const unsigned short*() const {
    return IsEmpty() ? ZK::EmptyUTF16 : m_pchData;
}

void CUnicodeString::SetAt(unsigned int i, unsigned short c) {
    Text::SetAt(*this, i, c);
}

// ---- Comparison and search

int CUnicodeString::CompareWith(const unsigned short* s, bool caseSensitive) const {
    if (IsEmpty())
        return IsEmptyText(s) ? 0 : -1;
    if (IsEmptyText(s))
        return 1;
    return caseSensitive ? ZK::ucscmp(m_pchData, s) : ZK::ucsicmp(m_pchData, s);
}

int CUnicodeString::Compare(const unsigned short* s) const {
    return CompareWith(s, true);
}
int CUnicodeString::Compare(const char* s) const {
    return CompareWith(WideText(s), true);
}
int CUnicodeString::CompareIgnoreCase(const unsigned short* s) const {
    return CompareWith(s, false);
}
int CUnicodeString::CompareIgnoreCase(const char* s) const {
    return CompareWith(WideText(s), false);
}

bool CUnicodeString::HasPrefix(const unsigned short* s, bool caseSensitive) const {
    const unsigned int n = Length(s);
    if (n == 0 || n > GetLength())
        return false;
    return (caseSensitive ? ZK::ucsncmp(m_pchData, s, n) : ZK::ucsnicmp(m_pchData, s, n)) == 0;
}

bool CUnicodeString::HasSuffix(const unsigned short* s, bool caseSensitive) const {
    const unsigned int n = Length(s);
    if (n == 0 || n > GetLength())
        return false;
    const unsigned short* tail = m_pchData + GetLength() - n;
    return (caseSensitive ? ZK::ucsncmp(tail, s, n) : ZK::ucsnicmp(tail, s, n)) == 0;
}

bool CUnicodeString::StartsWith(const unsigned short* s) const {
    return HasPrefix(s, true);
}
bool CUnicodeString::StartsWith(const char* s) const {
    return HasPrefix(WideText(s), true);
}
bool CUnicodeString::EndsWith(const unsigned short* s) const {
    return HasSuffix(s, true);
}
bool CUnicodeString::EndsWith(const char* s) const {
    return HasSuffix(WideText(s), true);
}
bool CUnicodeString::StartsWithIgnoreCase(const unsigned short* s) const {
    return HasPrefix(s, false);
}
bool CUnicodeString::StartsWithIgnoreCase(const char* s) const {
    return HasPrefix(WideText(s), false);
}
bool CUnicodeString::EndsWithIgnoreCase(const unsigned short* s) const {
    return HasSuffix(s, false);
}
bool CUnicodeString::EndsWithIgnoreCase(const char* s) const {
    return HasSuffix(WideText(s), false);
}

int CUnicodeString::Find(const unsigned short* s, unsigned int start) const {
    if (IsEmpty() || start >= GetLength() || IsEmptyText(s) || Length(s) > GetLength() - start)
        return -1;
    const unsigned short* found = ZK::ucsstr(m_pchData + start, s);
    return found == nullptr ? -1 : static_cast<int>(found - m_pchData);
}

int CUnicodeString::Find(const char* s, unsigned int start) const {
    return Find(WideText(s), start);
}

int CUnicodeString::Find(unsigned short c, unsigned int start) const {
    if (IsEmpty() || start >= GetLength())
        return -1;
    const unsigned short* found = ZK::ucschr(m_pchData + start, c);
    return found == nullptr ? -1 : static_cast<int>(found - m_pchData);
}

int CUnicodeString::Find(char c, unsigned int start) const {
    return Find(Unit(c), start);
}

int CUnicodeString::FindIgnoreCase(const unsigned short* s, unsigned int start) const {
    CUnicodeString text(*this), needle(s);
    text.MakeUpper();
    needle.MakeUpper();
    return text.Find(needle, start);
}

int CUnicodeString::FindIgnoreCase(const char* s, unsigned int start) const {
    return FindIgnoreCase(WideText(s), start);
}

int CUnicodeString::ReverseFind(unsigned short c, unsigned int start) const {
    if (IsEmpty() || start >= GetLength())
        return -1;
    const unsigned short* found = ZK::ucsrchr(m_pchData + start, c);
    return found == nullptr ? -1 : static_cast<int>(found - m_pchData);
}

int CUnicodeString::ReverseFind(char c, unsigned int start) const {
    return ReverseFind(Unit(c), start);
}

namespace {

// The distance in units between two texts that needn't lie in one block.
int Distance(const unsigned short* from, const unsigned short* to) {
    const auto delta = static_cast<std::intptr_t>(reinterpret_cast<std::uintptr_t>(to) -
                                                  reinterpret_cast<std::uintptr_t>(from));
    return static_cast<int>(delta / static_cast<std::intptr_t>(kUnit));
}

// The probes of a reverse search: from `length - n` back in steps of `n - 1` while behind
// `start`. The first pointer that `attempt` gives at a probe, or null.
template <typename Attempt>
const unsigned short* WalkProbes(unsigned int length, unsigned int n, unsigned int start,
                                 Attempt attempt) {
    const long long step = static_cast<long long>(n) - 1;
    for (long long probe = static_cast<long long>(length) - n;
         probe > static_cast<long long>(start); probe -= step) {
        if (const unsigned short* found = attempt(static_cast<unsigned int>(probe)))
            return found;
        // A one-unit needle would probe the same place forever and find nothing new there.
        if (step == 0)
            return nullptr;
    }
    return nullptr;
}

} // namespace

int CUnicodeString::ReverseFindText(const unsigned short* s, unsigned int start) const {
    if (IsEmpty() || start >= GetLength() || IsEmptyText(s))
        return -1;
    const unsigned int n = Length(s);
    if (n > GetLength() - start)
        return -1;
    // The text from each probe on is looked for inside the needle, not the other way round.
    const unsigned short* found = WalkProbes(GetLength(), n, start, [&](unsigned int probe) {
        return ZK::ucsstr(s, m_pchData + probe);
    });
    return found == nullptr ? -1 : Distance(m_pchData, found);
}

int CUnicodeString::ReverseFind(const unsigned short* s, unsigned int start) const {
    return ReverseFindText(s, start);
}

int CUnicodeString::ReverseFind(const char* s, unsigned int start) const {
    if (IsEmpty() || start >= GetLength() || s == nullptr || *s == '\0')
        return -1;
    const auto n = static_cast<unsigned int>(std::strlen(s));
    if (n > GetLength() - start)
        return -1;
    // The needle is never converted: each probe is looked for inside an empty text.
    const CUnicodeStringBuffer empty(32);
    const unsigned short* found = WalkProbes(GetLength(), n, start, [&](unsigned int probe) {
        return ZK::ucsstr(static_cast<const unsigned short*>(empty), m_pchData + probe);
    });
    return found == nullptr ? -1 : Distance(m_pchData, found);
}

int CUnicodeString::ReverseFindIgnoreCase(const unsigned short* s, unsigned int start) const {
    CUnicodeString text(*this), needle(s);
    text.MakeUpper();
    needle.MakeUpper();
    return text.ReverseFindText(needle, start);
}

int CUnicodeString::ReverseFindIgnoreCase(const char* s, unsigned int start) const {
    return ReverseFindIgnoreCase(WideText(s), start);
}

// ---- Changes

void CUnicodeString::Append(const unsigned short* s, unsigned int added) {
    const unsigned int length = GetLength();
    EnsureBufferCapacity(length + 1 + added);
    unsigned short* end = EndOfText(m_pchData, length);
    std::memcpy(end, s, static_cast<std::size_t>(added) * kUnit);
    const unsigned int newLength = length + added;
    // Behind a stored 0 the length runs past the text; the units up to it are zeros.
    std::memset(end + added, 0,
                static_cast<std::size_t>(m_pchData + newLength - (end + added) + 1) * kUnit);
    GetData()->length = newLength;
}

CUnicodeString& CUnicodeString::operator+=(const CUnicodeString& s) {
    if (s.IsEmpty())
        return *this;
    if (IsEmpty())
        return operator=(s);
    if (&s == this) {
        // A share keeps the text alive while the growth moves this string to a new buffer.
        const CUnicodeString copy(s);
        Append(copy.m_pchData, copy.GetLength());
        return *this;
    }
    Append(s.m_pchData, s.GetLength());
    return *this;
}

CUnicodeString& CUnicodeString::operator+=(const unsigned short* s) {
    if (IsEmptyText(s))
        return *this;
    if (IsEmpty()) {
        AllocCopy(s, -1);
        return *this;
    }
    if (Owns(s)) {
        // A piece of this string's own text must survive the move of its buffer.
        const CUnicodeString copy(s);
        Append(copy.m_pchData, copy.GetLength());
        return *this;
    }
    Append(s, Length(s));
    return *this;
}

CUnicodeString& CUnicodeString::operator+=(const char* s) {
    if (s == nullptr || *s == '\0')
        return *this;
    if (IsEmpty())
        return operator=(s);
    const int count = CHANSI2Unicode(s, -1, nullptr, 0, 0, nullptr);
    const unsigned int length = GetLength();
    EnsureBufferCapacity(length + static_cast<unsigned int>(count));
    unsigned short* end = EndOfText(m_pchData, length);
    CHANSI2Unicode(s, -1, end, count, 0, nullptr);
    const unsigned int added = static_cast<unsigned int>(count) - 1;
    const unsigned int newLength = length + added;
    std::memset(end + added, 0,
                static_cast<std::size_t>(m_pchData + newLength - (end + added) + 1) * kUnit);
    GetData()->length = newLength;
    return *this;
}

unsigned int CUnicodeString::Insert(unsigned int pos, unsigned short c) {
    return Text::Insert(*this, pos, c);
}

unsigned int CUnicodeString::Insert(unsigned int pos, char c) {
    return Insert(pos, Unit(c));
}

unsigned int CUnicodeString::Insert(unsigned int pos, const unsigned short* s) {
    return Text::Insert(*this, pos, s);
}

unsigned int CUnicodeString::Insert(unsigned int pos, const char* s) {
    return Insert(pos, WideText(s));
}

unsigned int CUnicodeString::Delete(unsigned int pos, unsigned int count) {
    return Text::Delete(*this, pos, count);
}

unsigned int CUnicodeString::Remove(unsigned short c) {
    if (IsEmpty())
        return 0;
    CopyRefBeforeModify();
    const unsigned short* read = m_pchData;
    unsigned short* write = m_pchData;
    for (; *read != 0; ++read) {
        if (*read != c)
            *write++ = *read;
    }
    *write = 0;
    const auto removed = static_cast<unsigned int>(read - write);
    CUnicodeStringData* data = GetData();
    data->length -= removed;
    m_pchData[data->length] = 0;
    return removed;
}

unsigned int CUnicodeString::Remove(char c) {
    return Remove(Unit(c));
}

unsigned int CUnicodeString::Replace(unsigned short from, unsigned short to) {
    if (IsEmpty() || from == to)
        return 0;
    CopyRefBeforeModify();
    unsigned int replaced = 0;
    for (unsigned short* p = m_pchData; *p != 0; ++p) {
        if (*p == from) {
            *p = to;
            ++replaced;
        }
    }
    return replaced;
}

unsigned int CUnicodeString::Replace(char from, char to) {
    return Replace(Unit(from), Unit(to));
}

unsigned int CUnicodeString::Replace(const unsigned short* from, const unsigned short* to) {
    if (IsEmpty() || IsEmptyText(from))
        return 0;
    if (to == nullptr)
        to = ZK::EmptyUTF16;
    if (Owns(from) || Owns(to)) {
        // Pieces of this string's own text must survive its changes.
        const CUnicodeString fromCopy(from), toCopy(to);
        return Replace(static_cast<const unsigned short*>(fromCopy), toCopy.m_pchData);
    }
    return Text::Replace(*this, from, to, [](const unsigned short* p, const unsigned short* f) {
        return ZK::ucsstr(p, f);
    });
}

unsigned int CUnicodeString::Replace(const char* from, const char* to) {
    return Replace(WideText(from), WideText(to));
}

void CUnicodeString::MakeUpper() {
    if (IsEmpty())
        return;
    CopyRefBeforeModify();
    ZK::ucsupr(m_pchData);
}

void CUnicodeString::MakeLower() {
    if (IsEmpty())
        return;
    CopyRefBeforeModify();
    ZK::ucslwr(m_pchData);
}

void CUnicodeString::MakeReverse() {
    if (IsEmpty())
        return;
    CopyRefBeforeModify();
    ZK::ucsrev(m_pchData);
}

namespace {

bool IsSpace(const unsigned short* p) {
    return ZK::isuspace(*p) != 0;
}

const unsigned short* NextUnit(const unsigned short* p) {
    return p + 1;
}

} // namespace

void CUnicodeString::TrimLeft() {
    if (!IsEmpty())
        Text::TrimLeftWhile(*this, IsSpace, NextUnit);
}

void CUnicodeString::TrimLeft(unsigned short c) {
    if (!IsEmpty())
        Text::TrimLeftWhile(
            *this, [c](const unsigned short* p) { return *p == c; }, NextUnit);
}

void CUnicodeString::TrimLeft(char c) {
    TrimLeft(Unit(c));
}

void CUnicodeString::TrimLeft(const unsigned short* set) {
    if (!IsEmpty() && !IsEmptyText(set))
        Text::TrimLeftWhile(
            *this, [set](const unsigned short* p) { return ZK::ucschr(set, *p) != nullptr; },
            NextUnit);
}

void CUnicodeString::TrimLeft(const char* set) {
    if (!IsEmpty() && set != nullptr && *set != '\0')
        TrimLeft(WideText(set));
}

void CUnicodeString::TrimRight() {
    if (!IsEmpty())
        Text::TrimRightWhile(*this, IsSpace, NextUnit);
}

void CUnicodeString::TrimRight(unsigned short c) {
    if (!IsEmpty())
        Text::TrimRightWhile(
            *this, [c](const unsigned short* p) { return *p == c; }, NextUnit);
}

void CUnicodeString::TrimRight(char c) {
    TrimRight(Unit(c));
}

void CUnicodeString::TrimRight(const unsigned short* set) {
    if (!IsEmpty() && !IsEmptyText(set))
        Text::TrimRightWhile(
            *this, [set](const unsigned short* p) { return ZK::ucschr(set, *p) != nullptr; },
            NextUnit);
}

void CUnicodeString::TrimRight(const char* set) {
    if (!IsEmpty() && set != nullptr && *set != '\0')
        TrimRight(WideText(set));
}

// ---- Substrings

CUnicodeString CUnicodeString::SubString(unsigned int start) {
    return Text::SubString(*this, start);
}

CUnicodeString CUnicodeString::SubString(unsigned int start, unsigned int end) {
    return Text::SubString(*this, start, end);
}

CUnicodeString CUnicodeString::Mid(unsigned int start) {
    return Text::SubString(*this, start);
}

CUnicodeString CUnicodeString::Mid(unsigned int start, int count) {
    return Text::Mid(*this, start, count);
}

CUnicodeString CUnicodeString::Left(unsigned int n) {
    return Text::Left(*this, n);
}

CUnicodeString CUnicodeString::Right(unsigned int n) {
    return Text::Right(*this, n);
}

// ---- Formatting

void CUnicodeString::Format(const unsigned short* format, ...) {
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

void CUnicodeString::FormatV(const unsigned short* format, va_list arguments) {
    // A null format would be read by the formatter; it does nothing here, as in Format.
    if (format == nullptr)
        return;
    Text::FormatV(*this, format, arguments, FormatInto, kSource, 2309, 2326);
}

// ---- Free operators

namespace {

int Order(const CUnicodeString& a, const CUnicodeString& b) {
    if (a.IsEmpty() || b.IsEmpty())
        return (a.IsEmpty() ? 0 : 1) - (b.IsEmpty() ? 0 : 1);
    return ZK::ucscmp(a, b);
}

int Order(const CUnicodeString& a, const unsigned short* b) {
    if (a.IsEmpty() || b == nullptr)
        return (a.IsEmpty() ? 0 : 1) - (b == nullptr ? 0 : 1);
    return ZK::ucscmp(a, b);
}

int Order(const CUnicodeString& a, const char* b) {
    if (a.IsEmpty() || b == nullptr)
        return (a.IsEmpty() ? 0 : 1) - (b == nullptr ? 0 : 1);
    return ZK::ucscmp(a, WideText(b));
}

} // namespace

bool operator==(const CUnicodeString& a, const CUnicodeString& b) {
    if (a.GetLength() != b.GetLength())
        return false;
    return a.GetLength() == 0 || ZK::ucscmp(a, b) == 0;
}

bool operator==(const CUnicodeString& a, const unsigned short* b) {
    if (a.GetLength() != Length(b))
        return false;
    return a.GetLength() == 0 || ZK::ucscmp(a, b) == 0;
}

bool operator==(const unsigned short* a, const CUnicodeString& b) {
    return b == a;
}

bool operator==(const CUnicodeString& a, const char* b) {
    // Bytes against units, before any conversion.
    if (a.GetLength() != (b == nullptr ? 0 : std::strlen(b)))
        return false;
    return a.GetLength() == 0 || ZK::ucscmp(a, WideText(b)) == 0;
}

bool operator==(const char* a, const CUnicodeString& b) {
    return b == a;
}

bool operator<(const CUnicodeString& a, const CUnicodeString& b) {
    return Order(a, b) < 0;
}
bool operator<=(const CUnicodeString& a, const CUnicodeString& b) {
    return Order(a, b) <= 0;
}
bool operator>(const CUnicodeString& a, const CUnicodeString& b) {
    return Order(a, b) > 0;
}
bool operator>=(const CUnicodeString& a, const CUnicodeString& b) {
    return Order(a, b) >= 0;
}
bool operator<(const CUnicodeString& a, const unsigned short* b) {
    return Order(a, b) < 0;
}
bool operator<=(const CUnicodeString& a, const unsigned short* b) {
    return Order(a, b) <= 0;
}
bool operator>(const CUnicodeString& a, const unsigned short* b) {
    return Order(a, b) > 0;
}
bool operator>=(const CUnicodeString& a, const unsigned short* b) {
    return Order(a, b) >= 0;
}
bool operator<(const unsigned short* a, const CUnicodeString& b) {
    return Order(b, a) > 0;
}
bool operator<=(const unsigned short* a, const CUnicodeString& b) {
    return Order(b, a) >= 0;
}
bool operator>(const unsigned short* a, const CUnicodeString& b) {
    return Order(b, a) < 0;
}
bool operator>=(const unsigned short* a, const CUnicodeString& b) {
    return Order(b, a) <= 0;
}
bool operator<(const CUnicodeString& a, const char* b) {
    return Order(a, b) < 0;
}
bool operator<=(const CUnicodeString& a, const char* b) {
    return Order(a, b) <= 0;
}
bool operator>(const CUnicodeString& a, const char* b) {
    return Order(a, b) > 0;
}
bool operator>=(const CUnicodeString& a, const char* b) {
    return Order(a, b) >= 0;
}
bool operator<(const char* a, const CUnicodeString& b) {
    return Order(b, a) > 0;
}
bool operator<=(const char* a, const CUnicodeString& b) {
    return Order(b, a) >= 0;
}
bool operator>(const char* a, const CUnicodeString& b) {
    return Order(b, a) < 0;
}
bool operator>=(const char* a, const CUnicodeString& b) {
    return Order(b, a) <= 0;
}

CUnicodeString operator+(const CUnicodeString& a, const CUnicodeString& b) {
    CUnicodeString result(a);
    result += b;
    return result;
}

CUnicodeString operator+(const CUnicodeString& a, const char* b) {
    CUnicodeString result(a);
    result += b;
    return result;
}

CUnicodeString operator+(const CUnicodeString& a, const unsigned short* b) {
    CUnicodeString result(a);
    result += b;
    return result;
}

CUnicodeString operator+(const char* a, const CUnicodeString& b) {
    CUnicodeString result(a);
    result += b;
    return result;
}

CUnicodeString operator+(const unsigned short* a, const CUnicodeString& b) {
    CUnicodeString result(a);
    result += b;
    return result;
}

} // namespace vorn::base

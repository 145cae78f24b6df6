#include <vorn/base/String.h>
#include <vorn/base/StringBuffer.h>
#include <vorn/base/UnicodeString.h>

#include <cstring>

#include "platform/TextConvert.h"
#include "vorn/base/BufferBlock.h"

namespace vorn::base {

namespace {

constexpr const char* kSource = "vorn/base/StringBuffer";

unsigned int MinimumIncrement(unsigned int increment) {
    return increment < 8 ? 8 : increment;
}

int NarrowCount(const unsigned short* s) {
    return CHUnicode2ANSI(s, -1, nullptr, 0, 0, true, nullptr);
}

} // namespace

CStringBuffer::CStringBuffer(unsigned int increment)
    : m_text(nullptr), m_capacity(0), m_increment(MinimumIncrement(increment)) {}

CStringBuffer::CStringBuffer(unsigned int size, unsigned int increment)
    : m_text(nullptr), m_capacity(0), m_increment(increment < 9 ? 8 : increment) {
    if (size == 0)
        return;
    AllocBuffer(size);
    std::memset(m_text, 0, size);
}

CStringBuffer::CStringBuffer(const CStringBuffer& other)
    : m_text(nullptr), m_capacity(0), m_increment(other.m_increment) {
    if (other.IsEmpty())
        return;
    const unsigned int length = other.Measure();
    AllocBuffer(length + 1);
    std::memcpy(m_text, other.m_text, length);
    m_text[length] = '\0';
}

CStringBuffer::~CStringBuffer() {
    if (m_text != nullptr)
        ZK_free(m_text);
}

// ---- Blocks

void CStringBuffer::EnsureCapacity(unsigned int size) {
    detail::GrowBlock(m_text, m_capacity, size, m_increment, kSource, 297, true);
}

void CStringBuffer::AllocBuffer(unsigned int size) {
    detail::GrowBlock(m_text, m_capacity, size, m_increment, kSource, 357, false);
}

void CStringBuffer::EnsureCapacityForConversion(unsigned int bytes) {
    // The conversion fills `bytes` exactly and leaves the terminator to the room that the
    // rounding gives; when it gives none, one more increment is taken.
    const bool roomBehind = m_capacity > bytes || detail::RoundCapacity(bytes, m_increment) > bytes;
    EnsureCapacity(roomBehind ? bytes : bytes + 1);
}

void CStringBuffer::TrimToSize() {
    detail::TrimBlock(m_text, m_capacity, kSource, 328);
}

char* CStringBuffer::GetBuffer(unsigned int size) {
    EnsureCapacity(size);
    return m_text;
}

void CStringBuffer::SetCapacityIncrement(unsigned int increment) {
    m_increment = MinimumIncrement(increment);
}

unsigned int CStringBuffer::Measure() const {
    return m_text == nullptr ? 0 : detail::MeasureText(m_text, m_capacity);
}

unsigned int CStringBuffer::GetSize() const {
    return Measure();
}

void CStringBuffer::Empty() {
    if (m_text != nullptr && m_capacity > 0)
        m_text[0] = '\0';
}

// ---- Assignment

void CStringBuffer::AssignText(const char* s) {
    detail::AssignText(m_text, m_capacity, s, [this](unsigned int size) { EnsureCapacity(size); });
}

CStringBuffer& CStringBuffer::operator=(const CStringBuffer& s) {
    if (this == &s || s.IsEmpty())
        return *this;
    const unsigned int length = s.Measure();
    EnsureCapacity(length + 1);
    std::memcpy(m_text, s.m_text, length);
    m_text[length] = '\0';
    return *this;
}

CStringBuffer& CStringBuffer::operator=(const CString& s) {
    AssignText(s);
    return *this;
}

CStringBuffer& CStringBuffer::operator=(const char* s) {
    AssignText(s);
    return *this;
}

CStringBuffer& CStringBuffer::operator=(const unsigned short* s) {
    if (s == nullptr || *s == 0) {
        AssignText(nullptr);
        return *this;
    }
    const int count = NarrowCount(s);
    EnsureCapacity(static_cast<unsigned int>(count) + 1);
    CHUnicode2ANSI(s, -1, m_text, count, 0, true, nullptr);
    m_text[count] = '\0';
    return *this;
}

CStringBuffer& CStringBuffer::operator=(const CUnicodeString& s) {
    if (s.IsEmpty()) {
        AssignText(nullptr);
        return *this;
    }
    const int count = NarrowCount(s);
    EnsureCapacityForConversion(static_cast<unsigned int>(count));
    CHUnicode2ANSI(s, -1, m_text, count, 0, true, nullptr);
    m_text[count] = '\0';
    return *this;
}

// ---- Appending

void CStringBuffer::AppendText(const char* s) {
    detail::AppendText(m_text, m_capacity, s, [this](unsigned int size) { EnsureCapacity(size); });
}

CStringBuffer& CStringBuffer::operator+=(const CString& s) {
    AppendText(s);
    return *this;
}

CStringBuffer& CStringBuffer::operator+=(const char* s) {
    AppendText(s);
    return *this;
}

CStringBuffer& CStringBuffer::operator+=(char c) {
    const unsigned int length = Measure();
    EnsureCapacity(length + 2);
    m_text[length] = c;
    m_text[length + 1] = '\0';
    return *this;
}

void CStringBuffer::AppendWide(const unsigned short* s) {
    if (s == nullptr || *s == 0)
        return;
    const int count = NarrowCount(s);
    const unsigned int length = Measure();
    EnsureCapacityForConversion(length + static_cast<unsigned int>(count));
    CHUnicode2ANSI(s, -1, m_text + length, count, 0, true, nullptr);
    m_text[length + static_cast<unsigned int>(count)] = '\0';
}

CStringBuffer& CStringBuffer::operator+=(const CUnicodeString& s) {
    AppendWide(s);
    return *this;
}

CStringBuffer& CStringBuffer::operator+=(const unsigned short* s) {
    AppendWide(s);
    return *this;
}

} // namespace vorn::base

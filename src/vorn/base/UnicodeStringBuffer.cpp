#include <vorn/base/String.h>
#include <vorn/base/UnicodeString.h>
#include <vorn/base/UnicodeStringBuffer.h>

#include <cstring>

#include "platform/TextConvert.h"
#include "platform/UniText.h"
#include "vorn/base/BufferBlock.h"

namespace vorn::base {

namespace {

constexpr const char* kSource = "vorn/base/UnicodeStringBuffer";

unsigned int MinimumIncrement(unsigned int increment) {
    return increment < 8 ? 8 : increment;
}

// Units of `s` with its terminator.
unsigned int WideCount(const char* s) {
    return static_cast<unsigned int>(CHANSI2Unicode(s, -1, nullptr, 0, 0, nullptr));
}

} // namespace

CUnicodeStringBuffer::CUnicodeStringBuffer(unsigned int increment)
    : m_text(nullptr), m_capacity(0), m_increment(MinimumIncrement(increment)) {}

CUnicodeStringBuffer::CUnicodeStringBuffer(unsigned int size, unsigned int increment)
    : m_text(nullptr), m_capacity(0), m_increment(increment < 9 ? 8 : increment) {
    if (size == 0)
        return;
    AllocBuffer(size);
    // The block isn't cleared, but its first unit is: a text that never ends can't be read.
    m_text[0] = 0;
}

CUnicodeStringBuffer::CUnicodeStringBuffer(const CUnicodeStringBuffer& other)
    : m_text(nullptr), m_capacity(0), m_increment(other.m_increment) {
    if (other.IsEmpty())
        return;
    const unsigned int length = other.Measure();
    AllocBuffer(length + 1);
    std::memcpy(m_text, other.m_text, length * sizeof(unsigned short));
    m_text[length] = 0;
}

CUnicodeStringBuffer::~CUnicodeStringBuffer() {
    if (m_text != nullptr)
        ZK_free(m_text);
}

// ---- Blocks

void CUnicodeStringBuffer::EnsureCapacity(unsigned int size) {
    detail::GrowBlock(m_text, m_capacity, size, m_increment, kSource, 289, true);
}

void CUnicodeStringBuffer::AllocBuffer(unsigned int size) {
    detail::GrowBlock(m_text, m_capacity, size, m_increment, kSource, 348, false);
}

void CUnicodeStringBuffer::TrimToSize() {
    detail::TrimBlock(m_text, m_capacity, kSource, 319);
}

unsigned short* CUnicodeStringBuffer::GetBuffer(unsigned int size) {
    EnsureCapacity(size);
    return m_text;
}

CUnicodeStringBuffer::operator unsigned short*() {
    if (m_text == nullptr)
        EnsureCapacity(1);
    return m_text;
}

CUnicodeStringBuffer::operator const unsigned short*() const {
    return IsEmpty() ? ZK::EmptyUTF16 : m_text;
}

void CUnicodeStringBuffer::SetCapacityIncrement(unsigned int increment) {
    m_increment = MinimumIncrement(increment);
}

unsigned int CUnicodeStringBuffer::Measure() const {
    return m_text == nullptr ? 0 : detail::MeasureText(m_text, m_capacity);
}

unsigned int CUnicodeStringBuffer::GetSize() const {
    return Measure();
}

void CUnicodeStringBuffer::Empty() {
    if (m_text != nullptr && m_capacity > 0)
        m_text[0] = 0;
}

// ---- Assignment

void CUnicodeStringBuffer::AssignWide(const unsigned short* s) {
    detail::AssignText(m_text, m_capacity, s, [this](unsigned int size) { EnsureCapacity(size); });
}

CUnicodeStringBuffer& CUnicodeStringBuffer::operator=(const CUnicodeStringBuffer& s) {
    if (this == &s || s.IsEmpty())
        return *this;
    const unsigned int length = s.Measure();
    EnsureCapacity(length + 1);
    std::memcpy(m_text, s.m_text, length * sizeof(unsigned short));
    m_text[length] = 0;
    return *this;
}

CUnicodeStringBuffer& CUnicodeStringBuffer::operator=(const CUnicodeString& s) {
    AssignWide(s);
    return *this;
}

CUnicodeStringBuffer& CUnicodeStringBuffer::operator=(const unsigned short* s) {
    AssignWide(s);
    return *this;
}

CUnicodeStringBuffer& CUnicodeStringBuffer::operator=(const CString& s) {
    if (s.IsEmpty()) {
        Empty();
        return *this;
    }
    const unsigned int count = WideCount(s);
    EnsureCapacity(count);
    CHANSI2Unicode(s, -1, m_text, static_cast<int>(count), 0, nullptr);
    return *this;
}

CUnicodeStringBuffer& CUnicodeStringBuffer::operator=(const char* s) {
    if (s == nullptr || *s == '\0') {
        Empty();
        return *this;
    }
    const unsigned int count = WideCount(s);
    EnsureCapacity(count + 1);
    CHANSI2Unicode(s, -1, m_text, static_cast<int>(count + 1), 0, nullptr);
    return *this;
}

// ---- Appending

void CUnicodeStringBuffer::AppendWide(const unsigned short* s) {
    detail::AppendText(m_text, m_capacity, s, [this](unsigned int size) { EnsureCapacity(size); });
}

CUnicodeStringBuffer& CUnicodeStringBuffer::operator+=(const CUnicodeString& s) {
    AppendWide(s);
    return *this;
}

CUnicodeStringBuffer& CUnicodeStringBuffer::operator+=(const unsigned short* s) {
    AppendWide(s);
    return *this;
}

CUnicodeStringBuffer& CUnicodeStringBuffer::operator+=(const CString& s) {
    if (s.IsEmpty())
        return *this;
    const unsigned int count = WideCount(s);
    const unsigned int length = Measure();
    EnsureCapacity(count + 1 + length);
    CHANSI2Unicode(s, -1, m_text + length, static_cast<int>(count), 0, nullptr);
    return *this;
}

CUnicodeStringBuffer& CUnicodeStringBuffer::operator+=(const char* s) {
    if (s == nullptr || *s == '\0')
        return *this;
    const unsigned int count = WideCount(s);
    const unsigned int length = Measure();
    EnsureCapacity(length + count);
    CHANSI2Unicode(s, -1, m_text + length, static_cast<int>(count), 0, nullptr);
    return *this;
}

CUnicodeStringBuffer& CUnicodeStringBuffer::operator+=(unsigned short c) {
    const unsigned int length = Measure();
    EnsureCapacity(length + 2);
    m_text[length] = c;
    m_text[length + 1] = 0;
    return *this;
}

} // namespace vorn::base

// The UTF-8 conversions of CUnicodeString. Both keep their own rules rather than the platform's
// converters: decoding stops at the first flaw, and encoding writes a surrogate pair as '?'.
#include <vorn/base/NullReferenceException.h>
#include <vorn/base/String.h>
#include <vorn/base/UnicodeString.h>

#include <cstring>

#include "platform/Utf16.h"
#include "platform/Utf8.h"

namespace vorn::base {

namespace {

bool IsContinuation(unsigned char b) {
    return (b & 0xC0) == 0x80;
}

using vorn::platform::utf16::IsHighSurrogate;

// Decodes `bytes` of `text` into `target`, or only counts with a null target; returns the units.
// Every read is checked against `bytes` first.
unsigned int DecodeUTF8(const unsigned char* text, long long bytes, unsigned short* target) {
    unsigned int units = 0;
    auto put = [&](unsigned int unit) {
        if (target != nullptr)
            target[units] = static_cast<unsigned short>(unit);
        ++units;
    };
    for (long long i = 0; i < bytes;) {
        const unsigned int b = text[i];
        if (b < 0x80) {
            put(b);
            i += 1;
        } else if ((b & 0xE0) == 0xC0) {
            if (i + 1 >= bytes || !IsContinuation(text[i + 1]))
                break;
            put(((b & 0x1F) << 6) | (text[i + 1] & 0x3F));
            i += 2;
        } else if ((b & 0xF0) == 0xE0) {
            if (i + 2 >= bytes || !IsContinuation(text[i + 1]) || !IsContinuation(text[i + 2]))
                break;
            put(((b & 0x0F) << 12) | ((text[i + 1] & 0x3F) << 6) | (text[i + 2] & 0x3F));
            i += 3;
        } else if ((b & 0xF8) == 0xF0) {
            if (i + 3 >= bytes || !IsContinuation(text[i + 1]) || !IsContinuation(text[i + 2]) ||
                !IsContinuation(text[i + 3]))
                break;
            const int v = static_cast<int>(((b & 0x07) << 18) | ((text[i + 1] & 0x3F) << 12) |
                                           ((text[i + 2] & 0x3F) << 6) | (text[i + 3] & 0x3F));
            // Deliberate: overlong forms aren't refused; below 0x10000 the division truncates to 0.
            const int w = v - 0x10000;
            put(static_cast<unsigned int>(0xD800 + w / 1024));
            put(static_cast<unsigned int>(0xDC00 + w % 1024));
            i += 4;
        } else {
            break;
        }
    }
    return units;
}

// The bytes that `length` units of `text` take in UTF-8, without the terminator.
unsigned int CountUTF8(const unsigned short* text, unsigned int length) {
    unsigned int count = 0;
    for (unsigned int i = 0; i < length;) {
        const unsigned short c = text[i];
        if (IsHighSurrogate(c)) {
            count += 1;
            if (i + 1 < length)
                ++i;
        } else {
            count += static_cast<unsigned int>(vorn::platform::utf8::EncodedLength(c));
        }
        ++i;
    }
    return count;
}

// Writes the UTF-8 of `length` units of `text` and a terminator into `target` of `size` bytes,
// which holds the count of CountUTF8 and the terminator.
void EncodeUTF8(const unsigned short* text, unsigned int length, char* target, unsigned int size) {
    unsigned int at = 0;
    for (unsigned int i = 0; i < length; ++i) {
        const unsigned short c = text[i];
        if (!IsHighSurrogate(c)) {
            // A lone low surrogate takes the three bytes of its value.
            at += static_cast<unsigned int>(vorn::platform::utf8::Encode(c, target + at));
        } else {
            target[at++] = '?';
            if (i + 1 < length) {
                ++i;
            } else if (at < size - 1) {
                // The second '?' of a high surrogate that ends the text was never counted: it is
                // written only where the terminator still fits behind it.
                target[at++] = '?';
            }
        }
    }
    target[at] = '\0';
}

} // namespace

void CUnicodeString::FromUTF8(const char* text, int length) {
    // Reading through a null text is what the platform would stop with a null reference.
    if (text == nullptr)
        throw CNullReferenceException("vorn/base/UnicodeString", __LINE__);
    const long long bytes = length == -1 ? static_cast<long long>(std::strlen(text)) : length;
    const auto* source = reinterpret_cast<const unsigned char*>(text);
    const unsigned int units = DecodeUTF8(source, bytes, nullptr);
    AllocBuffer(units + 1);
    DecodeUTF8(source, bytes, m_pchData);
    m_pchData[units] = 0;
    GetData()->length = units;
}

int CUnicodeString::ToUTF8(char* target, int size) const {
    const unsigned int length = GetLength();
    if (length == 0)
        return 0;
    const unsigned int count = CountUTF8(m_pchData, length);
    if (size == -1)
        return static_cast<int>(count + 1);
    // No target is no room.
    if (size < 0 || static_cast<unsigned int>(size) < count + 1 || target == nullptr)
        return -1;
    EncodeUTF8(m_pchData, length, target, static_cast<unsigned int>(size));
    return static_cast<int>(count);
}

CString CUnicodeString::ToUTF8() const {
    if (m_pchData == nullptr)
        return CString();
    if (GetLength() == 0)
        return CString("");
    const int size = ToUTF8(nullptr, -1);
    // A high surrogate at the end writes one byte more than it counts: the buffer holds it.
    const int room = IsHighSurrogate(m_pchData[GetLength() - 1]) ? size + 1 : size;
    CString result;
    result.AllocBuffer(static_cast<unsigned int>(room));
    // The fill of ToUTF8(buffer, room), without counting the text a second time.
    EncodeUTF8(m_pchData, GetLength(), result.m_pchData, static_cast<unsigned int>(room));
    result.GetData()->length = static_cast<unsigned int>(std::strlen(result.m_pchData));
    return result;
}

} // namespace vorn::base

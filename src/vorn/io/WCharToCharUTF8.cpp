#include <vorn/base/NullReferenceException.h>
#include <vorn/io/WCharToCharUTF8.h>

#include "platform/Utf16.h"
#include "platform/Utf8.h"

namespace vorn::io {

namespace {

const unsigned short kIdle = 0x30;

using vorn::platform::utf16::IsHighSurrogate;

} // namespace

CWCharToCharUTF8::CWCharToCharUTF8() : CWCharToCharConverter("UTF-8"), m_pendingSurrogate(kIdle) {}

int CWCharToCharUTF8::Convert(const unsigned short* source, unsigned int sourceOffset,
                              unsigned int sourceCount, char* target, unsigned int targetOffset,
                              unsigned int targetCount) {
    // A null block with a length would be read or written through null: the guard's exception.
    if ((source == nullptr && sourceCount != 0) || (target == nullptr && targetCount != 0))
        throw vorn::base::CNullReferenceException("vorn/io/WCharToCharUTF8", __LINE__);
    const unsigned long long end = static_cast<unsigned long long>(sourceOffset) + sourceCount;
    const unsigned long long limit = static_cast<unsigned long long>(targetOffset) + targetCount;
    unsigned long long i = sourceOffset;
    unsigned long long o = targetOffset;
    char bytes[4];
    std::size_t n;

    if (m_pendingSurrogate != kIdle) {
        // An empty range has no unit to pair with, where the unit behind it would be read.
        const unsigned short first = sourceCount != 0 ? source[sourceOffset] : 0;
        if (vorn::platform::utf16::IsLowSurrogate(first)) {
            const char32_t c = vorn::platform::utf16::Combine(m_pendingSurrogate, first);
            m_pendingSurrogate = kIdle;
            ++i;
            n = vorn::platform::utf8::Encode(static_cast<std::int32_t>(c), bytes);
        } else {
            // The pending half stays: the next call starts with a '?' again.
            bytes[0] = '?';
            n = 1;
        }
        if (o + n > limit)
            return -1;
        for (std::size_t k = 0; k < n; ++k)
            target[o++] = bytes[k];
    }

    while (i < end) {
        const unsigned short u = source[i];
        if (u < 0x80) {
            // ASCII, most of any markup, goes straight across.
            if (o >= limit)
                return -1;
            target[o++] = static_cast<char>(u);
            ++i;
            continue;
        }
        if (!IsHighSurrogate(u)) {
            // One to three bytes; a lone low surrogate takes the three of its value.
            n = vorn::platform::utf8::Encode(u, bytes);
            ++i;
        } else if (i + 1 >= end) {
            m_pendingSurrogate = u;
            break;
        } else {
            // Deliberate: the unit after a high surrogate is swallowed, whatever it is, and the
            // pair becomes one '?'.
            bytes[0] = '?';
            n = 1;
            i += 2;
        }
        if (o + n > limit)
            return -1;
        for (std::size_t k = 0; k < n; ++k)
            target[o++] = bytes[k];
    }
    return static_cast<int>(o - targetOffset);
}

void CWCharToCharUTF8::Reset() {
    m_pendingSurrogate = kIdle;
}

void CWCharToCharUTF8::GetByteOrderMark(char* target, unsigned int* size) {
    if (size == nullptr)
        throw vorn::base::CNullReferenceException("vorn/io/WCharToCharUTF8", __LINE__);
    if (target == nullptr) {
        *size = 3;
        return;
    }
    if (*size < 3) {
        *size = 0;
        return;
    }
    target[0] = static_cast<char>(0xEF);
    target[1] = static_cast<char>(0xBB);
    target[2] = static_cast<char>(0xBF);
    *size = 3;
}

} // namespace vorn::io

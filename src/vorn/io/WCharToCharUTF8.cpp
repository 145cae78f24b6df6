#include <vorn/base/NullReferenceException.h>
#include <vorn/io/WCharToCharUTF8.h>

namespace vorn::io {

namespace {

const unsigned short kIdle = 0x30;

bool IsHighSurrogate(unsigned short u) {
    return u >= 0xD800 && u <= 0xDBFF;
}

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
    unsigned char bytes[4];
    unsigned int n;

    if (m_pendingSurrogate != kIdle) {
        // An empty range has no unit to pair with, where the unit behind it would be read.
        const unsigned short first = sourceCount != 0 ? source[sourceOffset] : 0;
        if (first >= 0xDC00 && first <= 0xDFFF) {
            const unsigned int c =
                (static_cast<unsigned int>(m_pendingSurrogate) << 10) + first - 0x35FDC00u;
            m_pendingSurrogate = kIdle;
            ++i;
            bytes[0] = static_cast<unsigned char>(0xF0 | ((c >> 18) & 7));
            bytes[1] = static_cast<unsigned char>(0x80 | ((c >> 12) & 0x3F));
            bytes[2] = static_cast<unsigned char>(0x80 | ((c >> 6) & 0x3F));
            bytes[3] = static_cast<unsigned char>(0x80 | (c & 0x3F));
            n = 4;
        } else {
            // The pending half stays: the next call starts with a '?' again.
            bytes[0] = '?';
            n = 1;
        }
        if (o + n > limit)
            return -1;
        for (unsigned int k = 0; k < n; ++k)
            target[o++] = static_cast<char>(bytes[k]);
    }

    while (i < end) {
        const unsigned short u = source[i];
        if (u < 0x80) {
            bytes[0] = static_cast<unsigned char>(u);
            n = 1;
            ++i;
        } else if (u < 0x800) {
            bytes[0] = static_cast<unsigned char>(0xC0 | ((u >> 6) & 0x1F));
            bytes[1] = static_cast<unsigned char>(0x80 | (u & 0x3F));
            n = 2;
            ++i;
        } else if (IsHighSurrogate(u) && i + 1 >= end) {
            m_pendingSurrogate = u;
            break;
        } else if (IsHighSurrogate(u)) {
            // The unit after a high surrogate is swallowed, whatever it is.
            bytes[0] = '?';
            n = 1;
            i += 2;
        } else {
            bytes[0] = static_cast<unsigned char>(0xE0 | ((u >> 12) & 0xF));
            bytes[1] = static_cast<unsigned char>(0x80 | ((u >> 6) & 0x3F));
            bytes[2] = static_cast<unsigned char>(0x80 | (u & 0x3F));
            n = 3;
            ++i;
        }
        if (o + n > limit)
            return -1;
        for (unsigned int k = 0; k < n; ++k)
            target[o++] = static_cast<char>(bytes[k]);
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

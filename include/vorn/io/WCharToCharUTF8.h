// CWCharToCharUTF8: the converter registered as "UTF-8". A supplementary character becomes four
// bytes only when its halves come in different calls; within one call a pair becomes one '?'.
#pragma once

#include <vorn/io/WCharToCharConverter.h>

namespace vorn::io {

class VORN_API CWCharToCharUTF8 : public CWCharToCharConverter {
public:
    CWCharToCharUTF8();

    // A high surrogate that ends the range is kept for the next call. While one is kept, a call
    // starts with a '?' unless its first unit is the low half.
    int Convert(const unsigned short* source, unsigned int sourceOffset, unsigned int sourceCount,
                char* target, unsigned int targetOffset, unsigned int targetCount) override;
    void Reset() override;
    // EF BB BF.
    void GetByteOrderMark(char* target, unsigned int* size) override;

private:
    // 0x30 when idle, else the high surrogate carried over.
    unsigned short m_pendingSurrogate;
};

} // namespace vorn::io

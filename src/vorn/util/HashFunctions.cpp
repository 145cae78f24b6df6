#include <vorn/base/String.h>
#include <vorn/base/UnicodeString.h>
#include <vorn/util/HashFunctions.h>

#include <cstring>

#include "vorn/base/BufferBlock.h"

namespace vorn::util {

namespace {

// The one rule behind every text hash; `unit(i)` gives the unit at `i` as unsigned.
template <typename Unit> int HashRule(unsigned int length, Unit unit) {
    unsigned int h = 0;
    if (length < 16) {
        for (unsigned int i = 0; i < length; ++i)
            h = h * 37u + unit(i);
    } else {
        const unsigned int step = length >> 3;
        for (unsigned int i = 0; i < length; i += step)
            h = h * 39u + unit(i);
    }
    return static_cast<int>(h);
}

} // namespace

int GetStringHashCode(const char* text) {
    if (text == nullptr)
        return 0;
    const auto* bytes = reinterpret_cast<const unsigned char*>(text);
    return HashRule(static_cast<unsigned int>(std::strlen(text)),
                    [bytes](unsigned int i) -> unsigned int { return bytes[i]; });
}

int GetCStringHashCode(const vorn::base::CString& text) {
    const unsigned int length = text.GetLength();
    const char* chars = text;
    const auto* bytes = reinterpret_cast<const unsigned char*>(chars);
    // CString(s, n) can claim more length than it holds text: the bytes behind the terminator
    // count as 0, so the hash never reads past what was written.
    const unsigned int written = vorn::base::detail::MeasureText(chars, length);
    return HashRule(length, [bytes, written](unsigned int i) -> unsigned int {
        return i < written ? bytes[i] : 0u;
    });
}

int GetCUnicodeStringHashCode(const vorn::base::CUnicodeString& text) {
    const unsigned short* units = text;
    return HashRule(text.GetLength(), [units](unsigned int i) -> unsigned int { return units[i]; });
}

int GetLongHashCode(const int& value) {
    return value;
}

int GetUnsignedLongHashCode(const unsigned int& value) {
    return static_cast<int>(value);
}

} // namespace vorn::util

#include <vorn/base/String.h>
#include <vorn/base/UnicodeString.h>
#include <vorn/util/HashFunctions.h>

#include "vorn/base/BufferBlock.h"
#include "vorn/base/TextHash.h"

namespace vorn::util {

using vorn::base::detail::HashUnits;

int GetStringHashCode(const char* text) {
    return vorn::base::detail::HashText(text);
}

int GetCStringHashCode(const vorn::base::CString& text) {
    const unsigned int length = text.GetLength();
    const char* chars = text;
    const auto* bytes = reinterpret_cast<const unsigned char*>(chars);
    // CString(s, n) can claim more length than it holds text: the bytes behind the terminator
    // count as 0, so the hash never reads past what was written.
    const unsigned int written = vorn::base::detail::MeasureText(chars, length);
    return HashUnits(length, [bytes, written](unsigned int i) -> unsigned int {
        return i < written ? bytes[i] : 0u;
    });
}

int GetCUnicodeStringHashCode(const vorn::base::CUnicodeString& text) {
    const unsigned short* units = text;
    return HashUnits(text.GetLength(),
                     [units](unsigned int i) -> unsigned int { return units[i]; });
}

int GetLongHashCode(const int& value) {
    return value;
}

int GetUnsignedLongHashCode(const unsigned int& value) {
    return static_cast<int>(value);
}

} // namespace vorn::util

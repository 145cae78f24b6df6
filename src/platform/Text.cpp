#include "platform/Text.h"

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <cstring>

namespace {

std::size_t Extent(const char* text, int length) {
    if (text == nullptr)
        return 0;
    if (length < 0)
        return std::strlen(text);
    // A counted text still ends at an embedded terminator.
    const void* end = std::memchr(text, 0, static_cast<std::size_t>(length));
    return end != nullptr ? static_cast<std::size_t>(static_cast<const char*>(end) - text)
                          : static_cast<std::size_t>(length);
}

int CompareBytes(const char* a, std::size_t na, const char* b, std::size_t nb) {
    std::size_t n = na < nb ? na : nb;
    int r = n == 0 ? 0 : std::memcmp(a, b, n);
    if (r != 0)
        return r < 0 ? -1 : 1;
    return na < nb ? -1 : (na > nb ? 1 : 0);
}

// Next code point, folded; an invalid byte stands for itself above the code point range so that
// it orders after all text and never equals a character.
UChar32 NextFolded(const char* s, int32_t& i, int32_t n) {
    UChar32 c;
    int32_t start = i;
    U8_NEXT(reinterpret_cast<const uint8_t*>(s), i, n, c);
    if (c < 0)
        return 0x110000 + static_cast<unsigned char>(s[start]);
    return u_foldCase(c, U_FOLD_CASE_DEFAULT);
}

int CompareFolded(const char* a, std::size_t na, const char* b, std::size_t nb) {
    int32_t i = 0, j = 0;
    const int32_t ia = static_cast<int32_t>(na), jb = static_cast<int32_t>(nb);
    while (i < ia && j < jb) {
        UChar32 ca = NextFolded(a, i, ia);
        UChar32 cb = NextFolded(b, j, jb);
        if (ca != cb)
            return ca < cb ? -1 : 1;
    }
    return i < ia ? 1 : (j < jb ? -1 : 0);
}

} // namespace

int CHCompareTexts(const char* a, int lengthA, const char* b, int lengthB, int caseSensitive,
                   ZKCharCode /*charCode*/) {
    std::size_t na = Extent(a, lengthA);
    std::size_t nb = Extent(b, lengthB);
    return caseSensitive != 0 ? CompareBytes(a, na, b, nb) : CompareFolded(a, na, b, nb);
}

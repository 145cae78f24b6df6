#include "platform/Text.h"

#include <unicode/uchar.h>

#include <cstdint>
#include <cstring>

#include "platform/Utf8.h"

using vorn::platform::utf8::Decode;
using vorn::platform::utf8::kInvalid;

namespace {

constexpr std::size_t kUnbounded = static_cast<std::size_t>(-1);

std::size_t Extent(const char* text, int length) {
    if (text == nullptr)
        return 0;
    if (length < 0)
        return std::strlen(text);
    const void* end = std::memchr(text, 0, static_cast<std::size_t>(length));
    return end != nullptr ? static_cast<std::size_t>(static_cast<const char*>(end) - text)
                          : static_cast<std::size_t>(length);
}

std::int32_t Folded(std::int32_t c) {
    return c >= kInvalid ? c : static_cast<std::int32_t>(u_foldCase(c, U_FOLD_CASE_DEFAULT));
}

int CompareBytes(const char* a, std::size_t na, const char* b, std::size_t nb) {
    std::size_t n = na < nb ? na : nb;
    int r = n == 0 ? 0 : std::memcmp(a, b, n);
    if (r != 0)
        return r < 0 ? -1 : 1;
    return na < nb ? -1 : (na > nb ? 1 : 0);
}

int CompareFolded(const char* a, std::size_t na, const char* b, std::size_t nb) {
    std::size_t i = 0, j = 0;
    while (i < na && j < nb) {
        std::int32_t ca, cb;
        i += Decode(a + i, na - i, ca);
        j += Decode(b + j, nb - j, cb);
        ca = Folded(ca);
        cb = Folded(cb);
        if (ca != cb)
            return ca < cb ? -1 : 1;
    }
    return i < na ? 1 : (j < nb ? -1 : 0);
}

// Whether the characters of `pattern` follow in `text` from `i` on.
bool MatchesAt(const char* text, std::size_t i, std::size_t n, const char* pattern, std::size_t m,
               bool fold) {
    std::size_t j = 0;
    while (j < m) {
        if (i >= n)
            return false;
        std::int32_t ct, cp;
        i += Decode(text + i, n - i, ct);
        j += Decode(pattern + j, m - j, cp);
        if (fold ? Folded(ct) != Folded(cp) : ct != cp)
            return false;
    }
    return true;
}

// The character at `character`, or -1 for a null pointer or a terminator.
std::int32_t CharacterAt(const char* character) {
    if (character == nullptr || *character == '\0')
        return -1;
    std::int32_t c;
    Decode(character, kUnbounded, c);
    return c;
}

char* MapCase(char* text, int length, UChar32 (*map)(UChar32)) {
    std::size_t n = Extent(text, length);
    for (std::size_t i = 0; i < n;) {
        std::int32_t c;
        std::size_t k = Decode(text + i, n - i, c);
        if (c < kInvalid) {
            std::int32_t mapped = map(c);
            if (mapped != c && vorn::platform::utf8::EncodedLength(mapped) == k)
                vorn::platform::utf8::Encode(mapped, text + i);
        }
        i += k;
    }
    return text;
}

} // namespace

int CHCompareTexts(const char* a, int lengthA, const char* b, int lengthB, int caseSensitive,
                   ZKCharCode /*charCode*/) {
    std::size_t na = Extent(a, lengthA);
    std::size_t nb = Extent(b, lengthB);
    return caseSensitive != 0 ? CompareBytes(a, na, b, nb) : CompareFolded(a, na, b, nb);
}

const char* CHSearchSubstring(const char* pattern, const char* text, int length, int caseSensitive,
                              ZKCharCode /*charCode*/) {
    if (text == nullptr)
        return nullptr;
    std::size_t m = Extent(pattern, -1);
    if (m == 0)
        return text;
    std::size_t n = Extent(text, length);
    bool fold = caseSensitive == 0;
    for (std::size_t i = 0; i < n;) {
        if (MatchesAt(text, i, n, pattern, m, fold))
            return text + i;
        std::int32_t c;
        i += Decode(text + i, n - i, c);
    }
    return nullptr;
}

const char* CHSearchCharLeft(const char* character, const char* text, int length,
                             ZKCharCode /*charCode*/) {
    std::int32_t wanted = CharacterAt(character);
    if (wanted < 0)
        return nullptr;
    std::size_t n = Extent(text, length);
    for (std::size_t i = 0; i < n;) {
        std::int32_t c;
        std::size_t k = Decode(text + i, n - i, c);
        if (c == wanted)
            return text + i;
        i += k;
    }
    return nullptr;
}

const char* CHSearchCharRight(const char* character, const char* text, int length,
                              ZKCharCode /*charCode*/) {
    std::int32_t wanted = CharacterAt(character);
    if (wanted < 0)
        return nullptr;
    std::size_t n = Extent(text, length);
    const char* last = nullptr;
    for (std::size_t i = 0; i < n;) {
        std::int32_t c;
        std::size_t k = Decode(text + i, n - i, c);
        if (c == wanted)
            last = text + i;
        i += k;
    }
    return last;
}

const char* CHGetNextCharPtr(const char* pointer, ZKCharCode /*charCode*/) {
    if (pointer == nullptr)
        return nullptr;
    std::int32_t c;
    return pointer + Decode(pointer, kUnbounded, c);
}

char* CHCopyC(const char* source, char* target) {
    std::memmove(target, source, std::strlen(source) + 1);
    return target;
}

int CHTruncate(const char* source, char* target, int size, ZKCharCode /*charCode*/) {
    if (target == nullptr || size <= 0)
        return 0;
    const std::size_t room = static_cast<std::size_t>(size) - 1;
    std::size_t n = 0;
    if (source != nullptr) {
        while (source[n] != '\0') {
            std::int32_t c;
            std::size_t k = Decode(source + n, kUnbounded, c);
            if (n + k > room)
                break;
            n += k;
        }
        std::memmove(target, source, n);
    }
    target[n] = '\0';
    return static_cast<int>(n);
}

char* CHtoUpper(char* text, int length, ZKCharCode /*charCode*/) {
    return MapCase(text, length, &u_toupper);
}

char* CHtoLower(char* text, int length, ZKCharCode /*charCode*/) {
    return MapCase(text, length, &u_tolower);
}

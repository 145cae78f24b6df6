#include "platform/UniText.h"

#include <unicode/uchar.h>

namespace {

const unsigned short kEmpty[1] = {0};

// A simple mapping that leaves the 16-bit range can't be stored in the unit: keep the unit.
unsigned short Keep16(unsigned short unit, UChar32 mapped) {
    return mapped <= 0xFFFF ? static_cast<unsigned short>(mapped) : unit;
}

unsigned short Upper(unsigned short c) {
    if (c < 0x80)
        return c >= 'a' && c <= 'z' ? static_cast<unsigned short>(c - 32) : c;
    return Keep16(c, u_toupper(c));
}

unsigned short Lower(unsigned short c) {
    if (c < 0x80)
        return c >= 'A' && c <= 'Z' ? static_cast<unsigned short>(c + 32) : c;
    return Keep16(c, u_tolower(c));
}

unsigned short Fold(unsigned short c) {
    if (c < 0x80)
        return c >= 'A' && c <= 'Z' ? static_cast<unsigned short>(c + 32) : c;
    return Keep16(c, u_foldCase(c, U_FOLD_CASE_DEFAULT));
}

template <typename Map>
int CompareUnits(const unsigned short* a, const unsigned short* b, std::size_t count, Map map) {
    for (; count > 0; --count, ++a, ++b) {
        int ca = map(*a), cb = map(*b);
        if (ca != cb)
            return ca - cb;
        if (ca == 0)
            return 0;
    }
    return 0;
}

unsigned short Same(unsigned short c) {
    return c;
}

} // namespace

namespace ZK {

const unsigned short* const EmptyUTF16 = kEmpty;

std::size_t ucslen(const unsigned short* text) {
    const unsigned short* p = text;
    while (*p != 0)
        ++p;
    return static_cast<std::size_t>(p - text);
}

unsigned short* ucscpy(unsigned short* target, const unsigned short* source) {
    unsigned short* t = target;
    while ((*t++ = *source++) != 0) {
    }
    return target;
}

unsigned short* ucsncpy(unsigned short* target, const unsigned short* source, std::size_t count) {
    std::size_t i = 0;
    for (; i < count && source[i] != 0; ++i)
        target[i] = source[i];
    for (; i < count; ++i)
        target[i] = 0;
    return target;
}

unsigned short* ucscat(unsigned short* target, const unsigned short* source) {
    ucscpy(target + ucslen(target), source);
    return target;
}

int ucscmp(const unsigned short* a, const unsigned short* b) {
    return CompareUnits(a, b, static_cast<std::size_t>(-1), Same);
}

int ucsicmp(const unsigned short* a, const unsigned short* b) {
    return CompareUnits(a, b, static_cast<std::size_t>(-1), Fold);
}

int ucsncmp(const unsigned short* a, const unsigned short* b, std::size_t count) {
    return CompareUnits(a, b, count, Same);
}

int ucsnicmp(const unsigned short* a, const unsigned short* b, std::size_t count) {
    return CompareUnits(a, b, count, Fold);
}

const unsigned short* ucschr(const unsigned short* text, unsigned short c) {
    for (;; ++text) {
        if (*text == c)
            return text;
        if (*text == 0)
            return nullptr;
    }
}

unsigned short* ucschr(unsigned short* text, unsigned short c) {
    return const_cast<unsigned short*>(ucschr(static_cast<const unsigned short*>(text), c));
}

const unsigned short* ucsrchr(const unsigned short* text, unsigned short c) {
    const unsigned short* found = nullptr;
    for (;; ++text) {
        if (*text == c)
            found = text;
        if (*text == 0)
            return found;
    }
}

unsigned short* ucsrchr(unsigned short* text, unsigned short c) {
    return const_cast<unsigned short*>(ucsrchr(static_cast<const unsigned short*>(text), c));
}

const unsigned short* ucsstr(const unsigned short* text, const unsigned short* needle) {
    if (*needle == 0)
        return text;
    for (; *text != 0; ++text) {
        if (*text != *needle)
            continue;
        std::size_t i = 1;
        while (needle[i] != 0 && text[i] == needle[i])
            ++i;
        if (needle[i] == 0)
            return text;
    }
    return nullptr;
}

unsigned short* ucsstr(unsigned short* text, const unsigned short* needle) {
    return const_cast<unsigned short*>(ucsstr(static_cast<const unsigned short*>(text), needle));
}

unsigned short* ucsupr(unsigned short* text) {
    for (unsigned short* p = text; *p != 0; ++p)
        *p = Upper(*p);
    return text;
}

unsigned short* ucslwr(unsigned short* text) {
    for (unsigned short* p = text; *p != 0; ++p)
        *p = Lower(*p);
    return text;
}

unsigned short* ucsrev(unsigned short* text) {
    std::size_t n = ucslen(text);
    for (std::size_t i = 0, j = n; i + 1 < j; ++i, --j) {
        unsigned short t = text[i];
        text[i] = text[j - 1];
        text[j - 1] = t;
    }
    return text;
}

int isuspace(unsigned int c) {
    return c <= 0xFFFF && u_isUWhiteSpace(static_cast<UChar32>(c));
}

int isudigit(unsigned int c) {
    return c >= '0' && c <= '9';
}

} // namespace ZK

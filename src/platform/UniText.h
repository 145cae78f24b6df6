// UTF-16 text functions of the platform layer: the standard wide-character functions over 16-bit
// units. They know nothing of surrogates: each unit is a character, and order is by unit value.
// Case goes through ICU's simple mappings one unit at a time; a unit whose mapping would leave
// the 16-bit range (and every surrogate) stays as it is.
#pragma once

#include <cstddef>

namespace ZK {

// A stable empty text: one zero unit.
extern const unsigned short* const EmptyUTF16;

std::size_t ucslen(const unsigned short* text);
unsigned short* ucscpy(unsigned short* target, const unsigned short* source);
// Copies at most `count` units and, as wcsncpy, fills the rest of `count` with zeros; the target
// is not terminated when the source is `count` units or longer.
unsigned short* ucsncpy(unsigned short* target, const unsigned short* source, std::size_t count);
unsigned short* ucscat(unsigned short* target, const unsigned short* source);

// Negative, zero or positive as wcscmp; the i forms compare simple case folds.
int ucscmp(const unsigned short* a, const unsigned short* b);
int ucsicmp(const unsigned short* a, const unsigned short* b);
int ucsncmp(const unsigned short* a, const unsigned short* b, std::size_t count);
int ucsnicmp(const unsigned short* a, const unsigned short* b, std::size_t count);

// Searching for 0 finds the terminator, as wcschr does.
const unsigned short* ucschr(const unsigned short* text, unsigned short c);
unsigned short* ucschr(unsigned short* text, unsigned short c);
const unsigned short* ucsrchr(const unsigned short* text, unsigned short c);
unsigned short* ucsrchr(unsigned short* text, unsigned short c);
// An empty needle is found at the start.
const unsigned short* ucsstr(const unsigned short* text, const unsigned short* needle);
unsigned short* ucsstr(unsigned short* text, const unsigned short* needle);

// In place; each returns `text`.
unsigned short* ucsupr(unsigned short* text);
unsigned short* ucslwr(unsigned short* text);
unsigned short* ucsrev(unsigned short* text);

// Non-zero for the Unicode white space units (ICU's White_Space property). Values above 0xFFFF,
// such as a reader's end-of-stream mark, are no units and answer 0.
int isuspace(unsigned int c);
// Non-zero for '0'..'9' only: callers parse numbers with it, and other scripts' digits would pass
// a check that the number parsers then reject.
int isudigit(unsigned int c);

} // namespace ZK

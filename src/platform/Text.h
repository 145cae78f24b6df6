// Narrow text services of the platform layer. The default character set (0) is UTF-8, read as
// platform/Utf8.h says. A length of -1 means up to the terminator; a counted text still ends at an
// embedded terminator. `caseSensitive` is 1 for an exact match and 0 to ignore case.
#pragma once

#include "platform/UniString.h"

// Orders by bytes taken as unsigned (which is code point order for UTF-8); ignoring case, by the
// ICU simple case folds of the characters, an invalid byte after all characters. Negative, zero or
// positive, as strcmp.
int CHCompareTexts(const char* a, int lengthA, const char* b, int lengthB, int caseSensitive,
                   ZKCharCode charCode);

// The first place in `text` where the characters of `pattern` begin, or null. A match starts on a
// character and covers whole characters; an empty pattern matches at `text`.
const char* CHSearchSubstring(const char* pattern, const char* text, int length, int caseSensitive,
                              ZKCharCode charCode);

// The first (Left) or last (Right) character of `text` equal to the one character at `character`,
// or null. The terminator is never found.
const char* CHSearchCharLeft(const char* character, const char* text, int length,
                             ZKCharCode charCode);
const char* CHSearchCharRight(const char* character, const char* text, int length,
                              ZKCharCode charCode);

// The character behind the one at `pointer`; a terminator counts as a character of one byte.
const char* CHGetNextCharPtr(const char* pointer, ZKCharCode charCode);

// Copies `source` with its terminator; the two may overlap. Returns `target`.
char* CHCopyC(const char* source, char* target);

// Copies whole characters of `source` while they and a terminator fit in `size` bytes, then the
// terminator. Returns the bytes copied without the terminator; nothing is written for a size of
// 0. The two may overlap when `target` lies before `source`.
int CHTruncate(const char* source, char* target, int size, ZKCharCode charCode);

// Maps each character in place by ICU's simple case mapping, leaving a character whose mapping
// would take another number of bytes. Returns `text`.
char* CHtoUpper(char* text, int length, ZKCharCode charCode);
char* CHtoLower(char* text, int length, ZKCharCode charCode);

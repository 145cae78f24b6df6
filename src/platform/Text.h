// Narrow text services of the platform layer. The default character set (0) is UTF-8: ordering is
// by code point, which for UTF-8 is the order of the bytes taken as unsigned.
#pragma once

#include "platform/UniString.h"

// Compares `a` and `b` over the given lengths in bytes (-1: up to the terminator). `caseSensitive`
// is 1 for an exact comparison and 0 to ignore case. Negative, zero or positive, as strcmp.
int CHCompareTexts(const char* a, int lengthA, const char* b, int lengthB, int caseSensitive,
                   ZKCharCode charCode);

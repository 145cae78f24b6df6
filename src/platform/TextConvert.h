// Conversions between narrow text (UTF-8 in the default character set) and UTF-16 units.
#pragma once

#include "platform/UniString.h"

// UTF-16 to narrow text. A length of -1 converts up to the terminator, and a counted source still
// ends at a zero unit. With a null `target`, returns the bytes that the whole conversion takes;
// otherwise writes as many whole characters as fit in `targetSize` bytes and returns the bytes
// written. Never counts or writes a terminator. An unpaired surrogate becomes U+FFFD when
// `replaceBySubstitute` is set and '?' when it isn't. `cache` is unused.
int CHUnicode2ANSI(const unsigned short* source, int sourceLength, char* target, int targetSize,
                   ZKCharCode charCode, bool replaceBySubstitute, void* cache);

// Narrow text to UTF-16. With a length of -1 the terminator is converted and counted too; with a
// count it isn't, and a counted source still ends at its terminator. With a null `target`, returns
// the units that the conversion takes; otherwise writes as many whole characters as fit in
// `targetSize` units (a surrogate pair is never split) and returns the units written. Each byte
// that begins no well-formed sequence becomes one U+FFFD. `cache` is unused.
int CHANSI2Unicode(const char* source, int sourceLength, unsigned short* target, int targetSize,
                   ZKCharCode charCode, void* cache);

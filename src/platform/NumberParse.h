// Strict number parsers of the platform layer over UTF-16 text: a text is a number of the target
// type as a whole, or it is refused and the target keeps its value.
#pragma once

namespace ZK {

// The one mode: decimal digits with an optional sign ('-' only for signed targets), no radix
// prefix; floating values also take a fraction, an exponent, "inf", "infinity" and "nan".
enum ToValueMode { ToValueStrict = 1 };
// Whether white space around the number is skipped (1) or makes the text no number (0).
enum TrimWSMode { TrimWSNone = 0, TrimWSBoth = 1 };

// True when `text` is a number in the target's range. A floating literal whose value rounds to
// infinity, or to zero though it isn't zero, is out of range.
bool strtovalue(const unsigned short* text, short& value, ToValueMode mode, TrimWSMode trim);
bool strtovalue(const unsigned short* text, int& value, ToValueMode mode, TrimWSMode trim);
bool strtovalue(const unsigned short* text, unsigned int& value, ToValueMode mode, TrimWSMode trim);
bool strtovalue(const unsigned short* text, long long& value, ToValueMode mode, TrimWSMode trim);
bool strtovalue(const unsigned short* text, unsigned long long& value, ToValueMode mode,
                TrimWSMode trim);
bool strtovalue(const unsigned short* text, float& value, ToValueMode mode, TrimWSMode trim);
bool strtovalue(const unsigned short* text, double& value, ToValueMode mode, TrimWSMode trim);

// sscanf over UTF-16 with the types checked: each directive of `format` must equal the next entry
// of `argumentFormats` (a list closed by null), or the scan stops there. Directives: %d %u with
// the lengths hh, h, l (32 bits), ll, and %f %e %g with l for a double. A number runs up to white
// space, the end or the format's next character and must be whole by strtovalue's rules; white
// space in the format matches any run of it. Returns the values stored. `checkFlags` is 0.
int checkedsscanf(unsigned int checkFlags, const unsigned short* text, const unsigned short* format,
                  const char* const* argumentFormats, ...);

} // namespace ZK

// The library's one printf engine, with the length rules its callers are written for: `h` is 16
// bits, `l` 32 bits, `ll` and `I64` 64 bits; `%ls` and `%lc` take UTF-16, `%s` and `%c` narrow
// (UTF-8) text. Floating conversions go to the C library one value at a time; everything else is
// done here, without allocation, so that it can run from debug output and under allocation
// failure. `%n` is refused; an unknown conversion character is copied out as it stands.
//
// None of these consume `arguments`: a caller may pass the same list again after a short buffer,
// as code written for a platform whose va_list is a plain pointer does.
#pragma once

#include <cstdarg>
#include <cstddef>

namespace vorn::platform {

// Legacy termination: writes at most `size` chars; returns the count when the whole output fits
// in `size` chars (a terminator is written when count < size); -1 when it doesn't fit (the buffer
// holds the first `size` chars and no terminator).
int FormatLegacyV(char* buffer, std::size_t size, const char* format, va_list arguments);

// C99 semantics: always terminates when size > 0; returns the length the whole output needs, or
// -1 when that length exceeds INT_MAX.
int FormatV(char* buffer, std::size_t size, const char* format, va_list arguments);
int Format(char* buffer, std::size_t size, const char* format, ...);

} // namespace vorn::platform

namespace ZK {

// UTF-16 output with legacy termination (count, or negative when it doesn't fit), from a UTF-16
// format or from a narrow (UTF-8) format.
int vsnuprintf(unsigned short* target, std::size_t units, const unsigned short* format,
               va_list arguments);
int vsnuprintf(unsigned short* target, std::size_t units, const char* format, va_list arguments);
int snuprintf(unsigned short* target, std::size_t units, const unsigned short* format, ...);
int snuprintf(unsigned short* target, std::size_t units, const char* format, ...);

} // namespace ZK

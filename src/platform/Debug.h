// Debug output of the platform layer: standard error, or a hook that tests install.
#pragma once

#include <cstdarg>
#include <cstddef>

// printf-style; lengths follow the library formatter (l is 32 bits), not the C library.
void DBPrintf(const char* format, ...);
void DBVPrintf(const char* format, va_list arguments);

namespace ZK {
// The platform's line end.
extern const char* const EOL;
} // namespace ZK

namespace vorn::platform {

// Receives each formatted piece of debug output instead of standard error. Null restores it.
using DebugHook = void (*)(const char* text, std::size_t length, void* context);
void SetDebugHook(DebugHook hook, void* context);

// The whole text to standard error, as far as it will go; a failure has nowhere to be told.
void WriteStandardError(const char* text, std::size_t length);

} // namespace vorn::platform

#include "platform/Debug.h"

#include "platform/Format.h"

#include <cstdlib>

namespace ZK {
const char* const EOL = "\n";
}

namespace {
vorn::platform::DebugHook g_hook = nullptr;
void* g_hookContext = nullptr;

void Emit(const char* text, std::size_t length) {
    if (g_hook != nullptr) {
        g_hook(text, length, g_hookContext);
        return;
    }
    vorn::platform::WriteStandardError(text, length);
}
} // namespace

void DBVPrintf(const char* format, va_list arguments) {
    if (format == nullptr)
        return;
    char local[512];
    va_list copy;
    va_copy(copy, arguments);
    int n = vorn::platform::FormatV(local, sizeof local, format, copy);
    va_end(copy);
    if (n < 0)
        return;
    if (static_cast<std::size_t>(n) < sizeof local) {
        Emit(local, static_cast<std::size_t>(n));
        return;
    }
    // Debug output is the report of last resort: use the C heap, not the library's failing one.
    char* big = static_cast<char*>(std::malloc(static_cast<std::size_t>(n) + 1));
    if (big == nullptr) {
        Emit(local, sizeof local - 1);
        return;
    }
    vorn::platform::FormatV(big, static_cast<std::size_t>(n) + 1, format, arguments);
    Emit(big, static_cast<std::size_t>(n));
    std::free(big);
}

void DBPrintf(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    DBVPrintf(format, arguments);
    va_end(arguments);
}

namespace vorn::platform {
void SetDebugHook(DebugHook hook, void* context) {
    g_hook = hook;
    g_hookContext = context;
}
} // namespace vorn::platform

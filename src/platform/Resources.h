// Resource texts of the platform layer: a compiled-in table keyed by resource id and index.
#pragma once

#include <cstddef>
#include <cstdint>

// Opens the text cache of a module; the result is positive for a live cache.
std::int64_t RSInitModuleImageCache(const void* module);
void RSRemoveModuleImageCache(std::int64_t cache);

// Fills `buffer` (of `bufferSize` bytes, terminator included) with the text of (resourceId, index)
// and returns it; an unknown key or a closed cache gives the empty text. `file` and `line` name the
// caller for diagnostics only.
char* RSGetIndString_ParamAdapter(const char* file, int line, char* buffer, std::size_t bufferSize,
                                  short resourceId, short index, std::int64_t cache,
                                  int stringType);

namespace vorn::platform {
// Number of module caches open now; lets tests see attach and detach.
int OpenResourceCaches();
} // namespace vorn::platform

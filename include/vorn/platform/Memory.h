// The library's allocator. A block that the library hands to the caller (the bytes of the binary
// data parsers, a memory output stream's detached buffer) is released with ZK_free, and a block
// that a memory input stream is to own comes from ZK_malloc.
#pragma once

#include <cstddef>

#include <vorn/base/Export.h>

// Returns null when no memory is left; never throws. A zero-byte request gives a block too.
VORN_API void* ZK_malloc(std::size_t size);
VORN_API void ZK_free(void* block);

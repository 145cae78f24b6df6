// Block storage of the growable containers: the capacity rounding they share and the library's
// allocator, reachable from the header templates.
#pragma once

#include <cstddef>

#include <vorn/base/Export.h>

namespace vorn::util::detail {

// A block from the library's allocator; a failed allocation throws CMemoryException(file, line).
VORN_API void* AllocateBlock(std::size_t bytes, const char* file, unsigned int line);
VORN_API void FreeBlock(void* block);

// A zero increment stands where the rounding would divide by zero: the process gets the
// arithmetic fault that such a division raises.
[[noreturn]] VORN_API void RaiseDivisionFault();

// The smallest multiple of `increment` not below `wanted`, in this form on purpose: for a very
// large `wanted` the product wraps and the result is smaller than a plain rounding up.
inline unsigned int RoundCapacity(unsigned int wanted, unsigned int increment) {
    if (increment == 0)
        RaiseDivisionFault();
    return wanted + ((increment - 1) * wanted) % increment;
}

} // namespace vorn::util::detail

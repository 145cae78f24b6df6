// Block storage of the growable containers: the library's allocator, reachable from the header
// templates, and the capacity rounding of base under its util names.
#pragma once

#include <cstddef>

#include <vorn/base/Export.h>
#include <vorn/base/detail/Capacity.h>

namespace vorn::util::detail {

// A block from the library's allocator; a failed allocation throws CMemoryException(file, line).
VORN_API void* AllocateBlock(std::size_t bytes, const char* file, unsigned int line);
VORN_API void FreeBlock(void* block);

using vorn::base::detail::RaiseDivisionFault;
using vorn::base::detail::RoundCapacity;

} // namespace vorn::util::detail

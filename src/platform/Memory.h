// Memory services of the platform layer: the library's one allocator and its test switch.
#pragma once

#include <cstddef>

// ZK_malloc and ZK_free, which the library exports; the test switch below reaches ZK_malloc.
#include <vorn/platform/Memory.h>

// Relocatable blocks. A handle points at the block's pointer, so a resize may move the block
// while its holders keep the handle. Handles draw on the same allocator and test switch as
// ZK_malloc, one allocation per call; the bytes a block gains are zero, so nothing in it is ever
// indeterminate. `flags` 2 lets a resize drop the contents (the block comes back all zeros);
// any other value keeps them (0 when growing, 16 when shrinking). `options` is always 0.
char** BMAllocateHandle(std::size_t size, unsigned int flags, unsigned int options);
// Null when no memory is left; the handle then keeps its block and contents, untouched.
char** BMReallocHandle(char** handle, std::size_t size, unsigned int flags, unsigned int options);
// Releases the block and the handle, and nulls `*handle`; a null handle is left alone.
void BMKillHandle(char*** handle);
// Bytes in the block, 0 for a null handle.
std::size_t BMGetHandleSize(char** handle);

namespace ZK {
struct MemoryManager {
    // Where the global delete of a library object ends up.
    static void Free(void* block);
};
} // namespace ZK

namespace vorn::platform {

// Test switch: the `nth` call of ZK_malloc from now (1 = the next one) returns null, and so does
// every later call while `sticky` is set. 0 turns the switch off. Counting is process-wide.
void SetAllocationFailure(unsigned long nth, bool sticky = false);

// Calls of ZK_malloc made since the process started; lets tests find the index of an allocation.
unsigned long AllocationCount();

} // namespace vorn::platform

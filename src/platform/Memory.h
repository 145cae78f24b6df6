// Memory services of the platform layer: the library's one allocator and its test switch.
#pragma once

#include <cstddef>

// ZK_malloc and ZK_free, which the library exports; the test switch below reaches ZK_malloc.
#include <vorn/platform/Memory.h>

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

#include "platform/Memory.h"

#include <atomic>
#include <cstdlib>

namespace {
std::atomic<unsigned long> g_allocations{0};
// Index (in g_allocations terms) of the first call to fail; 0 when the switch is off.
std::atomic<unsigned long> g_failAt{0};
std::atomic<bool> g_failSticky{false};
} // namespace

void* ZK_malloc(std::size_t size) {
    unsigned long n = g_allocations.fetch_add(1, std::memory_order_relaxed) + 1;
    unsigned long failAt = g_failAt.load(std::memory_order_relaxed);
    if (failAt != 0 &&
        (n == failAt || (n > failAt && g_failSticky.load(std::memory_order_relaxed))))
        return nullptr;
    // A zero-byte request still yields a distinct block, as callers free what they get.
    return std::malloc(size == 0 ? 1 : size);
}

void ZK_free(void* block) {
    std::free(block);
}

void ZK::MemoryManager::Free(void* block) {
    std::free(block);
}

namespace vorn::platform {

void SetAllocationFailure(unsigned long nth, bool sticky) {
    g_failSticky.store(sticky, std::memory_order_relaxed);
    g_failAt.store(nth == 0 ? 0 : g_allocations.load(std::memory_order_relaxed) + nth,
                   std::memory_order_relaxed);
}

unsigned long AllocationCount() {
    return g_allocations.load(std::memory_order_relaxed);
}

} // namespace vorn::platform

#include "platform/Memory.h"

#include <atomic>
#include <cstdlib>
#include <cstring>

namespace {
std::atomic<unsigned long> g_allocations{0};
// Index (in g_allocations terms) of the first call to fail; 0 when the switch is off.
std::atomic<unsigned long> g_failAt{0};
std::atomic<bool> g_failSticky{false};

// Counts one allocation; false when the test switch refuses it.
bool Granted() {
    unsigned long n = g_allocations.fetch_add(1, std::memory_order_relaxed) + 1;
    unsigned long failAt = g_failAt.load(std::memory_order_relaxed);
    return failAt == 0 ||
           (n != failAt && (n < failAt || !g_failSticky.load(std::memory_order_relaxed)));
}

// The block's pointer comes first: a handle is the address of the cell.
struct HandleCell {
    char* block;
    std::size_t size;
};

HandleCell* Cell(char** handle) {
    return reinterpret_cast<HandleCell*>(handle);
}

constexpr unsigned int kDropContents = 2;
} // namespace

void* ZK_malloc(std::size_t size) {
    if (!Granted())
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

char** BMAllocateHandle(std::size_t size, unsigned int /*flags*/, unsigned int /*options*/) {
    if (!Granted())
        return nullptr;
    auto* cell = static_cast<HandleCell*>(std::malloc(sizeof(HandleCell)));
    char* block = static_cast<char*>(std::calloc(size == 0 ? 1 : size, 1));
    if (cell == nullptr || block == nullptr) {
        std::free(cell);
        std::free(block);
        return nullptr;
    }
    *cell = HandleCell{block, size};
    return &cell->block;
}

char** BMReallocHandle(char** handle, std::size_t size, unsigned int flags,
                       unsigned int /*options*/) {
    if (handle == nullptr || !Granted())
        return nullptr;
    HandleCell* cell = Cell(handle);
    const std::size_t bytes = size == 0 ? 1 : size;
    if ((flags & kDropContents) != 0) {
        char* block = static_cast<char*>(std::calloc(bytes, 1));
        if (block == nullptr)
            return nullptr;
        std::free(cell->block);
        cell->block = block;
    } else {
        char* block = static_cast<char*>(std::realloc(cell->block, bytes));
        if (block == nullptr)
            return nullptr;
        if (size > cell->size)
            std::memset(block + cell->size, 0, size - cell->size);
        cell->block = block;
    }
    cell->size = size;
    return handle;
}

void BMKillHandle(char*** handle) {
    if (handle == nullptr || *handle == nullptr)
        return;
    HandleCell* cell = Cell(*handle);
    std::free(cell->block);
    std::free(cell);
    *handle = nullptr;
}

std::size_t BMGetHandleSize(char** handle) {
    return handle == nullptr ? 0 : Cell(handle)->size;
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

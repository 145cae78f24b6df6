// FixBlockAllocator: a pool of blocks of one size, each its own system allocation, kept on a used
// and a free list. It serves the string buffers only, from ten static pools: five for narrow and
// five for UTF-16 strings, of 64 to 1024 characters. Internal to the library.
#pragma once

#include <vorn/base/SpinLock.h>

namespace vorn::base {

class FixBlockAllocator {
public:
    // Allocates nothing yet. `minimumFree` blocks are added at a time, and an idle pool keeps at
    // least that many.
    FixBlockAllocator(unsigned int blockSize, unsigned int minimumFree);
    ~FixBlockAllocator();
    FixBlockAllocator(const FixBlockAllocator&) = delete;
    FixBlockAllocator& operator=(const FixBlockAllocator&) = delete;

    // A block of the pool's size, not zeroed. Throws CMemoryException when the pool can't grow.
    void* Allocate();
    // Takes back a block of this pool; null does nothing.
    void Release(void* payload);
    // Gives every block, used or free, back to the system.
    void ReleaseAll();

    unsigned int GetBlockSize() const { return m_blockSize; }
    unsigned int GetUsedCount() const { return m_usedCount; }
    unsigned int GetFreeCount() const { return m_freeCount; }

private:
    struct BlockNode {
        BlockNode* previous;
        BlockNode* next;
    };
    static_assert(sizeof(BlockNode) == 16, "the payload follows a 16-byte header");

    void GrowPool(unsigned int count);
    void ShrinkPool();

    unsigned int m_blockSize;
    unsigned int m_minimumFree;
    BlockNode* m_usedHead;
    BlockNode* m_freeHead;
    unsigned int m_usedCount;
    unsigned int m_freeCount;
    CSpinLock m_lock;
};

// Capacity in characters that a string buffer of room for `n` characters gets: the smallest tier
// of 64, 128, 256, 512 or 1024 that holds it, or `n` itself above 1024.
inline unsigned int BlockPoolCapacity(unsigned int n) {
    if (n > 1024)
        return n;
    unsigned int capacity = 64;
    while (capacity < n)
        capacity *= 2;
    return capacity;
}

// The pool that serves narrow (StringBlockPool) or UTF-16 (UnicodeBlockPool) buffers of
// `capacity` characters, by the tier that BlockPoolCapacity gives; null above 1024.
FixBlockAllocator* StringBlockPool(unsigned int capacity);
FixBlockAllocator* UnicodeBlockPool(unsigned int capacity);

} // namespace vorn::base

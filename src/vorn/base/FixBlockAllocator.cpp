#include "vorn/base/FixBlockAllocator.h"

#include <vorn/base/MemoryException.h>
#include <vorn/base/System.h>

#include "platform/Memory.h"
#include "vorn/base/SpinGuard.h"

namespace vorn::base {

namespace {

// The pools come up before, and go after, every other static object of the module and of the
// programs that load it, so that a string in static storage never outlives its pool.
constexpr unsigned int kMinimumFree = 4;
constexpr unsigned int kHeader = 12;

__attribute__((init_priority(101)))
FixBlockAllocator g_stringPools[5] = {{64 + kHeader, kMinimumFree},
                                      {128 + kHeader, kMinimumFree},
                                      {256 + kHeader, kMinimumFree},
                                      {512 + kHeader, kMinimumFree},
                                      {1024 + kHeader, kMinimumFree}};

__attribute__((init_priority(101)))
FixBlockAllocator g_unicodePools[5] = {{128 + kHeader, kMinimumFree},
                                       {256 + kHeader, kMinimumFree},
                                       {512 + kHeader, kMinimumFree},
                                       {1024 + kHeader, kMinimumFree},
                                       {2048 + kHeader, kMinimumFree}};

int TierIndex(unsigned int capacity) {
    if (capacity > 1024)
        return -1;
    int index = 0;
    for (unsigned int tier = 64; tier < capacity; tier *= 2)
        ++index;
    return index;
}

} // namespace

FixBlockAllocator* StringBlockPool(unsigned int capacity) {
    int index = TierIndex(capacity);
    return index < 0 ? nullptr : &g_stringPools[index];
}

FixBlockAllocator* UnicodeBlockPool(unsigned int capacity) {
    int index = TierIndex(capacity);
    return index < 0 ? nullptr : &g_unicodePools[index];
}

FixBlockAllocator::FixBlockAllocator(unsigned int blockSize, unsigned int minimumFree)
    : m_blockSize(blockSize), m_minimumFree(minimumFree), m_usedHead(nullptr), m_freeHead(nullptr),
      m_usedCount(0), m_freeCount(0) {}

FixBlockAllocator::~FixBlockAllocator() {
    ReleaseAll();
}

void* FixBlockAllocator::Allocate() {
    SpinGuard guard(m_lock);
    if (m_freeHead == nullptr) {
        try {
            GrowPool(m_minimumFree);
        } catch (const CException& e) {
            e.Print(CSystem::debugOut);
            throw CMemoryException("vorn/base/FixBlockAllocator", 109);
        }
        // A pool with a minimum of 0 adds nothing, and so has nothing to give.
        if (m_freeHead == nullptr)
            throw CMemoryException("vorn/base/FixBlockAllocator", 109);
    }
    BlockNode* node = m_freeHead;
    m_freeHead = node->next;
    node->previous = nullptr;
    node->next = m_usedHead;
    if (m_usedHead != nullptr)
        m_usedHead->previous = node;
    m_usedHead = node;
    ++m_usedCount;
    --m_freeCount;
    return node + 1;
}

void FixBlockAllocator::Release(void* payload) {
    if (payload == nullptr)
        return;
    SpinGuard guard(m_lock);
    BlockNode* node = static_cast<BlockNode*>(payload) - 1;
    if (node->next != nullptr)
        node->next->previous = node->previous;
    if (node->previous != nullptr)
        node->previous->next = node->next;
    else
        m_usedHead = node->next;
    --m_usedCount;
    node->previous = nullptr;
    node->next = m_freeHead;
    m_freeHead = node;
    ++m_freeCount;
    ShrinkPool();
}

void FixBlockAllocator::ReleaseAll() {
    // Nothing here can raise an exception: ZK_free never fails.
    SpinGuard guard(m_lock);
    for (BlockNode* node = m_usedHead; node != nullptr;) {
        BlockNode* next = node->next;
        ZK_free(node);
        --m_usedCount;
        node = next;
    }
    for (BlockNode* node = m_freeHead; node != nullptr;) {
        BlockNode* next = node->next;
        ZK_free(node);
        --m_freeCount;
        node = next;
    }
    m_usedHead = nullptr;
    m_freeHead = nullptr;
}

void FixBlockAllocator::GrowPool(unsigned int count) {
    for (unsigned int i = 0; i < count; ++i) {
        auto* node = static_cast<BlockNode*>(ZK_malloc(sizeof(BlockNode) + m_blockSize));
        if (node == nullptr)
            throw CMemoryException("vorn/base/FixBlockAllocator", 218);
        node->previous = nullptr;
        node->next = m_freeHead;
        m_freeHead = node;
        ++m_freeCount;
    }
}

void FixBlockAllocator::ShrinkPool() {
    // The threshold is the float 0.7 and the test is strict: at exactly that ratio nothing goes.
    float ratio = static_cast<float>(m_usedCount) / static_cast<float>(m_usedCount + m_freeCount);
    if (!(0.7f > ratio))
        return;
    if (m_freeCount <= m_minimumFree)
        return;
    // The bound is taken from the falling free count, so about half the surplus goes each time.
    unsigned int counter = 0;
    do {
        BlockNode* node = m_freeHead;
        m_freeHead = node->next;
        ZK_free(node);
        --m_freeCount;
        ++counter;
    } while (counter < m_freeCount - m_minimumFree);
}

} // namespace vorn::base

#include <vorn/base/MemoryException.h>
#include <vorn/util/detail/Storage.h>

#include <csignal>
#include <cstdlib>

#include "platform/Memory.h"

namespace vorn::util::detail {

void* AllocateBlock(std::size_t bytes, const char* file, unsigned int line) {
    void* block = ZK_malloc(bytes);
    if (block == nullptr)
        throw vorn::base::CMemoryException(file, line);
    return block;
}

void FreeBlock(void* block) {
    ZK_free(block);
}

void RaiseDivisionFault() {
    std::raise(SIGFPE);
    // A handler that returns doesn't make the division valid.
    std::abort();
}

} // namespace vorn::util::detail

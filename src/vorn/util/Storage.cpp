#include <vorn/base/MemoryException.h>
#include <vorn/util/detail/Storage.h>

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

} // namespace vorn::util::detail

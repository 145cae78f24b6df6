#include "platform/ModuleImage.h"

#include <dlfcn.h>

namespace vorn::platform {

const void* ModuleImageOf(const void* address) {
    Dl_info info;
    if (::dladdr(address, &info) != 0)
        return info.dli_fbase;
    return nullptr;
}

} // namespace vorn::platform

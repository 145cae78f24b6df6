#include <vorn/base/Base.h>

#include "platform/FileLayer.h"
#include "platform/UniString.h"
#include "vorn/base/Module.h"

namespace vorn::module {
int ModuleStartCount = 0;
std::int64_t ModuleResourceCache = 0;
vorn::base::CThreadLocal* CurrentThreadSlot = nullptr;
} // namespace vorn::module

namespace vorn {

int Initialize() {
    using module::ModuleStartCount;
    if (ModuleStartCount == 0x7FFFFFFF)
        return 0x7FFFFFFF; // saturated: nothing changes
    ++ModuleStartCount;
    if (ModuleStartCount > 1)
        return ModuleStartCount;
    {
        ZK::UniString root("", 0);
        IO::Init(true, root);
    }
    return ModuleStartCount;
}

int Terminate() {
    using module::ModuleStartCount;
    if (ModuleStartCount == 0)
        return 0;
    --ModuleStartCount;
    if (ModuleStartCount > 0)
        return ModuleStartCount;
    IO::End();
    return ModuleStartCount;
}

} // namespace vorn

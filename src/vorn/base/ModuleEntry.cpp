// The module's load and unload hooks. This file is linked last, so that its load hook runs after
// every other static initialiser of the module; the unload hook is registered from there, which
// makes it run before the static destructors (they were registered earlier).
#include <cstdlib>

#include <vorn/base/Exception.h>
#include <vorn/base/ThreadLocal.h>

#include "platform/Debug.h"
#include "platform/ModuleImage.h"
#include "platform/Resources.h"
#include "vorn/base/Module.h"

namespace vorn::module {

namespace {

bool g_attached = false;

const void* ModuleHandle() {
    return vorn::platform::ModuleImageOf(reinterpret_cast<const void*>(&ModuleHandle));
}

void Detach() {
    delete CurrentThreadSlot;
    CurrentThreadSlot = nullptr;
    if (ModuleResourceCache > 0)
        RSRemoveModuleImageCache(ModuleResourceCache);
    ModuleResourceCache = 0;
    g_attached = false;
}

bool Attach() {
    try {
        ModuleResourceCache = RSInitModuleImageCache(ModuleHandle());
        CurrentThreadSlot = new vorn::base::CThreadLocal();
        CurrentThreadSlot->SetValue(nullptr);
        return true;
    } catch (const vorn::base::CException&) {
        delete CurrentThreadSlot;
        CurrentThreadSlot = nullptr;
        return false;
    }
}

// A module that failed to attach can't refuse to load here; it says so and stays unattached.
__attribute__((constructor)) void OnLoad() {
    if (!Attach()) {
        DBPrintf("vorn: the library failed to attach.%s", ZK::EOL);
        return;
    }
    g_attached = true;
    std::atexit(Detach);
}

} // namespace

bool IsAttached() {
    return g_attached;
}

} // namespace vorn::module

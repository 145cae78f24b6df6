// Module-wide state of the library: the start counter, the resource cache and the slot through
// which a running thread finds its CThread.
#pragma once

#include <cstdint>

namespace vorn::base {
class CThreadLocal;
}

namespace vorn::module {

// Outstanding vorn::Initialize calls; plain, as callers serialise start and stop.
extern int ModuleStartCount;
// The resource cache taken at attach; positive while it is open.
extern std::int64_t ModuleResourceCache;
// Made at attach, given back at detach.
extern vorn::base::CThreadLocal* CurrentThreadSlot;

// Whether the load hook ran to its end.
bool IsAttached();

} // namespace vorn::module

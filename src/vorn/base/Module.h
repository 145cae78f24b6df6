// Module-wide state of the library: the start counter and the resource cache.
#pragma once

#include <cstdint>

namespace vorn::module {

// Outstanding vorn::Initialize calls; plain, as callers serialise start and stop.
extern int ModuleStartCount;
// The resource cache taken at attach; positive while it is open.
extern std::int64_t ModuleResourceCache;

// Whether the load hook ran to its end.
bool IsAttached();

} // namespace vorn::module

// Where the library's own image lies in memory: the key of its resource cache.
#pragma once

namespace vorn::platform {

// The base address of the loaded image that holds `address`, or null when the system can't say.
const void* ModuleImageOf(const void* address);

} // namespace vorn::platform

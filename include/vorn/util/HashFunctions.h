// Hash functions of the library's tables.
#pragma once

#include <vorn/base/Export.h>

namespace vorn::util {

// Below 16 bytes every byte counts (h = h * 37 + c); longer texts are sampled about eight times.
VORN_API int GetStringHashCode(const char* text);

} // namespace vorn::util

// The library's atomic helpers: each one locked instruction on an aligned 32-bit word, with full
// ordering.
#pragma once

#include <vorn/base/Export.h>

namespace vorn::base {

// Stores `value` and returns true if `target` equals `comparand`; otherwise changes nothing.
VORN_API bool AtomicCompareAndSwap(int volatile& target, int value, int comparand);
// Subtract or add 1 and return the new value.
VORN_API int AtomicDecrement(int volatile& target);
VORN_API int AtomicIncrement(int volatile& target);

} // namespace vorn::base

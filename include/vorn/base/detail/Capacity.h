// The capacity rounding that the string buffers and the growable containers share, reachable
// from the header templates.
#pragma once

#include <vorn/base/Export.h>

namespace vorn::base::detail {

// A zero increment stands where the rounding would divide by zero: the process gets the
// arithmetic fault that such a division raises.
[[noreturn]] VORN_API void RaiseDivisionFault();

// The smallest multiple of `increment` not below `wanted`, in this form on purpose: for a very
// large `wanted` the product wraps and the result is smaller than a plain rounding up.
inline unsigned int RoundCapacity(unsigned int wanted, unsigned int increment) {
    if (increment == 0)
        RaiseDivisionFault();
    return wanted + ((increment - 1) * wanted) % increment;
}

} // namespace vorn::base::detail

// The exception that a cancelled thread unwinds with. A catch-all must let it pass on, or the
// runtime ends the process; code that cleans up in a catch-all catches this first and rethrows.
#pragma once

#include <cxxabi.h>

namespace vorn::platform {

using ThreadCancellation = abi::__forced_unwind;

} // namespace vorn::platform

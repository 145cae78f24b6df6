// The arithmetic fault that a division by zero raises, for code that stands in for one.
#pragma once

namespace vorn::platform {

[[noreturn]] void RaiseDivisionFault();

} // namespace vorn::platform

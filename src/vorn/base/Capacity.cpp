#include <vorn/base/detail/Capacity.h>

#include "platform/Fault.h"

namespace vorn::base::detail {

void RaiseDivisionFault() {
    vorn::platform::RaiseDivisionFault();
}

} // namespace vorn::base::detail

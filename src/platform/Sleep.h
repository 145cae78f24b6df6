// The platform's sleep: a pause of the calling thread, where 0 only yields the processor.
#pragma once

namespace vorn::platform {

void Sleep(unsigned int milliseconds);

} // namespace vorn::platform

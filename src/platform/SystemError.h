// Text of an operating system error code (errno values here).
#pragma once

namespace vorn::platform {

// Fills `buffer` with the system's text for `code` and returns true; false, with an empty buffer,
// when the code is 0 or has no text of its own.
bool SystemErrorText(unsigned long code, char* buffer, unsigned int size);

} // namespace vorn::platform

// Hash functions of the library's tables. The text hashes agree on equal text.
#pragma once

#include <vorn/base/Export.h>

namespace vorn::base {
class CString;
class CUnicodeString;
} // namespace vorn::base

namespace vorn::util {

// Below 16 bytes every byte counts (h = h * 37 + c); longer texts are sampled about eight times.
VORN_API int GetStringHashCode(const char* text);
// The same rule over the stored length.
VORN_API int GetCStringHashCode(const vorn::base::CString& text);
// The same rule over the stored length, units taken from 0 to 65535.
VORN_API int GetCUnicodeStringHashCode(const vorn::base::CUnicodeString& text);
// The value itself.
VORN_API int GetLongHashCode(const int& value);
VORN_API int GetUnsignedLongHashCode(const unsigned int& value);

} // namespace vorn::util

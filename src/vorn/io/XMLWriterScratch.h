// Number formatting of the XML writers into a scratch area. Internal.
#pragma once

#include <cstdarg>

#include "platform/Format.h"

namespace vorn::io {

// `format` into `area` of `units`; a text that fills the area is cut and still terminated.
inline const unsigned short* FormatIntoScratch(unsigned short* area, unsigned int units,
                                               const char* format, va_list arguments) {
    ZK::vsnuprintf(area, units, format, arguments);
    area[units - 1] = 0;
    return area;
}

} // namespace vorn::io

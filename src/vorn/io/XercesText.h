// Xerces-C's XMLCh is char16_t, the library's wide character unsigned short: the same units, so
// text crosses between the two by a cast, never by a copy. Internal.
#pragma once

#include <xercesc/util/XercesDefs.hpp>

namespace vorn::io {

inline const unsigned short* U(const XMLCh* text) {
    return reinterpret_cast<const unsigned short*>(text);
}

inline const XMLCh* X(const unsigned short* text) {
    return reinterpret_cast<const XMLCh*>(text);
}

} // namespace vorn::io

// CFormattedUnicodeString: a UTF-16 text made once, at construction, from a printf-style format and
// its arguments, by the library's formatter (`l` is 32 bits, `ll` 64; `%ls` and `%lc` take UTF-16).
// A value class holding one CUnicodeString; it is not one.
#pragma once

#include <vorn/base/Export.h>
#include <vorn/base/UnicodeString.h>

namespace vorn::base {

class VORN_API CFormattedUnicodeString {
public:
    // A null or empty format is refused with CIllegalArgumentException, where
    // CUnicodeString::Format takes "" quietly.
    CFormattedUnicodeString(const unsigned short* format, ...);
    CFormattedUnicodeString(const CFormattedUnicodeString& other);
    CFormattedUnicodeString(CFormattedUnicodeString&& other);
    CFormattedUnicodeString& operator=(const CFormattedUnicodeString& other);
    CFormattedUnicodeString& operator=(CFormattedUnicodeString&& other);
    ~CFormattedUnicodeString();

    operator const unsigned short*() const { return m_text; }

private:
    CUnicodeString m_text;
};

} // namespace vorn::base

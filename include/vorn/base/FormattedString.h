// CFormattedString: a narrow text made once, at construction, from a printf-style format and its
// arguments, by the library's formatter (`l` is 32 bits, `ll` 64; `%ls` and `%lc` take UTF-16).
// A value class holding one CString; it is not one.
#pragma once

#include <vorn/base/Export.h>
#include <vorn/base/String.h>

namespace vorn::base {

class VORN_API CFormattedString {
public:
    // A null or empty format is refused with CIllegalArgumentException, where CString::Format
    // takes "" quietly.
    CFormattedString(const char* format, ...);
    CFormattedString(const CFormattedString& other);
    CFormattedString(CFormattedString&& other);
    CFormattedString& operator=(const CFormattedString& other);
    CFormattedString& operator=(CFormattedString&& other);
    ~CFormattedString();

    operator const char*() const { return m_text; }

private:
    CString m_text;
};

} // namespace vorn::base

#include <vorn/base/FormattedUnicodeString.h>
#include <vorn/base/IllegalArgumentException.h>

#include <cstdarg>

namespace vorn::base {

CFormattedUnicodeString::CFormattedUnicodeString(const unsigned short* format, ...) {
    if (format == nullptr || *format == 0)
        throw CIllegalArgumentException("vorn/base/FormattedUnicodeString", 39,
                                        "Invalid format string.");
    va_list arguments;
    va_start(arguments, format);
    try {
        m_text.FormatV(format, arguments);
    } catch (...) {
        va_end(arguments);
        throw;
    }
    va_end(arguments);
}

CFormattedUnicodeString::CFormattedUnicodeString(const CFormattedUnicodeString& other) = default;
CFormattedUnicodeString::CFormattedUnicodeString(CFormattedUnicodeString&& other) = default;
CFormattedUnicodeString&
CFormattedUnicodeString::operator=(const CFormattedUnicodeString& other) = default;
CFormattedUnicodeString&
CFormattedUnicodeString::operator=(CFormattedUnicodeString&& other) = default;
CFormattedUnicodeString::~CFormattedUnicodeString() = default;

} // namespace vorn::base

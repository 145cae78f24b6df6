#include <vorn/base/FormattedString.h>
#include <vorn/base/IllegalArgumentException.h>

#include <cstdarg>

namespace vorn::base {

CFormattedString::CFormattedString(const char* format, ...) {
    if (format == nullptr || *format == '\0')
        throw CIllegalArgumentException("vorn/base/FormattedString", 39, "Invalid format string.");
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

CFormattedString::CFormattedString(const CFormattedString& other) = default;
CFormattedString::CFormattedString(CFormattedString&& other) = default;
CFormattedString& CFormattedString::operator=(const CFormattedString& other) = default;
CFormattedString& CFormattedString::operator=(CFormattedString&& other) = default;
CFormattedString::~CFormattedString() = default;

} // namespace vorn::base

#include <vorn/base/String.h>
#include <vorn/util/regex/RegExParseException.h>

#include "vorn/LoadString.h"

namespace vorn::util::regex {

VORN_DEFINE_CLASS_BASE(CRegExParseException, "vorn::util::regex::CRegExParseException",
                       "vorn::base::CException")

CRegExParseException::CRegExParseException(const char* file, unsigned int line, const char* pattern,
                                           const char* detail)
    : CException(file, line, "Invalid regular expression.", nullptr) {
    const bool hasDetail = detail != nullptr && *detail != '\0';
    char format[512];
    vorn::LoadString(format, sizeof format, hasDetail ? 2 : 1);
    try {
        vorn::base::CString message;
        message.Format(format, pattern, detail);
        SetMessage(message);
    } catch (const vorn::base::CException&) {
        // With no memory for its text the exception still travels, without a message.
    }
}

} // namespace vorn::util::regex

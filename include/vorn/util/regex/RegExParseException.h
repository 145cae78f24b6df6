// CRegExParseException: a pattern that the regular expression engine refused. Its message names
// the pattern and, where known, what is wrong with it, in the words of the library's resources.
#pragma once

#include <vorn/base/Exception.h>

namespace vorn::util::regex {

class VORN_API CRegExParseException : public vorn::base::CException {
    VORN_DECLARE_CLASS(CRegExParseException)

public:
    // A null or empty `detail` gives the message without one.
    CRegExParseException(const char* file, unsigned int line, const char* pattern,
                         const char* detail);
};

} // namespace vorn::util::regex

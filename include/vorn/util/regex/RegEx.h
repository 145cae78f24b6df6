// CRegEx: a compiled regular expression of the Xerces-C engine, narrow (UTF-8) or UTF-16. It is
// immutable; copies share the compiled pattern, with a count that isn't atomic.
#pragma once

#include <xercesc/util/XercesDefs.hpp>

#include <vorn/base/Ref.h>
#include <vorn/util/regex/RegExMatch.h>
#include <vorn/util/regex/RegExParseException.h>

XERCES_CPP_NAMESPACE_BEGIN
class RegularExpression;
XERCES_CPP_NAMESPACE_END

namespace vorn::util::regex {

class VORN_API CRegEx {
public:
    // `options` is the engine's option string ("i", "m", "s", "x", "X" ...). A pattern the engine
    // refuses throws CRegExParseException; options it refuses, CIllegalArgumentException.
    CRegEx(char const* const pattern);
    CRegEx(char const* const pattern, char const* const options);
    CRegEx(unsigned short const* const pattern);
    CRegEx(unsigned short const* const pattern, unsigned short const* const options);
    CRegEx(const CRegEx& other);
    CRegEx& operator=(const CRegEx& other);
    ~CRegEx();

    // Whether the whole text, or the range [start, end) of it, holds a match; `match` receives
    // the groups of one. The range must be non-empty and inside the text. Narrow text is UTF-8
    // (a byte that begins no well-formed sequence matches as U+FFFD): its range and the positions
    // in `match` are bytes, and a range edge inside a character throws CIllegalArgumentException
    // "Invalid start & end positons.". Wide text counts in UTF-16 units.
    bool Matches(char const* const text) const;
    bool Matches(char const* const text, CRegExMatch& match) const;
    bool Matches(char const* const text, unsigned int start, unsigned int end) const;
    bool Matches(char const* const text, unsigned int start, unsigned int end,
                 CRegExMatch& match) const;
    bool Matches(unsigned short const* const text) const;
    bool Matches(unsigned short const* const text, CRegExMatch& match) const;
    bool Matches(unsigned short const* const text, unsigned int start, unsigned int end) const;
    bool Matches(unsigned short const* const text, unsigned int start, unsigned int end,
                 CRegExMatch& match) const;

private:
    void Adopt(xercesc::RegularExpression* engine);
    bool MatchNarrow(const char* text, unsigned int start, unsigned int end, bool ranged,
                     CRegExMatch* match) const;
    bool MatchWide(const unsigned short* text, unsigned int start, unsigned int end, bool ranged,
                   CRegExMatch* match) const;

    vorn::base::CRef<xercesc::RegularExpression> m_regExRef;
    xercesc::RegularExpression* m_regEx;
};

} // namespace vorn::util::regex

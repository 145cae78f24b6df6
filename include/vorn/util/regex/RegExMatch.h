// CRegExMatch: the groups of the last match that CRegEx::Matches wrote into it. Copies share
// one result; the count isn't atomic, so copies stay in one thread.
#pragma once

#include <xercesc/util/XercesDefs.hpp>

#include <vorn/base/Ref.h>

XERCES_CPP_NAMESPACE_BEGIN
class Match;
XERCES_CPP_NAMESPACE_END

namespace vorn::util::regex {

class VORN_API CRegExMatch {
public:
    CRegExMatch();
    CRegExMatch(const CRegExMatch& other);
    CRegExMatch& operator=(const CRegExMatch& other);
    ~CRegExMatch();

    // Group 0 is the whole match. 0 before any match has been written.
    unsigned int GetGroupCount() const;
    // Positions in units of the text matched, bytes (at character edges) for narrow text and
    // UTF-16 units for wide; a group that took no part gives 0xFFFFFFFF. A
    // group past the last, or a result not yet written, throws CArrayIndexOutOfBoundsException.
    unsigned int GetStartPosOfGroup(unsigned int group) const;
    unsigned int GetEndPosOfGroup(unsigned int group) const;

private:
    friend class CRegEx;

    vorn::base::CRef<xercesc::Match> m_matchRef;
};

} // namespace vorn::util::regex

#include <vorn/base/ArrayIndexOutOfBoundsException.h>
#include <vorn/base/MemoryException.h>
#include <vorn/util/regex/RegExMatch.h>

#include <new>

#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLException.hpp>
#include <xercesc/util/regx/Match.hpp>

namespace vorn::util::regex {

namespace {

constexpr const char* kSource = "vorn/util/regex/RegExMatch";

} // namespace

CRegExMatch::CRegExMatch() {
    xercesc::MemoryManager* manager = xercesc::XMLPlatformUtils::fgMemoryManager;
    // An engine that failed to start has no memory manager to give.
    if (manager == nullptr)
        throw vorn::base::CMemoryException(kSource, __LINE__);
    xercesc::Match* match;
    try {
        match = new (manager) xercesc::Match(manager);
    } catch (const std::bad_alloc&) {
        throw vorn::base::CMemoryException(kSource, __LINE__);
    } catch (const xercesc::OutOfMemoryException&) {
        throw vorn::base::CMemoryException(kSource, __LINE__);
    }
    try {
        m_matchRef = match;
    } catch (...) {
        delete match;
        throw;
    }
}

CRegExMatch::CRegExMatch(const CRegExMatch& other) : m_matchRef(other.m_matchRef) {}

CRegExMatch& CRegExMatch::operator=(const CRegExMatch& other) {
    m_matchRef = other.m_matchRef;
    return *this;
}

CRegExMatch::~CRegExMatch() = default;

unsigned int CRegExMatch::GetGroupCount() const {
    const xercesc::Match& match = *m_matchRef;
    try {
        return static_cast<unsigned int>(match.getNoGroups());
    } catch (const xercesc::XMLException&) {
        return 0;
    }
}

unsigned int CRegExMatch::GetStartPosOfGroup(unsigned int group) const {
    const xercesc::Match& match = *m_matchRef;
    try {
        return static_cast<unsigned int>(match.getStartPos(static_cast<int>(group)));
    } catch (const xercesc::XMLException&) {
        throw vorn::base::CArrayIndexOutOfBoundsException(kSource, __LINE__);
    }
}

unsigned int CRegExMatch::GetEndPosOfGroup(unsigned int group) const {
    const xercesc::Match& match = *m_matchRef;
    try {
        return static_cast<unsigned int>(match.getEndPos(static_cast<int>(group)));
    } catch (const xercesc::XMLException&) {
        throw vorn::base::CArrayIndexOutOfBoundsException(kSource, __LINE__);
    }
}

} // namespace vorn::util::regex

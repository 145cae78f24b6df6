#include <vorn/base/IllegalArgumentException.h>
#include <vorn/base/MemoryException.h>
#include <vorn/base/String.h>
#include <vorn/util/regex/RegEx.h>

#include <cstring>

#include <xercesc/util/Janitor.hpp>
#include <xercesc/util/ParseException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/util/regx/Match.hpp>
#include <xercesc/util/regx/RegularExpression.hpp>

#include "platform/UniText.h"
#include "vorn/LoadString.h"

namespace vorn::util::regex {

namespace {

using vorn::base::CIllegalArgumentException;
using vorn::base::CMemoryException;
using vorn::base::CString;
using xercesc::RegularExpression;

constexpr const char* kSource = "vorn/util/regex/RegEx";
constexpr const char* kBadOptions = "Invalid options.";
// The engine's code for an option letter it doesn't know.
constexpr int kUnknownOptionCode = 258;

// Resource index of each engine error code from 98 on.
constexpr short kFirstCode = 98;
constexpr short kIndexOfCode[] = {3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13, 14, 15, 16, 17,
                                  18, 19, 20, 21, 22, 24, 25, 27, 28, 35, 29, 31, 32, 33, 35};

CString RegExErrorText(const xercesc::ParseException& e) {
    const int code = e.getCode();
    const int last = kFirstCode + static_cast<int>(sizeof kIndexOfCode / sizeof kIndexOfCode[0]);
    if (code < kFirstCode || code >= last)
        return CString();
    char buffer[512];
    return CString(vorn::LoadString(buffer, sizeof buffer, kIndexOfCode[code - kFirstCode]));
}

const char* EngineText(const char* text) {
    return text;
}
const XMLCh* EngineText(const unsigned short* text) {
    return reinterpret_cast<const XMLCh*>(text);
}

xercesc::MemoryManager* Manager() {
    xercesc::MemoryManager* manager = xercesc::XMLPlatformUtils::fgMemoryManager;
    // An engine that failed to start has no memory manager to give.
    if (manager == nullptr)
        throw CMemoryException(kSource, __LINE__);
    return manager;
}

// Every failure inside the engine reads as lack of memory.
template <typename F> auto Engine(F&& call) -> decltype(call()) {
    try {
        return call();
    } catch (...) {
        throw CMemoryException(kSource, __LINE__);
    }
}

template <typename Char>
RegularExpression* Compile(const Char* pattern, const Char* options, bool withOptions) {
    if (pattern == nullptr || *pattern == 0)
        throw CIllegalArgumentException(kSource, __LINE__, "Invalid pattern.");
    if (withOptions && (options == nullptr || *options == 0))
        throw CIllegalArgumentException(kSource, __LINE__, kBadOptions);
    xercesc::MemoryManager* manager = Manager();
    try {
        if (withOptions)
            return new (manager)
                RegularExpression(EngineText(pattern), EngineText(options), manager);
        return new (manager) RegularExpression(EngineText(pattern), manager);
    } catch (const xercesc::ParseException& e) {
        if (withOptions && e.getCode() == kUnknownOptionCode)
            throw CIllegalArgumentException(kSource, __LINE__, kBadOptions);
        throw CRegExParseException(kSource, __LINE__, CString(pattern), RegExErrorText(e));
    } catch (...) {
        throw CMemoryException(kSource, __LINE__);
    }
}

void CheckText(const void* text) {
    if (text == nullptr)
        throw CIllegalArgumentException(kSource, __LINE__, "Invalid match string.");
}

void CheckRange(unsigned int start, unsigned int end, std::size_t length) {
    if (start >= end || end > length)
        throw CIllegalArgumentException(kSource, __LINE__, "Invalid start & end positons.");
}

} // namespace

CRegEx::CRegEx(char const* const pattern) : m_regEx(nullptr) {
    Adopt(Compile(pattern, static_cast<const char*>(nullptr), false));
}

CRegEx::CRegEx(char const* const pattern, char const* const options) : m_regEx(nullptr) {
    Adopt(Compile(pattern, options, true));
}

CRegEx::CRegEx(unsigned short const* const pattern) : m_regEx(nullptr) {
    Adopt(Compile(pattern, static_cast<const unsigned short*>(nullptr), false));
}

CRegEx::CRegEx(unsigned short const* const pattern, unsigned short const* const options)
    : m_regEx(nullptr) {
    Adopt(Compile(pattern, options, true));
}

CRegEx::CRegEx(const CRegEx& other) : m_regExRef(other.m_regExRef), m_regEx(other.m_regEx) {}

CRegEx& CRegEx::operator=(const CRegEx& other) {
    m_regExRef = other.m_regExRef;
    m_regEx = other.m_regEx;
    return *this;
}

CRegEx::~CRegEx() = default;

void CRegEx::Adopt(RegularExpression* engine) {
    try {
        m_regExRef = engine;
    } catch (...) {
        delete engine;
        throw;
    }
    m_regEx = engine;
}

bool CRegEx::MatchNarrow(const char* text, unsigned int start, unsigned int end, bool ranged,
                         CRegExMatch* match) const {
    CheckText(text);
    if (ranged)
        CheckRange(start, end, std::strlen(text));
    xercesc::Match* result = match == nullptr ? nullptr : &*match->m_matchRef;
    xercesc::MemoryManager* manager = Manager();
    if (!ranged)
        return Engine([&] { return m_regEx->matches(text, result, manager); });
    // The engine matches the UTF-16 that it makes of narrow text, which can be shorter than the
    // bytes: a range past its end would have the engine read past its block.
    XMLCh* units = Engine([&] { return xercesc::XMLString::transcode(text, manager); });
    xercesc::ArrayJanitor<XMLCh> release(units, manager);
    CheckRange(start, end, xercesc::XMLString::stringLen(units));
    return Engine([&] { return m_regEx->matches(units, start, end, result, manager); });
}

bool CRegEx::MatchWide(const unsigned short* text, unsigned int start, unsigned int end,
                       bool ranged, CRegExMatch* match) const {
    CheckText(text);
    if (ranged)
        CheckRange(start, end, ZK::ucslen(text));
    xercesc::Match* result = match == nullptr ? nullptr : &*match->m_matchRef;
    xercesc::MemoryManager* manager = Manager();
    const XMLCh* units = EngineText(text);
    if (!ranged)
        return Engine([&] { return m_regEx->matches(units, result, manager); });
    return Engine([&] { return m_regEx->matches(units, start, end, result, manager); });
}

bool CRegEx::Matches(char const* const text) const {
    return MatchNarrow(text, 0, 0, false, nullptr);
}

bool CRegEx::Matches(char const* const text, CRegExMatch& match) const {
    return MatchNarrow(text, 0, 0, false, &match);
}

bool CRegEx::Matches(char const* const text, unsigned int start, unsigned int end) const {
    return MatchNarrow(text, start, end, true, nullptr);
}

bool CRegEx::Matches(char const* const text, unsigned int start, unsigned int end,
                     CRegExMatch& match) const {
    return MatchNarrow(text, start, end, true, &match);
}

bool CRegEx::Matches(unsigned short const* const text) const {
    return MatchWide(text, 0, 0, false, nullptr);
}

bool CRegEx::Matches(unsigned short const* const text, CRegExMatch& match) const {
    return MatchWide(text, 0, 0, false, &match);
}

bool CRegEx::Matches(unsigned short const* const text, unsigned int start, unsigned int end) const {
    return MatchWide(text, start, end, true, nullptr);
}

bool CRegEx::Matches(unsigned short const* const text, unsigned int start, unsigned int end,
                     CRegExMatch& match) const {
    return MatchWide(text, start, end, true, &match);
}

} // namespace vorn::util::regex

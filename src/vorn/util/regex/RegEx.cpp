#include <vorn/base/IllegalArgumentException.h>
#include <vorn/base/MemoryException.h>
#include <vorn/base/String.h>
#include <vorn/util/regex/RegEx.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstring>
#include <new>

#include <xercesc/util/Janitor.hpp>
#include <xercesc/util/ParseException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/util/regx/Match.hpp>
#include <xercesc/util/regx/RegularExpression.hpp>

#include "platform/TextConvert.h"
#include "platform/UniText.h"
#include "platform/Utf8.h"
#include "vorn/LoadString.h"

namespace vorn::util::regex {

namespace {

using vorn::base::CIllegalArgumentException;
using vorn::base::CMemoryException;
using vorn::base::CString;
using xercesc::RegularExpression;

constexpr const char* kSource = "vorn/util/regex/RegEx";
constexpr const char* kBadOptions = "Invalid options.";
constexpr const char* kBadRange = "Invalid start & end positons.";
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

// Narrow text as the UTF-16 that the engine works on, converted by the library's UTF-8 rules
// rather than the engine's transcoder, so stray bytes count as everywhere else in the library;
// the range edges come out in units on the same walk.
class WideText {
public:
    explicit WideText(xercesc::MemoryManager* manager) : m_manager(manager) {}
    WideText(const WideText&) = delete;
    WideText& operator=(const WideText&) = delete;
    ~WideText() {
        if (m_units != nullptr)
            m_manager->deallocate(m_units);
    }

    // start <= end <= bytes, each a character boundary.
    void Convert(const char* text, std::size_t bytes, std::size_t start, std::size_t end) {
        // The engine counts positions in int: a longer text is more than it can take.
        if (bytes > INT_MAX)
            throw std::bad_alloc();
        // No character takes more units than bytes.
        m_units = static_cast<XMLCh*>(m_manager->allocate((bytes + 1) * sizeof(XMLCh)));
        const std::size_t cuts[] = {start, end, bytes};
        std::size_t* units[] = {&m_start, &m_end, &m_count};
        // ASCII widens byte for byte; the converter takes over at the first other byte.
        std::size_t from = 0;
        for (; from < bytes && static_cast<unsigned char>(text[from]) < 0x80; ++from)
            m_units[from] = static_cast<XMLCh>(text[from]);
        const std::size_t ascii = from;
        std::size_t count = from;
        for (int i = 0; i < 3; ++i) {
            if (cuts[i] > from) {
                const int length = static_cast<int>(cuts[i] - from);
                count += static_cast<std::size_t>(CHANSI2Unicode(
                    text + from, length, reinterpret_cast<unsigned short*>(m_units) + count, length,
                    0, nullptr));
                from = cuts[i];
            }
            *units[i] = cuts[i] <= ascii ? cuts[i] : count;
        }
        m_units[count] = 0;
        m_startByte = start;
        m_bytes = bytes;
    }

    const XMLCh* Units() const { return m_units; }
    std::size_t Count() const { return m_count; }
    std::size_t Start() const { return m_start; }
    std::size_t End() const { return m_end; }
    std::size_t StartByte() const { return m_startByte; }
    std::size_t Bytes() const { return m_bytes; }

private:
    xercesc::MemoryManager* m_manager;
    XMLCh* m_units = nullptr;
    std::size_t m_count = 0, m_start = 0, m_end = 0, m_startByte = 0, m_bytes = 0;
};

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

RegularExpression* NewEngine(const XMLCh* pattern, const XMLCh* options,
                             xercesc::MemoryManager* manager) {
    if (options != nullptr)
        return new (manager) RegularExpression(pattern, options, manager);
    return new (manager) RegularExpression(pattern, manager);
}

RegularExpression* Create(const unsigned short* pattern, const unsigned short* options,
                          xercesc::MemoryManager* manager) {
    return NewEngine(EngineText(pattern), options == nullptr ? nullptr : EngineText(options),
                     manager);
}

RegularExpression* Create(const char* pattern, const char* options,
                          xercesc::MemoryManager* manager) {
    WideText widePattern(manager), wideOptions(manager);
    widePattern.Convert(pattern, std::strlen(pattern), 0, 0);
    if (options == nullptr)
        return NewEngine(widePattern.Units(), nullptr, manager);
    wideOptions.Convert(options, std::strlen(options), 0, 0);
    return NewEngine(widePattern.Units(), wideOptions.Units(), manager);
}

template <typename Char>
RegularExpression* Compile(const Char* pattern, const Char* options, bool withOptions) {
    if (pattern == nullptr || *pattern == 0)
        throw CIllegalArgumentException(kSource, __LINE__, "Invalid pattern.");
    if (withOptions && (options == nullptr || *options == 0))
        throw CIllegalArgumentException(kSource, __LINE__, kBadOptions);
    xercesc::MemoryManager* manager = Manager();
    try {
        return Create(pattern, withOptions ? options : nullptr, manager);
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
        throw CIllegalArgumentException(kSource, __LINE__, kBadRange);
}

// Whether byte `at` of a text of `bytes` falls inside a character as utf8::Decode reads them. A
// well-formed sequence holds no byte but its lead outside 80..BF, so the walk from the start of
// the text lands on every such byte, and the nearest one before `at` begins its character.
bool InsideCharacter(const char* text, std::size_t bytes, std::size_t at) {
    const auto follower = [text](std::size_t i) {
        return (static_cast<unsigned char>(text[i]) & 0xC0) == 0x80;
    };
    if (at == 0 || at >= bytes || !follower(at))
        return false;
    std::size_t lead = at - 1;
    while (lead > 0 && at - lead < 3 && follower(lead))
        --lead;
    std::int32_t c;
    return vorn::platform::utf8::Decode(text + lead, bytes - lead, c) > at - lead;
}

// The engine advances over a literal by its length in the pattern, escapes included, so a match
// can end past the text ("a\\." on "a." ends at 3); no position given out lies past `limit`.
void ClampPositions(xercesc::Match& match, std::size_t limit) {
    const int last = static_cast<int>(limit);
    for (int group = 0; group < match.getNoGroups(); ++group) {
        if (match.getStartPos(group) > last)
            match.setStartPos(group, last);
        if (match.getEndPos(group) > last)
            match.setEndPos(group, last);
    }
}

// Rewrites the positions that the engine left in `match`, units of `wide`, as bytes of `text`:
// sorted, they take one walk from the nearest boundary known on both sides. A position between
// the halves of a surrogate pair, which no narrow text has, gives its character's first byte.
void PositionsToBytes(xercesc::Match& match, const char* text, const WideText& wide,
                      xercesc::MemoryManager* manager) {
    const std::size_t slots = 2 * static_cast<std::size_t>(match.getNoGroups());
    // Each key is a unit position above its slot: group * 2, plus 1 for an end.
    std::uint64_t inlineKeys[32];
    std::uint64_t* keys = inlineKeys;
    xercesc::ArrayJanitor<std::uint64_t> release(nullptr, manager);
    if (slots > sizeof inlineKeys / sizeof inlineKeys[0]) {
        keys = static_cast<std::uint64_t*>(manager->allocate(slots * sizeof *keys));
        release.reset(keys, manager);
    }
    std::size_t count = 0;
    for (std::size_t slot = 0; slot < slots; ++slot) {
        const int group = static_cast<int>(slot / 2);
        const int unit = slot % 2 == 0 ? match.getStartPos(group) : match.getEndPos(group);
        if (unit >= 0) // -1: a group that took no part
            keys[count++] = static_cast<std::uint64_t>(unit) << 32 | slot;
    }
    std::sort(keys, keys + count);
    std::size_t byte = 0, unit = 0;
    if (count > 0 && keys[0] >> 32 >= wide.Start()) {
        byte = wide.StartByte();
        unit = wide.Start();
    }
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t target = static_cast<std::size_t>(keys[i] >> 32);
        while (byte < wide.Bytes()) {
            std::int32_t c;
            const std::size_t length =
                vorn::platform::utf8::Decode(text + byte, wide.Bytes() - byte, c);
            const std::size_t units = c > 0xFFFF && c < vorn::platform::utf8::kInvalid ? 2 : 1;
            if (unit + units > target)
                break;
            byte += length;
            unit += units;
        }
        const int group = static_cast<int>((keys[i] & 0xFFFFFFFFu) / 2);
        if (keys[i] % 2 == 0)
            match.setStartPos(group, static_cast<int>(byte));
        else
            match.setEndPos(group, static_cast<int>(byte));
    }
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
    const std::size_t bytes = std::strlen(text);
    if (ranged) {
        CheckRange(start, end, bytes);
        // An edge inside a character has no place in the units that the engine matches.
        if (InsideCharacter(text, bytes, start) || InsideCharacter(text, bytes, end))
            throw CIllegalArgumentException(kSource, __LINE__, kBadRange);
    }
    xercesc::Match* result = match == nullptr ? nullptr : &*match->m_matchRef;
    xercesc::MemoryManager* manager = Manager();
    WideText wide(manager);
    Engine([&] { wide.Convert(text, bytes, start, ranged ? end : bytes); });
    const bool found = Engine(
        [&] { return m_regEx->matches(wide.Units(), wide.Start(), wide.End(), result, manager); });
    if (result != nullptr)
        ClampPositions(*result, wide.End());
    // With one unit to each byte the engine's positions are already bytes.
    if (result != nullptr && wide.Count() != bytes)
        Engine([&] { PositionsToBytes(*result, text, wide, manager); });
    return found;
}

bool CRegEx::MatchWide(const unsigned short* text, unsigned int start, unsigned int end,
                       bool ranged, CRegExMatch* match) const {
    CheckText(text);
    const std::size_t length = ZK::ucslen(text);
    if (ranged)
        CheckRange(start, end, length);
    xercesc::Match* result = match == nullptr ? nullptr : &*match->m_matchRef;
    xercesc::MemoryManager* manager = Manager();
    const XMLCh* units = EngineText(text);
    const bool found =
        ranged ? Engine([&] { return m_regEx->matches(units, start, end, result, manager); })
               : Engine([&] { return m_regEx->matches(units, result, manager); });
    if (result != nullptr)
        ClampPositions(*result, ranged ? end : length);
    return found;
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

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <string>

#include <vorn/base/ArrayIndexOutOfBoundsException.h>
#include <vorn/base/IllegalArgumentException.h>
#include <vorn/base/MemoryException.h>
#include <vorn/util/regex/RegEx.h>

#include <xercesc/framework/MemoryManager.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include "support/AllocFailure.h"
#include "support/Throws.h"
#include "support/Utf16.h"
#include "vorn/LoadString.h"

namespace {

using vorn::base::CArrayIndexOutOfBoundsException;
using vorn::base::CIllegalArgumentException;
using vorn::base::CMemoryException;
using vorn::test::ExpectThrow;
using vorn::test::FailAllocation;
using vorn::test::W;
using vorn::util::regex::CRegEx;
using vorn::util::regex::CRegExMatch;
using vorn::util::regex::CRegExParseException;

constexpr const char* kSource = "vorn/util/regex/RegEx";
constexpr const char* kBadRange = "Invalid start & end positons.";

// While alive, every allocation of the engine's default memory manager fails.
class EngineOutOfMemory : public xercesc::MemoryManager {
public:
    EngineOutOfMemory() : m_real(xercesc::XMLPlatformUtils::fgMemoryManager) {
        xercesc::XMLPlatformUtils::fgMemoryManager = this;
    }
    ~EngineOutOfMemory() override { xercesc::XMLPlatformUtils::fgMemoryManager = m_real; }
    xercesc::MemoryManager* getExceptionMemoryManager() override { return m_real; }
    void* allocate(XMLSize_t) override { throw xercesc::OutOfMemoryException(); }
    void deallocate(void* p) override { m_real->deallocate(p); }

private:
    xercesc::MemoryManager* m_real;
};

// The message of the parse exception of `pattern`, or "none".
template <typename Char>
std::string ParseMessage(const Char* pattern, const Char* options = nullptr) {
    try {
        CRegEx re = options == nullptr ? CRegEx(pattern) : CRegEx(pattern, options);
    } catch (const CRegExParseException& e) {
        EXPECT_STREQ(e.GetSourceFile(), kSource);
        EXPECT_STREQ(e.GetErrorDescription(), "Invalid regular expression.");
        return e.GetMessage() == nullptr ? "" : e.GetMessage();
    }
    return "none";
}

TEST(RegEx, ArgumentChecks) {
    const auto wide = W(u"a"), q = W(u"q");
    const unsigned short *a = wide.c_str(), *none = nullptr;
    const char *pattern = "Invalid pattern.", *options = "Invalid options.",
               *text = "Invalid match string.";
    const CRegEx b("b");
    const std::pair<const char*, std::function<void()>> checks[] = {
        {pattern, [] { CRegEx(""); }},
        {pattern, [] { CRegEx(static_cast<const char*>(nullptr)); }},
        {pattern, [&] { CRegEx(W(u"").c_str(), a); }},
        {options, [] { CRegEx("a", ""); }},
        {options, [&] { CRegEx(a, none); }},
        {options, [] { CRegEx("a", "q"); }}, // refused by the engine
        {options, [&] { CRegEx(a, q.c_str()); }},
        {text, [&] { b.Matches(static_cast<const char*>(nullptr)); }},
        {text, [&] { b.Matches(none, 0, 1); }},
        {kBadRange, [&] { b.Matches("abc", 1, 1); }},
        {kBadRange, [&] { b.Matches("abc", 0, 4); }},
        {kBadRange, [&] { b.Matches("abc", 2, 1); }},
        {kBadRange, [&] { b.Matches("", 0, 0); }},
        {kBadRange, [&] { b.Matches(a, 0, 2); }},
        // Narrow ranges count bytes, and neither edge may fall inside a character.
        {kBadRange, [] { CRegEx(".").Matches("\xc3\xa9", 0, 1); }},
        {kBadRange, [] { CRegEx(".").Matches("a\xf0\x9f\x98\x80", 0, 4); }},
        {kBadRange, [] { CRegEx(".").Matches("a\xe2\x82\xac", 2, 4); }}};
    for (const auto& [words, call] : checks)
        ExpectThrow<CIllegalArgumentException>(call, kSource, words);
    EXPECT_FALSE(b.Matches("abc", 2, 3));
    EXPECT_TRUE(CRegEx(".").Matches("\xc3\xa9", 0, 2));
    // A continuation byte that no lead claims is a character of its own.
    EXPECT_TRUE(CRegEx(".").Matches("\xc3\xa9\xa9", 2, 3));
}

TEST(RegEx, ParseFailuresTellThePatternAndTheFault) {
    EXPECT_EQ(ParseMessage("(", "i"),
              "Invalid regular expression \"(\": a group without its closing parenthesis.");
    EXPECT_EQ(ParseMessage("[z-a]"), "Invalid regular expression \"[z-a]\": a range running "
                                     "backwards or an unknown escape.");
    // A wide pattern is told in UTF-8.
    EXPECT_EQ(ParseMessage(W(u"\u00e9\\").c_str()),
              "Invalid regular expression \"\xc3\xa9\\\": a backslash at the end, with nothing "
              "to escape.");
    // A fault with no text of its own gives the short form.
    EXPECT_EQ(ParseMessage("a{2,1}"), "Invalid regular expression \"a{2,1}\".");

    const CRegExParseException direct("f", 7, "p", nullptr);
    EXPECT_STREQ(direct.GetMessage(), "Invalid regular expression \"p\".");
    EXPECT_STREQ(direct.GetClass()->GetQualifiedName(), "vorn::util::regex::CRegExParseException");
    // Every index of resource id 1 has its text.
    char text[512];
    for (short index = 1; index <= 35; ++index)
        EXPECT_STRNE(vorn::LoadString(text, sizeof text, index), "") << index;
    EXPECT_STREQ(vorn::LoadString(text, sizeof text, 36), "");
}

TEST(RegEx, MatchesAndGroups) {
    const CRegEx re("a(b+)(x)?c");
    CRegExMatch match;
    EXPECT_EQ(match.GetGroupCount(), 0u);
    ASSERT_TRUE(re.Matches("abbc", match));
    EXPECT_EQ(match.GetGroupCount(), 3u);
    EXPECT_EQ(match.GetEndPosOfGroup(0), 4u);
    EXPECT_EQ(match.GetStartPosOfGroup(1), 1u);
    EXPECT_EQ(match.GetStartPosOfGroup(2), 0xFFFFFFFFu);
    EXPECT_FALSE(re.Matches("ac"));
    // A copy of the match shares the result that the next match writes.
    CRegExMatch copy(match);
    ASSERT_TRUE(re.Matches("--abc", 1, 5, match));
    EXPECT_EQ(copy.GetStartPosOfGroup(0), 2u);
    EXPECT_EQ(copy.GetEndPosOfGroup(1), 4u);

    const auto wide = W(u"\u00e9abbbc");
    ASSERT_TRUE(re.Matches(wide.c_str(), match));
    EXPECT_EQ(match.GetStartPosOfGroup(1), 2u);
    EXPECT_EQ(match.GetEndPosOfGroup(1), 5u);
    EXPECT_TRUE(re.Matches(wide.c_str(), 1, 6));
    EXPECT_FALSE(re.Matches(wide.c_str(), 2, 6, match));
    EXPECT_TRUE(CRegEx(W(u"B+").c_str(), W(u"i").c_str()).Matches("abbc"));
    EXPECT_TRUE(CRegEx("B+", "i").Matches(wide.c_str()));

    ExpectThrow<CArrayIndexOutOfBoundsException>([&] { match.GetEndPosOfGroup(0x80000000u); },
                                                 "vorn/util/regex/RegExMatch");
    ExpectThrow<CArrayIndexOutOfBoundsException>([] { CRegExMatch().GetEndPosOfGroup(0); },
                                                 "vorn/util/regex/RegExMatch");

    // Copies share the compiled pattern and outlive their source.
    auto* source = new CRegEx("x+y");
    CRegEx kept(*source), assigned("z");
    assigned = *source;
    delete source;
    EXPECT_TRUE(kept.Matches("xxy") && assigned.Matches("xy") && !assigned.Matches("z"));
}

// Narrow and wide matching of one text in characters of one to four bytes agree once positions
// are converted, so the bytes between the narrow positions are exactly what the engine matched.
TEST(RegEx, NarrowPositionsAreBytes) {
    const std::pair<const char*, const char16_t*> pieces[] = {
        {"a", u"a"},
        {"\xc3\xa9", u"\u00e9"},
        {"\xe2\x82\xac", u"\u20ac"},
        {" ", u" "},
        {"\xf0\x9f\x98\x80", u"\U0001F600"},
        {"\xff", u"\ufffd"}}; // a stray byte matches as U+FFFD
    std::string narrow;
    vorn::test::WString wide;
    std::map<unsigned int, unsigned int> unitAt; // the unit at each byte that starts a character
    for (std::size_t i = 0; i < 40; ++i) {
        unitAt[narrow.size()] = wide.size();
        narrow += pieces[(i + i / 6) % 6].first;
        wide += W(pieces[(i + i / 6) % 6].second);
    }
    unitAt[narrow.size()] = wide.size();
    std::string manyGroups;
    for (int i = 0; i < 16; ++i) // more positions than the mapping keeps on the stack
        manyGroups += "(.)";
    const unsigned int bytes = narrow.size(), units = wide.size();
    for (const std::string pattern :
         {"(.)(\\S)?", "[\xc3\xa9\xe2\x82\xac]+(\xf0\x9f\x98\x80)?", "\\w+", manyGroups.c_str()}) {
        const CRegEx re(pattern.c_str());
        CRegExMatch n, w;
        unsigned int from = 0, found = 0;
        while (from < bytes && (from == 0 ? re.Matches(narrow.c_str(), n)
                                          : re.Matches(narrow.c_str(), from, bytes, n))) {
            ASSERT_TRUE(re.Matches(wide.c_str(), unitAt[from], units, w)) << pattern;
            ASSERT_EQ(n.GetGroupCount(), w.GetGroupCount());
            for (unsigned int g = 0; g < n.GetGroupCount(); ++g) {
                const unsigned int start = n.GetStartPosOfGroup(g), end = n.GetEndPosOfGroup(g);
                const bool none = start == 0xFFFFFFFFu;
                ASSERT_TRUE(none || (unitAt.count(start) && unitAt.count(end)));
                EXPECT_EQ(none ? start : unitAt[start], w.GetStartPosOfGroup(g));
                EXPECT_EQ(none ? end : unitAt[end], w.GetEndPosOfGroup(g)) << pattern << g;
            }
            ++found;
            const unsigned int end = n.GetEndPosOfGroup(0);
            from = end > from ? end : unitAt.upper_bound(from)->first;
        }
        EXPECT_GT(found, 1u) << pattern;
    }
    CRegExMatch match;
    ASSERT_TRUE(CRegEx("\xe2\x82\xac(.)").Matches(narrow.c_str(), 3, bytes, match));
    EXPECT_EQ(narrow.substr(match.GetStartPosOfGroup(1),
                            match.GetEndPosOfGroup(1) - match.GetStartPosOfGroup(1)),
              " ");
}

TEST(RegEx, MemoryFailures) {
    // The handle's count block comes from the library; the engine object is then given back.
    vorn::test::ExpectNoMemory([] { CRegEx("a+"); }, "vorn/base/Ref");
    vorn::test::ExpectNoMemory([] { CRegExMatch(); }, "vorn/base/Ref");
    // A parse exception that can't keep its message still reports the fault.
    ParseMessage("("); // the string pools take their blocks on first use
    const unsigned long count = vorn::test::CountAllocations([] { ParseMessage("("); });
    {
        FailAllocation fail(count);
        EXPECT_EQ(ParseMessage("("), "");
    }

    const CRegEx re("a");
    CRegExMatch match;
    EngineOutOfMemory engine;
    ExpectThrow<CMemoryException>([] { CRegEx("a"); }, kSource);
    ExpectThrow<CMemoryException>([] { CRegEx(W(u"a").c_str(), W(u"i").c_str()); }, kSource);
    ExpectThrow<CMemoryException>([&] { re.Matches("a", match); }, kSource);
    ExpectThrow<CMemoryException>([&] { re.Matches("ab", 0, 1); }, kSource);
    ExpectThrow<CMemoryException>([] { CRegExMatch(); }, "vorn/util/regex/RegExMatch");
}

} // namespace

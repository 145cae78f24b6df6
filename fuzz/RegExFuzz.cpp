// CRegEx compiling a pattern and matching a subject, both from the input, narrow (UTF-8) and
// wide. Only the documented exceptions may come out; a match's groups lie inside the text, at
// character edges for narrow text, and ASCII text matches alike in both widths.
#include <vorn/base/ArrayIndexOutOfBoundsException.h>
#include <vorn/base/IllegalArgumentException.h>
#include <vorn/base/MemoryException.h>
#include <vorn/util/regex/RegEx.h>

#include <algorithm>
#include <cctype>
#include <memory>
#include <string>

#include "Fuzz.h"

using vorn::base::CArrayIndexOutOfBoundsException;
using vorn::base::CException;
using vorn::base::CIllegalArgumentException;
using vorn::base::CMemoryException;
using vorn::util::regex::CRegEx;
using vorn::util::regex::CRegExMatch;
using vorn::util::regex::CRegExParseException;
using Units = std::u16string;

namespace {

// The engine backtracks: a repeat of alternatives that match alike, "(..(|(|())))*" or "(a|a)*b",
// tries every way through, exponential in the subject's length; and a counted repeat is unrolled
// at compile time. Inputs stay below these.
constexpr std::size_t kMaxPattern = 48;
constexpr std::size_t kMaxSubject = 16;

// Finds a repeat (*, + or {}) of something that can match the empty string, however deeply
// nested: "(b|a*)*c" or "((a*))+c". The engine recurses once per empty round of such a repeat and
// never stops, so it overflows any stack. Reads the pattern loosely and leans to "found": ignored
// space, anchors, look-arounds, back references and option groups all count as possibly empty.
class EmptyRepeat {
public:
    explicit EmptyRepeat(const std::string& pattern) : m_p(pattern) {}

    bool Found() {
        while (m_i < m_p.size()) {
            Alternatives();
            ++m_i; // a stray ')'
        }
        return m_found;
    }

private:
    bool At(char c) const { return m_i < m_p.size() && m_p[m_i] == c; }

    // The alternatives up to the next ')': whether one of them can match nothing.
    bool Alternatives() {
        bool empty = false, branch = true;
        while (m_i < m_p.size() && m_p[m_i] != ')') {
            if (m_p[m_i] == '|') {
                empty |= branch;
                branch = true;
                ++m_i;
            } else {
                const bool atom = Atom();
                branch &= Quantified(atom);
            }
        }
        return empty || branch;
    }

    bool Atom() {
        const char c = m_p[m_i++];
        if (c == '(') {
            bool zeroWidth = false;
            if (At('?')) {
                ++m_i;
                zeroWidth = !At(':') && !At('>');
                m_i += !zeroWidth;
            }
            const bool body = Alternatives();
            m_i += At(')');
            return zeroWidth || body;
        }
        if (c == '[') {
            for (int depth = 1; m_i < m_p.size() && depth > 0; ++m_i)
                if (m_p[m_i] == '\\')
                    ++m_i;
                else
                    depth += m_p[m_i] == '[' ? 1 : m_p[m_i] == ']' ? -1 : 0;
            return false;
        }
        if (c == '\\') {
            if (m_i == m_p.size())
                return false;
            const char e = m_p[m_i++];
            if ((e == 'p' || e == 'P') && At('{'))
                m_i = std::min(m_p.find('}', m_i), m_p.size() - 1) + 1;
            return std::string("bBAZz<>").find(e) != std::string::npos ||
                   std::isdigit(static_cast<unsigned char>(e));
        }
        return c == '^' || c == '$' || c == '#' || std::isspace(static_cast<unsigned char>(c));
    }

    // Applies the quantifiers that follow an atom; gives whether the result can match nothing.
    bool Quantified(bool empty) {
        while (m_i < m_p.size() && std::string("*+?{").find(m_p[m_i]) != std::string::npos) {
            const char q = m_p[m_i++];
            if (q != '?')
                m_found |= empty;
            if (q == '{') {
                empty |= At('0') || At(',');
                m_i = std::min(m_p.find('}', m_i), m_p.size() - 1) + 1;
            } else {
                empty |= q != '+';
            }
            m_i += q != '?' && At('?'); // lazy
        }
        return empty;
    }

    const std::string& m_p;
    std::size_t m_i = 0;
    bool m_found = false;
};

// Whether a counted repeat asks for more than 255 rounds: the engine builds each round at compile
// time, so "a{99999999}" costs memory and time in proportion.
bool CountsHigh(const std::string& p) {
    for (std::size_t i = p.find('{'); i != std::string::npos; i = p.find('{', i + 1))
        for (std::size_t k = i + 1, n = 0;
             k < p.size() && (p[k] == ',' || std::isdigit(static_cast<unsigned char>(p[k]))); ++k)
            if ((n = p[k] == ',' ? 0 : n * 10 + static_cast<std::size_t>(p[k] - '0')) > 255)
                return true;
    return false;
}

const unsigned short* Ptr(const Units& u) {
    return reinterpret_cast<const unsigned short*>(u.c_str());
}

Units Widen(const std::string& s) {
    Units u;
    for (unsigned char c : s)
        u.push_back(c);
    return u;
}

bool IsAscii(const std::string& s) {
    for (unsigned char c : s)
        if (c > 0x7F)
            return false;
    return true;
}

struct Groups {
    bool matched = false;
    std::basic_string<unsigned int> positions;
};

// Checks the groups of a match against a text of `length` units, `edge` saying where characters
// begin, and gives them.
template <typename Edge>
Groups Check(const CRegExMatch& match, bool matched, unsigned int length, Edge edge) {
    Groups g;
    g.matched = matched;
    if (!matched)
        return g;
    const unsigned int count = match.GetGroupCount();
    FUZZ_CHECK(count >= 1);
    for (unsigned int i = 0; i < count; ++i) {
        const unsigned int start = match.GetStartPosOfGroup(i);
        const unsigned int end = match.GetEndPosOfGroup(i);
        const bool unset = start == ~0u && end == ~0u;
        FUZZ_CHECK(unset || (start <= end && end <= length && edge(start) && edge(end)));
        FUZZ_CHECK(i > 0 || !unset);
        g.positions.push_back(start);
        g.positions.push_back(end);
    }
    try {
        match.GetStartPosOfGroup(count);
        FUZZ_CHECK(!"a group past the last");
    } catch (const CArrayIndexOutOfBoundsException&) {
    }
    return g;
}

std::unique_ptr<CRegEx> Compile(const std::string& pattern, const std::string* options, bool wide) {
    const Units wp = Widen(pattern);
    const Units wo = options ? Widen(*options) : Units();
    try {
        if (wide)
            return std::make_unique<CRegEx>(options ? CRegEx(Ptr(wp), Ptr(wo)) : CRegEx(Ptr(wp)));
        return std::make_unique<CRegEx>(options ? CRegEx(pattern.c_str(), options->c_str())
                                                : CRegEx(pattern.c_str()));
    } catch (const CIllegalArgumentException& e) {
        FUZZ_CHECK(pattern.empty() ? vorn::fuzz::Says(e, "Invalid pattern.")
                                   : options && vorn::fuzz::Says(e, "Invalid options."));
    } catch (const CException& e) {
        FUZZ_CHECK((vorn::fuzz::IsOneOf<CRegExParseException, CMemoryException>(e)));
    }
    return nullptr;
}

// Matches the whole subject and a range of it; the range comes from the input and may be bad.
template <typename Text, typename Edge>
Groups Match(const CRegEx& re, Text text, unsigned int length, unsigned int start, unsigned int end,
             Edge edge) {
    CRegExMatch match;
    const bool whole = re.Matches(text, match);
    FUZZ_CHECK(re.Matches(text) == whole);
    const Groups g = Check(match, whole, length, edge);
    try {
        CRegExMatch ranged;
        const bool r = re.Matches(text, start, end, ranged);
        FUZZ_CHECK(start < end && end <= length);
        Check(ranged, r, length, edge);
        if (r)
            FUZZ_CHECK(ranged.GetStartPosOfGroup(0) >= start && ranged.GetEndPosOfGroup(0) <= end);
    } catch (const CIllegalArgumentException& e) {
        FUZZ_CHECK(vorn::fuzz::Says(e, "Invalid start & end positons."));
    }
    return g;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    vorn::fuzz::Input in(data, size);
    const unsigned flags = in.Byte();
    const unsigned char startByte = in.Byte(), endByte = in.Byte();
    const std::string rest(reinterpret_cast<const char*>(data) + (size - in.Left()), in.Left());
    // Pattern, options (when asked for) and subject, separated by NUL bytes.
    const std::size_t p = rest.find('\0');
    const std::string pattern = rest.substr(0, p);
    std::string options, subject = p == std::string::npos ? "" : rest.substr(p + 1);
    if (flags & 2) {
        const std::size_t o = subject.find('\0');
        options = subject.substr(0, o);
        subject = o == std::string::npos ? "" : subject.substr(o + 1);
    }
    subject = subject.substr(0, subject.find('\0'));
    if (pattern.size() > kMaxPattern || subject.size() > kMaxSubject ||
        EmptyRepeat(pattern).Found() || CountsHigh(pattern))
        return 0;

    const auto length = static_cast<unsigned int>(subject.size());
    const unsigned int start = startByte % (length + 2), end = endByte % (length + 2);
    const bool ascii = IsAscii(pattern) && IsAscii(subject) && IsAscii(options);
    const std::string* opts = flags & 2 ? &options : nullptr;
    try {
        std::unique_ptr<CRegEx> narrow = Compile(pattern, opts, false);
        std::unique_ptr<CRegEx> wide =
            ascii || (flags & 1) ? Compile(pattern, opts, true) : nullptr;
        if (ascii)
            FUZZ_CHECK(!narrow == !wide);
        Groups n, w;
        if (narrow) {
            const CRegEx copy(*narrow);
            narrow.reset();
            const bool utf8 = vorn::fuzz::IsUtf8(
                reinterpret_cast<const std::uint8_t*>(subject.data()), subject.size());
            n = Match(copy, subject.c_str(), length, start, end, [&](unsigned int i) {
                return !utf8 || i >= length ||
                       (static_cast<unsigned char>(subject[i]) & 0xC0) != 0x80;
            });
        }
        if (wide) {
            const Units units = Widen(subject);
            w = Match(*wide, Ptr(units), length, start, end, [](unsigned int) { return true; });
        }
        if (ascii && narrow)
            FUZZ_CHECK(n.matched == w.matched && n.positions == w.positions);
    } catch (const CMemoryException&) {
        // The engine failed inside a match; the library's word for that is no memory.
    }
    return 0;
}

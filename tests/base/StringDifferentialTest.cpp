// CString's search, comparison and case operations against a plain model of UTF-8 text, over
// random strings with valid and invalid sequences.
#include <gtest/gtest.h>

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include <vorn/base/String.h>

namespace {

using vorn::base::CString;

// One character of the model: a code point with its bytes, or a lone byte that is no character.
struct Unit {
    std::int32_t value; // the code point, or 0x110000 + byte
    std::size_t offset;
    std::size_t size;
};

// Reads the lead byte's announced length, then rejects anything that isn't the shortest
// encoding of a scalar value.
std::vector<Unit> Units(const std::string& text) {
    std::vector<Unit> units;
    for (std::size_t i = 0; i < text.size();) {
        auto b = static_cast<unsigned char>(text[i]);
        std::size_t n = b < 0x80         ? 1
                        : (b >> 5) == 6  ? 2
                        : (b >> 4) == 14 ? 3
                        : (b >> 3) == 30 ? 4
                                         : 0;
        std::int32_t cp = n == 1 ? b : n == 2 ? (b & 0x1F) : n == 3 ? (b & 0x0F) : (b & 0x07);
        bool ok = n != 0 && i + n <= text.size();
        for (std::size_t k = 1; ok && k < n; ++k) {
            auto t = static_cast<unsigned char>(text[i + k]);
            ok = (t >> 6) == 2;
            cp = (cp << 6) | (t & 0x3F);
        }
        const std::int32_t shortest[] = {0, 0, 0x80, 0x800, 0x10000};
        ok = ok && cp >= shortest[n] && cp <= 0x10FFFF && !(cp >= 0xD800 && cp <= 0xDFFF);
        if (!ok) {
            units.push_back({0x110000 + b, i, 1});
            ++i;
        } else {
            units.push_back({cp, i, n});
            i += n;
        }
    }
    return units;
}

std::int32_t Fold(std::int32_t v) {
    return v >= 0x110000 ? v : u_foldCase(v, U_FOLD_CASE_DEFAULT);
}

bool Same(const Unit& a, const Unit& b, bool fold) {
    return fold ? Fold(a.value) == Fold(b.value) : a.value == b.value;
}

int Sign(int v) {
    return (v > 0) - (v < 0);
}

int ModelCompare(const std::string& a, const std::string& b, bool fold) {
    if (!fold) {
        for (std::size_t i = 0; i < a.size() && i < b.size(); ++i)
            if (a[i] != b[i])
                return static_cast<unsigned char>(a[i]) < static_cast<unsigned char>(b[i]) ? -1 : 1;
        return Sign(static_cast<int>(a.size()) - static_cast<int>(b.size()));
    }
    std::vector<Unit> ua = Units(a), ub = Units(b);
    for (std::size_t i = 0; i < ua.size() && i < ub.size(); ++i)
        if (Fold(ua[i].value) != Fold(ub[i].value))
            return Fold(ua[i].value) < Fold(ub[i].value) ? -1 : 1;
    return Sign(static_cast<int>(ua.size()) - static_cast<int>(ub.size()));
}

// Offset in `text` of the first match of `needle` at or behind `from`, searching forward.
int ModelSearch(const std::string& text, std::size_t from, const std::string& needle, bool fold) {
    std::vector<Unit> t = Units(text.substr(from)), n = Units(needle);
    for (std::size_t i = 0; i + n.size() <= t.size(); ++i) {
        std::size_t k = 0;
        while (k < n.size() && Same(t[i + k], n[k], fold))
            ++k;
        if (k == n.size())
            return static_cast<int>(from + t[i].offset);
    }
    return -1;
}

int ModelFind(const std::string& text, unsigned int start, const std::string& needle, bool fold) {
    if (text.empty() || start >= text.size() || needle.empty())
        return -1;
    return ModelSearch(text, start, needle, fold);
}

int ModelReverseFind(const std::string& text, unsigned int start, const std::string& needle,
                     bool fold) {
    if (text.empty() || start >= text.size() || needle.empty())
        return -1;
    const long long step = static_cast<long long>(needle.size());
    for (long long probe = static_cast<long long>(text.size()) - step;
         probe > static_cast<long long>(start); probe -= step) {
        int found = ModelSearch(text, static_cast<std::size_t>(probe), needle, fold);
        if (found >= 0)
            return found;
    }
    return -1;
}

int ModelReverseFindChar(const std::string& text, unsigned int start, char c) {
    if (text.empty() || start >= text.size() || c == '\0')
        return -1;
    Unit wanted = Units(std::string(1, c))[0];
    int last = -1;
    for (const Unit& u : Units(text.substr(start)))
        if (Same(u, wanted, false))
            last = static_cast<int>(start + u.offset);
    return last;
}

bool ModelAffix(const std::string& text, const std::string& s, bool suffix, bool fold) {
    if (s.empty() || s.size() > text.size())
        return false;
    return ModelCompare(text.substr(suffix ? text.size() - s.size() : 0, s.size()), s, fold) == 0;
}

std::string ModelCase(const std::string& text, bool upper) {
    std::string out;
    for (const Unit& u : Units(text)) {
        std::string bytes = text.substr(u.offset, u.size);
        if (u.value < 0x110000) {
            std::int32_t mapped = upper ? u_toupper(u.value) : u_tolower(u.value);
            char buffer[8];
            std::int32_t length = 0;
            UBool error = false;
            U8_APPEND(reinterpret_cast<uint8_t*>(buffer), length, 8, mapped, error);
            if (!error && static_cast<std::size_t>(length) == u.size)
                bytes.assign(buffer, static_cast<std::size_t>(length));
        }
        out += bytes;
    }
    return out;
}

// ASCII with its case pairs, characters whose folds differ in byte length or are special
// (ß, é/É, long s, Kelvin sign, the sigmas, dotted and dotless i, ǅ), a four-byte character, and
// ill-formed pieces: a lone continuation, a cut lead, a bad byte, an overlong form, an encoded
// surrogate, a value past U+10FFFF.
// clang-format off
const char* const kPieces[] = {
    "a", "b", "A", "B", "s", "S", "k", "K", " ",
    "\xc3\x9f", "\xc3\xa9", "\xc3\x89", "\xc5\xbf", "\xe2\x84\xaa", "\xce\xa3", "\xcf\x83",
    "\xcf\x82", "\xc4\xb0", "\xc4\xb1", "\xc7\x85", "\xf0\x9f\x98\x80",
    "\x80", "\xc3", "\xff", "\xe2\x82", "\xc0\xaf", "\xed\xa0\x80", "\xf4\x90\x80\x80"};
// clang-format on

std::string RandomText(std::mt19937& random, int maxPieces) {
    std::string text;
    int count = std::uniform_int_distribution<int>(0, maxPieces)(random);
    std::uniform_int_distribution<std::size_t> piece(0, std::size(kPieces) - 1);
    for (int i = 0; i < count; ++i)
        text += kPieces[piece(random)];
    return text;
}

TEST(StringDifferential, SearchCompareAndCaseAgreeWithTheModel) {
    std::mt19937 random(20240611);
    for (int round = 0; round < 4000; ++round) {
        const std::string text = RandomText(random, 10);
        std::string needle = RandomText(random, 3);
        if (!text.empty() && random() % 2 == 0) {
            // A byte range of the text, which may cut a character.
            std::size_t a = random() % text.size(), b = random() % text.size();
            needle = text.substr(std::min(a, b), std::max(a, b) - std::min(a, b) + 1);
        }
        const unsigned int start = static_cast<unsigned int>(random() % (text.size() + 2));
        const char c = needle.empty() ? 'a' : needle[random() % needle.size()];
        SCOPED_TRACE(::testing::Message() << "round " << round);

        CString s(text.c_str());
        CString n(needle.c_str());
        for (bool fold : {false, true}) {
            const int model = text.empty()     ? (needle.empty() ? 0 : -1)
                              : needle.empty() ? 1
                                               : ModelCompare(text, needle, fold);
            EXPECT_EQ(Sign(fold ? s.CompareIgnoreCase(n) : s.Compare(n)), model);
            EXPECT_EQ(Sign(fold ? s.CompareIgnoreCase(needle.c_str()) : s.Compare(needle.c_str())),
                      text.empty() ? -1 : model);
            EXPECT_EQ(fold ? s.FindIgnoreCase(n, start) : s.Find(n, start),
                      ModelFind(text, start, needle, fold));
            EXPECT_EQ(fold ? s.ReverseFindIgnoreCase(needle.c_str(), start)
                           : s.ReverseFind(needle.c_str(), start),
                      ModelReverseFind(text, start, needle, fold));
            EXPECT_EQ(fold ? s.StartsWithIgnoreCase(n) : s.StartsWith(n),
                      ModelAffix(text, needle, false, fold));
            EXPECT_EQ(fold ? s.EndsWithIgnoreCase(needle.c_str()) : s.EndsWith(needle.c_str()),
                      ModelAffix(text, needle, true, fold));
        }
        EXPECT_EQ(s.Find(c, start), ModelFind(text, start, std::string(1, c), false));
        EXPECT_EQ(s.ReverseFind(c, start), ModelReverseFindChar(text, start, c));
        if (!text.empty() && !needle.empty()) {
            EXPECT_EQ(s < n, ModelCompare(text, needle, false) < 0);
        }

        CString upper(s), lower(s);
        upper.MakeUpper();
        lower.MakeLower();
        EXPECT_EQ(std::string(static_cast<const char*>(upper)), ModelCase(text, true));
        EXPECT_EQ(std::string(static_cast<const char*>(lower)), ModelCase(text, false));
        EXPECT_EQ(std::string(static_cast<const char*>(s)), text);
    }
}

} // namespace

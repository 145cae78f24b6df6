// Matching narrow text, which the library converts to UTF-16 and whose positions it gives back
// in bytes, beside the wide form on the same text ("Case/wide") and beside the engine's own
// narrow entry, which converts but keeps its positions in units ("Case/xerces").
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/regx/Match.hpp>
#include <xercesc/util/regx/RegularExpression.hpp>

#include <vorn/util/regex/RegEx.h>

#include "platform/TextConvert.h"

using vorn::util::regex::CRegEx;
using vorn::util::regex::CRegExMatch;

namespace {

constexpr const char* kPattern = "([A-Z]+)-([0-9]{4})-([0-9]+)";
constexpr const char* kTicket = "VRN-2024-0815";

// About 1 MB of text with one match, at its very end, so that the positions of the narrow match
// lie a whole text's walk away from its start.
std::string Text(bool ascii) {
    const char* const mixed[] = {
        "Größe, Übermaß und naïve Cafés à côté. ",
        "Ελληνικό κείμενο για τη δοκιμή. ",
        "中文文本用于测试转换。",
        "한국어 텍스트를 변환합니다. ",
        "\xf0\x9f\x98\x80 \xf0\x9f\x8e\x89 ",
    };
    const char* const plain[] = {"the quick brown fox jumps over the lazy dog. "};
    const char* const* pieces = ascii ? plain : mixed;
    const std::size_t count = ascii ? 1 : sizeof mixed / sizeof mixed[0];
    std::string s;
    for (std::size_t i = 0; s.size() < (1u << 20); ++i)
        s += pieces[i % count];
    return s + kTicket;
}

struct Texts {
    std::string narrow;
    std::basic_string<unsigned short> wide;
};

const Texts& TextsOf(bool ascii) {
    static const auto make = [](bool a) {
        Texts t{Text(a), {}};
        const int length = static_cast<int>(t.narrow.size());
        t.wide.resize(static_cast<std::size_t>(
            CHANSI2Unicode(t.narrow.c_str(), length, nullptr, 0, 0, nullptr)));
        CHANSI2Unicode(t.narrow.c_str(), length, &t.wide[0], static_cast<int>(t.wide.size()), 0,
                       nullptr);
        // Both forms must find the ticket at the end of their own text.
        const CRegEx re(kPattern);
        CRegExMatch n, w;
        if (!re.Matches(t.narrow.c_str(), n) || !re.Matches(t.wide.c_str(), w) ||
            n.GetEndPosOfGroup(0) != t.narrow.size() || w.GetEndPosOfGroup(0) != t.wide.size() ||
            n.GetStartPosOfGroup(1) != t.narrow.size() - std::strlen(kTicket)) {
            std::fprintf(stderr, "the narrow and wide matches differ\n");
            std::abort();
        }
        return t;
    };
    static const Texts plain = make(true), mixed = make(false);
    return ascii ? plain : mixed;
}

void Narrow(benchmark::State& state, bool ascii) {
    const char* text = TextsOf(ascii).narrow.c_str();
    const CRegEx re(kPattern);
    CRegExMatch match;
    for (auto _ : state)
        benchmark::DoNotOptimize(re.Matches(text, match));
}

void Wide(benchmark::State& state, bool ascii) {
    const unsigned short* text = TextsOf(ascii).wide.c_str();
    const CRegEx re(kPattern);
    CRegExMatch match;
    for (auto _ : state)
        benchmark::DoNotOptimize(re.Matches(text, match));
}

void Engine(benchmark::State& state, bool ascii) {
    const char* text = TextsOf(ascii).narrow.c_str();
    xercesc::MemoryManager* manager = xercesc::XMLPlatformUtils::fgMemoryManager;
    const xercesc::RegularExpression re(kPattern, manager);
    xercesc::Match match(manager);
    for (auto _ : state)
        benchmark::DoNotOptimize(re.matches(text, &match, manager));
}

BENCHMARK_CAPTURE(Narrow, ascii, true)
    ->Name("RegExNarrowAscii1M/vorn")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Wide, ascii, true)
    ->Name("RegExNarrowAscii1M/wide")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Engine, ascii, true)
    ->Name("RegExNarrowAscii1M/xerces")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Narrow, mixed, false)
    ->Name("RegExNarrowMixed1M/vorn")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Wide, mixed, false)
    ->Name("RegExNarrowMixed1M/wide")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Engine, mixed, false)
    ->Name("RegExNarrowMixed1M/xerces")
    ->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();

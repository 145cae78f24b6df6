// The string tokenizer beside a split loop over std::string_view. Each case is registered as
// "Case/vorn" and "Case/<peer>", and bench/report.py pairs them by that name.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <string_view>

#include <vorn/util/StringTokenizer.h>

namespace {

// 10 MB of fields of 1 to 15 letters and digits, one comma between two fields.
const std::string& Text() {
    static const std::string text = [] {
        const char alphabet[] = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
        std::mt19937 random(11);
        std::string t;
        while (t.size() < (10u << 20)) {
            if (!t.empty())
                t += ',';
            for (unsigned int n = 1 + random() % 15; n > 0; --n)
                t += alphabet[random() % (sizeof alphabet - 1)];
        }
        return t;
    }();
    return text;
}

// Tokens and their bytes, so that both sides are seen to do the same work.
struct Tally {
    unsigned long tokens = 0, bytes = 0;
};

Tally Tokenize(const std::string& text) {
    Tally tally;
    vorn::util::CStringTokenizer tokenizer(text.c_str(), ",", false);
    while (tokenizer.HasMoreTokens()) {
        ++tally.tokens;
        tally.bytes += tokenizer.GetNextToken().GetLength();
    }
    return tally;
}

// Empty fields are passed over, as the tokenizer does.
Tally Split(std::string_view text) {
    Tally tally;
    for (std::size_t start = 0; start < text.size();) {
        std::size_t end = text.find(',', start);
        if (end == std::string_view::npos)
            end = text.size();
        if (end > start) {
            std::string_view token = text.substr(start, end - start);
            ++tally.tokens;
            tally.bytes += token.size();
        }
        start = end + 1;
    }
    return tally;
}

void CheckSameTokens() {
    const Tally ours = Tokenize(Text()), theirs = Split(Text());
    if (ours.tokens != theirs.tokens || ours.bytes != theirs.bytes) {
        std::fprintf(stderr, "the tokenizers disagree: %lu/%lu tokens\n", ours.tokens,
                     theirs.tokens);
        std::abort();
    }
}

// The tokenizer copies the text into its own CString first; that is part of each run.
void StringTokenizer(benchmark::State& state) {
    CheckSameTokens();
    for (auto _ : state)
        benchmark::DoNotOptimize(Tokenize(Text()).bytes);
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * Text().size()));
}
BENCHMARK(StringTokenizer)->Name("Tokenize10M/vorn")->Unit(benchmark::kMillisecond);

void StringViewSplit(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(Split(Text()).bytes);
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * Text().size()));
}
BENCHMARK(StringViewSplit)->Name("Tokenize10M/std_string_view")->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();

// One copy of a 1 KB text: CString shares its buffer, std::string copies the bytes.
#include <benchmark/benchmark.h>

#include <string>

#include <vorn/base/String.h>

namespace {

const std::string& Text() {
    static const std::string text(1024, 'x');
    return text;
}

void CStringCopy(benchmark::State& state) {
    const vorn::base::CString source(Text().c_str());
    for (auto _ : state) {
        vorn::base::CString copy(source);
        benchmark::DoNotOptimize(copy);
    }
}
BENCHMARK(CStringCopy);

void StdStringCopy(benchmark::State& state) {
    const std::string source(Text());
    for (auto _ : state) {
        std::string copy(source);
        benchmark::DoNotOptimize(copy);
    }
}
BENCHMARK(StdStringCopy);

} // namespace

BENCHMARK_MAIN();

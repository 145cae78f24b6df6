// CUnicodeString beside std::u16string: a copy of 1 K units (a share against a copy of the units)
// and 32 appends of 16 units into a buffer that has the room.
#include <benchmark/benchmark.h>

#include <string>

#include <vorn/base/UnicodeString.h>

namespace {

const std::u16string& Text() {
    static const std::u16string text(1024, u'x');
    return text;
}
const std::u16string& Piece() {
    static const std::u16string piece(16, u'y');
    return piece;
}
const unsigned short* Units(const std::u16string& s) {
    return reinterpret_cast<const unsigned short*>(s.c_str());
}

void UnicodeStringCopy(benchmark::State& state) {
    const vorn::base::CUnicodeString source(Units(Text()));
    for (auto _ : state) {
        vorn::base::CUnicodeString copy(source);
        benchmark::DoNotOptimize(copy);
    }
}
BENCHMARK(UnicodeStringCopy);

void U16StringCopy(benchmark::State& state) {
    const std::u16string source(Text());
    for (auto _ : state) {
        std::u16string copy(source);
        benchmark::DoNotOptimize(copy);
    }
}
BENCHMARK(U16StringCopy);

void UnicodeStringAppend(benchmark::State& state) {
    vorn::base::CUnicodeString text;
    text.EnsureCapacity(1024);
    const unsigned short* piece = Units(Piece());
    for (auto _ : state) {
        text = Units(Piece());
        for (int i = 0; i < 31; ++i)
            text += piece;
        benchmark::DoNotOptimize(text);
    }
}
BENCHMARK(UnicodeStringAppend);

void U16StringAppend(benchmark::State& state) {
    std::u16string text;
    text.reserve(1024);
    for (auto _ : state) {
        text = Piece();
        for (int i = 0; i < 31; ++i)
            text += Piece();
        benchmark::DoNotOptimize(text);
    }
}
BENCHMARK(U16StringAppend);

} // namespace

BENCHMARK_MAIN();

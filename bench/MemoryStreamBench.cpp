// The memory output stream beside the standard containers. Each case is registered as
// "Case/vorn" and "Case/<peer>", and bench/report.py pairs them by that name.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include <vorn/io/MemoryOutputStream.h>

using vorn::io::CMemoryOutputStream;

namespace {

constexpr unsigned int kTotal = 1u << 20;
constexpr unsigned int kBlock = 4096;

// ---- 1 MB one byte at a time

// The default stream: room grows by its granule of 64 bytes.
void MemoryWriteByte(benchmark::State& state) {
    for (auto _ : state) {
        CMemoryOutputStream stream;
        for (unsigned int i = 0; i < kTotal; ++i)
            stream.Write(static_cast<char>(i));
        benchmark::DoNotOptimize(stream.GetBuffer());
    }
}
BENCHMARK(MemoryWriteByte)->Name("MemoryWriteByte1M/vorn")->Unit(benchmark::kMillisecond);

void VectorPushBack(benchmark::State& state) {
    for (auto _ : state) {
        std::vector<char> bytes;
        for (unsigned int i = 0; i < kTotal; ++i)
            bytes.push_back(static_cast<char>(i));
        benchmark::DoNotOptimize(bytes.data());
    }
}
BENCHMARK(VectorPushBack)->Name("MemoryWriteByte1M/std_vector")->Unit(benchmark::kMillisecond);

// Both sides given the whole room first, which leaves the cost of the call itself.
void MemoryWriteByteReserved(benchmark::State& state) {
    for (auto _ : state) {
        CMemoryOutputStream stream(kTotal, 64);
        for (unsigned int i = 0; i < kTotal; ++i)
            stream.Write(static_cast<char>(i));
        benchmark::DoNotOptimize(stream.GetBuffer());
    }
}
BENCHMARK(MemoryWriteByteReserved)
    ->Name("MemoryWriteByte1MReserved/vorn")
    ->Unit(benchmark::kMicrosecond);

void VectorPushBackReserved(benchmark::State& state) {
    for (auto _ : state) {
        std::vector<char> bytes;
        bytes.reserve(kTotal);
        for (unsigned int i = 0; i < kTotal; ++i)
            bytes.push_back(static_cast<char>(i));
        benchmark::DoNotOptimize(bytes.data());
    }
}
BENCHMARK(VectorPushBackReserved)
    ->Name("MemoryWriteByte1MReserved/std_vector")
    ->Unit(benchmark::kMicrosecond);

// ---- 1 MB in blocks of 4 KB

const std::string& Block() {
    static const std::string block(kBlock, 'b');
    return block;
}

void MemoryWriteBlock(benchmark::State& state) {
    const char* block = Block().data();
    for (auto _ : state) {
        CMemoryOutputStream stream;
        for (unsigned int i = 0; i < kTotal / kBlock; ++i)
            stream.Write(block, kBlock);
        benchmark::DoNotOptimize(stream.GetBuffer());
    }
}
BENCHMARK(MemoryWriteBlock)->Name("MemoryWriteBlock4K/vorn")->Unit(benchmark::kMicrosecond);

void StringAppendBlock(benchmark::State& state) {
    const char* block = Block().data();
    for (auto _ : state) {
        std::string bytes;
        for (unsigned int i = 0; i < kTotal / kBlock; ++i)
            bytes.append(block, kBlock);
        benchmark::DoNotOptimize(bytes.data());
    }
}
BENCHMARK(StringAppendBlock)->Name("MemoryWriteBlock4K/std_string")->Unit(benchmark::kMicrosecond);

void MemoryWriteBlockReserved(benchmark::State& state) {
    const char* block = Block().data();
    for (auto _ : state) {
        CMemoryOutputStream stream(kTotal, 64);
        for (unsigned int i = 0; i < kTotal / kBlock; ++i)
            stream.Write(block, kBlock);
        benchmark::DoNotOptimize(stream.GetBuffer());
    }
}
BENCHMARK(MemoryWriteBlockReserved)
    ->Name("MemoryWriteBlock4KReserved/vorn")
    ->Unit(benchmark::kMicrosecond);

void StringAppendBlockReserved(benchmark::State& state) {
    const char* block = Block().data();
    for (auto _ : state) {
        std::string bytes;
        bytes.reserve(kTotal);
        for (unsigned int i = 0; i < kTotal / kBlock; ++i)
            bytes.append(block, kBlock);
        benchmark::DoNotOptimize(bytes.data());
    }
}
BENCHMARK(StringAppendBlockReserved)
    ->Name("MemoryWriteBlock4KReserved/std_string")
    ->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();

// The data streams beside POCO's binary writer and reader in big-endian mode, both over memory.
// Each case is registered as "Case/vorn" and "Case/<peer>", and bench/report.py pairs them by that
// name.
#include <benchmark/benchmark.h>

#include <vector>

#include <Poco/BinaryReader.h>
#include <Poco/BinaryWriter.h>
#include <Poco/MemoryStream.h>

#include <vorn/io/DataInputStream.h>
#include <vorn/io/DataOutputStream.h>
#include <vorn/io/MemoryInputStream.h>
#include <vorn/io/MemoryOutputStream.h>

using namespace vorn::io;

namespace {

constexpr int kValues = 1000000;
constexpr unsigned int kBytes = kValues * 4;

// Both writers fill a block that has the room for all values from the start, and both readers
// read the same bytes.
void DataWriteInt32(benchmark::State& state) {
    CMemoryOutputStream memory(kBytes, 64);
    for (auto _ : state) {
        memory.Reset();
        CDataOutputStream out(&memory);
        for (int i = 0; i < kValues; ++i)
            out.WriteInt32(i);
        benchmark::DoNotOptimize(memory.GetBuffer());
    }
}
BENCHMARK(DataWriteInt32)->Name("DataWriteInt32_1M/vorn")->Unit(benchmark::kMillisecond);

void PocoWriteInt32(benchmark::State& state) {
    std::vector<char> block(kBytes);
    for (auto _ : state) {
        Poco::MemoryOutputStream memory(block.data(), kBytes);
        Poco::BinaryWriter out(memory, Poco::BinaryWriter::BIG_ENDIAN_BYTE_ORDER);
        for (int i = 0; i < kValues; ++i)
            out << static_cast<Poco::Int32>(i);
        benchmark::DoNotOptimize(block.data());
    }
}
BENCHMARK(PocoWriteInt32)->Name("DataWriteInt32_1M/poco")->Unit(benchmark::kMillisecond);

const std::vector<char>& Written() {
    static const std::vector<char> bytes = [] {
        CMemoryOutputStream memory(kBytes, 64);
        CDataOutputStream out(&memory);
        for (int i = 0; i < kValues; ++i)
            out.WriteInt32(i * 7);
        return std::vector<char>(memory.GetBuffer(), memory.GetBuffer() + kBytes);
    }();
    return bytes;
}

void DataReadInt32(benchmark::State& state) {
    const std::vector<char>& bytes = Written();
    for (auto _ : state) {
        CMemoryInputStream memory(bytes.data(), kBytes, false);
        CDataInputStream in(&memory);
        int sum = 0;
        for (int i = 0; i < kValues; ++i)
            sum += in.ReadInt32();
        benchmark::DoNotOptimize(sum);
    }
}
BENCHMARK(DataReadInt32)->Name("DataReadInt32_1M/vorn")->Unit(benchmark::kMillisecond);

void PocoReadInt32(benchmark::State& state) {
    const std::vector<char>& bytes = Written();
    for (auto _ : state) {
        Poco::MemoryInputStream memory(bytes.data(), kBytes);
        Poco::BinaryReader in(memory, Poco::BinaryReader::BIG_ENDIAN_BYTE_ORDER);
        int sum = 0;
        for (int i = 0; i < kValues; ++i) {
            Poco::Int32 value;
            in >> value;
            sum += value;
        }
        benchmark::DoNotOptimize(sum);
    }
}
BENCHMARK(PocoReadInt32)->Name("DataReadInt32_1M/poco")->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();

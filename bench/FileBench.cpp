// The file streams beside the C library and the standard streams: 256 MB written and read in
// 64 KB blocks, and one byte at a time through a buffer of 64 KB on every side. Each case is
// registered as "Case/vorn" and "Case/<peer>", and bench/report.py pairs them by that name.
// The files live in a directory of their own under TMPDIR (or /tmp), on the disk.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <vorn/io/BufferedInputStream.h>
#include <vorn/io/BufferedOutputStream.h>
#include <vorn/io/FileInputStream.h>
#include <vorn/io/FileOutputStream.h>

using namespace vorn::io;

namespace {

constexpr std::size_t kTotal = std::size_t{256} << 20;
constexpr unsigned int kBlock = 64 * 1024;

// A directory of the run, removed at exit, holding the file that every write case writes and
// the file of 256 MB that every read case reads.
class Files {
public:
    Files() {
        const char* tmp = std::getenv("TMPDIR");
        std::string name = std::string(tmp != nullptr ? tmp : "/tmp") + "/vorn-file-bench-" +
                           std::string(6, 'X'); // mkdtemp's unique part
        if (mkdtemp(name.data()) == nullptr)
            std::abort();
        m_dir = name;
        std::ofstream data(Read(), std::ios::binary);
        const std::vector<char> block(kBlock, 'r');
        for (std::size_t n = 0; n < kTotal; n += kBlock)
            data.write(block.data(), kBlock);
    }
    ~Files() { std::filesystem::remove_all(m_dir); }
    std::string Written() const { return m_dir + "/written"; }
    std::string Read() const { return m_dir + "/read"; }

private:
    std::string m_dir;
};

const Files& TheFiles() {
    static const Files files;
    return files;
}

const char* Block() {
    static const std::vector<char> block(kBlock, 'w');
    return block.data();
}

void Count(benchmark::State& state) {
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * kTotal));
}

// ---- 64 KB blocks

void WriteBlocks(benchmark::State& state) {
    const std::string path = TheFiles().Written();
    for (auto _ : state) {
        CFileOutputStream out(path.c_str(), false);
        for (std::size_t n = 0; n < kTotal; n += kBlock)
            out.Write(Block(), kBlock);
        out.Close();
    }
    Count(state);
}
BENCHMARK(WriteBlocks)->Name("FileWrite64K/vorn")->Unit(benchmark::kMillisecond);

void WriteBlocksStdio(benchmark::State& state) {
    const std::string path = TheFiles().Written();
    for (auto _ : state) {
        std::FILE* out = std::fopen(path.c_str(), "wb");
        for (std::size_t n = 0; n < kTotal; n += kBlock)
            std::fwrite(Block(), 1, kBlock, out);
        std::fclose(out);
    }
    Count(state);
}
BENCHMARK(WriteBlocksStdio)->Name("FileWrite64K/fwrite")->Unit(benchmark::kMillisecond);

void WriteBlocksStream(benchmark::State& state) {
    const std::string path = TheFiles().Written();
    for (auto _ : state) {
        std::ofstream out(path, std::ios::binary | std::ios::trunc);
        for (std::size_t n = 0; n < kTotal; n += kBlock)
            out.write(Block(), kBlock);
        out.close();
    }
    Count(state);
}
BENCHMARK(WriteBlocksStream)->Name("FileWrite64K/ofstream")->Unit(benchmark::kMillisecond);

void ReadBlocks(benchmark::State& state) {
    const std::string path = TheFiles().Read();
    std::vector<char> block(kBlock);
    for (auto _ : state) {
        CFileInputStream in(path.c_str());
        while (in.Read(block.data(), kBlock) > 0)
            benchmark::DoNotOptimize(block.data());
        in.Close();
    }
    Count(state);
}
BENCHMARK(ReadBlocks)->Name("FileRead64K/vorn")->Unit(benchmark::kMillisecond);

void ReadBlocksStdio(benchmark::State& state) {
    const std::string path = TheFiles().Read();
    std::vector<char> block(kBlock);
    for (auto _ : state) {
        std::FILE* in = std::fopen(path.c_str(), "rb");
        while (std::fread(block.data(), 1, kBlock, in) > 0)
            benchmark::DoNotOptimize(block.data());
        std::fclose(in);
    }
    Count(state);
}
BENCHMARK(ReadBlocksStdio)->Name("FileRead64K/fread")->Unit(benchmark::kMillisecond);

void ReadBlocksStream(benchmark::State& state) {
    const std::string path = TheFiles().Read();
    std::vector<char> block(kBlock);
    for (auto _ : state) {
        std::ifstream in(path, std::ios::binary);
        while (in.read(block.data(), kBlock).gcount() > 0)
            benchmark::DoNotOptimize(block.data());
    }
    Count(state);
}
BENCHMARK(ReadBlocksStream)->Name("FileRead64K/ifstream")->Unit(benchmark::kMillisecond);

// ---- One byte at a time, each side with a buffer of 64 KB

void WriteBytes(benchmark::State& state) {
    const std::string path = TheFiles().Written();
    for (auto _ : state) {
        CFileOutputStream file(path.c_str(), false);
        CBufferedOutputStream out(&file, kBlock);
        for (std::size_t n = 0; n < kTotal; ++n)
            out.Write(static_cast<char>(n));
        out.Close();
    }
    Count(state);
}
BENCHMARK(WriteBytes)->Name("FileWriteByte/vorn")->Unit(benchmark::kMillisecond);

void WriteBytesStdio(benchmark::State& state) {
    const std::string path = TheFiles().Written();
    for (auto _ : state) {
        std::FILE* out = std::fopen(path.c_str(), "wb");
        std::setvbuf(out, nullptr, _IOFBF, kBlock);
        for (std::size_t n = 0; n < kTotal; ++n)
            std::putc(static_cast<char>(n), out);
        std::fclose(out);
    }
    Count(state);
}
BENCHMARK(WriteBytesStdio)->Name("FileWriteByte/putc")->Unit(benchmark::kMillisecond);

void WriteBytesStream(benchmark::State& state) {
    const std::string path = TheFiles().Written();
    std::vector<char> buffer(kBlock);
    for (auto _ : state) {
        std::ofstream out;
        out.rdbuf()->pubsetbuf(buffer.data(), kBlock);
        out.open(path, std::ios::binary | std::ios::trunc);
        for (std::size_t n = 0; n < kTotal; ++n)
            out.put(static_cast<char>(n));
        out.close();
    }
    Count(state);
}
BENCHMARK(WriteBytesStream)->Name("FileWriteByte/ofstream")->Unit(benchmark::kMillisecond);

void ReadBytes(benchmark::State& state) {
    const std::string path = TheFiles().Read();
    for (auto _ : state) {
        CFileInputStream file(path.c_str());
        CBufferedInputStream in(&file, kBlock);
        long sum = 0;
        for (int c; (c = in.Read()) != CInputStream::EOS;)
            sum += c;
        benchmark::DoNotOptimize(sum);
        in.Close();
    }
    Count(state);
}
BENCHMARK(ReadBytes)->Name("FileReadByte/vorn")->Unit(benchmark::kMillisecond);

void ReadBytesStdio(benchmark::State& state) {
    const std::string path = TheFiles().Read();
    for (auto _ : state) {
        std::FILE* in = std::fopen(path.c_str(), "rb");
        std::setvbuf(in, nullptr, _IOFBF, kBlock);
        long sum = 0;
        for (int c; (c = std::getc(in)) != EOF;)
            sum += static_cast<signed char>(c);
        benchmark::DoNotOptimize(sum);
        std::fclose(in);
    }
    Count(state);
}
BENCHMARK(ReadBytesStdio)->Name("FileReadByte/getc")->Unit(benchmark::kMillisecond);

void ReadBytesStream(benchmark::State& state) {
    const std::string path = TheFiles().Read();
    std::vector<char> buffer(kBlock);
    for (auto _ : state) {
        std::ifstream in;
        in.rdbuf()->pubsetbuf(buffer.data(), kBlock);
        in.open(path, std::ios::binary);
        long sum = 0;
        for (int c; (c = in.get()) != std::ifstream::traits_type::eof();)
            sum += static_cast<signed char>(c);
        benchmark::DoNotOptimize(sum);
    }
    Count(state);
}
BENCHMARK(ReadBytesStream)->Name("FileReadByte/ifstream")->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();

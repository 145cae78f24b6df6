// The base64 output stream beside CBinaryData's encoder and POCO's encoder stream (when POCO is
// there). Each case is registered as "Case/vorn" and "Case/<peer>", and bench/report.py pairs
// them by that name.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <random>
#include <streambuf>
#include <string>
#include <vector>

#ifdef VORN_BENCH_POCO
#include <Poco/Base64Encoder.h>
#include <ostream>
#endif

#include <vorn/base/BinaryData.h>
#include <vorn/io/Base64OutputStream.h>
#include <vorn/io/MemoryOutputStream.h>

namespace {

constexpr unsigned int kBytes = 64u << 20;
constexpr unsigned int kText = (kBytes + 2) / 3 * 4;

const std::vector<char>& Bytes() {
    static const std::vector<char> bytes = [] {
        std::mt19937 random(64);
        std::vector<char> v(kBytes);
        for (char& c : v)
            c = static_cast<char>(random());
        return v;
    }();
    return bytes;
}

// One line on every side, into memory that has the room from the start.
void Stream(vorn::io::CMemoryOutputStream& sink) {
    sink.Reset();
    vorn::io::CBase64OutputStream out(&sink, 0);
    out.Write(Bytes().data(), kBytes);
    out.Flush();
}

void Base64Stream(benchmark::State& state) {
    vorn::io::CMemoryOutputStream sink(kText, 4096);
    Stream(sink);
    if (sink.GetBufferSize() != kText ||
        std::string(sink.GetBuffer(), kText) !=
            static_cast<const char*>(
                vorn::base::CBinaryData::ToBase64String(Bytes().data(), kBytes))) {
        std::fprintf(stderr, "the stream's text differs from CBinaryData's\n");
        std::abort();
    }
    for (auto _ : state) {
        Stream(sink);
        benchmark::DoNotOptimize(sink.GetBuffer());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * kBytes);
}
BENCHMARK(Base64Stream)->Name("Base64Stream64M/vorn")->Unit(benchmark::kMillisecond);

void BinaryDataEncode(benchmark::State& state) {
    for (auto _ : state) {
        vorn::base::CString text = vorn::base::CBinaryData::ToBase64String(Bytes().data(), kBytes);
        benchmark::DoNotOptimize(text);
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * kBytes);
}
BENCHMARK(BinaryDataEncode)->Name("Base64Stream64M/binary_data")->Unit(benchmark::kMillisecond);

#ifdef VORN_BENCH_POCO
// An ostream into a string that has the room from the start, as the memory stream has.
class StringSink : public std::streambuf {
public:
    explicit StringSink(std::string& text) : m_text(text) {}

protected:
    int_type overflow(int_type c) override {
        if (c != traits_type::eof())
            m_text.push_back(static_cast<char>(c));
        return c;
    }
    std::streamsize xsputn(const char* s, std::streamsize n) override {
        m_text.append(s, static_cast<std::size_t>(n));
        return n;
    }

private:
    std::string& m_text;
};

void PocoEncode(std::string& text) {
    text.clear();
    StringSink sink(text);
    std::ostream out(&sink);
    Poco::Base64Encoder encoder(out);
    encoder.rdbuf()->setLineLength(0);
    encoder.write(Bytes().data(), kBytes);
    encoder.close();
}

void PocoBase64Encoder(benchmark::State& state) {
    std::string text;
    text.reserve(kText);
    PocoEncode(text);
    if (text.size() != kText) {
        std::fprintf(stderr, "POCO's text has %zu bytes\n", text.size());
        std::abort();
    }
    for (auto _ : state) {
        PocoEncode(text);
        benchmark::DoNotOptimize(text.data());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * kBytes);
}
BENCHMARK(PocoBase64Encoder)->Name("Base64Stream64M/poco")->Unit(benchmark::kMillisecond);
#endif

} // namespace

BENCHMARK_MAIN();

// Base64 of CBinaryData beside POCO's encoder and decoder streams. Each case is registered as
// "Case/vorn" and "Case/<peer>", and bench/report.py pairs them by that name.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include <Poco/Base64Decoder.h>
#include <Poco/Base64Encoder.h>

#include <vorn/base/BinaryData.h>

#include "platform/Memory.h"

using vorn::base::CBinaryData;
using vorn::base::CString;

namespace {

constexpr unsigned int kBytes = 1u << 20;

const std::vector<char>& Bytes() {
    static const std::vector<char> bytes = [] {
        std::mt19937 random(7);
        std::vector<char> v(kBytes);
        for (char& c : v)
            c = static_cast<char>(random());
        return v;
    }();
    return bytes;
}

const std::string& Text() {
    static const std::string text(CBinaryData::ToBase64String(Bytes().data(), kBytes));
    return text;
}

// One line with no breaks on both sides, so both write and read the same text.
std::string PocoEncode(const std::vector<char>& bytes) {
    std::ostringstream text;
    Poco::Base64Encoder encoder(text);
    encoder.rdbuf()->setLineLength(0);
    encoder.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    encoder.close();
    return text.str();
}

void CheckSameText() {
    if (PocoEncode(Bytes()) != Text()) {
        std::fprintf(stderr, "the base64 texts differ from POCO's\n");
        std::abort();
    }
}

void Base64Encode(benchmark::State& state) {
    CheckSameText();
    for (auto _ : state) {
        CString text = CBinaryData::ToBase64String(Bytes().data(), kBytes);
        benchmark::DoNotOptimize(text);
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * kBytes);
}
BENCHMARK(Base64Encode)->Name("Base64Encode1M/vorn")->Unit(benchmark::kMillisecond);

void PocoBase64Encode(benchmark::State& state) {
    for (auto _ : state) {
        std::string text = PocoEncode(Bytes());
        benchmark::DoNotOptimize(text);
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * kBytes);
}
BENCHMARK(PocoBase64Encode)->Name("Base64Encode1M/poco")->Unit(benchmark::kMillisecond);

void Base64Decode(benchmark::State& state) {
    const CString text(Text().c_str());
    for (auto _ : state) {
        char* data;
        unsigned int length;
        CBinaryData::ParseBase64String(text, data, length);
        benchmark::DoNotOptimize(data);
        ZK_free(data);
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * kBytes);
}
BENCHMARK(Base64Decode)->Name("Base64Decode1M/vorn")->Unit(benchmark::kMillisecond);

void PocoBase64Decode(benchmark::State& state) {
    std::vector<char> bytes(kBytes);
    for (auto _ : state) {
        std::istringstream text(Text());
        Poco::Base64Decoder decoder(text);
        decoder.read(bytes.data(), kBytes);
        benchmark::DoNotOptimize(bytes.data());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * kBytes);
}
BENCHMARK(PocoBase64Decode)->Name("Base64Decode1M/poco")->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();

// The collections beside the standard library and the C library. Each case is registered as
// "Case/vorn" and "Case/<peer>", and bench/report.py pairs them by that name.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <unordered_set>
#include <vector>

#include <vorn/util/Sort.h>
#include <vorn/util/StringSet.h>

namespace {

// ---- A set of 100,000 texts

std::vector<std::string> MakeKeys(const char* format) {
    std::vector<std::string> v;
    char text[32];
    for (int i = 0; i < 100000; ++i) {
        std::snprintf(text, sizeof text, format, i);
        v.emplace_back(text);
    }
    return v;
}

// Twelve bytes: the library's hash takes every byte of a key below 16.
const std::vector<std::string>& Keys() {
    static const std::vector<std::string> keys = MakeKeys("element%05d");
    return keys;
}

// Sixteen bytes: from there on the hash samples the key.
const std::vector<std::string>& LongKeys() {
    static const std::vector<std::string> keys = MakeKeys("item/%06d/name");
    return keys;
}

// Both sets start at their default size and grow as they fill.
void StringSetPut(benchmark::State& state) {
    for (auto _ : state) {
        vorn::util::CStringSet set;
        for (const std::string& key : Keys())
            set.Put(key.c_str());
        benchmark::DoNotOptimize(set.GetSize());
    }
}
BENCHMARK(StringSetPut)->Name("StringSetPut100K/vorn")->Unit(benchmark::kMillisecond);

void UnorderedSetInsert(benchmark::State& state) {
    for (auto _ : state) {
        std::unordered_set<std::string> set;
        for (const std::string& key : Keys())
            set.insert(key);
        benchmark::DoNotOptimize(set.size());
    }
}
BENCHMARK(UnorderedSetInsert)
    ->Name("StringSetPut100K/std_unordered_set")
    ->Unit(benchmark::kMillisecond);

// Every key looked up once; all are there.
void StringSetContains(benchmark::State& state, const std::vector<std::string>& keys) {
    vorn::util::CStringSet set;
    for (const std::string& key : keys)
        set.Put(key.c_str());
    for (auto _ : state) {
        unsigned int found = 0;
        for (const std::string& key : keys)
            found += set.Contains(key.c_str()) ? 1 : 0;
        benchmark::DoNotOptimize(found);
    }
}

void UnorderedSetFind(benchmark::State& state, const std::vector<std::string>& keys) {
    const std::unordered_set<std::string> set(keys.begin(), keys.end());
    for (auto _ : state) {
        unsigned int found = 0;
        for (const std::string& key : keys)
            found += set.count(key) != 0 ? 1 : 0;
        benchmark::DoNotOptimize(found);
    }
}

BENCHMARK_CAPTURE(StringSetContains, short, Keys())
    ->Name("StringSetLookup100K/vorn")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(UnorderedSetFind, short, Keys())
    ->Name("StringSetLookup100K/std_unordered_set")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(StringSetContains, long, LongKeys())
    ->Name("StringSetLookup100KLongKeys/vorn")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(UnorderedSetFind, long, LongKeys())
    ->Name("StringSetLookup100KLongKeys/std_unordered_set")
    ->Unit(benchmark::kMillisecond);

// ---- Sorting a million ints

const std::vector<int>& Unsorted() {
    static const std::vector<int> values = [] {
        std::mt19937 random(20240601);
        std::vector<int> v(1000000);
        for (int& x : v)
            x = static_cast<int>(random());
        return v;
    }();
    return values;
}

class IntComparator : public vorn::util::IComparator {
public:
    int Compare(const void* a, const void* b) const override {
        const int x = *static_cast<const int*>(a);
        const int y = *static_cast<const int*>(b);
        return (x > y) - (x < y);
    }
};

int CompareInts(const void* a, const void* b) {
    const int x = *static_cast<const int*>(a);
    const int y = *static_cast<const int*>(b);
    return (x > y) - (x < y);
}

// Every side sorts a fresh copy; the copy is timed too, the same for all three.
void VornQsort(benchmark::State& state) {
    const IntComparator comparator;
    for (auto _ : state) {
        std::vector<int> v(Unsorted());
        vorn::util::qsort(v.data(), v.size(), sizeof(int), comparator);
        benchmark::DoNotOptimize(v.data());
    }
}
BENCHMARK(VornQsort)->Name("Sort1M/vorn")->Unit(benchmark::kMillisecond);

void StdSort(benchmark::State& state) {
    for (auto _ : state) {
        std::vector<int> v(Unsorted());
        std::sort(v.begin(), v.end());
        benchmark::DoNotOptimize(v.data());
    }
}
BENCHMARK(StdSort)->Name("Sort1M/std_sort")->Unit(benchmark::kMillisecond);

void CQsort(benchmark::State& state) {
    for (auto _ : state) {
        std::vector<int> v(Unsorted());
        std::qsort(v.data(), v.size(), sizeof(int), CompareInts);
        benchmark::DoNotOptimize(v.data());
    }
}
BENCHMARK(CQsort)->Name("Sort1M/c_qsort")->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();

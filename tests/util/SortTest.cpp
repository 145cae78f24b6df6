#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include <vorn/util/Sort.h>

namespace {

using vorn::util::IComparator;

// Orders ints and records each comparison: the element indexes of both arguments and the
// value of the second.
class IntOrder : public IComparator {
public:
    struct Call {
        long first, second;
        int secondValue;
    };
    explicit IntOrder(const int* base) : m_base(base) {}
    int Compare(const void* a, const void* b) const override {
        const int* x = static_cast<const int*>(a);
        const int* y = static_cast<const int*>(b);
        calls.push_back({x - m_base, y - m_base, *y});
        return *x < *y ? -1 : *x > *y ? 1 : 0;
    }
    mutable std::vector<Call> calls;

private:
    const int* m_base;
};

TEST(Sort, ShortRunsTakeTheSelectionPathAndLongerOnesPartition) {
    int data[3] = {3, 2, 1};
    IntOrder order(data);
    vorn::util::qsort(data, 1, sizeof(int), order);
    vorn::util::qsort(data, 3, 0, order);
    EXPECT_TRUE(order.calls.empty());

    // Eight elements: pass by pass the scan runs to the shrinking end, the running maximum
    // behind it second.
    int eight[8] = {5, 1, 7, 3, 8, 2, 6, 4};
    IntOrder selection(eight);
    vorn::util::qsort(eight, 8, sizeof(int), selection);
    EXPECT_TRUE(std::is_sorted(eight, eight + 8));
    ASSERT_EQ(selection.calls.size(), 28u); // 7 + 6 + ... + 1
    for (const IntOrder::Call& call : selection.calls)
        EXPECT_LT(call.second, call.first);

    // Nine: 5 + 5 comparisons against the pivot 4, parked at the front; then 6 in each half,
    // the right half 5..8 first, as the left one spans more and waits.
    int nine[9] = {0, 1, 2, 3, 4, 5, 6, 7, 8};
    IntOrder partition(nine);
    vorn::util::qsort(nine, 9, sizeof(int), partition);
    EXPECT_TRUE(std::is_sorted(nine, nine + 9));
    ASSERT_EQ(partition.calls.size(), 22u);
    for (size_t k = 0; k < 10; ++k)
        EXPECT_EQ(partition.calls[k].secondValue, 4) << k;
    for (size_t k = 10; k < 22; ++k)
        EXPECT_EQ(partition.calls[k].second >= 5, k < 16) << k;

    // The pivot 4 lands at index 4: halves 0..3 and 5..9 span alike, and the left goes first.
    int ten[10] = {0, 1, 2, 3, 5, 4, 6, 7, 8, 9};
    IntOrder equal(ten);
    vorn::util::qsort(ten, 10, sizeof(int), equal);
    EXPECT_TRUE(std::is_sorted(ten, ten + 10));
    ASSERT_EQ(equal.calls.size(), 11u + 6u + 10u);
    for (size_t k = 11; k < equal.calls.size(); ++k)
        EXPECT_EQ(equal.calls[k].first <= 3, k < 17) << k;
}

// Records of `width` bytes; the key is the first min(width, 4) bytes, little-endian, unsigned.
class RecordOrder : public IComparator {
public:
    explicit RecordOrder(size_t width) : m_keyBytes(std::min<size_t>(width, 4)) {}
    unsigned int Key(const unsigned char* p) const {
        unsigned int key = 0;
        std::memcpy(&key, p, m_keyBytes);
        return key;
    }
    int Compare(const void* a, const void* b) const override {
        ++count;
        const unsigned int x = Key(static_cast<const unsigned char*>(a));
        const unsigned int y = Key(static_cast<const unsigned char*>(b));
        return x < y ? -1 : x > y ? 1 : 0;
    }
    mutable unsigned long count = 0;

private:
    size_t m_keyBytes;
};

std::vector<std::string> SortedRecords(const std::vector<unsigned char>& bytes, size_t width) {
    std::vector<std::string> out;
    for (size_t i = 0; i < bytes.size(); i += width)
        out.emplace_back(reinterpret_cast<const char*>(&bytes[i]), width);
    std::sort(out.begin(), out.end());
    return out;
}

TEST(Sort, AgreesWithTheStandardSortOnRandomArrays) {
    std::mt19937 random(20240611);
    for (int round = 0; round < 500; ++round) {
        for (size_t width : {1, 2, 3, 4, 8, 12, 24}) {
            const size_t count = round % 50 == 49 ? 5000 : random() % 400;
            // Every third round draws from few keys, for many equal ones.
            const bool fewKeys = round % 3 == 0;
            std::vector<unsigned char> bytes(count * width);
            for (auto& b : bytes)
                b = static_cast<unsigned char>(fewKeys ? random() % 3 : random());
            RecordOrder order(width);
            const std::vector<std::string> before = SortedRecords(bytes, width);
            std::vector<unsigned int> keys;
            for (size_t i = 0; i < count; ++i)
                keys.push_back(order.Key(&bytes[i * width]));
            std::sort(keys.begin(), keys.end());

            vorn::util::qsort(bytes.data(), count, width, order);

            for (size_t i = 0; i < count; ++i)
                ASSERT_EQ(order.Key(&bytes[i * width]), keys[i]) << "width " << width;
            ASSERT_EQ(SortedRecords(bytes, width), before) << "width " << width;
            if (count >= 2 && !fewKeys && width >= 4) {
                const double n = static_cast<double>(count);
                EXPECT_LE(order.count, 2 * n * std::log2(n) + 64) << "n " << count;
            }
        }
    }
}

} // namespace

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

// Orders ints and records, per comparison, the element indexes of both arguments.
class IntOrder : public IComparator {
public:
    explicit IntOrder(const int* base) : m_base(base) {}
    int Compare(const void* a, const void* b) const override {
        calls.emplace_back(static_cast<const int*>(a) - m_base,
                           static_cast<const int*>(b) - m_base);
        values.emplace_back(*static_cast<const int*>(a), *static_cast<const int*>(b));
        const int x = *static_cast<const int*>(a), y = *static_cast<const int*>(b);
        return x < y ? -1 : x > y ? 1 : 0;
    }
    mutable std::vector<std::pair<long, long>> calls;
    mutable std::vector<std::pair<int, int>> values;

private:
    const int* m_base;
};

TEST(Sort, TooFewOrZeroWidthCompareNothing) {
    int data[3] = {3, 2, 1};
    IntOrder order(data);
    vorn::util::qsort(data, 0, sizeof(int), order);
    vorn::util::qsort(data, 1, sizeof(int), order);
    vorn::util::qsort(data, 3, 0, order);
    vorn::util::qsort(nullptr, 0, sizeof(int), order);
    EXPECT_TRUE(order.calls.empty());
    EXPECT_EQ(data[0], 3);
}

TEST(Sort, EightElementsTakeTheSelectionPathOnly) {
    int data[8] = {5, 1, 7, 3, 8, 2, 6, 4};
    IntOrder order(data);
    vorn::util::qsort(data, 8, sizeof(int), order);
    EXPECT_TRUE(std::is_sorted(data, data + 8));
    ASSERT_EQ(order.calls.size(), 28u); // 7 + 6 + ... + 1
    // Pass by pass, the scan runs from the second element to the shrinking end.
    size_t k = 0;
    for (long end = 7; end >= 1; --end)
        for (long scanned = 1; scanned <= end; ++scanned, ++k)
            EXPECT_EQ(order.calls[k].first, scanned) << k;
    // The running maximum, which stands behind the scanned element, comes second.
    for (auto& call : order.calls)
        EXPECT_LT(call.second, call.first);
}

TEST(Sort, NineElementsPartitionAroundTheMiddle) {
    int data[9] = {0, 1, 2, 3, 4, 5, 6, 7, 8};
    IntOrder order(data);
    vorn::util::qsort(data, 9, sizeof(int), order);
    for (int i = 0; i < 9; ++i)
        EXPECT_EQ(data[i], i);
    // 5 + 5 comparisons against the pivot 4, parked at the front; then the halves.
    ASSERT_EQ(order.calls.size(), 22u);
    for (size_t k = 0; k < 10; ++k) {
        EXPECT_EQ(order.calls[k].second, 0);
        EXPECT_EQ(order.values[k].second, 4);
    }
    // Left span (4) beats right span (3): the right half 5..8 is sorted first.
    for (size_t k = 10; k < 16; ++k)
        EXPECT_GE(order.calls[k].second, 5);
    for (size_t k = 16; k < 22; ++k)
        EXPECT_LE(order.calls[k].first, 3);
}

TEST(Sort, EqualSpansSortTheLeftHalfFirst) {
    // The pivot (4, from the middle) lands at index 4: halves 0..3 and 5..9 span alike.
    int data[10] = {0, 1, 2, 3, 5, 4, 6, 7, 8, 9};
    IntOrder order(data);
    vorn::util::qsort(data, 10, sizeof(int), order);
    for (int i = 0; i < 10; ++i)
        EXPECT_EQ(data[i], i);
    ASSERT_EQ(order.calls.size(), 11u + 6u + 10u);
    for (size_t k = 11; k < 17; ++k)
        EXPECT_LE(order.calls[k].first, 3);
    for (size_t k = 17; k < order.calls.size(); ++k)
        EXPECT_GE(order.calls[k].second, 5);
}

// Records of `width` bytes; the key is the first min(width, 4) bytes, little-endian, unsigned.
class RecordOrder : public IComparator {
public:
    explicit RecordOrder(size_t width) : m_keyBytes(std::min<size_t>(width, 4)) {}
    unsigned int Key(const unsigned char* p) const {
        unsigned int key = 0;
        for (size_t i = m_keyBytes; i-- > 0;)
            key = key << 8 | p[i];
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

std::vector<std::string> Records(const std::vector<unsigned char>& bytes, size_t width) {
    std::vector<std::string> out;
    for (size_t i = 0; i < bytes.size(); i += width)
        out.emplace_back(reinterpret_cast<const char*>(&bytes[i]), width);
    std::sort(out.begin(), out.end());
    return out;
}

TEST(Sort, AgreesWithTheStandardSortOnRandomArrays) {
    std::mt19937 random(20240611);
    const size_t widths[] = {1, 2, 3, 4, 8, 12, 24};
    int arrays = 0;
    for (int round = 0; round < 500; ++round) {
        for (size_t width : widths) {
            const size_t count = round % 50 == 49 ? 5000 : random() % 400;
            // Narrow key ranges now and then, for many equal keys.
            const unsigned int keyRange = round % 3 == 0 ? 7 : 0xFFFFFFFFu;
            std::vector<unsigned char> bytes(count * width);
            for (auto& b : bytes)
                b = static_cast<unsigned char>(random());
            RecordOrder order(width);
            for (size_t i = 0; i < count; ++i) {
                unsigned int key = random() % keyRange;
                std::memcpy(&bytes[i * width], &key, std::min<size_t>(width, 4));
            }
            const std::vector<std::string> before = Records(bytes, width);
            std::vector<unsigned int> keys;
            for (size_t i = 0; i < count; ++i)
                keys.push_back(order.Key(&bytes[i * width]));
            std::sort(keys.begin(), keys.end());

            vorn::util::qsort(bytes.data(), count, width, order);
            ++arrays;

            for (size_t i = 0; i < count; ++i)
                ASSERT_EQ(order.Key(&bytes[i * width]), keys[i]) << "width " << width;
            ASSERT_EQ(Records(bytes, width), before) << "width " << width;
            if (count >= 2 && keyRange == 0xFFFFFFFFu && width >= 4) {
                const double n = static_cast<double>(count);
                EXPECT_LE(order.count, 2 * n * std::log2(n) + 64) << "n " << count;
            }
        }
    }
    EXPECT_EQ(arrays, 3500);
}

TEST(Sort, OrderedAndUniformInputsStaySorted) {
    for (int n : {9, 100, 1000}) {
        std::vector<int> ascending(n), descending(n), uniform(n, 7);
        for (int i = 0; i < n; ++i) {
            ascending[i] = i;
            descending[i] = n - i;
        }
        for (auto* data : {&ascending, &descending, &uniform}) {
            IntOrder order(data->data());
            vorn::util::qsort(data->data(), data->size(), sizeof(int), order);
            EXPECT_TRUE(std::is_sorted(data->begin(), data->end()));
        }
    }
}

} // namespace

#include <vorn/util/Sort.h>

namespace vorn::util {

namespace {

// Pending ranges. The larger half of each partition waits here and the smaller one is sorted
// first, so each entry covers less than half the one below it.
constexpr int kStackPairs = 30;
// Runs of this many elements or fewer are sorted by selection.
constexpr std::size_t kShortRun = 8;

void SwapBytes(char* a, char* b, std::size_t width) {
    for (; width != 0; --width, ++a, ++b) {
        const char t = *a;
        *a = *b;
        *b = t;
    }
}

// Repeatedly moves the maximum of lo..hi to hi and shortens the run.
void SelectMaxima(char* lo, char* hi, std::size_t width, const IComparator& comparator) {
    while (hi > lo) {
        char* max = lo;
        for (char* p = lo + width; p <= hi; p += width)
            if (comparator.Compare(p, max) > 0)
                max = p;
        if (max != hi)
            SwapBytes(max, hi, width);
        hi -= width;
    }
}

// Sorts the elements lo..hi, both inclusive.
void SortRange(char* lo, char* hi, std::size_t width, const IComparator& comparator) {
    char* loStack[kStackPairs];
    char* hiStack[kStackPairs];
    int depth = 0;

    auto push = [&](char* first, char* last) {
        // Only an array of more than 9 * 2^30 elements can fill the stack; such a half is then
        // sorted at once rather than written past it.
        if (depth == kStackPairs) {
            SortRange(first, last, width, comparator);
            return;
        }
        loStack[depth] = first;
        hiStack[depth] = last;
        ++depth;
    };

    for (;;) {
        const std::size_t size = static_cast<std::size_t>(hi - lo) / width + 1;
        if (size <= kShortRun) {
            SelectMaxima(lo, hi, width, comparator);
        } else {
            // The middle element is the pivot and waits at lo while the rest is partitioned.
            SwapBytes(lo + (size / 2) * width, lo, width);
            char* up = lo;
            char* down = hi + width;
            for (;;) {
                do
                    up += width;
                while (up <= hi && comparator.Compare(up, lo) <= 0);
                do
                    down -= width;
                while (down > lo && comparator.Compare(down, lo) >= 0);
                if (down < up)
                    break;
                if (up != down)
                    SwapBytes(up, down, width);
            }
            if (lo != down)
                SwapBytes(lo, down, width);

            // Halves lo..down-width and up..hi; on equal spans the right half waits.
            if (down - lo > hi - up) {
                if (lo + width < down)
                    push(lo, down - width);
                if (up < hi) {
                    lo = up;
                    continue;
                }
            } else {
                if (up < hi)
                    push(up, hi);
                if (lo + width < down) {
                    hi = down - width;
                    continue;
                }
            }
        }
        if (--depth < 0)
            return;
        lo = loStack[depth];
        hi = hiStack[depth];
    }
}

} // namespace

void qsort(void* base, std::size_t count, std::size_t width, const IComparator& comparator) {
    if (count < 2 || width == 0)
        return;
    char* first = static_cast<char*>(base);
    SortRange(first, first + (count - 1) * width, width, comparator);
}

} // namespace vorn::util

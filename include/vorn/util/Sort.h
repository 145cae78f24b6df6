// qsort: the library's in-place sort of an array of fixed-width elements.
#pragma once

#include <cstddef>

#include <vorn/util/Comparator.h>

namespace vorn::util {

// Iterative quicksort with the middle element as pivot; runs of eight or fewer are finished by
// selecting the maximum. Swaps byte by byte, so it allocates nothing. Not stable. Every
// comparison passes the scanned element first and the pivot or current maximum second.
VORN_API void qsort(void* base, std::size_t count, std::size_t width,
                    const IComparator& comparator);

} // namespace vorn::util

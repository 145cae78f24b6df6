// IComparator: orders two elements of an array for vorn::util::qsort.
#pragma once

#include <vorn/base/Base.h>

namespace vorn::util {

class VORN_API IComparator : public vorn::base::CBase {
public:
    virtual ~IComparator() {}
    // Negative, zero or positive as the element at `a` orders before, with or after that at `b`.
    virtual int Compare(const void* a, const void* b) const = 0;
};

} // namespace vorn::util

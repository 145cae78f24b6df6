// IComparable: an object that orders itself against another.
#pragma once

#include <vorn/base/Export.h>

namespace vorn::base {

class CObject;

class VORN_API IComparable {
public:
    IComparable() {}
    virtual ~IComparable() {}
    // Negative, zero or positive as this orders before, with or after `other`.
    virtual int CompareTo(const CObject* other) const = 0;
};

} // namespace vorn::base

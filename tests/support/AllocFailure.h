// Makes chosen ZK_malloc calls fail, for the tests of every "no memory" path.
#pragma once

#include <vorn/base/Exception.h>

#include "platform/Memory.h"

namespace vorn::test {

// While alive, the `nth` allocation from now fails (1 = the next), and with `sticky` every one
// after it as well.
class FailAllocation {
public:
    explicit FailAllocation(unsigned long nth, bool sticky = false) {
        vorn::platform::SetAllocationFailure(nth, sticky);
    }
    ~FailAllocation() { vorn::platform::SetAllocationFailure(0); }
    FailAllocation(const FailAllocation&) = delete;
    FailAllocation& operator=(const FailAllocation&) = delete;
};

// Allocations made by `body`; lets a test aim at each of them in turn.
template <typename F> unsigned long CountAllocations(F&& body) {
    unsigned long before = vorn::platform::AllocationCount();
    body();
    return vorn::platform::AllocationCount() - before;
}

// Runs `operation` once for each allocation of a clean run, with that one failing (the 1st, the
// 2nd, ...), and hands what it throws to `failed(exception, nth)`; a run may also absorb its
// failure and go through. Gives the number of allocations swept.
template <typename F, typename G> unsigned long SweepAllocations(F&& operation, G&& failed) {
    const unsigned long total = CountAllocations(operation);
    for (unsigned long nth = 1; nth <= total; ++nth) {
        try {
            FailAllocation fail(nth);
            operation();
        } catch (const vorn::base::CException& e) {
            failed(e, nth);
        }
    }
    return total;
}

} // namespace vorn::test

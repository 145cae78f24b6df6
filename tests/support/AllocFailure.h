// Makes chosen ZK_malloc calls fail, for the tests of every "no memory" path.
#pragma once

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

} // namespace vorn::test

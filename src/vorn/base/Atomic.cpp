#include <vorn/base/Atomic.h>

namespace vorn::base {

bool AtomicCompareAndSwap(int volatile& target, int value, int comparand) {
    return __atomic_compare_exchange_n(&target, &comparand, value, false, __ATOMIC_SEQ_CST,
                                       __ATOMIC_SEQ_CST);
}

int AtomicDecrement(int volatile& target) {
    return __atomic_sub_fetch(&target, 1, __ATOMIC_SEQ_CST);
}

int AtomicIncrement(int volatile& target) {
    return __atomic_add_fetch(&target, 1, __ATOMIC_SEQ_CST);
}

} // namespace vorn::base

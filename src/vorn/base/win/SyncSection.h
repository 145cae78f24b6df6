// The critical section of CCriticalSection and CLazyCriticalSection, built in place in their 40
// bytes. Internal to the library.
#pragma once

#include "vorn/base/CriticalSectionImpl.h"

namespace vorn::base::win {

class SyncSection : public vorn::base::CriticalSectionImpl {
public:
    // Raises CSynchronizationException "Failed to create critical section." from the owner's
    // `source` and `line`.
    SyncSection(const char* source, unsigned int line) : CriticalSectionImpl(source, line) {}
    ~SyncSection() = default;
};

static_assert(sizeof(SyncSection) == 40, "a critical section takes 40 bytes");

} // namespace vorn::base::win

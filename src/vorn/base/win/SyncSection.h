// The critical section of CCriticalSection and CLazyCriticalSection, built in place in the
// storage they keep for it. Internal to the library.
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

} // namespace vorn::base::win

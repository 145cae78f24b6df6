// The waits and releases of CDualLock and CMultiLock over their objects. Internal to the
// library.
#pragma once

#include <vorn/base/win/SyncObject.h>

namespace vorn::base::win {

// Sets the flag of the object the wait names, or all flags for `waitAll`. A result of `count`
// or more (a timeout, a failure, an abandoned mutex) sets none.
inline void LockSet(unsigned int count, void* const* handles, bool* locked, bool waitAll,
                    unsigned int timeout) {
    unsigned int result = CSyncObject::WaitForMultipleSyncObject(count, handles, waitAll, timeout);
    if (result >= count)
        return;
    if (!waitAll) {
        locked[result] = true;
        return;
    }
    for (unsigned int i = 0; i < count; ++i)
        locked[i] = true;
}

inline void UnlockSet(unsigned int count, CSyncObject* const* objects, bool* locked) {
    for (unsigned int i = 0; i < count; ++i) {
        if (locked[i]) {
            objects[i]->Release();
            locked[i] = false;
        }
    }
}

} // namespace vorn::base::win

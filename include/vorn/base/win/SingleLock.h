// CSingleLock: holds one CSyncObject for a scope. Lock(timeout) leaves the guard's flag as it
// found it, so a guard that was not locked doesn't release what a timed Lock took.
#pragma once

#include <vorn/base/Export.h>
#include <vorn/base/win/SyncObject.h>

namespace vorn::base::win {

class VORN_API CSingleLock {
public:
    CSingleLock(CSyncObject* object, bool lockNow);
    // Unlocks; a failed release raises from here.
    ~CSingleLock() noexcept(false);

    void Lock();
    // False when the wait ran out; otherwise the flag as it was.
    bool Lock(unsigned int timeout);
    void Unlock();
    bool IsLocked() const { return m_locked; }

private:
    CSyncObject* m_object;
    bool m_locked;
};

} // namespace vorn::base::win

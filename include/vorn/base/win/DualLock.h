// CDualLock: waits on two objects with handles, for either or both. A wait that runs out, fails
// or takes an abandoned mutex sets no flag and raises nothing.
#pragma once

#include <vorn/base/Export.h>
#include <vorn/base/win/SyncObject.h>

namespace vorn::base::win {

class VORN_API CDualLock {
public:
    CDualLock(CSyncObject* first, CSyncObject* second, bool lockNow);
    ~CDualLock() noexcept(false);

    void Lock(bool waitAll, unsigned int timeout);
    // Releases each object whose flag is set, the first first.
    void Unlock();
    // `index` is 0 or 1.
    bool IsLocked(unsigned int index) const;

private:
    CSyncObject* m_objects[2];
    bool m_locked[2];
};

} // namespace vorn::base::win

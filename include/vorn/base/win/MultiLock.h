// CMultiLock: CDualLock for two to 64 objects with handles.
#pragma once

#include <vorn/base/Base.h>
#include <vorn/base/win/SyncObject.h>

namespace vorn::base::win {

class VORN_API CMultiLock : public vorn::base::CNonCopyable {
public:
    CMultiLock(unsigned int count, CSyncObject** const objects, bool lockNow);
    ~CMultiLock() noexcept(false);

    void Lock(bool waitAll, unsigned int timeout);
    void Unlock();
    bool IsLocked(unsigned int index) const;

private:
    unsigned int m_count;
    CSyncObject** m_objects;
    void** m_handles;
    bool* m_locked;
};

} // namespace vorn::base::win

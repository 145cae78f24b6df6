#include <vorn/base/ArrayIndexOutOfBoundsException.h>
#include <vorn/base/IllegalArgumentException.h>
#include <vorn/base/win/DualLock.h>

#include "vorn/base/win/GuardSet.h"

namespace vorn::base::win {

namespace {

const char* const kSource = "vorn/base/win/DualLock";

void Check(CSyncObject* object, const char* invalid, const char* notWaitable) {
    if (object == nullptr)
        throw CIllegalArgumentException(kSource, __LINE__, invalid);
    if (object->GetHandle() == nullptr)
        throw CIllegalArgumentException(kSource, __LINE__, notWaitable);
}

} // namespace

CDualLock::CDualLock(CSyncObject* first, CSyncObject* second, bool lockNow)
    : m_objects{first, second}, m_locked{false, false} {
    Check(first, "Sync object 1 is invalid.", "Sync object 1 is not waitable.");
    Check(second, "Sync object 2 is invalid.", "Sync object 2 is not waitable.");
    if (lockNow)
        Lock(false, 0xFFFFFFFFu);
}

CDualLock::~CDualLock() noexcept(false) {
    Unlock();
}

void CDualLock::Lock(bool waitAll, unsigned int timeout) {
    void* handles[2] = {m_objects[0]->GetHandle(), m_objects[1]->GetHandle()};
    LockSet(2, handles, m_locked, waitAll, timeout);
}

void CDualLock::Unlock() {
    UnlockSet(2, m_objects, m_locked);
}

bool CDualLock::IsLocked(unsigned int index) const {
    if (index > 1)
        throw CArrayIndexOutOfBoundsException(kSource, __LINE__);
    return m_locked[index];
}

} // namespace vorn::base::win

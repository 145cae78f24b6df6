#include <vorn/base/IllegalArgumentException.h>
#include <vorn/base/win/SingleLock.h>

namespace vorn::base::win {

CSingleLock::CSingleLock(CSyncObject* object, bool lockNow) : m_object(object), m_locked(false) {
    if (object == nullptr)
        throw CIllegalArgumentException("vorn/base/win/SingleLock", __LINE__,
                                        "Invalid sync object.");
    if (lockNow)
        Lock();
}

CSingleLock::~CSingleLock() noexcept(false) {
    Unlock();
}

void CSingleLock::Lock() {
    m_object->Acquire();
    m_locked = true;
}

// Deliberate: a timed lock leaves the flag as it found it, so the guard releases only what an
// untimed lock took.
bool CSingleLock::Lock(unsigned int timeout) {
    if (!m_object->TryAcquire(timeout))
        return false;
    return m_locked;
}

void CSingleLock::Unlock() {
    if (m_locked) {
        m_object->Release();
        m_locked = false;
    }
}

} // namespace vorn::base::win

#include <vorn/base/ArrayIndexOutOfBoundsException.h>
#include <vorn/base/IllegalArgumentException.h>
#include <vorn/base/MemoryException.h>
#include <vorn/base/win/MultiLock.h>

#include "platform/Memory.h"
#include "vorn/base/win/GuardSet.h"

namespace vorn::base::win {

namespace {
const char* const kSource = "vorn/base/win/MultiLock";
}

CMultiLock::CMultiLock(unsigned int count, CSyncObject** const objects, bool lockNow)
    : m_count(count), m_objects(nullptr), m_handles(nullptr), m_locked(nullptr) {
    if (count < 2)
        throw CIllegalArgumentException(kSource, __LINE__, "Invalid sync object count.");
    if (objects == nullptr)
        throw CIllegalArgumentException(kSource, __LINE__, "Invalid sync object array.");
    for (unsigned int i = 0; i < count; ++i) {
        if (objects[i] == nullptr || objects[i]->GetHandle() == nullptr)
            throw CIllegalArgumentException(kSource, __LINE__, "Invalid sync object.");
    }
    m_objects = static_cast<CSyncObject**>(ZK_malloc(count * sizeof(CSyncObject*)));
    m_handles = static_cast<void**>(ZK_malloc(count * sizeof(void*)));
    m_locked = static_cast<bool*>(ZK_malloc(count * sizeof(bool)));
    if (m_objects == nullptr || m_handles == nullptr || m_locked == nullptr) {
        ZK_free(m_objects);
        ZK_free(m_handles);
        ZK_free(m_locked);
        throw CMemoryException(kSource, __LINE__);
    }
    for (unsigned int i = 0; i < count; ++i) {
        m_objects[i] = objects[i];
        m_handles[i] = objects[i]->GetHandle();
        m_locked[i] = false;
    }
    if (lockNow)
        Lock(false, 0xFFFFFFFFu);
}

CMultiLock::~CMultiLock() noexcept(false) {
    struct Arrays {
        CMultiLock& lock;
        ~Arrays() {
            ZK_free(lock.m_objects);
            ZK_free(lock.m_handles);
            ZK_free(lock.m_locked);
        }
    } arrays{*this};
    Unlock();
}

void CMultiLock::Lock(bool waitAll, unsigned int timeout) {
    LockSet(m_count, m_handles, m_locked, waitAll, timeout);
}

void CMultiLock::Unlock() {
    UnlockSet(m_count, m_objects, m_locked);
}

bool CMultiLock::IsLocked(unsigned int index) const {
    if (index >= m_count)
        throw CArrayIndexOutOfBoundsException(kSource, __LINE__);
    return m_locked[index];
}

} // namespace vorn::base::win

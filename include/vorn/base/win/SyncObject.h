// CSyncObject: the root of the platform's own synchronisation objects. Those with a native
// handle (events, mutexes) can be waited on together through WaitForMultipleSyncObject and the
// guards CDualLock and CMultiLock; critical sections have none.
#pragma once

#include <vorn/base/Object.h>
#include <vorn/base/String.h>

namespace vorn::base::win {

class VORN_API CSyncObject : public vorn::base::CObject {
    VORN_DECLARE_CLASS(CSyncObject)

public:
    virtual bool IsTimeoutSupported() const = 0;
    virtual void Acquire() = 0;
    virtual bool TryAcquire(unsigned int timeout) = 0;
    virtual void Release() = 0;

    // Null when the object has no native handle.
    void* GetHandle() const { return m_handle; }
    const vorn::base::CString& GetName() const { return m_name; }
    bool IsNamed() const { return !m_name.IsEmpty(); }

    // The native result: 0 when signalled, 128 when an abandoned mutex was taken, 258 on
    // timeout. A timeout of 0xFFFFFFFF waits for ever.
    static unsigned int WaitForSingleSyncObject(void* handle, unsigned int timeout);
    // Without `waitAll`, the index of the lowest signalled object (128 plus it for an abandoned
    // mutex); with it, 0 once all are taken at once. At most 64 handles, all distinct.
    static unsigned int WaitForMultipleSyncObject(unsigned int count, void* const* handles,
                                                  bool waitAll, unsigned int timeout);

protected:
    CSyncObject() : m_handle(nullptr) {}
    explicit CSyncObject(const char* name) : m_name(name), m_handle(nullptr) {}
    CSyncObject(const CSyncObject& other) = default;
    CSyncObject& operator=(const CSyncObject& other) = default;

    vorn::base::CString m_name;
    void* m_handle;
};

} // namespace vorn::base::win

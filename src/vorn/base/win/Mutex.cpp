#include <vorn/base/MemoryException.h>
#include <vorn/base/win/Mutex.h>

#include "vorn/base/win/HandleObject.h"

namespace vorn::base::win {

namespace {
const char* const kSource = "vorn/base/win/Mutex";
}

VORN_DEFINE_CLASS_BASE(CMutex, "vorn::base::win::CMutex", "vorn::base::win::CSyncObject")

CMutex::CMutex(const char* name, bool initiallyOwned) : CSyncObject(name) {
    m_handle = vorn::platform::CreateMutex(initiallyOwned, WideName(name));
    if (m_handle == nullptr)
        throw CMemoryException(kSource, __LINE__);
}

CMutex::~CMutex() {
    vorn::platform::CloseHandle(m_handle);
}

void CMutex::Acquire() {
    WaitForHandle(m_handle, vorn::platform::kInfinite, kSource, __LINE__,
                  "Failed to acquire the underlying mutex object.");
}

bool CMutex::TryAcquire(unsigned int timeout) {
    return WaitForHandle(m_handle, timeout, kSource, __LINE__,
                         "Failed to acquire the underlying mutex object.");
}

void CMutex::Release() {
    if (m_handle != nullptr && !vorn::platform::ReleaseMutex(m_handle))
        throw CWinSystemErrorException(kSource, __LINE__,
                                       "Failed to release the underlying mutex object.",
                                       vorn::platform::GetLastError());
}

} // namespace vorn::base::win

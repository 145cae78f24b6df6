#include <vorn/base/MemoryException.h>
#include <vorn/base/win/Event.h>

#include "vorn/base/win/HandleObject.h"

namespace vorn::base::win {

namespace {
const char* const kSource = "vorn/base/win/Event";
}

VORN_DEFINE_CLASS_BASE(CEvent, "vorn::base::win::CEvent", "vorn::base::win::CSyncObject")

CEvent::CEvent(const char* name, bool initiallySignaled, bool manualReset) : CSyncObject(name) {
    m_handle = vorn::platform::CreateEvent(manualReset, initiallySignaled, WideName(name));
    if (m_handle == nullptr)
        throw CMemoryException(kSource, __LINE__);
}

CEvent::~CEvent() {
    vorn::platform::CloseHandle(m_handle);
}

void CEvent::Acquire() {
    WaitForHandle(m_handle, vorn::platform::kInfinite, kSource, __LINE__,
                  "Failed to acquire the underlying event object.");
}

bool CEvent::TryAcquire(unsigned int timeout) {
    return WaitForHandle(m_handle, timeout, kSource, __LINE__,
                         "Failed to acquire the underlying event object.");
}

void CEvent::SetEvent() {
    if (!vorn::platform::SetEvent(m_handle))
        throw CWinSystemErrorException(
            kSource, __LINE__, "Failed to set to the signaled state the underlying event object.",
            vorn::platform::GetLastError());
}

void CEvent::ResetEvent() {
    if (!vorn::platform::ResetEvent(m_handle))
        throw CWinSystemErrorException(kSource, __LINE__,
                                       "Failed to reset the underlying event object.",
                                       vorn::platform::GetLastError());
}

} // namespace vorn::base::win

#include <vorn/base/win/WinSystemErrorException.h>
#include <vorn/base/win/WinThreadLocalImpl.h>

#include "platform/Thread.h"

namespace vorn::base::win {

namespace {

const char* const kSource = "vorn/base/win/WinThreadLocalImpl";

[[noreturn]] void Fail(unsigned int line, const char* words) {
    throw CWinSystemErrorException(kSource, line, words, vorn::platform::GetLastError());
}

} // namespace

void CWinThreadLocalImpl::Alloc() {
    unsigned int index = vorn::platform::TlsAlloc();
    if (index == vorn::platform::kTlsOutOfIndexes)
        Fail(__LINE__, "There is no available free TLS slot.");
    m_index = index;
}

void* CWinThreadLocalImpl::GetValue() {
    void* value = vorn::platform::TlsGetValue(m_index);
    if (value == nullptr && vorn::platform::GetLastError() != 0)
        Fail(__LINE__, "Failed to get the value of the TLS slot.");
    return value;
}

void CWinThreadLocalImpl::SetValue(void* value) {
    if (!vorn::platform::TlsSetValue(m_index, value))
        Fail(__LINE__, "Failed to set the value of the TLS slot.");
}

} // namespace vorn::base::win

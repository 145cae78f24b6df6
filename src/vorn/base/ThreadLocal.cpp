#include <vorn/base/ThreadLocal.h>
#include <vorn/base/win/WinThreadLocalImpl.h>

namespace vorn::base {

CThreadLocal::CThreadLocal() : m_impl(new win::CWinThreadLocalImpl()) {
    try {
        m_impl->Alloc();
    } catch (...) {
        delete m_impl;
        throw;
    }
}

CThreadLocal::~CThreadLocal() {
    delete m_impl;
}

void* CThreadLocal::GetValue() {
    return m_impl->GetValue();
}

void CThreadLocal::SetValue(void* value) {
    m_impl->SetValue(value);
}

} // namespace vorn::base

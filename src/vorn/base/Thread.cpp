#include <vorn/base/Thread.h>
#include <vorn/base/ThreadLocal.h>
#include <vorn/base/win/WinThreadImpl.h>

#include "vorn/base/Module.h"

namespace vorn::base {

namespace {

// The implementation goes again if its counted handle can't be made.
CRef<CThreadImpl> NewImpl() {
    CThreadImpl* impl = new win::CWinThreadImpl();
    try {
        return CRef<CThreadImpl>(impl);
    } catch (...) {
        delete impl;
        throw;
    }
}

// Holds a lock for a scope, exceptions included.
class Hold {
public:
    explicit Hold(ILockable_& lock) : m_lock(lock) { m_lock.Acquire(); }
    ~Hold() { m_lock.Release(); }
    Hold(const Hold&) = delete;
    Hold& operator=(const Hold&) = delete;

private:
    ILockable_& m_lock;
};

} // namespace

CThread::CThread()
    : m_impl(NewImpl()), m_implObject(m_impl.GetPointer()), m_condition(m_lock), m_stopped(false),
      m_autoDeleted(false) {}

CThread::~CThread() {}

void CThread::Start() {
    m_implObject->Start(this);
}

bool CThread::Join(unsigned int milliseconds) {
    return m_implObject->Join(milliseconds);
}

void CThread::Join() {
    m_implObject->Join();
}

void CThread::Stop() {
    Hold hold(m_lock);
    m_stopped = true;
    m_condition.Notify();
}

void CThread::Destroy() {
    m_implObject->Destroy();
}

bool CThread::IsAlive() const {
    return m_implObject->IsAlive();
}

int CThread::GetPriority() const {
    return m_implObject->GetPriority();
}

void CThread::SetPriority(int priority) {
    m_implObject->SetPriority(priority);
}

CThread* CThread::GetCurrentThread() {
    CThreadLocal* slot = module::CurrentThreadSlot;
    return slot == nullptr ? nullptr : static_cast<CThread*>(slot->GetValue());
}

bool CThread::IsStopped() const {
    Hold hold(m_lock);
    return m_stopped;
}

bool CThread::Wait(unsigned int milliseconds) {
    Hold hold(m_lock);
    return m_condition.Wait(milliseconds);
}

void CThread::Exit(unsigned int exitCode) {
    m_implObject->Exit(exitCode);
}

} // namespace vorn::base

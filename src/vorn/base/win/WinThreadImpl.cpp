#include <vorn/base/IllegalStateException.h>
#include <vorn/base/System.h>
#include <vorn/base/Thread.h>
#include <vorn/base/ThreadLocal.h>
#include <vorn/base/win/WinSystemErrorException.h>
#include <vorn/base/win/WinThreadImpl.h>

#include "platform/Thread.h"
#include "vorn/base/Module.h"
#include "vorn/base/win/NativeWait.h"

namespace vorn::base::win {

namespace {

const char* const kSource = "vorn/base/win/WinThreadImpl";

[[noreturn]] void NotStarted(unsigned int line) {
    throw CIllegalStateException(kSource, line, "Thread hasn't been started yet.", nullptr);
}

[[noreturn]] void Fail(unsigned int line, const char* words) {
    throw CWinSystemErrorException(kSource, line, words, vorn::platform::GetLastError());
}

} // namespace

CWinThreadImpl::~CWinThreadImpl() {
    if (m_handle != nullptr)
        vorn::platform::ReleaseThreadOwner(m_handle);
}

unsigned int CWinThreadImpl::Entry(void* argument) {
    if (argument == nullptr)
        return 0;
    auto* thread = static_cast<CThread*>(argument);
    try {
        if (module::CurrentThreadSlot != nullptr)
            module::CurrentThreadSlot->SetValue(thread);
        thread->Run();
    } catch (const CException& e) {
        e.Print(CSystem::debugOut);
    } catch (...) {
        vorn::platform::RethrowThreadExit();
    }
    // Run may have ended with its object deleted by the owner: the object is read only while its
    // implementation, which the owner's delete tells, says it is there.
    void* self = vorn::platform::CurrentThreadHandle();
    bool autoDeleted = false;
    if (vorn::platform::LockThreadOwner(self)) {
        autoDeleted = thread->IsAutoDeleted();
        vorn::platform::UnlockThreadOwner(self);
    }
    if (autoDeleted) {
        try {
            delete thread;
        } catch (...) {
            vorn::platform::RethrowThreadExit();
        }
    }
    return 0;
}

int CWinThreadImpl::GetPriority() {
    return m_handle != nullptr ? vorn::platform::GetThreadPriority(m_handle) : m_priority;
}

void CWinThreadImpl::SetPriority(int priority) {
    m_priority = priority;
    if (m_handle != nullptr && !vorn::platform::SetThreadPriority(m_handle, priority))
        Fail(__LINE__, "Failed to set the priority of the thread.");
}

bool CWinThreadImpl::IsAlive() {
    return m_handle != nullptr &&
           vorn::platform::WaitForSingleObject(m_handle, 0) == vorn::platform::kWaitTimeout;
}

void CWinThreadImpl::Start(CThread* thread) {
    if (thread == nullptr)
        return;
    void* handle = vorn::platform::BeginThread(&Entry, thread, m_handle, &m_threadId);
    if (handle == nullptr)
        Fail(__LINE__, "Failed to create and start the thread.");
    m_handle = handle;
    bool prioritySet = m_priority == 0 || vorn::platform::SetThreadPriority(handle, m_priority);
    unsigned long error = vorn::platform::GetLastError();
    // From here the thread runs, and may delete its CThread with this object: leave them alone.
    vorn::platform::ResumeThread(handle);
    if (!prioritySet)
        throw CWinSystemErrorException(kSource, __LINE__,
                                       "Failed to set the initial priority of the thread.", error);
}

bool CWinThreadImpl::Join(unsigned int milliseconds) {
    if (m_handle == nullptr)
        NotStarted(__LINE__);
    WaitRead read = WaitOn(m_handle, milliseconds);
    if (read == WaitRead::kFailed)
        Fail(__LINE__, "Failed to join the thread.");
    return read == WaitRead::kSignaled;
}

void CWinThreadImpl::Join() {
    if (m_handle == nullptr)
        NotStarted(__LINE__);
    if (WaitOn(m_handle, vorn::platform::kInfinite) != WaitRead::kSignaled)
        Fail(__LINE__, "Failed to join the thread.");
}

void CWinThreadImpl::Destroy() {
    if (m_handle == nullptr)
        NotStarted(__LINE__);
    if (!vorn::platform::TerminateThread(m_handle))
        Fail(__LINE__, "Failed to destroy the thread.");
}

void CWinThreadImpl::Exit(unsigned int exitCode) {
    vorn::platform::EndThread(exitCode);
}

} // namespace vorn::base::win

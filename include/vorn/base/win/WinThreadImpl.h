// CWinThreadImpl: a CThread's native thread. Its handle is never closed: it stays valid, and
// answers IsAlive and Join, for as long as the process runs.
#pragma once

#include <vorn/base/ThreadImpl.h>

namespace vorn::base::win {

class VORN_API CWinThreadImpl : public vorn::base::CThreadImpl {
public:
    CWinThreadImpl() : m_threadId(0), m_handle(nullptr), m_priority(0) {}
    // Tells a thread still running on the owner's object that the object is gone.
    ~CWinThreadImpl() override;

    int GetPriority() override;
    void SetPriority(int priority) override;
    bool IsAlive() override;
    // Does nothing for null.
    void Start(vorn::base::CThread* thread) override;
    bool Join(unsigned int milliseconds) override;
    void Join() override;
    void Destroy() override;
    void Exit(unsigned int exitCode) override;

private:
    static unsigned int Entry(void* thread);

    unsigned int m_threadId;
    void* m_handle;
    int m_priority;
};

} // namespace vorn::base::win

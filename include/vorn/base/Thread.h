// CThread: the library's thread. Derive, write Run and call Start. A run method that may be asked
// to stop tests IsStopped before it sleeps, and sleeps in Wait, which Stop cuts short.
#pragma once

#include <vorn/base/Base.h>
#include <vorn/base/Condition.h>
#include <vorn/base/Lock.h>
#include <vorn/base/Ref.h>
#include <vorn/base/ThreadImpl.h>

namespace vorn::base {

namespace win {
class CWinThreadImpl;
}

class VORN_API CThread : public CBase {
public:
    CThread();
    // Neither stops nor joins the thread. Delete a running thread's object only if its Run no
    // longer uses it; SetAutoDeleted lets the thread delete it at its end instead.
    virtual ~CThread();

    // A second Start runs a second thread on the same object.
    virtual void Start();

protected:
    // The body of the thread. A CException that leaves it is printed on CSystem::debugOut; any
    // other is dropped.
    virtual void Run() = 0;

public:
    // False when `milliseconds` ran out first.
    virtual bool Join(unsigned int milliseconds);
    virtual void Join();
    // Asks the thread to stop: sets the flag and wakes it from Wait. Never ends it.
    virtual void Stop();
    // Ends the thread wherever it is, without unwinding: what it holds stays held.
    virtual void Destroy();

    bool IsAlive() const;
    // The platform's values: nice values, 0 normal. Kept before Start and applied by it.
    int GetPriority() const;
    void SetPriority(int priority);

    bool IsAutoDeleted() const { return m_autoDeleted; }
    void SetAutoDeleted(bool autoDeleted) { m_autoDeleted = autoDeleted; }

    bool operator==(const CThread& other) const { return m_implObject == other.m_implObject; }
    bool operator!=(const CThread& other) const { return m_implObject != other.m_implObject; }

    // The object whose Run the calling thread is in; null on any other thread.
    static CThread* GetCurrentThread();

protected:
    bool IsStopped() const;
    // Sleeps until Stop or until `milliseconds` ran out: true when stopped. A Stop that came
    // before the call doesn't cut it short.
    bool Wait(unsigned int milliseconds);
    // Ends the calling thread, whichever it is, with `exitCode`.
    void Exit(unsigned int exitCode);

private:
    friend class win::CWinThreadImpl;

    CRef<CThreadImpl> m_impl;
    CThreadImpl* m_implObject;
    mutable CLock m_lock;
    CCondition m_condition;
    bool m_stopped;
    bool m_autoDeleted;
};

} // namespace vorn::base

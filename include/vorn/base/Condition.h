// CCondition: a condition variable over any ILockable_. A waiter holds the lock when it calls
// Wait, sleeps without it and holds it again on return. A Notify that finds nobody waiting is
// lost, and a Wait that begins while a notification is under way is not woken by it.
#pragma once

#include <vorn/base/Base.h>
#include <vorn/base/Lockable.h>
#include <vorn/base/Waitable.h>

namespace vorn::base {

class ConditionImplWin;

class VORN_API CCondition : public IWaitable, public CNonCopyable {
public:
    // `lock` must outlive the condition.
    explicit CCondition(ILockable_& lock);
    ~CCondition() override;

    bool Wait(unsigned int milliseconds) override;
    void Wait() override;

    // With or without the lock held.
    void Notify();
    void NotifyAll();

private:
    ConditionImplWin* m_impl;
};

} // namespace vorn::base

// The condition behind CCondition: two native semaphores, one lock and three counters. Waiters
// sleep on the queue semaphore; the gate semaphore keeps new waiters out while a notification
// wakes the ones it claimed. Internal to the library.
#pragma once

#include <atomic>
#include <cstdint>

#include <vorn/base/Base.h>
#include <vorn/base/Lockable.h>

#include "vorn/base/ReentrantLockImplWin.h"

namespace vorn::base {

class ConditionImplWin : public CBase, public CNonCopyable {
public:
    // Raises CMemoryException when a semaphore can't be made.
    explicit ConditionImplWin(ILockable_& lock);
    ~ConditionImplWin();

    // The caller holds the external lock; it holds it again on return.
    void Wait();
    bool Wait(unsigned int milliseconds);
    void Notify();
    void NotifyAll();

private:
    friend class ConditionProbe; // tests set the counters

    // The counters keep the algorithm's plain reads and writes, as relaxed atomics: Notify reads
    // m_waitersBlocked before it takes the gate under which a new waiter adds to it.
    class Counter {
    public:
        std::uint32_t Get() const { return m_value.load(std::memory_order_relaxed); }
        void Set(std::uint32_t value) { m_value.store(value, std::memory_order_relaxed); }

    private:
        std::atomic<std::uint32_t> m_value{0};
    };

    bool Block(unsigned int milliseconds, bool limited);
    void Leave();
    void LeaveQuietly();
    // Claims one or all blocked waiters for a notification; returns how many to wake.
    std::uint32_t Claim(bool all);
    void AcquireGate();
    void ReleaseGate();

    Counter m_waitersBlocked;
    Counter m_waitersGone;
    Counter m_waitersToUnblock;
    void* m_queueSemaphore;
    void* m_gateSemaphore;
    ReentrantLockImplWin m_unblockLock;
    ILockable_& m_lock;
};

} // namespace vorn::base

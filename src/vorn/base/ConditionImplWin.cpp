#include <vorn/base/MemoryException.h>
#include <vorn/base/SynchronizationException.h>

#include "platform/Wait.h"
#include "vorn/base/ConditionImplWin.h"

namespace vorn::base {

namespace {

const char* const kSource = "vorn/base/ConditionImplWin";

[[noreturn]] void Fail(unsigned int line, const char* words) {
    throw CSynchronizationException(kSource, line, words, nullptr);
}

// Holds the unblocking lock for a scope.
class UnblockGuard {
public:
    explicit UnblockGuard(ReentrantLockImplWin& lock) : m_lock(lock) {
        m_lock.Acquire(kSource, __LINE__);
    }
    ~UnblockGuard() { m_lock.Leave(); }
    UnblockGuard(const UnblockGuard&) = delete;
    UnblockGuard& operator=(const UnblockGuard&) = delete;

private:
    ReentrantLockImplWin& m_lock;
};

} // namespace

ConditionImplWin::ConditionImplWin(ILockable_& lock)
    : m_queueSemaphore(nullptr), m_gateSemaphore(nullptr), m_lock(lock) {
    m_queueSemaphore = vorn::platform::CreateSemaphore(0, 0x7fffffff, nullptr);
    if (m_queueSemaphore == nullptr)
        throw CMemoryException(kSource, __LINE__);
    m_gateSemaphore = vorn::platform::CreateSemaphore(1, 1, nullptr);
    if (m_gateSemaphore == nullptr) {
        vorn::platform::CloseHandle(m_queueSemaphore);
        throw CMemoryException(kSource, __LINE__);
    }
}

ConditionImplWin::~ConditionImplWin() {
    vorn::platform::CloseHandle(m_queueSemaphore);
    vorn::platform::CloseHandle(m_gateSemaphore);
}

void ConditionImplWin::Wait() {
    Block(vorn::platform::kInfinite, false);
}

bool ConditionImplWin::Wait(unsigned int milliseconds) {
    return Block(milliseconds, true);
}

void ConditionImplWin::AcquireGate() {
    if (vorn::platform::WaitForSingleObject(m_gateSemaphore, vorn::platform::kInfinite) != 0)
        Fail(__LINE__, "Failed to acquire the underlying gate semaphore.");
}

void ConditionImplWin::ReleaseGate() {
    if (!vorn::platform::ReleaseSemaphore(m_gateSemaphore, 1))
        Fail(__LINE__, "Failed to release the underlying gate semaphore.");
}

bool ConditionImplWin::Block(unsigned int milliseconds, bool limited) {
    AcquireGate();
    m_waitersBlocked.Set(m_waitersBlocked.Get() + 1);
    ReleaseGate();
    try {
        m_lock.Release();
    } catch (const CSynchronizationException&) {
        LeaveQuietly();
        Fail(__LINE__, "Failed to release the specified lock.");
    }
    unsigned int result = vorn::platform::WaitForSingleObject(m_queueSemaphore, milliseconds);
    if (result != 0 && !(limited && result == vorn::platform::kWaitTimeout)) {
        LeaveQuietly();
        Fail(__LINE__, "Failed to acquire the underlying queue semaphore.");
    }
    Leave();
    return result == 0;
}

void ConditionImplWin::LeaveQuietly() {
    try {
        Leave();
    } catch (const CSynchronizationException&) {
    }
}

void ConditionImplWin::Leave() {
    std::uint32_t claimed;
    {
        UnblockGuard guard(m_unblockLock);
        claimed = m_waitersToUnblock.Get();
        if (claimed != 0) {
            m_waitersToUnblock.Set(claimed - 1);
        } else {
            // Never claimed: a timeout or a failure. Count it, and settle the count before it
            // could overflow.
            m_waitersGone.Set(m_waitersGone.Get() + 1);
            if (m_waitersGone.Get() == 0x3fffffff) {
                AcquireGate();
                m_waitersBlocked.Set(m_waitersBlocked.Get() - m_waitersGone.Get());
                ReleaseGate();
                m_waitersGone.Set(0);
            }
        }
    }
    if (claimed == 1)
        ReleaseGate(); // the last claimed waiter opens the gate the notification took
    m_lock.Acquire();
}

std::uint32_t ConditionImplWin::Claim(bool all) {
    UnblockGuard guard(m_unblockLock);
    std::uint32_t wake = 0;
    if (m_waitersToUnblock.Get() != 0) {
        // A notification is under way and holds the gate, so no waiter can add to the count.
        std::uint32_t blocked = m_waitersBlocked.Get();
        if (blocked == 0)
            return 0;
        wake = all ? blocked : 1;
        m_waitersToUnblock.Set(m_waitersToUnblock.Get() + wake);
        m_waitersBlocked.Set(blocked - wake);
    } else if (m_waitersBlocked.Get() > m_waitersGone.Get()) {
        AcquireGate();
        if (m_waitersGone.Get() != 0) {
            m_waitersBlocked.Set(m_waitersBlocked.Get() - m_waitersGone.Get());
            m_waitersGone.Set(0);
        }
        std::uint32_t blocked = m_waitersBlocked.Get();
        wake = all ? blocked : 1;
        m_waitersToUnblock.Set(wake);
        m_waitersBlocked.Set(blocked - wake);
    }
    // Otherwise nobody waits, and the notification is lost.
    return wake;
}

void ConditionImplWin::Notify() {
    if (Claim(false) != 0 && !vorn::platform::ReleaseSemaphore(m_queueSemaphore, 1))
        Fail(__LINE__, "Failed to release the underlying queue semaphore.");
}

void ConditionImplWin::NotifyAll() {
    std::uint32_t wake = Claim(true);
    if (wake != 0 && !vorn::platform::ReleaseSemaphore(m_queueSemaphore, wake))
        Fail(__LINE__, "Failed to release the underlying queue semaphore.");
}

} // namespace vorn::base

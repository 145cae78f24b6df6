#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

#include <unistd.h>

#include <vorn/base/Condition.h>
#include <vorn/base/IllegalArgumentException.h>
#include <vorn/base/Lock.h>
#include <vorn/base/Semaphore.h>
#include <vorn/base/SynchronizationException.h>

#include "support/Threads.h"
#include "support/Throws.h"
#include "vorn/base/ConditionImplWin.h"

namespace vorn::base {

// Reads and sets the counters of a condition.
class ConditionProbe {
public:
    static std::uint32_t Blocked(ConditionImplWin& c) { return c.m_waitersBlocked.Get(); }
    static std::uint32_t Gone(ConditionImplWin& c) { return c.m_waitersGone.Get(); }
    static void Set(ConditionImplWin& c, std::uint32_t blocked, std::uint32_t gone) {
        c.m_waitersBlocked.Set(blocked);
        c.m_waitersGone.Set(gone);
    }
};

} // namespace vorn::base

namespace {

using namespace vorn::base;
using Clock = std::chrono::steady_clock;
const char* const kCondition = "vorn/base/ConditionImplWin";

// Counts its calls; its Release fails on request.
class CRecordingLock : public ILockable_ {
public:
    void Acquire() override { ++acquires; }
    bool TryAcquire(unsigned int) override { return true; }
    void Release() override {
        if (failSync)
            throw CSynchronizationException("test", 1, "no", nullptr);
        if (failOther)
            throw CIllegalArgumentException("test", 2, "no");
    }
    int acquires = 0;
    bool failSync = false;
    bool failOther = false;
};

TEST(Condition, LostNotifyTimeoutAndTheLockOnReturn) {
    CLock lock;
    CCondition condition(lock);
    condition.Notify();
    condition.NotifyAll();
    lock.Acquire();
    auto start = Clock::now();
    EXPECT_FALSE(condition.Wait(30));
    EXPECT_GE(Clock::now() - start, std::chrono::milliseconds(30));
    std::thread([&] { EXPECT_FALSE(lock.TryAcquire(0)); }).join();
    lock.Release();
}

TEST(Condition, LeftWaitersAreCountedAndSettledAtTheLimit) {
    CRecordingLock lock;
    ConditionImplWin condition(lock);
    EXPECT_FALSE(condition.Wait(0));
    EXPECT_EQ(ConditionProbe::Blocked(condition), 1u);
    EXPECT_EQ(ConditionProbe::Gone(condition), 1u);
    // One short of the limit: the next waiter that leaves settles the counts itself.
    ConditionProbe::Set(condition, 0x3ffffffd, 0x3ffffffd);
    EXPECT_FALSE(condition.Wait(0));
    EXPECT_EQ(ConditionProbe::Gone(condition), 0x3ffffffeu);
    EXPECT_FALSE(condition.Wait(0));
    EXPECT_EQ(ConditionProbe::Blocked(condition), 0u);
    EXPECT_EQ(ConditionProbe::Gone(condition), 0u);
    EXPECT_EQ(lock.acquires, 3);
}

TEST(Condition, FailuresOfTheOuterLockAndOfMemory) {
    CRecordingLock lock;
    ConditionImplWin condition(lock);
    lock.failSync = true;
    vorn::test::ExpectThrow<CSynchronizationException>([&] { condition.Wait(10); }, kCondition,
                                                       "Failed to release the specified lock.");
    EXPECT_EQ(lock.acquires, 1);
    lock.failSync = false;
    lock.failOther = true;
    EXPECT_THROW(condition.Wait(), CIllegalArgumentException);
    EXPECT_EQ(ConditionProbe::Blocked(condition), 2u);
    // The queue semaphore, then the gate.
    for (unsigned long nth : {2, 3})
        vorn::test::ExpectNoMemory([&] { CCondition c(lock); }, kCondition, 0, nth);
}

TEST(ConditionThreads, NotifyWakesWhoWaitsNotWhoLeftOrCameLater) {
    CLock lock;
    CCondition condition(lock);
    std::atomic<int> woken{0};
    // One waiter gives up first; a notification must not be spent on it.
    lock.Acquire();
    EXPECT_FALSE(condition.Wait(10));
    lock.Release();
    vorn::test::RunAndJoin(4, [&](int t) {
        if (t < 3) {
            lock.Acquire();
            if (condition.Wait(10000))
                ++woken;
            lock.Release();
            return;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        condition.Notify();
        for (int i = 0; i < 500 && woken.load() == 0; ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        EXPECT_EQ(woken.load(), 1);
        condition.NotifyAll();
    });
    EXPECT_EQ(woken.load(), 3);
    lock.Acquire();
    EXPECT_FALSE(condition.Wait(20));
    lock.Release();
}

// 8 producers and 8 consumers, each 100,000 items through a buffer of 64 guarded by one lock and
// two conditions: every item arrives exactly once and every thread ends.
TEST(ConditionThreads, BoundedBufferMovesEveryItemOnce) {
    constexpr int kSide = 8;
    constexpr int kItems = 100000;
    constexpr unsigned int kCapacity = 64;
    CLock lock;
    CCondition notEmpty(lock);
    CCondition notFull(lock);
    int buffer[kCapacity];
    unsigned int head = 0;
    unsigned int size = 0;
    std::vector<unsigned char> seen(kSide * kItems, 0);
    vorn::test::RunAndJoin(2 * kSide, [&](int t) {
        for (int i = 0; i < kItems; ++i) {
            lock.Acquire();
            if (t < kSide) {
                while (size == kCapacity)
                    notFull.Wait();
                buffer[(head + size++) % kCapacity] = t * kItems + i;
                notEmpty.Notify();
            } else {
                while (size == 0)
                    notEmpty.Wait();
                ++seen[buffer[head]];
                head = (head + 1) % kCapacity;
                --size;
                notFull.Notify();
            }
            lock.Release();
        }
    });
    for (int i = 0; i < kSide * kItems; ++i)
        ASSERT_EQ(seen[i], 1) << "item " << i;
}

TEST(Semaphore, CountsMaximumAndRefusedArguments) {
    const char* const source = "vorn/base/win/WinSemaphoreImpl";
    vorn::test::ExpectThrow<CIllegalArgumentException>([] { CSemaphore s(2, 1); }, source,
                                                       "Invalid initial count.");
    for (const char* name : {static_cast<const char*>(nullptr), ""})
        vorn::test::ExpectThrow<CIllegalArgumentException>([&] { CSemaphore s(name, 1); },
                                                           "vorn/base/win/WinNamedSemaphoreImpl",
                                                           "Invalid semaphore name.");
    vorn::test::ExpectThrow<CMemoryException>([] { CSemaphore s(0u, 0u); }, source);
    CSemaphore binary;
    EXPECT_FALSE(binary.IsNamed() || binary.IsShared());
    vorn::test::ExpectThrow<CSynchronizationException>([&] { binary.Release(); }, source,
                                                       "Failed to release the semaphore.");
    binary.Acquire();
    auto start = Clock::now();
    EXPECT_FALSE(binary.TryAcquire(30));
    EXPECT_GE(Clock::now() - start, std::chrono::milliseconds(30));
    binary.Release();
    EXPECT_TRUE(binary.TryAcquire(0));
}

TEST(Semaphore, NamedOnesShareTheirCount) {
    std::string name = "vorn-test-semaphore-" + std::to_string(::getpid());
    CSemaphore first(name.c_str(), 1), second(name.c_str(), 5);
    EXPECT_TRUE(second.IsNamed() && second.IsShared());
    EXPECT_TRUE(second.TryAcquire(0));
    EXPECT_FALSE(first.TryAcquire(0));
    first.Release();
    first.Release();
    EXPECT_TRUE(second.TryAcquire(0));
}

// 16 threads take and give back 100,000 times each a semaphore of 3: never more than 3 inside.
TEST(SemaphoreThreads, NeverMoreHoldersThanUnits) {
    constexpr int kThreads = 16;
    constexpr int kRounds = 100000;
    CSemaphore semaphore(3, 3);
    std::atomic<int> inside{0};
    std::atomic<bool> crowded{false};
    std::atomic<long> entries{0};
    vorn::test::RunAndJoin(kThreads, [&](int) {
        for (int i = 0; i < kRounds; ++i) {
            semaphore.Acquire();
            if (++inside > 3)
                crowded = true;
            entries.fetch_add(1, std::memory_order_relaxed);
            --inside;
            semaphore.Release();
        }
    });
    EXPECT_FALSE(crowded.load());
    EXPECT_EQ(entries.load(), static_cast<long>(kThreads) * kRounds);
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(semaphore.TryAcquire(0));
    EXPECT_FALSE(semaphore.TryAcquire(0));
}

} // namespace

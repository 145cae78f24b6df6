#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <future>
#include <thread>
#include <vector>

#include <vorn/base/LazyLock.h>
#include <vorn/base/Lock.h>
#include <vorn/base/MemoryException.h>
#include <vorn/base/ReentrantLock.h>
#include <vorn/base/SpinLock.h>
#include <vorn/base/SynchronizationException.h>

#include "support/AllocFailure.h"
#include "support/Throws.h"

namespace {

using namespace vorn::base;
using Clock = std::chrono::steady_clock;

template <typename L> class CriticalSectionLock : public ::testing::Test {};
using CriticalSectionLocks = ::testing::Types<CLock, CReentrantLock>;
TYPED_TEST_SUITE(CriticalSectionLock, CriticalSectionLocks);

TYPED_TEST(CriticalSectionLock, OwnerReentersAndReleasesAsOftenAsItTook) {
    TypeParam lock;
    ILockable_& lockable = lock;
    lockable.Acquire();
    EXPECT_TRUE(lockable.TryAcquire(0));
    lockable.Release();
    lockable.Release();
    // Fully released: another thread gets it.
    EXPECT_TRUE(std::async(std::launch::async, [&] {
                    bool got = lock.TryAcquire(0);
                    if (got)
                        lock.Release();
                    return got;
                }).get());
}

TYPED_TEST(CriticalSectionLock, NoMemoryForTheSectionIsAMemoryException) {
    vorn::test::ExpectNoMemory([] { TypeParam lock; }, "vorn/base/Base", 148);
}

// Holds `lock` on another thread until the returned promise is set.
template <typename L> class Holder {
public:
    explicit Holder(L& lock) : m_lock(lock) {
        std::promise<void> held;
        std::future<void> isHeld = held.get_future();
        m_thread = std::thread([this, &held] {
            m_lock.Acquire();
            held.set_value();
            m_done.get_future().wait();
            m_lock.Release();
        });
        isHeld.wait();
    }
    ~Holder() { Let(); }
    void Let() {
        if (m_thread.joinable()) {
            m_done.set_value();
            m_thread.join();
        }
    }

private:
    L& m_lock;
    std::promise<void> m_done;
    std::thread m_thread;
};

template <typename L> void ExpectOneQuickAttempt(L& lock) {
    Holder<L> holder(lock);
    auto fastest = Clock::duration::max();
    for (int i = 0; i < 20; ++i) {
        auto start = Clock::now();
        EXPECT_FALSE(lock.TryAcquire(1000));
        auto took = Clock::now() - start;
        fastest = std::min(fastest, took);
        EXPECT_LT(took, std::chrono::milliseconds(100));
    }
    EXPECT_LT(fastest, std::chrono::milliseconds(1));
    holder.Let();
    EXPECT_TRUE(lock.TryAcquire(1000));
    lock.Release();
}

template <typename L> void ExpectExclusion(L& lock) {
    long counter = 0;
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([&] {
            for (int i = 0; i < 2000; ++i) {
                lock.Acquire();
                ++counter;
                lock.Release();
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(counter, 8000);
}

TEST(LockThreads, TryAcquireOnAHeldLockReturnsAtOnce) {
    CLock lock;
    ExpectOneQuickAttempt(lock);
    CReentrantLock reentrant;
    ExpectOneQuickAttempt(reentrant);
    CSpinLock spin;
    ExpectOneQuickAttempt(spin);
}

TEST(LockThreads, OneThreadAtATime) {
    CLock lock;
    ExpectExclusion(lock);
    CReentrantLock reentrant;
    ExpectExclusion(reentrant);
    CSpinLock spin;
    ExpectExclusion(spin);
}

TEST(SpinLock, OneAttemptAndAnUnmatchedReleaseLocksItForGood) {
    CSpinLock lock;
    EXPECT_TRUE(lock.TryAcquire(0));
    EXPECT_FALSE(lock.TryAcquire(1000));
    lock.Release();
    EXPECT_TRUE(lock.TryAcquire(0));
    lock.Release();
    lock.Release();
    EXPECT_FALSE(lock.TryAcquire(0));
    EXPECT_FALSE(lock.TryAcquire(0));
}

TEST(LazyLock, NeverGetsASectionOfItsOwn) {
    unsigned long allocations = vorn::test::CountAllocations([] {
        CLazyLock unused;
        CLazyLock lock;
        lock.Release();
        EXPECT_FALSE(lock.TryAcquire(1000));
        vorn::test::ExpectThrow<CSynchronizationException>(
            [&] { lock.Acquire(); }, "vorn/base/LazyLock", "Failed to enter critical section.");
        lock.Release();
    });
    EXPECT_EQ(allocations, 0u);
}

} // namespace

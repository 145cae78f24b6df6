#include <gtest/gtest.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <string>
#include <thread>

#include <unistd.h>

#include <vorn/base/ArrayIndexOutOfBoundsException.h>
#include <vorn/base/IllegalArgumentException.h>
#include <vorn/base/SynchronizationException.h>
#include <vorn/base/win/CriticalSection.h>
#include <vorn/base/win/DualLock.h>
#include <vorn/base/win/Event.h>
#include <vorn/base/win/LazyCriticalSection.h>
#include <vorn/base/win/MultiLock.h>
#include <vorn/base/win/Mutex.h>
#include <vorn/base/win/SingleLock.h>

#include "support/AllocFailure.h"
#include "support/Threads.h"
#include "support/Throws.h"

namespace {

using namespace vorn::base;
using namespace vorn::base::win;
using vorn::test::ExpectThrow;

// True when another thread can take `object` at once (and gives it back).
bool FreeForOthers(CSyncObject& object) {
    bool taken = false;
    std::thread([&] {
        taken = object.TryAcquire(0);
        if (taken)
            object.Release();
    }).join();
    return taken;
}

TEST(SyncObject, RecordsNamesAndHandles) {
    CEvent unnamed, empty("");
    std::string name = "vorn-test-sync-object-" + std::to_string(::getpid());
    CMutex named(name.c_str());
    EXPECT_FALSE(unnamed.IsNamed() || empty.IsNamed());
    EXPECT_STREQ(named.GetName(), name.c_str());
    const char* const source = "vorn/base/win/SyncObject";
    void* handles[] = {unnamed.GetHandle(), named.GetHandle()};
    ExpectThrow<CIllegalArgumentException>([] { CSyncObject::WaitForSingleSyncObject(nullptr, 0); },
                                           source, "Invalid wait handle.");
    ExpectThrow<CIllegalArgumentException>(
        [&] { CSyncObject::WaitForMultipleSyncObject(1, handles, false, 0); }, source,
        "Invalid wait handle count.");
    ExpectThrow<CIllegalArgumentException>(
        [] { CSyncObject::WaitForMultipleSyncObject(2, nullptr, false, 0); }, source,
        "Invalid wait handle array.");
    EXPECT_EQ(CSyncObject::WaitForMultipleSyncObject(2, handles, false, 0), 1u);
    named.Release();
    vorn::test::ExpectNoMemory([] { CEvent event; }, "vorn/base/win/Event");
    vorn::test::ExpectNoMemory([] { CMutex mutex; }, "vorn/base/win/Mutex");
}

TEST(SyncObject, CriticalSectionsTryOnceAndTheLazyOneNeverGetsASection) {
    CCriticalSection section;
    section.Acquire();
    EXPECT_TRUE(section.TryAcquire(0));
    auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(FreeForOthers(section));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(500));
    section.Release();
    section.Release();
    EXPECT_TRUE(FreeForOthers(section));
    EXPECT_EQ(vorn::test::CountAllocations([] {
                  CLazyCriticalSection lazy;
                  lazy.Release();
                  EXPECT_FALSE(lazy.TryAcquire(1000));
                  ExpectThrow<CSynchronizationException>([&] { lazy.Acquire(); },
                                                         "vorn/base/win/LazyCriticalSection",
                                                         "Failed to enter critical section.");
              }),
              0u);
}

TEST(SyncObject, EventsAndMutexes) {
    CEvent automatic(nullptr, true);
    automatic.Release();
    EXPECT_TRUE(automatic.TryAcquire(0));
    EXPECT_FALSE(automatic.TryAcquire(10));
    CEvent manual(nullptr, false, true);
    manual.SetEvent();
    manual.Acquire();
    EXPECT_TRUE(manual.TryAcquire(0));
    manual.ResetEvent();
    EXPECT_FALSE(manual.TryAcquire(0));
    CMutex mutex(nullptr, true);
    EXPECT_FALSE(FreeForOthers(mutex));
    std::thread([&] {
        vorn::test::ExpectSystemError([&] { mutex.Release(); }, "vorn/base/win/Mutex",
                                      "Failed to release the underlying mutex object.", EPERM);
    }).join();
    mutex.Release();
    // Abandoned by a thread that ended holding it: taken all the same.
    std::thread([&] { mutex.Acquire(); }).join();
    mutex.Acquire();
    mutex.Release();
}

TEST(SyncObject, SingleLockTimedLockLeavesItsFlag) {
    ExpectThrow<CIllegalArgumentException>([] { CSingleLock lock(nullptr, false); },
                                           "vorn/base/win/SingleLock", "Invalid sync object.");
    CMutex mutex;
    {
        CSingleLock guard(&mutex, false);
        EXPECT_FALSE(guard.Lock(0)); // taken, but not flagged
        EXPECT_FALSE(guard.IsLocked());
    }
    EXPECT_FALSE(FreeForOthers(mutex)); // so the guard didn't give it back
    mutex.Release();
    {
        CSingleLock guard(&mutex, true);
        EXPECT_TRUE(guard.Lock(0));
        mutex.Release();
    }
    EXPECT_TRUE(FreeForOthers(mutex));
}

TEST(SyncObject, DualAndMultiLockArgumentsAndFlags) {
    const char* const dual = "vorn/base/win/DualLock";
    const char* const multi = "vorn/base/win/MultiLock";
    CCriticalSection section;
    CEvent first, second;
    struct {
        CSyncObject *one, *two;
        const char* text;
    } const refused[] = {{nullptr, &first, "Sync object 1 is invalid."},
                         {&section, &first, "Sync object 1 is not waitable."},
                         {&first, nullptr, "Sync object 2 is invalid."},
                         {&first, &section, "Sync object 2 is not waitable."}};
    for (const auto& r : refused)
        ExpectThrow<CIllegalArgumentException>([&] { CDualLock l(r.one, r.two, false); }, dual,
                                               r.text);
    CDualLock pair(&first, &second, false);
    pair.Lock(false, 0);
    EXPECT_FALSE(pair.IsLocked(0) || pair.IsLocked(1));
    ExpectThrow<CArrayIndexOutOfBoundsException>([&] { pair.IsLocked(2); }, dual);
    second.SetEvent();
    pair.Lock(false, 0);
    EXPECT_TRUE(!pair.IsLocked(0) && pair.IsLocked(1));
    pair.Unlock();

    CSyncObject* one[] = {&first};
    CSyncObject* withSection[] = {&first, &section};
    ExpectThrow<CIllegalArgumentException>([&] { CMultiLock l(1, one, false); }, multi,
                                           "Invalid sync object count.");
    ExpectThrow<CIllegalArgumentException>([] { CMultiLock l(2, nullptr, false); }, multi,
                                           "Invalid sync object array.");
    ExpectThrow<CIllegalArgumentException>([&] { CMultiLock l(2, withSection, false); }, multi,
                                           "Invalid sync object.");
    CMutex owned;
    CEvent third(nullptr, true);
    CSyncObject* objects[] = {&first, &owned, &third};
    for (unsigned long nth : {1, 2, 3})
        vorn::test::ExpectNoMemory([&] { CMultiLock l(3, objects, false); }, multi, 0, nth);
    {
        CMultiLock all(3, objects, false);
        all.Lock(true, 0); // the first event isn't set: nothing is taken
        EXPECT_FALSE(all.IsLocked(1) || all.IsLocked(2));
        CMultiLock any(3, objects, true);
        EXPECT_TRUE(!any.IsLocked(0) && any.IsLocked(1) && !any.IsLocked(2));
        ExpectThrow<CArrayIndexOutOfBoundsException>([&] { any.IsLocked(3); }, multi);
        first.SetEvent();
        all.Lock(true, 0);
        EXPECT_TRUE(all.IsLocked(0) && all.IsLocked(1) && all.IsLocked(2));
    }
    // Both guards gave the mutex back.
    EXPECT_TRUE(FreeForOthers(owned));
}

// 16 threads pass one auto-reset event 100,000 times each: each SetEvent lets exactly one
// waiter through, so the count kept inside needs no other lock.
TEST(EventThreads, AutoResetHandsOffToExactlyOne) {
    constexpr int kThreads = 16;
    constexpr int kRounds = 100000;
    CEvent baton(nullptr, true);
    std::atomic<int> inside{0};
    std::atomic<bool> crowded{false};
    long count = 0;
    vorn::test::RunAndJoin(kThreads, [&](int) {
        for (int i = 0; i < kRounds; ++i) {
            baton.Acquire();
            if (++inside != 1)
                crowded = true;
            ++count;
            --inside;
            baton.SetEvent();
        }
    });
    EXPECT_FALSE(crowded.load());
    EXPECT_EQ(count, static_cast<long>(kThreads) * kRounds);
}

// A manual-reset event lets every waiter through at once.
TEST(EventThreads, ManualResetReleasesAllWaiters) {
    CEvent gate(nullptr, false, true);
    std::atomic<int> passed{0};
    vorn::test::RunAndJoin(17, [&](int t) {
        if (t < 16 && gate.TryAcquire(10000))
            ++passed;
        else if (t == 16) {
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
            gate.SetEvent();
        }
    });
    EXPECT_EQ(passed.load(), 16);
}

} // namespace

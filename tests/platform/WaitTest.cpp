#include <gtest/gtest.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <string>
#include <thread>
#include <utility>

#include <sys/wait.h>
#include <unistd.h>

#include "platform/Thread.h"
#include "platform/Wait.h"
#include "support/Utf16.h"

namespace {

using namespace vorn::platform;
using vorn::test::WString;
using Clock = std::chrono::steady_clock;

// A name no other test process uses.
WString Name(const char* what) {
    std::string text = "vorn-test-" + std::to_string(getpid()) + "-" + what;
    return WString(text.begin(), text.end());
}

// Runs `child` in a forked process and returns its exit status.
template <typename F> int InChild(F&& child) {
    pid_t pid = fork();
    if (pid == 0)
        _exit(child());
    int status = -1;
    waitpid(pid, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// A mutex left behind by a thread that ended holding it.
WaitHandle AbandonedMutex() {
    WaitHandle mutex = CreateMutex(false, nullptr);
    std::thread([&] { EXPECT_EQ(WaitForSingleObject(mutex, 0), 0u); }).join();
    return mutex;
}

TEST(Wait, WaitAnyTakesOnlyTheLowestReadyObject) {
    WaitHandle handles[] = {CreateEvent(false, false, nullptr), CreateSemaphore(1, 5, nullptr),
                            CreateEvent(false, true, nullptr)};
    EXPECT_EQ(WaitForMultipleObjects(3, handles, false, 0), 1u);
    EXPECT_EQ(WaitForMultipleObjects(3, handles, false, 0), 2u);
    EXPECT_EQ(WaitForMultipleObjects(3, handles, false, 0), kWaitTimeout);
    ASSERT_TRUE(SetEvent(handles[0]));
    ASSERT_TRUE(SetEvent(handles[2]));
    EXPECT_EQ(WaitForMultipleObjects(3, handles, false, kInfinite), 0u);
    for (WaitHandle handle : handles)
        EXPECT_TRUE(CloseHandle(handle));
}

TEST(Wait, WaitAllTakesEverythingOrNothing) {
    WaitHandle abandoned = AbandonedMutex();
    WaitHandle handles[] = {CreateSemaphore(1, 1, nullptr), abandoned,
                            CreateEvent(false, false, nullptr)};
    // The event isn't set: the semaphore's unit and the mutex's news of its owner stay.
    EXPECT_EQ(WaitForMultipleObjects(3, handles, true, 20), kWaitTimeout);
    ASSERT_TRUE(SetEvent(handles[2]));
    EXPECT_EQ(WaitForMultipleObjects(3, handles, true, 0), kWaitAbandoned0 + 1);
    EXPECT_EQ(WaitForSingleObject(handles[0], 0), kWaitTimeout);
    EXPECT_EQ(WaitForSingleObject(handles[2], 0), kWaitTimeout);
    EXPECT_TRUE(ReleaseMutex(abandoned));
    for (WaitHandle handle : handles)
        EXPECT_TRUE(CloseHandle(handle));
}

TEST(Wait, MutexOwnershipAbandonmentAndRecursion) {
    WaitHandle mutex = AbandonedMutex();
    WaitHandle any[] = {CreateEvent(true, false, nullptr), mutex};
    EXPECT_EQ(WaitForMultipleObjects(2, any, false, 0), kWaitAbandoned0 + 1);
    // Taken again by its owner, released as often as it was taken, then no more.
    EXPECT_EQ(WaitForSingleObject(mutex, 0), 0u);
    std::thread([&] {
        EXPECT_EQ(WaitForSingleObject(mutex, 10), kWaitTimeout);
        EXPECT_FALSE(ReleaseMutex(mutex));
        EXPECT_EQ(GetLastError(), static_cast<unsigned long>(EPERM));
    }).join();
    EXPECT_TRUE(ReleaseMutex(mutex));
    EXPECT_TRUE(ReleaseMutex(mutex));
    EXPECT_FALSE(ReleaseMutex(mutex));
    // Closed by its owner: the next holder hears it was abandoned, and it keeps no token behind.
    WaitHandle owned = CreateMutex(true, nullptr);
    EXPECT_TRUE(CloseHandle(owned));
    EXPECT_TRUE(CloseHandle(mutex));
    EXPECT_TRUE(CloseHandle(any[0]));
}

TEST(Wait, RefusedArgumentsAndCounts) {
    for (auto [initial, maximum] : {std::pair(2u, 1u), {0u, 0u}, {0u, 0x80000000u}})
        EXPECT_EQ(CreateSemaphore(initial, maximum, nullptr), nullptr);
    WaitHandle semaphore = CreateSemaphore(1, 3, nullptr);
    EXPECT_FALSE(ReleaseSemaphore(semaphore, 3));
    EXPECT_TRUE(ReleaseSemaphore(semaphore, 2));
    EXPECT_FALSE(ReleaseSemaphore(semaphore, 1));
    EXPECT_FALSE(SetEvent(semaphore));
    EXPECT_FALSE(ReleaseMutex(semaphore));
    WaitHandle twice[] = {semaphore, semaphore};
    EXPECT_EQ(WaitForMultipleObjects(2, twice, false, 0), kWaitFailed);
    EXPECT_EQ(WaitForMultipleObjects(0, twice, false, 0), kWaitFailed);
    WaitHandle many[kMaximumWaitObjects + 1] = {};
    EXPECT_EQ(WaitForMultipleObjects(kMaximumWaitObjects + 1, many, false, 0), kWaitFailed);
    EXPECT_EQ(WaitForSingleObject(nullptr, 0), kWaitFailed);
    EXPECT_TRUE(CloseHandle(semaphore));
}

TEST(NamedObjects, OneObjectPerNameAcrossProcesses) {
    WString name = Name("event");
    WaitHandle event = CreateEvent(true, false, name.c_str());
    WaitHandle same = CreateEvent(false, true, name.c_str());
    ASSERT_NE(same, nullptr);
    EXPECT_EQ(CreateMutex(false, name.c_str()), nullptr);
    // The second creation opened the first object: manual reset, not signalled.
    EXPECT_EQ(WaitForSingleObject(same, 0), kWaitTimeout);
    EXPECT_EQ(InChild([&] {
                  WaitHandle child = CreateEvent(false, false, name.c_str());
                  return child != nullptr && SetEvent(child) ? 0 : 1;
              }),
              0);
    WaitHandle both[] = {CreateSemaphore(0, 1, Name("semaphore").c_str()), event};
    EXPECT_EQ(WaitForMultipleObjects(2, both, false, 1000), 1u);
    EXPECT_EQ(WaitForSingleObject(same, 0), 0u);
    EXPECT_TRUE(CloseHandle(both[0]));
    EXPECT_TRUE(CloseHandle(event));
    EXPECT_TRUE(CloseHandle(same));
    // Gone with its last handle: the name makes a new object with the state it is given.
    WaitHandle fresh = CreateEvent(false, false, name.c_str());
    EXPECT_EQ(WaitForSingleObject(fresh, 0), kWaitTimeout);
    EXPECT_TRUE(CloseHandle(fresh));
    EXPECT_NE(access(("/dev/shm/vorn." + std::to_string(getuid()) + ".obj.vorn-test-" +
                      std::to_string(getpid()) + "-event")
                         .c_str(),
                     F_OK),
              0);
}

TEST(NamedObjects, MutexOfADeadProcessIsAbandoned) {
    WString name = Name("mutex");
    WaitHandle mutex = CreateMutex(false, name.c_str());
    EXPECT_EQ(InChild([&] {
                  WaitHandle child = CreateMutex(false, name.c_str());
                  return WaitForSingleObject(child, 0) == 0 ? 0 : 1;
              }),
              0);
    EXPECT_EQ(WaitForSingleObject(mutex, 1000), kWaitAbandoned0);
    EXPECT_TRUE(ReleaseMutex(mutex));
    EXPECT_EQ(WaitForSingleObject(mutex, 0), 0u);
    EXPECT_TRUE(ReleaseMutex(mutex));
    // A waiter that sleeps while the owner dies finds out without a signal.
    WString startedName = Name("started");
    WaitHandle started = CreateEvent(false, false, startedName.c_str());
    pid_t pid = fork();
    if (pid == 0) {
        WaitHandle child = CreateMutex(false, name.c_str());
        WaitForSingleObject(child, kInfinite);
        SetEvent(CreateEvent(false, false, startedName.c_str()));
        usleep(50000);
        _exit(0);
    }
    EXPECT_EQ(WaitForSingleObject(started, 5000), 0u);
    WaitHandle handles[] = {started, mutex};
    EXPECT_EQ(WaitForMultipleObjects(2, handles, false, 5000), kWaitAbandoned0 + 1);
    waitpid(pid, nullptr, 0);
    EXPECT_TRUE(ReleaseMutex(mutex));
    EXPECT_TRUE(CloseHandle(started));
    EXPECT_TRUE(CloseHandle(mutex));
}

TEST(WaitThreads, ASignalWakesAWaitOnSeveralObjects) {
    WaitHandle handles[] = {CreateEvent(false, false, nullptr), CreateSemaphore(0, 1, nullptr)};
    for (bool waitAll : {false, true}) {
        std::thread signaller([&] {
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            ReleaseSemaphore(handles[1], 1);
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            SetEvent(handles[0]);
        });
        auto start = Clock::now();
        EXPECT_EQ(WaitForMultipleObjects(2, handles, waitAll, 5000), waitAll ? 0u : 1u);
        EXPECT_LT(Clock::now() - start, std::chrono::seconds(2));
        signaller.join();
        WaitForSingleObject(handles[0], 0);
    }
    for (WaitHandle handle : handles)
        EXPECT_TRUE(CloseHandle(handle));
}

TEST(PlatformThreads, HandleExitCodeAndPriority) {
    unsigned int id = 0;
    std::atomic<bool> sawHandle{false};
    WaitHandle thread = BeginThread(
        [](void* argument) -> unsigned int {
            static_cast<std::atomic<bool>*>(argument)->store(CurrentThreadHandle() != nullptr);
            EndThread(7);
        },
        &sawHandle, nullptr, &id);
    ASSERT_NE(thread, nullptr);
    EXPECT_NE(id, 0u);
    // Held before its routine until resumed.
    EXPECT_EQ(WaitForSingleObject(thread, 20), kWaitTimeout);
    EXPECT_FALSE(sawHandle.load());
    EXPECT_TRUE(ResumeThread(thread));
    EXPECT_EQ(WaitForSingleObject(thread, 5000), 0u);
    unsigned int code = 0;
    EXPECT_TRUE(GetExitCodeThread(thread, &code));
    EXPECT_EQ(code, 7u);
    EXPECT_TRUE(sawHandle.load());
    EXPECT_FALSE(CloseHandle(thread));
    EXPECT_TRUE(TerminateThread(thread));
    EXPECT_FALSE(SetThreadPriority(thread, 20));
    EXPECT_TRUE(SetThreadPriority(thread, 3));
    EXPECT_EQ(GetThreadPriority(thread), 3);
    EXPECT_EQ(CurrentThreadHandle(), nullptr);
}

} // namespace

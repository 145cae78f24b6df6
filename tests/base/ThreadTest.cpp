#include <gtest/gtest.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <functional>
#include <thread>

#include <vorn/base/IllegalStateException.h>
#include <vorn/base/NullReferenceException.h>
#include <vorn/base/ThreadLocal.h>
#include <vorn/base/win/WinThreadImpl.h>
#include <vorn/base/win/WinThreadLocalImpl.h>

#include "platform/Thread.h"
#include "support/DebugCapture.h"
#include "support/Threads.h"
#include "support/Throws.h"

namespace {

using namespace vorn::base;
using vorn::test::FunctionThread;
using vorn::test::JoinOrAbort;
using Clock = std::chrono::steady_clock;
const char* const kImpl = "vorn/base/win/WinThreadImpl";

// Keeps its own handle and what it saw; tells the test when it is deleted.
class CProbeThread : public CThread {
public:
    explicit CProbeThread(std::atomic<bool>* deleted = nullptr) : m_deleted(deleted) {}
    ~CProbeThread() override {
        if (m_deleted != nullptr)
            *m_deleted = true;
    }
    std::function<void(CProbeThread&)> body;
    void* handle = nullptr;
    CThread* current = nullptr;
    using CThread::Exit;
    using CThread::IsStopped;
    using CThread::Wait;

protected:
    void Run() override {
        handle = vorn::platform::CurrentThreadHandle();
        current = GetCurrentThread();
        if (body)
            body(*this);
    }

private:
    std::atomic<bool>* m_deleted;
};

unsigned int ExitCode(void* handle) {
    EXPECT_EQ(vorn::platform::WaitForSingleObject(handle, 5000), 0u);
    unsigned int code = 1;
    vorn::platform::GetExitCodeThread(handle, &code);
    return code;
}

TEST(Thread, BeforeStart) {
    CProbeThread thread;
    EXPECT_FALSE(thread.IsAlive());
    for (const auto& call : std::initializer_list<std::function<void()>>{[&] { thread.Join(0); },
                                                                         [&] { thread.Destroy(); }})
        vorn::test::ExpectThrow<CIllegalStateException>(call, kImpl,
                                                        "Thread hasn't been started yet.");
    thread.SetPriority(4);
    EXPECT_EQ(thread.GetPriority(), 4);
    thread.Stop();
    win::CWinThreadImpl impl;
    impl.Start(nullptr);
    EXPECT_FALSE(impl.IsAlive());
    // The implementation goes when its handle can't be made.
    vorn::test::ExpectNoMemory([] { CProbeThread t; }, "vorn/base/Ref", 186, 2);
}

TEST(ThreadThreads, RunsFindsItselfAndJoins) {
    EXPECT_EQ(CThread::GetCurrentThread(), nullptr);
    std::atomic<bool> release{false};
    CProbeThread thread;
    thread.SetPriority(5);
    thread.body = [&](CProbeThread&) {
        while (!release)
            std::this_thread::yield();
    };
    thread.Start();
    EXPECT_TRUE(thread.IsAlive());
    EXPECT_EQ(thread.GetPriority(), 5); // applied by Start, read from the system
    EXPECT_FALSE(thread.Join(0));
    release = true;
    JoinOrAbort(thread);
    EXPECT_FALSE(thread.IsAlive());
    EXPECT_EQ(thread.current, &thread);
    EXPECT_EQ(ExitCode(thread.handle), 0u);
    // A second Start runs a second thread.
    void* first = thread.handle;
    thread.Start();
    thread.Join();
    EXPECT_NE(thread.handle, first);
}

TEST(ThreadThreads, StopWakesWaitButNotALaterOne) {
    CProbeThread thread;
    std::atomic<bool> waiting{false};
    bool stopped = false;
    bool later = true;
    thread.body = [&](CProbeThread& self) {
        waiting = true;
        stopped = self.Wait(10000) && self.IsStopped();
        auto start = Clock::now();
        later = self.Wait(30);
        EXPECT_GE(Clock::now() - start, std::chrono::milliseconds(30));
    };
    thread.Start();
    while (!waiting)
        std::this_thread::yield();
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    thread.Stop();
    JoinOrAbort(thread);
    EXPECT_TRUE(stopped);
    EXPECT_FALSE(later);
}

TEST(ThreadThreads, EndsOfRunExceptionsExitAndAutoDeletion) {
    vorn::test::DebugCapture debug;
    std::atomic<bool> deleted{false};
    std::atomic<void*> handle{nullptr};
    // A CException is printed; the thread still ends with 0 and deletes its object.
    auto* thread = new CProbeThread(&deleted);
    thread->SetAutoDeleted(true);
    thread->body = [&](CProbeThread& self) {
        handle = self.handle;
        throw CNullReferenceException("vorn/test", 7);
    };
    thread->Start();
    while (handle.load() == nullptr)
        std::this_thread::yield();
    EXPECT_EQ(ExitCode(handle), 0u);
    EXPECT_TRUE(deleted.load());
    EXPECT_NE(debug.Text().find("vorn::base::CNullReferenceException"), std::string::npos);
    EXPECT_NE(debug.Text().find("vorn/test(7)"), std::string::npos);
    // Anything else is dropped silently; Exit keeps its code and skips the deletion.
    debug.Clear();
    deleted = false;
    CProbeThread quiet(&deleted);
    quiet.body = [](CProbeThread&) { throw 42; };
    quiet.Start();
    quiet.Join();
    EXPECT_EQ(ExitCode(quiet.handle), 0u);
    EXPECT_EQ(debug.Text(), "");
    auto* exiting = new CProbeThread(&deleted);
    exiting->SetAutoDeleted(true);
    exiting->body = [](CProbeThread& self) { self.Exit(9); };
    exiting->Start();
    exiting->Join();
    EXPECT_EQ(ExitCode(exiting->handle), 9u);
    EXPECT_FALSE(deleted.load());
    delete exiting;
}

// Its Run uses nothing of the object once it has told its handle.
class COrphanThread : public CThread {
public:
    COrphanThread(std::atomic<bool>& release, std::atomic<void*>& handle)
        : m_release(release), m_handle(handle) {}

protected:
    void Run() override {
        std::atomic<bool>& release = m_release;
        m_handle = vorn::platform::CurrentThreadHandle();
        while (!release)
            std::this_thread::yield();
    }

private:
    std::atomic<bool>& m_release;
    std::atomic<void*>& m_handle;
};

// The owner deletes the object while Run still runs: the thread then reads nothing of it.
TEST(ThreadThreads, ObjectDeletedWhileRunning) {
    std::atomic<bool> release{false};
    std::atomic<void*> handle{nullptr};
    auto* thread = new COrphanThread(release, handle);
    thread->SetAutoDeleted(true);
    thread->Start();
    while (handle.load() == nullptr)
        std::this_thread::yield();
    delete thread;
    release = true;
    EXPECT_EQ(vorn::platform::WaitForSingleObject(handle, 5000), 0u);
}

TEST(ThreadThreads, RefusedPriorities) {
    std::atomic<bool> release{false};
    FunctionThread thread([&] {
        while (!release)
            std::this_thread::yield();
    });
    thread.SetPriority(100);
    vorn::test::ExpectSystemError([&] { thread.Start(); }, kImpl,
                                  "Failed to set the initial priority of the thread.", EINVAL);
    EXPECT_TRUE(thread.IsAlive());
    vorn::test::ExpectSystemError([&] { thread.SetPriority(-100); }, kImpl,
                                  "Failed to set the priority of the thread.", EINVAL);
    release = true;
    JoinOrAbort(thread);
}

TEST(ThreadLocalThreads, OneValuePerThread) {
    CThreadLocal local;
    int mine = 0;
    local.SetValue(&mine);
    FunctionThread other([&] {
        EXPECT_EQ(local.GetValue(), nullptr);
        local.SetValue(&local);
    });
    other.Start();
    JoinOrAbort(other);
    EXPECT_EQ(local.GetValue(), &mine);
    // A slot that was never allocated can be neither read nor written.
    win::CWinThreadLocalImpl unallocated;
    vorn::test::ExpectSystemError([&] { unallocated.GetValue(); },
                                  "vorn/base/win/WinThreadLocalImpl",
                                  "Failed to get the value of the TLS slot.", EINVAL);
    vorn::test::ExpectSystemError([&] { unallocated.SetValue(&mine); },
                                  "vorn/base/win/WinThreadLocalImpl",
                                  "Failed to set the value of the TLS slot.", EINVAL);
}

// The hard kill: only on a thread that holds no lock and allocates nothing.
TEST(ThreadKill, DestroyEndsTheThreadWithoutItsEnd) {
    std::atomic<bool> deleted{false};
    std::atomic<long> spins{0};
    auto* thread = new CProbeThread(&deleted);
    thread->SetAutoDeleted(true);
    thread->body = [&](CProbeThread&) {
        for (;;)
            spins.fetch_add(1, std::memory_order_relaxed);
    };
    thread->Start();
    while (spins.load() == 0)
        std::this_thread::yield();
    thread->Destroy();
    JoinOrAbort(*thread, 5000);
    EXPECT_FALSE(thread->IsAlive());
    EXPECT_FALSE(deleted.load());
    thread->Destroy(); // already ended
    delete thread;
}

} // namespace

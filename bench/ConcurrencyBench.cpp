// Conditions, semaphores and events beside the standard library and POSIX semaphores. Each case
// is registered as "Case/vorn" and "Case/<peer>"; the hand-offs between two threads are timed on
// the wall clock, since each side sleeps while the other runs.
#include <benchmark/benchmark.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

#include <semaphore.h>
#include <sys/resource.h>

#include <vorn/base/Condition.h>
#include <vorn/base/Lock.h>
#include <vorn/base/Semaphore.h>
#include <vorn/base/win/Event.h>

namespace {

using vorn::base::CCondition;
using vorn::base::CLock;
using vorn::base::CSemaphore;
using vorn::base::win::CEvent;

// ---- Two sides that pass a turn back and forth; both conditions are notified after the lock
// is released, so that the woken side doesn't run into it.

struct VornConditionTurn {
    CLock lock;
    CCondition condition{lock};
    int turn = 0;
    void Pass(int to) {
        lock.Acquire();
        turn = to;
        lock.Release();
        condition.Notify();
    }
    void Await(int me) {
        lock.Acquire();
        while (turn != me)
            condition.Wait();
        lock.Release();
    }
};

struct StdConditionTurn {
    std::mutex mutex;
    std::condition_variable condition;
    int turn = 0;
    void Pass(int to) {
        {
            std::lock_guard<std::mutex> hold(mutex);
            turn = to;
        }
        condition.notify_one();
    }
    void Await(int me) {
        std::unique_lock<std::mutex> hold(mutex);
        condition.wait(hold, [&] { return turn == me; });
    }
};

struct VornSemaphoreTurn {
    CSemaphore sides[2] = {CSemaphore(0u, 1u), CSemaphore(0u, 1u)};
    void Pass(int to) { sides[to].Release(); }
    void Await(int me) { sides[me].Acquire(); }
};

struct PosixSemaphoreTurn {
    sem_t sides[2];
    PosixSemaphoreTurn() {
        sem_init(&sides[0], 0, 0);
        sem_init(&sides[1], 0, 0);
    }
    ~PosixSemaphoreTurn() {
        sem_destroy(&sides[0]);
        sem_destroy(&sides[1]);
    }
    void Pass(int to) { sem_post(&sides[to]); }
    void Await(int me) {
        while (sem_wait(&sides[me]) != 0) {
        }
    }
};

// An auto-reset event as the standard library builds one.
class StdEvent {
public:
    void Set() {
        {
            std::lock_guard<std::mutex> hold(m_mutex);
            m_signaled = true;
        }
        m_condition.notify_one();
    }
    void Wait() {
        std::unique_lock<std::mutex> hold(m_mutex);
        m_condition.wait(hold, [&] { return m_signaled; });
        m_signaled = false;
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_condition;
    bool m_signaled = false;
};

struct VornEventTurn {
    CEvent sides[2];
    void Pass(int to) { sides[to].SetEvent(); }
    void Await(int me) { sides[me].Acquire(); }
};

struct StdEventTurn {
    StdEvent sides[2];
    void Pass(int to) { sides[to].Set(); }
    void Await(int me) { sides[me].Wait(); }
};

long VoluntarySwitches() {
    rusage usage;
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_nvcsw;
}

// One iteration is a round trip: this thread hands the turn over and waits to get it back. The
// counter "sleeps" is the number of times a thread of the process went to sleep per round trip.
template <typename Turn> void PingPong(benchmark::State& state) {
    Turn turn;
    std::atomic<bool> done{false};
    std::thread echo([&] {
        for (;;) {
            turn.Await(1);
            if (done.load(std::memory_order_relaxed))
                return;
            turn.Pass(0);
        }
    });
    long switches = VoluntarySwitches();
    for (auto _ : state) {
        turn.Pass(1);
        turn.Await(0);
    }
    state.counters["sleeps"] = static_cast<double>(VoluntarySwitches() - switches) /
                               static_cast<double>(state.iterations());
    done = true;
    turn.Pass(1);
    echo.join();
    state.SetItemsProcessed(state.iterations());
}

BENCHMARK_TEMPLATE(PingPong, VornConditionTurn)->Name("ConditionPingPong/vorn")->UseRealTime();
BENCHMARK_TEMPLATE(PingPong, StdConditionTurn)
    ->Name("ConditionPingPong/std_condition_variable")
    ->UseRealTime();
BENCHMARK_TEMPLATE(PingPong, VornSemaphoreTurn)->Name("SemaphorePingPong/vorn")->UseRealTime();
BENCHMARK_TEMPLATE(PingPong, PosixSemaphoreTurn)->Name("SemaphorePingPong/sem_t")->UseRealTime();
BENCHMARK_TEMPLATE(PingPong, VornEventTurn)->Name("EventPingPong/vorn")->UseRealTime();
BENCHMARK_TEMPLATE(PingPong, StdEventTurn)->Name("EventPingPong/std_mutex_cv_event")->UseRealTime();

// ---- One thread, nobody else: the cost of the calls themselves

void ConditionNotifyVorn(benchmark::State& state) {
    CLock lock;
    CCondition condition(lock);
    for (auto _ : state) {
        lock.Acquire();
        condition.Notify();
        lock.Release();
    }
}
BENCHMARK(ConditionNotifyVorn)->Name("ConditionNotifyNoWaiter/vorn");

void ConditionNotifyStd(benchmark::State& state) {
    std::mutex mutex;
    std::condition_variable condition;
    for (auto _ : state) {
        std::lock_guard<std::mutex> hold(mutex);
        condition.notify_one();
    }
}
BENCHMARK(ConditionNotifyStd)->Name("ConditionNotifyNoWaiter/std_condition_variable");

void ConditionWaitZeroVorn(benchmark::State& state) {
    CLock lock;
    CCondition condition(lock);
    for (auto _ : state) {
        lock.Acquire();
        benchmark::DoNotOptimize(condition.Wait(0));
        lock.Release();
    }
}
BENCHMARK(ConditionWaitZeroVorn)->Name("ConditionWaitZero/vorn");

void ConditionWaitZeroStd(benchmark::State& state) {
    std::mutex mutex;
    std::condition_variable condition;
    for (auto _ : state) {
        std::unique_lock<std::mutex> hold(mutex);
        benchmark::DoNotOptimize(condition.wait_for(hold, std::chrono::milliseconds(0)));
    }
}
BENCHMARK(ConditionWaitZeroStd)->Name("ConditionWaitZero/std_condition_variable");

void SemaphoreVorn(benchmark::State& state) {
    CSemaphore semaphore;
    for (auto _ : state) {
        semaphore.Acquire();
        semaphore.Release();
    }
}
BENCHMARK(SemaphoreVorn)->Name("SemaphoreAcquireRelease/vorn");

void SemaphorePosix(benchmark::State& state) {
    sem_t semaphore;
    sem_init(&semaphore, 0, 1);
    for (auto _ : state) {
        sem_wait(&semaphore);
        sem_post(&semaphore);
    }
    sem_destroy(&semaphore);
}
BENCHMARK(SemaphorePosix)->Name("SemaphoreAcquireRelease/sem_t");

void EventVorn(benchmark::State& state) {
    CEvent event;
    for (auto _ : state) {
        event.SetEvent();
        event.Acquire();
    }
}
BENCHMARK(EventVorn)->Name("EventSetWait/vorn");

void EventStd(benchmark::State& state) {
    StdEvent event;
    for (auto _ : state) {
        event.Set();
        event.Wait();
    }
}
BENCHMARK(EventStd)->Name("EventSetWait/std_mutex_cv_event");

} // namespace

BENCHMARK_MAIN();

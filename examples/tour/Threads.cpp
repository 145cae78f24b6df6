// Threads: a producer and a consumer through a condition, a stop request, and a wait on several
// objects at once.
#include "Tour.h"

#include <cstdio>

#include <vorn/vorn.h>

using namespace vorn::base;
using namespace vorn::base::win;

namespace {

// A queue of numbers with room for four, guarded by one lock and two conditions.
class CSmallQueue {
public:
    void Put(int value) {
        m_lock.Acquire();
        while (m_size == 4)
            m_notFull.Wait();
        m_items[(m_head + m_size++) % 4] = value;
        m_notEmpty.Notify();
        m_lock.Release();
    }
    int Take() {
        m_lock.Acquire();
        while (m_size == 0)
            m_notEmpty.Wait();
        int value = m_items[m_head];
        m_head = (m_head + 1) % 4;
        --m_size;
        m_notFull.Notify();
        m_lock.Release();
        return value;
    }

private:
    CLock m_lock;
    CCondition m_notEmpty{m_lock};
    CCondition m_notFull{m_lock};
    int m_items[4] = {};
    int m_head = 0;
    int m_size = 0;
};

class CProducer : public CThread {
public:
    explicit CProducer(CSmallQueue& queue) : m_queue(queue) {}

protected:
    void Run() override {
        for (int i = 1; i <= 10; ++i)
            m_queue.Put(i * i);
        m_queue.Put(-1); // the end
    }

private:
    CSmallQueue& m_queue;
};

class CConsumer : public CThread {
public:
    explicit CConsumer(CSmallQueue& queue) : m_queue(queue) {}
    int sum = 0;
    int count = 0;

protected:
    void Run() override {
        for (int value = m_queue.Take(); value >= 0; value = m_queue.Take()) {
            sum += value;
            ++count;
        }
    }

private:
    CSmallQueue& m_queue;
};

// Ticks until it is asked to stop; Wait sleeps at most 10 ms and wakes at once on Stop.
class CTicker : public CThread {
public:
    int ticks = 0;

protected:
    void Run() override {
        while (!IsStopped() && !Wait(10))
            ++ticks;
    }
};

// Sets one event of a pair after a short pause.
class CSignaller : public CThread {
public:
    explicit CSignaller(CEvent& event) : m_event(event) {}

protected:
    void Run() override {
        Wait(20);
        m_event.SetEvent();
    }

private:
    CEvent& m_event;
};

} // namespace

void tour::Threads() {
    tour::Section("Threads");
    CSmallQueue queue;
    CProducer producer(queue);
    CConsumer consumer(queue);
    consumer.Start();
    producer.Start();
    producer.Join();
    consumer.Join();
    std::printf("consumer took %d squares through a queue of 4, sum %d\n", consumer.count,
                consumer.sum);

    CTicker ticker;
    ticker.Start();
    bool done = ticker.Join(50);
    ticker.Stop();
    ticker.Join();
    std::printf("ticker %s after 50 ms, stopped on request after %s ticks\n",
                done ? "had ended" : "still ran", ticker.ticks > 0 ? "some" : "no");

    CEvent ready;
    CEvent cancelled;
    CSignaller signaller(cancelled);
    signaller.Start();
    CSyncObject* objects[] = {&ready, &cancelled};
    CMultiLock both(2, objects, false);
    both.Lock(false, 2000); // whichever comes first
    std::printf("wait on two events: ready %s, cancelled %s\n",
                both.IsLocked(0) ? "signalled" : "not signalled",
                both.IsLocked(1) ? "signalled" : "not signalled");
    signaller.Join();
}

// A CThread that runs a function, and joins that fail the test loudly instead of hanging it.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <vorn/base/Thread.h>

namespace vorn::test {

class FunctionThread : public vorn::base::CThread {
public:
    explicit FunctionThread(std::function<void()> body) : m_body(std::move(body)) {}
    // Starts at once.
    static FunctionThread* Run(std::function<void()> body) {
        auto* thread = new FunctionThread(std::move(body));
        thread->Start();
        return thread;
    }

    using CThread::IsStopped;
    using CThread::Wait;

protected:
    void Run() override { m_body(); }

private:
    std::function<void()> m_body;
};

// A thread still running after `milliseconds` is a lost wake-up; the process can't go on safely.
inline void JoinOrAbort(vorn::base::CThread& thread, unsigned int milliseconds = 60000) {
    if (!thread.Join(milliseconds)) {
        ADD_FAILURE() << "thread not joined";
        std::fprintf(stderr, "thread not joined after %u ms\n", milliseconds);
        std::abort();
    }
}

// Runs `body(i)` for i in [0, count) on threads of their own, all at once, and joins them.
inline void RunAndJoin(int count, const std::function<void(int)>& body) {
    std::vector<std::unique_ptr<FunctionThread>> threads;
    for (int i = 0; i < count; ++i)
        threads.emplace_back(FunctionThread::Run([&body, i] { body(i); }));
    for (auto& thread : threads)
        JoinOrAbort(*thread);
}

} // namespace vorn::test

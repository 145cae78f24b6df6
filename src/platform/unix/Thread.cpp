#include "platform/Thread.h"

#include <cerrno>
#include <limits.h>

#include <pthread.h>
#include <sys/resource.h>

#include "platform/Cancellation.h"
#include "platform/unix/WaitObject.h"

namespace vorn::platform {

using posix::Core;
using posix::CoreLock;
using posix::Object;

namespace {

thread_local Object* tCurrent = nullptr;

constexpr unsigned int kStillActive = 259;

Object* ToThread(WaitHandle handle) {
    Object* object = posix::ToObject(handle);
    if (object != nullptr && object->core->kind != posix::Kind::kThread) {
        errno = EINVAL;
        return nullptr;
    }
    return object;
}

// Signals the thread's handle on every way out: return, EndThread and cancellation.
class Finish {
public:
    explicit Finish(Object& thread) : m_thread(thread) {}
    ~Finish() {
        CoreLock lock(*m_thread.core);
        m_thread.core->signaled = true;
        posix::Changed(m_thread, true);
    }
    Finish(const Finish&) = delete;
    Finish& operator=(const Finish&) = delete;

private:
    Object& m_thread;
};

void* Start(void* argument) {
    auto* object = static_cast<Object*>(argument);
    tCurrent = object;
    pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, nullptr);
    {
        CoreLock lock(*object->core);
        object->thread.id = posix::CurrentThreadId();
        pthread_cond_broadcast(&object->core->changed);
        while (!object->thread.resumed)
            pthread_cond_wait(&object->core->changed, &object->core->lock);
    }
    Finish finish(*object);
    // The hard kill may land anywhere in the routine, and only there.
    pthread_setcanceltype(PTHREAD_CANCEL_ASYNCHRONOUS, nullptr);
    pthread_setcancelstate(PTHREAD_CANCEL_ENABLE, nullptr);
    unsigned int code = object->thread.routine(object->thread.argument);
    pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, nullptr);
    CoreLock lock(*object->core);
    object->thread.exitCode = code;
    return nullptr;
}

} // namespace

WaitHandle BeginThread(ThreadRoutine routine, void* argument, WaitHandle previous,
                       unsigned int* threadId) {
    Object* object = posix::NewObject();
    if (object == nullptr)
        return nullptr;
    if (!posix::InitCore(object->local, posix::CoreSettings{posix::Kind::kThread}, false)) {
        posix::FreeObject(object);
        return nullptr;
    }
    object->thread.routine = routine;
    object->thread.argument = argument;
    object->thread.previous = ToThread(previous);
    pthread_attr_t attributes;
    int error = pthread_attr_init(&attributes);
    if (error == 0) {
        // Nobody joins: the handle tells when it ended, and the system takes the stack back.
        error = pthread_attr_setdetachstate(&attributes, PTHREAD_CREATE_DETACHED);
        if (error == 0)
            error = pthread_create(&object->thread.thread, &attributes, &Start, object);
        pthread_attr_destroy(&attributes);
    }
    if (error != 0) {
        posix::DestroyCore(object->local);
        posix::FreeObject(object);
        errno = error;
        return nullptr;
    }
    CoreLock lock(object->local);
    while (object->thread.id == 0)
        pthread_cond_wait(&object->local.changed, &object->local.lock);
    if (threadId != nullptr)
        *threadId = static_cast<unsigned int>(object->thread.id);
    return object;
}

bool ResumeThread(WaitHandle thread) {
    Object* object = ToThread(thread);
    if (object == nullptr)
        return false;
    CoreLock lock(*object->core);
    object->thread.resumed = true;
    pthread_cond_broadcast(&object->core->changed);
    return true;
}

void EndThread(unsigned int exitCode) {
    // A kill that came in while the core is locked would leave it locked for the end.
    pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, nullptr);
    if (tCurrent != nullptr) {
        CoreLock lock(*tCurrent->core);
        tCurrent->thread.exitCode = exitCode;
    }
    pthread_exit(nullptr);
}

bool TerminateThread(WaitHandle thread) {
    Object* object = ToThread(thread);
    if (object == nullptr)
        return false;
    if (object == tCurrent)
        EndThread(0);
    // Until the thread marks its end under this lock, its pthread_t is alive.
    CoreLock lock(*object->core);
    if (object->core->signaled)
        return true;
    int error = pthread_cancel(object->thread.thread);
    if (error != 0) {
        errno = error;
        return false;
    }
    return true;
}

WaitHandle CurrentThreadHandle() {
    return tCurrent;
}

bool GetExitCodeThread(WaitHandle thread, unsigned int* exitCode) {
    Object* object = ToThread(thread);
    if (object == nullptr || exitCode == nullptr)
        return false;
    CoreLock lock(*object->core);
    *exitCode = object->core->signaled ? object->thread.exitCode : kStillActive;
    return true;
}

int GetThreadPriority(WaitHandle thread) {
    Object* object = ToThread(thread);
    if (object == nullptr)
        return 0;
    CoreLock lock(*object->core);
    if (!object->core->signaled) {
        errno = 0;
        int priority = getpriority(PRIO_PROCESS, static_cast<id_t>(object->thread.id));
        if (errno == 0)
            object->thread.priority = priority;
    }
    return object->thread.priority;
}

bool SetThreadPriority(WaitHandle thread, int priority) {
    Object* object = ToThread(thread);
    if (object == nullptr)
        return false;
    if (priority < -20 || priority > 19) {
        errno = EINVAL;
        return false;
    }
    CoreLock lock(*object->core);
    if (!object->core->signaled &&
        setpriority(PRIO_PROCESS, static_cast<id_t>(object->thread.id), priority) != 0)
        return false;
    object->thread.priority = priority;
    return true;
}

bool LockThreadOwner(WaitHandle thread) {
    Object* object = ToThread(thread);
    if (object == nullptr)
        return false;
    posix::LockCore(*object->core);
    if (!object->thread.ownerGone)
        return true;
    posix::UnlockCore(*object->core);
    return false;
}

void UnlockThreadOwner(WaitHandle thread) {
    posix::UnlockCore(*static_cast<Object*>(thread)->core);
}

void ReleaseThreadOwner(WaitHandle thread) {
    for (Object* object = ToThread(thread); object != nullptr; object = object->thread.previous) {
        CoreLock lock(*object->core);
        object->thread.ownerGone = true;
    }
}

// A thread's forced unwinding carries no object, so the handler's reference is null by design.
__attribute__((no_sanitize("undefined"))) void RethrowThreadExit() {
    try {
        throw;
    } catch (ThreadCancellation&) {
        throw;
    } catch (...) {
    }
}

unsigned int TlsAlloc() {
    pthread_key_t key;
    int error = pthread_key_create(&key, nullptr);
    if (error != 0) {
        errno = error;
        return kTlsOutOfIndexes;
    }
    return static_cast<unsigned int>(key);
}

void* TlsGetValue(unsigned int index) {
    if (index >= PTHREAD_KEYS_MAX) {
        errno = EINVAL;
        return nullptr;
    }
    errno = 0;
    return pthread_getspecific(static_cast<pthread_key_t>(index));
}

bool TlsSetValue(unsigned int index, void* value) {
    int error = index >= PTHREAD_KEYS_MAX
                    ? EINVAL
                    : pthread_setspecific(static_cast<pthread_key_t>(index), value);
    if (error != 0)
        errno = error;
    return error == 0;
}

} // namespace vorn::platform

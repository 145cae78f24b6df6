#include "platform/unix/WaitObject.h"

#include <atomic>
#include <cerrno>
#include <cstring>

#include <unistd.h>

#include "platform/Memory.h"

namespace vorn::platform::posix {

namespace {

thread_local pid_t tThreadId = 0;
std::atomic<pid_t> gProcessId{0};

// A child of fork is another process, and its one thread another thread.
void ForgetIds() {
    tThreadId = 0;
    gProcessId.store(0, std::memory_order_relaxed);
}
[[maybe_unused]] const int kForgetIdsAtFork = pthread_atfork(nullptr, nullptr, &ForgetIds);

class MutexAttributes {
public:
    explicit MutexAttributes(bool shared) {
        m_error = pthread_mutexattr_init(&m_attributes);
        if (m_error != 0)
            return;
        m_error = pthread_mutexattr_setrobust(&m_attributes, PTHREAD_MUTEX_ROBUST);
        if (m_error == 0 && shared)
            m_error = pthread_mutexattr_setpshared(&m_attributes, PTHREAD_PROCESS_SHARED);
    }
    ~MutexAttributes() { pthread_mutexattr_destroy(&m_attributes); }
    int Init(pthread_mutex_t& mutex) {
        return m_error != 0 ? m_error : pthread_mutex_init(&mutex, &m_attributes);
    }

private:
    pthread_mutexattr_t m_attributes;
    int m_error;
};

} // namespace

// Monotonic, so that a change of the wall clock neither stretches nor cuts a wait.
int InitCondition(pthread_cond_t& condition, bool shared) {
    pthread_condattr_t attributes;
    int error = pthread_condattr_init(&attributes);
    if (error != 0)
        return error;
    error = pthread_condattr_setclock(&attributes, CLOCK_MONOTONIC);
    if (error == 0 && shared)
        error = pthread_condattr_setpshared(&attributes, PTHREAD_PROCESS_SHARED);
    if (error == 0)
        error = pthread_cond_init(&condition, &attributes);
    pthread_condattr_destroy(&attributes);
    return error;
}

pid_t CurrentThreadId() {
    if (tThreadId == 0)
        tThreadId = gettid();
    return tThreadId;
}

pid_t CurrentProcessId() {
    pid_t id = gProcessId.load(std::memory_order_relaxed);
    if (id == 0) {
        id = getpid();
        gProcessId.store(id, std::memory_order_relaxed);
    }
    return id;
}

Object* ToObject(WaitHandle handle) {
    auto* object = static_cast<Object*>(handle);
    if (object == nullptr || object->magic != kObjectMagic) {
        errno = EINVAL;
        return nullptr;
    }
    return object;
}

Object* NewObject() {
    auto* object = static_cast<Object*>(ZK_malloc(sizeof(Object)));
    if (object == nullptr) {
        errno = ENOMEM;
        return nullptr;
    }
    std::memset(static_cast<void*>(object), 0, sizeof(Object));
    object->magic = kObjectMagic;
    object->core = &object->local;
    object->segmentFd = -1;
    return object;
}

void FreeObject(Object* object) {
    object->magic = 0;
    ZK_free(object);
}

bool InitCore(Core& core, const CoreSettings& settings, bool shared) {
    std::memset(static_cast<void*>(&core), 0, sizeof core);
    core.kind = settings.kind;
    core.count = settings.count;
    core.maximum = settings.maximum;
    core.manualReset = settings.manualReset;
    core.signaled = settings.signaled;
    MutexAttributes attributes(shared);
    int error = attributes.Init(core.lock);
    if (error == 0 && (error = InitCondition(core.changed, shared)) != 0)
        pthread_mutex_destroy(&core.lock);
    if (error == 0 && settings.kind == Kind::kMutex && (error = attributes.Init(core.token)) != 0) {
        pthread_cond_destroy(&core.changed);
        pthread_mutex_destroy(&core.lock);
    }
    if (error != 0) {
        errno = error;
        return false;
    }
    if (settings.owned)
        TryTake(core);
    return true;
}

void DestroyCore(Core& core) {
    if (core.kind == Kind::kMutex)
        pthread_mutex_destroy(&core.token);
    pthread_cond_destroy(&core.changed);
    pthread_mutex_destroy(&core.lock);
}

void LockCore(Core& core) {
    if (pthread_mutex_lock(&core.lock) == EOWNERDEAD)
        pthread_mutex_consistent(&core.lock);
}

void UnlockCore(Core& core) {
    pthread_mutex_unlock(&core.lock);
}

namespace {

void Disown(Core& core, bool abandoned) {
    core.recursion = 0;
    core.ownerThread = 0;
    core.ownerProcess = 0;
    core.abandoned = abandoned;
    pthread_mutex_unlock(&core.token);
}

Take TakeMutex(Core& core) {
    pid_t self = CurrentThreadId();
    if (core.recursion != 0 && core.ownerThread == self &&
        core.ownerProcess == CurrentProcessId()) {
        if (core.recursion == 0x7FFFFFFFu) {
            errno = EAGAIN;
            return Take::kFailed;
        }
        ++core.recursion;
        return Take::kTaken;
    }
    bool abandoned = core.abandoned;
    int error = pthread_mutex_trylock(&core.token);
    if (error == EOWNERDEAD) {
        pthread_mutex_consistent(&core.token);
        abandoned = true;
    } else if (error == EBUSY) {
        return Take::kBusy;
    } else if (error != 0) {
        errno = error;
        return Take::kFailed;
    }
    core.abandoned = false;
    core.recursion = 1;
    core.ownerThread = self;
    core.ownerProcess = CurrentProcessId();
    return abandoned ? Take::kAbandoned : Take::kTaken;
}

} // namespace

bool MayDiscard(Object& object) {
    Core& core = *object.core;
    if (core.kind != Kind::kMutex)
        return true;
    CoreLock lock(core);
    if (core.recursion == 0 || core.ownerProcess != CurrentProcessId())
        return true;
    // Closing the last handle is the owner's end as far as the object goes.
    if (core.ownerThread == CurrentThreadId()) {
        Disown(core, true);
        Changed(object, false);
        return true;
    }
    int error = pthread_mutex_trylock(&core.token);
    if (error == EOWNERDEAD)
        pthread_mutex_consistent(&core.token);
    else if (error != 0)
        return false;
    Disown(core, true);
    return true;
}

Take TryTake(Core& core) {
    switch (core.kind) {
    case Kind::kSemaphore:
        if (core.count == 0)
            return Take::kBusy;
        --core.count;
        return Take::kTaken;
    case Kind::kEvent:
        if (!core.signaled)
            return Take::kBusy;
        if (!core.manualReset)
            core.signaled = false;
        return Take::kTaken;
    case Kind::kThread:
        return core.signaled ? Take::kTaken : Take::kBusy;
    case Kind::kMutex:
        return TakeMutex(core);
    }
    errno = EINVAL;
    return Take::kFailed;
}

void UndoTake(Core& core, Take taken) {
    switch (core.kind) {
    case Kind::kSemaphore:
        ++core.count;
        break;
    case Kind::kEvent:
        if (!core.manualReset)
            core.signaled = true;
        break;
    case Kind::kThread:
        break;
    case Kind::kMutex:
        if (--core.recursion == 0)
            Disown(core, taken == Take::kAbandoned);
        break;
    }
}

void Changed(Object& object, bool all) {
    Core& core = *object.core;
    if (core.sleepers != 0) {
        if (all)
            pthread_cond_broadcast(&core.changed);
        else
            pthread_cond_signal(&core.changed);
    }
    for (WaitLink* link = object.waiters; link != nullptr; link = link->next) {
        Waiter& waiter = *link->waiter;
        pthread_mutex_lock(&waiter.lock);
        ++waiter.pulses;
        pthread_cond_signal(&waiter.pulsed);
        pthread_mutex_unlock(&waiter.lock);
    }
}

namespace {

void AddMilliseconds(timespec& t, unsigned int milliseconds) {
    t.tv_sec += static_cast<time_t>(milliseconds / 1000);
    t.tv_nsec += static_cast<long>(milliseconds % 1000) * 1000000L;
    if (t.tv_nsec >= 1000000000L) {
        t.tv_nsec -= 1000000000L;
        ++t.tv_sec;
    }
}

bool Before(const timespec& a, const timespec& b) {
    return a.tv_sec < b.tv_sec || (a.tv_sec == b.tv_sec && a.tv_nsec < b.tv_nsec);
}

timespec Now() {
    timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    return now;
}

} // namespace

Deadline::Deadline(unsigned int milliseconds) : m_infinite(milliseconds == kInfinite), m_at() {
    if (!m_infinite) {
        m_at = Now();
        AddMilliseconds(m_at, milliseconds);
    }
}

bool Deadline::Passed() const {
    return !m_infinite && !Before(Now(), m_at);
}

int Deadline::Sleep(pthread_cond_t& condition, pthread_mutex_t& mutex, unsigned int slice) const {
    int error;
    if (m_infinite && slice == 0) {
        error = pthread_cond_wait(&condition, &mutex);
    } else {
        timespec until = m_at;
        if (slice != 0) {
            timespec end = Now();
            AddMilliseconds(end, slice);
            if (m_infinite || Before(end, until))
                until = end;
        }
        error = pthread_cond_timedwait(&condition, &mutex, &until);
    }
    if (error == EOWNERDEAD) {
        pthread_mutex_consistent(&mutex);
        error = 0;
    }
    return error;
}

} // namespace vorn::platform::posix

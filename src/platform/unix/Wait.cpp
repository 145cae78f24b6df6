#include "platform/Wait.h"

#include <cerrno>
#include <cstring>
#include <functional>

#include "platform/unix/WaitObject.h"

namespace vorn::platform {

using posix::Core;
using posix::CoreLock;
using posix::CoreSettings;
using posix::Kind;
using posix::Object;
using posix::Take;

namespace {

WaitHandle Create(const CoreSettings& settings, const unsigned short* name) {
    Object* object = posix::NewObject();
    if (object == nullptr)
        return nullptr;
    bool named = name != nullptr && name[0] != 0;
    if (!(named ? posix::OpenNamed(*object, name, settings)
                : posix::InitCore(object->local, settings, false))) {
        int error = errno;
        posix::FreeObject(object);
        errno = error;
        return nullptr;
    }
    return object;
}

Object* OfKind(WaitHandle handle, Kind kind) {
    Object* object = posix::ToObject(handle);
    if (object != nullptr && object->core->kind != kind) {
        errno = EINVAL;
        return nullptr;
    }
    return object;
}

unsigned int Result(Take taken, unsigned int index) {
    switch (taken) {
    case Take::kTaken:
        return kWaitObject0 + index;
    case Take::kAbandoned:
        return kWaitAbandoned0 + index;
    case Take::kBusy:
        return kWaitTimeout;
    case Take::kFailed:
        break;
    }
    return kWaitFailed;
}

bool IsNamed(const Object* object) {
    return object->segmentFd >= 0;
}

// One order for every thread and process: this process's objects by address, then named
// objects by name, so that two waits on several objects never lock them crosswise.
bool LockedBefore(const Object* a, const Object* b) {
    if (IsNamed(a) != IsNamed(b))
        return !IsNamed(a);
    if (!IsNamed(a))
        return std::less<const Core*>()(a->core, b->core);
    return std::strcmp(a->segment, b->segment) < 0;
}

bool SameObject(const Object* a, const Object* b) {
    return IsNamed(a) == IsNamed(b) &&
           (IsNamed(a) ? std::strcmp(a->segment, b->segment) == 0 : a->core == b->core);
}

// Under the locks of all: the lowest ready index, or all of them at once; kWaitTimeout when the
// wait must go on.
unsigned int TakeSet(Object* const* objects, unsigned int count, bool waitAll) {
    if (!waitAll) {
        for (unsigned int i = 0; i < count; ++i) {
            Take taken = posix::TryTake(*objects[i]->core);
            if (taken != Take::kBusy)
                return Result(taken, i);
        }
        return kWaitTimeout;
    }
    Take taken[kMaximumWaitObjects];
    unsigned int abandoned = count;
    for (unsigned int i = 0; i < count; ++i) {
        taken[i] = posix::TryTake(*objects[i]->core);
        if (taken[i] == Take::kBusy || taken[i] == Take::kFailed) {
            int error = errno;
            for (unsigned int j = i; j-- > 0;)
                posix::UndoTake(*objects[j]->core, taken[j]);
            errno = error;
            return Result(taken[i], 0);
        }
        if (taken[i] == Take::kAbandoned && abandoned == count)
            abandoned = i;
    }
    return abandoned == count ? kWaitObject0 : kWaitAbandoned0 + abandoned;
}

// A wait on several objects: its waiter, linked into each object's list from the first time it
// has to sleep until it ends.
class MultiWait {
public:
    MultiWait(Object* const* order, unsigned int count)
        : m_order(order), m_count(count), m_linked(false) {
        m_waiter.pulses = 0;
        m_error = pthread_mutex_init(&m_waiter.lock, nullptr);
        if (m_error == 0 && (m_error = posix::InitCondition(m_waiter.pulsed, false)) != 0)
            pthread_mutex_destroy(&m_waiter.lock);
    }
    ~MultiWait() {
        if (m_error != 0)
            return;
        if (m_linked)
            Unlink();
        pthread_cond_destroy(&m_waiter.pulsed);
        pthread_mutex_destroy(&m_waiter.lock);
    }
    MultiWait(const MultiWait&) = delete;
    MultiWait& operator=(const MultiWait&) = delete;

    int Error() const { return m_error; }

    void LockAll() {
        for (unsigned int i = 0; i < m_count; ++i)
            posix::LockCore(*m_order[i]->core);
    }
    void UnlockAll() {
        for (unsigned int i = m_count; i-- > 0;)
            posix::UnlockCore(*m_order[i]->core);
    }

    // With all locked: joins the lists and returns the pulses so far.
    unsigned long Prepare() {
        if (!m_linked) {
            for (unsigned int i = 0; i < m_count; ++i) {
                posix::WaitLink& link = m_links[i];
                Object& object = *m_order[i];
                link.waiter = &m_waiter;
                link.previous = nullptr;
                link.next = object.waiters;
                if (link.next != nullptr)
                    link.next->previous = &link;
                object.waiters = &link;
            }
            m_linked = true;
        }
        pthread_mutex_lock(&m_waiter.lock);
        unsigned long pulses = m_waiter.pulses;
        pthread_mutex_unlock(&m_waiter.lock);
        return pulses;
    }

    // Sleeps until a pulse after `seen`, the deadline or the slice; 0, ETIMEDOUT or an error.
    int Sleep(unsigned long seen, const posix::Deadline& deadline, unsigned int slice) {
        pthread_mutex_lock(&m_waiter.lock);
        int error = 0;
        while (m_waiter.pulses == seen && error == 0)
            error = deadline.Sleep(m_waiter.pulsed, m_waiter.lock, slice);
        pthread_mutex_unlock(&m_waiter.lock);
        return error;
    }

private:
    void Unlink() {
        for (unsigned int i = 0; i < m_count; ++i) {
            posix::WaitLink& link = m_links[i];
            Object& object = *m_order[i];
            CoreLock lock(*object.core);
            if (link.previous != nullptr)
                link.previous->next = link.next;
            else
                object.waiters = link.next;
            if (link.next != nullptr)
                link.next->previous = link.previous;
        }
    }

    Object* const* m_order;
    unsigned int m_count;
    bool m_linked;
    int m_error;
    posix::Waiter m_waiter;
    posix::WaitLink m_links[kMaximumWaitObjects];
};

} // namespace

WaitHandle CreateSemaphore(unsigned int initialCount, unsigned int maximumCount,
                           const unsigned short* name) {
    if (maximumCount == 0 || maximumCount > 0x7FFFFFFFu || initialCount > maximumCount) {
        errno = EINVAL;
        return nullptr;
    }
    CoreSettings settings{Kind::kSemaphore};
    settings.count = static_cast<std::int32_t>(initialCount);
    settings.maximum = static_cast<std::int32_t>(maximumCount);
    return Create(settings, name);
}

WaitHandle CreateEvent(bool manualReset, bool initiallySignaled, const unsigned short* name) {
    CoreSettings settings{Kind::kEvent};
    settings.manualReset = manualReset;
    settings.signaled = initiallySignaled;
    return Create(settings, name);
}

WaitHandle CreateMutex(bool initiallyOwned, const unsigned short* name) {
    CoreSettings settings{Kind::kMutex};
    settings.owned = initiallyOwned;
    return Create(settings, name);
}

bool ReleaseSemaphore(WaitHandle semaphore, unsigned int count) {
    Object* object = OfKind(semaphore, Kind::kSemaphore);
    if (object == nullptr)
        return false;
    Core& core = *object->core;
    CoreLock lock(core);
    if (count == 0 || count > static_cast<unsigned int>(core.maximum - core.count)) {
        errno = count == 0 ? EINVAL : EOVERFLOW;
        return false;
    }
    core.count += static_cast<std::int32_t>(count);
    posix::Changed(*object, count > 1);
    return true;
}

bool SetEvent(WaitHandle event) {
    Object* object = OfKind(event, Kind::kEvent);
    if (object == nullptr)
        return false;
    CoreLock lock(*object->core);
    object->core->signaled = true;
    posix::Changed(*object, object->core->manualReset);
    return true;
}

bool ResetEvent(WaitHandle event) {
    Object* object = OfKind(event, Kind::kEvent);
    if (object == nullptr)
        return false;
    CoreLock lock(*object->core);
    object->core->signaled = false;
    return true;
}

bool ReleaseMutex(WaitHandle mutex) {
    Object* object = OfKind(mutex, Kind::kMutex);
    if (object == nullptr)
        return false;
    Core& core = *object->core;
    CoreLock lock(core);
    if (core.recursion == 0 || core.ownerThread != posix::CurrentThreadId() ||
        core.ownerProcess != posix::CurrentProcessId()) {
        errno = EPERM;
        return false;
    }
    posix::UndoTake(core, Take::kTaken);
    if (core.recursion == 0)
        posix::Changed(*object, false);
    return true;
}

unsigned int WaitForSingleObject(WaitHandle handle, unsigned int milliseconds) {
    Object* object = posix::ToObject(handle);
    if (object == nullptr)
        return kWaitFailed;
    Core& core = *object->core;
    posix::Deadline deadline(milliseconds);
    unsigned int slice = core.kind == Kind::kMutex ? posix::kProbeMilliseconds : 0;
    CoreLock lock(core);
    for (;;) {
        Take taken = posix::TryTake(core);
        if (taken != Take::kBusy)
            return Result(taken, 0);
        if (milliseconds == 0 || deadline.Passed())
            return kWaitTimeout;
        ++core.sleepers;
        int error = deadline.Sleep(core.changed, core.lock, slice);
        --core.sleepers;
        if (error != 0 && error != ETIMEDOUT) {
            errno = error;
            return kWaitFailed;
        }
    }
}

unsigned int WaitForMultipleObjects(unsigned int count, const WaitHandle* handles, bool waitAll,
                                    unsigned int milliseconds) {
    if (count == 0 || count > kMaximumWaitObjects || handles == nullptr) {
        errno = EINVAL;
        return kWaitFailed;
    }
    Object* objects[kMaximumWaitObjects];
    Object* order[kMaximumWaitObjects];
    bool probe = false;
    for (unsigned int i = 0; i < count; ++i) {
        Object* object = posix::ToObject(handles[i]);
        if (object == nullptr)
            return kWaitFailed;
        probe = probe || IsNamed(object) || object->core->kind == Kind::kMutex;
        objects[i] = object;
        unsigned int j = i;
        for (; j > 0 && LockedBefore(object, order[j - 1]); --j)
            order[j] = order[j - 1];
        order[j] = object;
    }
    for (unsigned int i = 1; i < count; ++i) {
        if (SameObject(order[i - 1], order[i])) {
            errno = EINVAL;
            return kWaitFailed;
        }
    }
    MultiWait wait(order, count);
    if (wait.Error() != 0) {
        errno = wait.Error();
        return kWaitFailed;
    }
    posix::Deadline deadline(milliseconds);
    for (;;) {
        wait.LockAll();
        unsigned int result = TakeSet(objects, count, waitAll);
        bool sleep = result == kWaitTimeout && milliseconds != 0 && !deadline.Passed();
        unsigned long seen = sleep ? wait.Prepare() : 0;
        wait.UnlockAll();
        if (!sleep)
            return result;
        // A change that reaches no list (another process, an owner's end) is found by looking.
        int error = wait.Sleep(seen, deadline, probe ? posix::kProbeMilliseconds : 0);
        if (error != 0 && error != ETIMEDOUT) {
            errno = error;
            return kWaitFailed;
        }
    }
}

bool CloseHandle(WaitHandle handle) {
    Object* object = posix::ToObject(handle);
    if (object == nullptr)
        return false;
    // The thread's own start and end use it: a thread's handle lives as long as the process.
    if (object->core->kind == Kind::kThread) {
        errno = EINVAL;
        return false;
    }
    // A mutex another thread holds stays linked in that thread's list of robust mutexes.
    bool discard = posix::MayDiscard(*object);
    if (IsNamed(object)) {
        posix::CloseNamed(*object, !discard);
    } else if (!discard) {
        object->magic = 0;
        return true;
    } else {
        posix::DestroyCore(object->local);
    }
    posix::FreeObject(object);
    return true;
}

unsigned long GetLastError() {
    return static_cast<unsigned long>(errno);
}

} // namespace vorn::platform

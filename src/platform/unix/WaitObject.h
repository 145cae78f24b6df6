// The objects behind the waitable handles of Wait.h and Thread.h. Each has a core of state under
// a mutex, with a condition its single-object waiters sleep on; the core lives in this process's
// memory or, for a named object, in a shared-memory segment that every process maps.
#pragma once

#include <cstdint>
#include <ctime>

#include <pthread.h>
#include <sys/types.h>

#include "platform/Thread.h"

namespace vorn::platform::posix {

enum class Kind : std::uint32_t { kSemaphore = 1, kEvent = 2, kMutex = 3, kThread = 4 };

// What a creation asks for; an opening of an existing named object ignores it.
struct CoreSettings {
    Kind kind;
    std::int32_t count = 0;
    std::int32_t maximum = 0;
    bool manualReset = false;
    bool signaled = false;
    bool owned = false;
};

// No pointers in here: a named object's core sits at a different address in each process.
struct Core {
    Kind kind;
    std::uint32_t sleepers; // threads asleep on `changed` in a single-object wait
    // Robust, so that a process that dies while it holds one doesn't stop the others.
    pthread_mutex_t lock;
    pthread_cond_t changed; // on CLOCK_MONOTONIC
    std::int32_t count;     // semaphore
    std::int32_t maximum;
    bool manualReset; // event
    bool signaled;    // event; thread, once it has ended
    // Mutex: the owner holds `token`, a robust mutex, so that the owner's end shows as
    // EOWNERDEAD to the next thread that tries it. `abandoned` keeps that news for the next
    // owner when a wait on several objects had to give the token back.
    bool abandoned;
    std::uint32_t recursion;
    pid_t ownerProcess;
    pid_t ownerThread;
    pthread_mutex_t token;
};

// A thread in a wait on several objects: whoever changes one of them adds a pulse.
struct Waiter {
    pthread_mutex_t lock;
    pthread_cond_t pulsed; // on CLOCK_MONOTONIC
    unsigned long pulses;
};
// Such a wait has one link in the list of each object.
struct WaitLink {
    Waiter* waiter;
    WaitLink* previous;
    WaitLink* next;
};

// The part of a thread's object that only this process sees.
struct ThreadInfo {
    pthread_t thread;
    pid_t id; // 0 until the thread runs
    int priority;
    unsigned int exitCode;
    bool resumed;
    bool ownerGone;
    struct Object* previous; // the thread the same owner started before
    ThreadRoutine routine;
    void* argument;
};

constexpr std::uint32_t kObjectMagic = 0x766E6F77u;
constexpr std::size_t kSegmentNameSize = 256;

struct Object {
    std::uint32_t magic;
    Core* core;        // &local, or the mapped segment
    WaitLink* waiters; // under core->lock
    int segmentFd;     // -1 for an object of this process alone
    char segment[kSegmentNameSize];
    ThreadInfo thread;
    Core local;
};

// The handle as an object, or null (EINVAL) when it is none.
Object* ToObject(WaitHandle handle);
// A cleared object of this process, or null (ENOMEM).
Object* NewObject();
void FreeObject(Object* object);

// Sets up a core as `settings` ask; false with errno set. `shared` makes it fit for a segment.
bool InitCore(Core& core, const CoreSettings& settings, bool shared);
void DestroyCore(Core& core);
// False when a thread of this process other than the caller owns the mutex core, whose token
// then must stay in memory. A mutex the caller owns is given up as abandoned.
bool MayDiscard(Object& object);

// On CLOCK_MONOTONIC; 0 or the system's error.
int InitCondition(pthread_cond_t& condition, bool shared);

// The lock of a core; a holder that died leaves it to the next one as it was.
void LockCore(Core& core);
void UnlockCore(Core& core);
class CoreLock {
public:
    explicit CoreLock(Core& core) : m_core(core) { LockCore(m_core); }
    ~CoreLock() { UnlockCore(m_core); }
    CoreLock(const CoreLock&) = delete;
    CoreLock& operator=(const CoreLock&) = delete;

private:
    Core& m_core;
};

// The calling thread and process, as the kernel numbers them.
pid_t CurrentThreadId();
pid_t CurrentProcessId();

enum class Take { kBusy, kTaken, kAbandoned, kFailed };
// With the core locked: takes what a wait on the object would report, if it is there.
Take TryTake(Core& core);
// Gives back what TryTake took, as if it had never been taken.
void UndoTake(Core& core, Take taken);
// With the core locked, after a change that may let waiters go: wakes one sleeper (or all), and
// every wait on several objects that includes this one.
void Changed(Object& object, bool all);

// A monotonic point in time, or none.
class Deadline {
public:
    explicit Deadline(unsigned int milliseconds);
    bool Passed() const;
    // Sleeps on `condition` until woken, the deadline or, when `slice` is not 0, that many
    // milliseconds. Returns 0, ETIMEDOUT or another error of the system.
    int Sleep(pthread_cond_t& condition, pthread_mutex_t& mutex, unsigned int slice) const;

private:
    bool m_infinite;
    timespec m_at;
};

// How often a waiter looks again at what can change without telling it: a mutex whose owner
// ends, a named object changed by another process.
constexpr unsigned int kProbeMilliseconds = 10;

// Named objects. Opens or makes the segment of `name` and sets `object` up on it.
bool OpenNamed(Object& object, const unsigned short* name, const CoreSettings& settings);
// Unmaps the segment (unless `keep`) and removes it when no handle to it is left anywhere.
void CloseNamed(Object& object, bool keep);

} // namespace vorn::platform::posix

// Threads and thread-local slots of the platform layer. A thread's handle is a waitable handle
// of Wait.h that is signalled when the thread ends; it is never given back.
#pragma once

#include "platform/Wait.h"

namespace vorn::platform {

using ThreadRoutine = unsigned int (*)(void* argument);

// Makes a thread for `routine(argument)` and returns its handle once the thread has its id, or
// null with GetLastError() set. The thread waits for ResumeThread before it calls the routine,
// so that the caller can finish with what it shares with the routine. `previous` (or null) names
// the thread that the same owner started before, so that ReleaseThreadOwner reaches both.
WaitHandle BeginThread(ThreadRoutine routine, void* argument, WaitHandle previous,
                       unsigned int* threadId);
bool ResumeThread(WaitHandle thread);
// Ends the calling thread with `exitCode`, unwinding its stack.
[[noreturn]] void EndThread(unsigned int exitCode);
// Cancels the thread at whatever instruction it is: a thread holding a lock or in the middle of
// an allocation leaves them as they are. True also when the thread has already ended.
bool TerminateThread(WaitHandle thread);
// The handle of the calling thread, when BeginThread started it; null otherwise.
WaitHandle CurrentThreadHandle();
// Exit code of an ended thread (259 while it runs); false for a handle that is no thread.
bool GetExitCodeThread(WaitHandle thread, unsigned int* exitCode);

// Priorities are nice values, -20 to 19 with 0 normal. A value out of that range, or one the
// process may not set, is refused. An ended thread keeps the last value it had.
int GetThreadPriority(WaitHandle thread);
bool SetThreadPriority(WaitHandle thread, int priority);

// Whoever started a thread can say that the object it passed as argument is gone. A thread that
// still reads that object holds the owner lock while it does; false means the object is gone.
bool LockThreadOwner(WaitHandle thread);
void UnlockThreadOwner(WaitHandle thread);
// Marks the owner gone for `thread` and every thread started before it by the same owner; waits
// for a thread that holds the owner lock.
void ReleaseThreadOwner(WaitHandle thread);

// Inside catch (...): rethrows the unwinding of a thread that ends (EndThread, cancellation),
// which must go on; returns for every other exception.
void RethrowThreadExit();

// Thread-local slots. TlsAlloc returns kTlsOutOfIndexes when none is left. TlsGetValue sets
// GetLastError() to 0 when it succeeds, so a null value tells apart from a failure.
constexpr unsigned int kTlsOutOfIndexes = 0xFFFFFFFFu;
unsigned int TlsAlloc();
void* TlsGetValue(unsigned int index);
bool TlsSetValue(unsigned int index, void* value);

} // namespace vorn::platform

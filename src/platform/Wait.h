// Waitable handles of the platform layer: semaphores, events and mutexes (and the threads of
// Thread.h) that a thread waits on, one or several at a time. The results are the codes the
// library reads: the index of the object that ended the wait, 128 plus that index for a mutex
// whose owner ended without releasing it, 258 when the limit ran out, kWaitFailed on failure.
#pragma once

namespace vorn::platform {

using WaitHandle = void*;

constexpr unsigned int kWaitObject0 = 0;
constexpr unsigned int kWaitAbandoned0 = 128;
constexpr unsigned int kWaitTimeout = 258;
constexpr unsigned int kWaitFailed = 0xFFFFFFFFu;
// As a limit: wait as long as it takes.
constexpr unsigned int kInfinite = 0xFFFFFFFFu;
constexpr unsigned int kMaximumWaitObjects = 64;

// Each creation returns null, with GetLastError() set, when it fails. A non-empty UTF-16 `name`
// (null or empty: none) makes the object visible to every process of the user: the first
// creation under a name makes it, later ones open it and ignore their other arguments, and a
// name held by an object of another kind fails. Unnamed objects belong to this process.
WaitHandle CreateSemaphore(unsigned int initialCount, unsigned int maximumCount,
                           const unsigned short* name);
WaitHandle CreateEvent(bool manualReset, bool initiallySignaled, const unsigned short* name);
WaitHandle CreateMutex(bool initiallyOwned, const unsigned short* name);

// False, with GetLastError() set, when the count would pass the maximum (nothing is added).
bool ReleaseSemaphore(WaitHandle semaphore, unsigned int count);
bool SetEvent(WaitHandle event);
bool ResetEvent(WaitHandle event);
// False when the calling thread doesn't own the mutex.
bool ReleaseMutex(WaitHandle mutex);

// A wait takes what it reports: a semaphore's unit, an auto-reset event's signal, a mutex's
// ownership (which its owner may take again, and then releases as often). A limit of 0 only
// looks.
unsigned int WaitForSingleObject(WaitHandle handle, unsigned int milliseconds);
// Up to kMaximumWaitObjects distinct objects. Without `waitAll`, takes the lowest-indexed object
// that is ready and returns its index; with it, takes all of them at once or none, and returns 0
// (128 plus the lowest index of an abandoned mutex among them).
unsigned int WaitForMultipleObjects(unsigned int count, const WaitHandle* handles, bool waitAll,
                                    unsigned int milliseconds);

// Gives the handle back; a named object goes away with the last handle to it in any process.
bool CloseHandle(WaitHandle handle);

// The error code (an errno value) of the calling thread's last failed call.
unsigned long GetLastError();

} // namespace vorn::platform

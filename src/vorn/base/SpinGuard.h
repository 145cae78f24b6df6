// SpinGuard: holds a CSpinLock for a scope, exceptions included. Internal to the library.
#pragma once

#include <vorn/base/SpinLock.h>

namespace vorn::base {

class SpinGuard {
public:
    explicit SpinGuard(CSpinLock& lock) : m_lock(lock) { m_lock.Acquire(); }
    ~SpinGuard() { m_lock.Release(); }
    SpinGuard(const SpinGuard&) = delete;
    SpinGuard& operator=(const SpinGuard&) = delete;

private:
    CSpinLock& m_lock;
};

} // namespace vorn::base

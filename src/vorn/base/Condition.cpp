#include <vorn/base/Condition.h>

#include "vorn/base/ConditionImplWin.h"

namespace vorn::base {

CCondition::CCondition(ILockable_& lock) : m_impl(new ConditionImplWin(lock)) {}

CCondition::~CCondition() {
    delete m_impl;
}

bool CCondition::Wait(unsigned int milliseconds) {
    return m_impl->Wait(milliseconds);
}

void CCondition::Wait() {
    m_impl->Wait();
}

void CCondition::Notify() {
    m_impl->Notify();
}

void CCondition::NotifyAll() {
    m_impl->NotifyAll();
}

} // namespace vorn::base

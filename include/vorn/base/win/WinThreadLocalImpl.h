// CWinThreadLocalImpl: a native thread-local slot.
#pragma once

#include <vorn/base/ThreadLocalImpl.h>

namespace vorn::base::win {

class VORN_API CWinThreadLocalImpl : public vorn::base::CThreadLocalImpl {
public:
    CWinThreadLocalImpl() : m_index(0xFFFFFFFFu) {}

    // Raises CWinSystemErrorException when no slot is left.
    void Alloc() override;
    void* GetValue() override;
    void SetValue(void* value) override;

private:
    unsigned int m_index;
};

} // namespace vorn::base::win

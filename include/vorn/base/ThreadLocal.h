// CThreadLocal: one pointer per thread, null until the thread sets it. The system's slot is
// taken at construction and never given back.
#pragma once

#include <vorn/base/Base.h>

namespace vorn::base {

class CThreadLocalImpl;

class VORN_API CThreadLocal : public CBase, public CNonCopyable {
public:
    CThreadLocal();
    ~CThreadLocal();

    void* GetValue();
    void SetValue(void* value);

private:
    CThreadLocalImpl* m_impl;
};

} // namespace vorn::base

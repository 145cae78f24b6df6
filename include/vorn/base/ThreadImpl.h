// CThreadImpl: what stands behind a CThread on a platform.
#pragma once

#include <vorn/base/Base.h>

namespace vorn::base {

class CThread;

class VORN_API CThreadImpl : public CBase {
public:
    virtual ~CThreadImpl() {}

    virtual int GetPriority() = 0;
    virtual void SetPriority(int priority) = 0;
    virtual bool IsAlive() = 0;
    virtual void Start(CThread* thread) = 0;
    virtual bool Join(unsigned int milliseconds) = 0;
    virtual void Join() = 0;
    virtual void Destroy() = 0;
    virtual void Exit(unsigned int exitCode) = 0;

protected:
    CThreadImpl() {}
};

} // namespace vorn::base

// CTCPIPSocketImplFactory: the factory of CWinSocketImpl, the one every socket uses.
#pragma once

#include <vorn/net/SocketImplFactory.h>

namespace vorn::net {

class VORN_API CTCPIPSocketImplFactory : public CSocketImplFactory {
    VORN_DECLARE_CLASS(CTCPIPSocketImplFactory)

public:
    // A new CWinSocketImpl.
    vorn::base::CRef<CSocketImpl> CreateSocketImpl() override;

    // The process's instance, made at first use.
    static CTCPIPSocketImplFactory& GetInstance();

private:
    CTCPIPSocketImplFactory() = default;
};

} // namespace vorn::net

// CSocketImplFactory: makes the implementations behind new sockets.
#pragma once

#include <vorn/base/Object.h>
#include <vorn/base/Ref.h>
#include <vorn/net/SocketImpl.h>

namespace vorn::net {

class VORN_API CSocketImplFactory : public vorn::base::CObject {
    VORN_DECLARE_CLASS(CSocketImplFactory)

public:
    virtual vorn::base::CRef<CSocketImpl> CreateSocketImpl() = 0;
};

} // namespace vorn::net

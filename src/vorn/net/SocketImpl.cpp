#include <vorn/net/SocketImpl.h>
#include <vorn/net/TCPIPSocketImplFactory.h>
#include <vorn/net/WinSocketImpl.h>

#include "vorn/net/Handles.h"

namespace vorn::net {

VORN_DEFINE_CLASS_BASE(CSocketImpl, "vorn::net::CSocketImpl", "vorn::base::CObject")
VORN_DEFINE_CLASS_BASE(CSocketImplFactory, "vorn::net::CSocketImplFactory", "vorn::base::CObject")
VORN_DEFINE_CLASS_BASE(CTCPIPSocketImplFactory, "vorn::net::CTCPIPSocketImplFactory",
                       "vorn::net::CSocketImplFactory")

CSocketImpl::CSocketImpl() : m_port(0), m_localPort(0), m_timeout(0) {}

CSocketImpl::~CSocketImpl() = default;

vorn::base::CRef<CSocketImpl> CTCPIPSocketImplFactory::CreateSocketImpl() {
    return Owned<CSocketImpl>(new CWinSocketImpl());
}

CTCPIPSocketImplFactory& CTCPIPSocketImplFactory::GetInstance() {
    static CTCPIPSocketImplFactory instance;
    return instance;
}

} // namespace vorn::net

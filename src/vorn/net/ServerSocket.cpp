#include <vorn/net/ServerSocket.h>
#include <vorn/net/TCPIPSocketImplFactory.h>

#include "vorn/net/Handles.h"

namespace vorn::net {

using vorn::base::CRef;

CSocketImplFactory* CServerSocket::m_factory = &CTCPIPSocketImplFactory::GetInstance();

CServerSocket::CServerSocket(unsigned short port, unsigned int backlog,
                             CInetAddress const& bindAddress)
    : m_impl(m_factory->CreateSocketImpl()) {
    m_impl->Create(true);
    m_impl->Bind(bindAddress, port);
    m_impl->Listen(backlog);
}

CServerSocket::~CServerSocket() = default;

CRef<CSocket> CServerSocket::Wrapped(const CRef<CSocketImpl>& impl) {
    if (impl.IsNull())
        return CRef<CSocket>();
    return Owned<CSocket>(new CSocket(impl));
}

CRef<CSocket> CServerSocket::Accept() {
    return Wrapped(m_impl->Accept());
}

CRef<CSocket> CServerSocket::Accept(unsigned int milliseconds) {
    return Wrapped(m_impl->Accept(milliseconds));
}

bool CServerSocket::IsPending() const {
    return m_impl->IsPending();
}

void CServerSocket::Close() {
    m_impl->Close();
}

CRef<CInetAddress> CServerSocket::GetInetAddress() {
    return m_impl->GetInetAddress();
}

unsigned short CServerSocket::GetLocalPort() const {
    return m_impl->GetLocalPort();
}

unsigned int CServerSocket::GetTimeout() const {
    return m_impl->GetTimeout();
}

void CServerSocket::SetTimeout(unsigned int milliseconds) {
    m_impl->SetTimeout(milliseconds);
}

bool CServerSocket::operator==(const CServerSocket& other) const {
    return SameSocket(m_impl, other.m_impl);
}

bool CServerSocket::operator!=(const CServerSocket& other) const {
    return !SameSocket(m_impl, other.m_impl);
}

} // namespace vorn::net

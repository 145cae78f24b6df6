#include <vorn/net/Socket.h>
#include <vorn/net/TCPIPSocketImplFactory.h>

#include "vorn/net/Handles.h"

namespace vorn::net {

using vorn::base::CRef;

CSocketImplFactory* CSocket::m_factory = &CTCPIPSocketImplFactory::GetInstance();

CSocket::CSocket(CInetAddress const& address, unsigned short port)
    : m_impl(m_factory->CreateSocketImpl()) {
    m_impl->Create(true);
    m_impl->Connect(address, port);
}

CSocket::CSocket(char const* host, unsigned short port) : m_impl(m_factory->CreateSocketImpl()) {
    m_impl->Create(true);
    m_impl->Connect(CInetAddress::GetByName(host), port);
}

CSocket::CSocket(CInetAddress const& address, unsigned short port, CInetAddress const& localAddress,
                 unsigned short localPort)
    : m_impl(m_factory->CreateSocketImpl()) {
    m_impl->Create(true);
    m_impl->Bind(localAddress, localPort);
    m_impl->Connect(address, port);
}

CSocket::CSocket(char const* host, unsigned short port, CInetAddress const& localAddress,
                 unsigned short localPort)
    : m_impl(m_factory->CreateSocketImpl()) {
    m_impl->Create(true);
    m_impl->Bind(localAddress, localPort);
    m_impl->Connect(CInetAddress::GetByName(host), port);
}

CSocket::CSocket(CRef<CSocketImpl> const& impl) : m_impl(impl) {}

CSocket::~CSocket() = default;

void CSocket::Close() {
    m_impl->Close();
}

vorn::io::CInputStream* CSocket::GetInputStream() const {
    return m_impl->GetInputStream();
}

vorn::io::COutputStream* CSocket::GetOutputStream() const {
    return m_impl->GetOutputStream();
}

CRef<CInetAddress> CSocket::GetInetAddress() {
    return m_impl->GetInetAddress();
}

unsigned short CSocket::GetPort() const {
    return m_impl->GetPort();
}

CRef<CInetAddress> CSocket::GetLocalInetAddress() {
    return m_impl->GetLocalInetAddress();
}

unsigned short CSocket::GetLocalPort() const {
    return m_impl->GetLocalPort();
}

unsigned int CSocket::GetTimeout() const {
    return m_impl->GetTimeout();
}

void CSocket::SetTimeout(unsigned int milliseconds) {
    m_impl->SetTimeout(milliseconds);
}

bool CSocket::GetKeepAlive() const {
    return m_impl->GetBoolOption(CSocketImpl::OptionKeepAlive);
}

void CSocket::SetKeepAlive(bool on) {
    m_impl->SetBoolOption(CSocketImpl::OptionKeepAlive, on);
}

bool CSocket::GetOOBInline() const {
    return m_impl->GetBoolOption(CSocketImpl::OptionOOBInline);
}

void CSocket::SetOOBInline(bool on) {
    m_impl->SetBoolOption(CSocketImpl::OptionOOBInline, on);
}

bool CSocket::GetReuseAddress() const {
    return m_impl->GetBoolOption(CSocketImpl::OptionReuseAddress);
}

void CSocket::SetReuseAddress(bool on) {
    m_impl->SetBoolOption(CSocketImpl::OptionReuseAddress, on);
}

bool CSocket::GetTCPNoDelay() const {
    return m_impl->GetBoolOption(CSocketImpl::OptionTCPNoDelay);
}

void CSocket::SetTCPNoDelay(bool on) {
    m_impl->SetBoolOption(CSocketImpl::OptionTCPNoDelay, on);
}

bool CSocket::operator==(const CSocket& other) const {
    return SameSocket(m_impl, other.m_impl);
}

bool CSocket::operator!=(const CSocket& other) const {
    return !SameSocket(m_impl, other.m_impl);
}

} // namespace vorn::net

// CServerSocket: a listening TCP socket that accepts connections as CSocket objects.
#pragma once

#include <vorn/base/Base.h>
#include <vorn/base/Ref.h>
#include <vorn/net/InetAddress.h>
#include <vorn/net/Socket.h>
#include <vorn/net/SocketImpl.h>

namespace vorn::net {

class CSocketImplFactory;

class VORN_API CServerSocket : public vorn::base::CBase {
public:
    // Binds (port 0: one the system picks) and listens.
    CServerSocket(unsigned short port, unsigned int backlog, CInetAddress const& bindAddress);
    CServerSocket(const CServerSocket& other) = default;
    CServerSocket& operator=(const CServerSocket& other) = default;
    ~CServerSocket();

    // Waits for a connection; with a timeout set, raises CInterruptedIOException when it runs out.
    vorn::base::CRef<CSocket> Accept();
    // Null when no connection came within the limit (below a second, that many microseconds).
    vorn::base::CRef<CSocket> Accept(unsigned int milliseconds);
    // Blocks until a connection is pending, then true: no polling test.
    bool IsPending() const;

    // Leaves the listening socket open: it closes with the last copy of this object.
    void Close();
    // The remote address, which a listening socket has not: null.
    vorn::base::CRef<CInetAddress> GetInetAddress();
    unsigned short GetLocalPort() const;
    unsigned int GetTimeout() const;
    void SetTimeout(unsigned int milliseconds);

    bool operator==(const CServerSocket& other) const;
    bool operator!=(const CServerSocket& other) const;

private:
    // A socket on an accepted implementation; null for null.
    static vorn::base::CRef<CSocket> Wrapped(vorn::base::CRef<CSocketImpl> const& impl);

    vorn::base::CRef<CSocketImpl> m_impl;

    static CSocketImplFactory* m_factory;
};

} // namespace vorn::net

// CSocket: a connected TCP socket. A thin handle on its implementation: copies share one native
// socket.
#pragma once

#include <vorn/base/Base.h>
#include <vorn/base/Ref.h>
#include <vorn/io/InputStream.h>
#include <vorn/io/OutputStream.h>
#include <vorn/net/InetAddress.h>
#include <vorn/net/SocketImpl.h>

namespace vorn::net {

class CSocketImplFactory;
class CServerSocket;

class VORN_API CSocket : public vorn::base::CBase {
public:
    // Each connects at once, blocking: the timeout can only be set afterwards.
    CSocket(CInetAddress const& address, unsigned short port);
    CSocket(char const* host, unsigned short port);
    CSocket(CInetAddress const& address, unsigned short port, CInetAddress const& localAddress,
            unsigned short localPort);
    CSocket(char const* host, unsigned short port, CInetAddress const& localAddress,
            unsigned short localPort);
    CSocket(const CSocket& other) = default;
    CSocket& operator=(const CSocket& other) = default;
    ~CSocket();

    // Closes the native socket; the object stays, and its streams fail from then on.
    void Close();

    // Owned by the implementation: valid while a copy of this socket lives.
    vorn::io::CInputStream* GetInputStream() const;
    vorn::io::COutputStream* GetOutputStream() const;

    // The peer: known on an accepted socket only (null and 0 on one that connected).
    vorn::base::CRef<CInetAddress> GetInetAddress();
    unsigned short GetPort() const;
    vorn::base::CRef<CInetAddress> GetLocalInetAddress();
    unsigned short GetLocalPort() const;

    // Milliseconds, 0 for none; a limit below a second waits that many microseconds.
    unsigned int GetTimeout() const;
    void SetTimeout(unsigned int milliseconds);

    bool GetKeepAlive() const;
    void SetKeepAlive(bool on);
    bool GetOOBInline() const;
    void SetOOBInline(bool on);
    bool GetReuseAddress() const;
    void SetReuseAddress(bool on);
    bool GetTCPNoDelay() const;
    void SetTCPNoDelay(bool on);

    // The same implementation, or equal native sockets.
    bool operator==(const CSocket& other) const;
    bool operator!=(const CSocket& other) const;

protected:
    // Adopts a connected implementation.
    CSocket(vorn::base::CRef<CSocketImpl> const& impl);

private:
    friend class CServerSocket;

    vorn::base::CRef<CSocketImpl> m_impl;

    static CSocketImplFactory* m_factory;
};

} // namespace vorn::net

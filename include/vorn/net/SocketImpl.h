// CSocketImpl: the abstract socket that CSocket and CServerSocket forward to.
#pragma once

#include <vorn/base/Object.h>
#include <vorn/base/Ref.h>
#include <vorn/io/InputStream.h>
#include <vorn/io/OutputStream.h>
#include <vorn/net/InetAddress.h>

namespace vorn::net {

class VORN_API CSocketImpl : public vorn::base::CObject {
    VORN_DECLARE_CLASS(CSocketImpl)

public:
    // The option indices of Get/SetBoolOption and Get/SetIntOption.
    enum Option {
        OptionMulticastLoop = 0, // bool
        OptionTypeOfService = 1, // int
        OptionBroadcast = 2,     // bool
        OptionKeepAlive = 3,     // bool
        OptionLinger = 4,        // int: seconds, -1 when off
        OptionOOBInline = 5,     // bool
        OptionReceiveBuffer = 6, // int
        OptionReuseAddress = 7,  // bool
        OptionSendBuffer = 8,    // int
        OptionTCPNoDelay = 9     // bool
    };

    virtual bool GetBoolOption(int option) = 0;
    virtual void SetBoolOption(int option, bool value) = 0;
    virtual int GetIntOption(int option) = 0;
    virtual void SetIntOption(int option, int value) = 0;
    virtual unsigned int GetAvailable() = 0;
    // Views of this socket, owned by it.
    virtual vorn::io::CInputStream* GetInputStream() = 0;
    virtual vorn::io::COutputStream* GetOutputStream() = 0;
    virtual void Create(bool stream) = 0;
    virtual void Close() = 0;
    virtual void Connect(char const* host, unsigned short port) = 0;
    virtual void Connect(CInetAddress const& address, unsigned short port) = 0;
    virtual void Bind(CInetAddress const& address, unsigned short port) = 0;
    // Blocks until a connection is pending.
    virtual bool IsPending() = 0;
    // Null when no connection came within the limit.
    virtual vorn::base::CRef<CSocketImpl> Accept(unsigned int milliseconds) = 0;
    virtual vorn::base::CRef<CSocketImpl> Accept() = 0;
    virtual void Listen(unsigned int backlog) = 0;

    // The peer, set by an accept only: a connect keeps it in native form alone.
    const vorn::base::CRef<CInetAddress>& GetInetAddress() const { return m_address; }
    unsigned short GetPort() const { return m_port; }
    // Set by a bind, or by a connect of an unbound socket.
    const vorn::base::CRef<CInetAddress>& GetLocalInetAddress() const { return m_localAddress; }
    unsigned short GetLocalPort() const { return m_localPort; }
    // Milliseconds, 0 for none.
    unsigned int GetTimeout() const { return m_timeout; }
    void SetTimeout(unsigned int milliseconds) { m_timeout = milliseconds; }

    ~CSocketImpl() override;

protected:
    CSocketImpl();

    vorn::base::CRef<CInetAddress> m_address;
    unsigned short m_port;
    vorn::base::CRef<CInetAddress> m_localAddress;
    unsigned short m_localPort;
    unsigned int m_timeout;

private:
    CSocketImpl(const CSocketImpl&) = delete;
    CSocketImpl& operator=(const CSocketImpl&) = delete;
};

} // namespace vorn::net

// CWinSocketImpl: the stream socket of the platform, which is at the same time the socket's input
// and output stream.
#pragma once

#include <vorn/io/InputStream.h>
#include <vorn/io/OutputStream.h>
#include <vorn/net/SocketImpl.h>

namespace vorn::net {

class VORN_API CWinSocketImpl : public CSocketImpl,
                                public virtual vorn::io::CInputStream,
                                public virtual vorn::io::COutputStream {
    VORN_DECLARE_CLASS(CWinSocketImpl)

public:
    CWinSocketImpl();
    // Closes the native socket if there still is one: this is what ends a listening socket.
    ~CWinSocketImpl() override;

    // The native sockets are the same; two sockets without one are equal too.
    bool Equals(const vorn::base::CObject* other) const override;

    bool GetBoolOption(int option) override;
    void SetBoolOption(int option, bool value) override;
    // The linger option reads -1 when it is off; a value of 0 or below switches it off.
    int GetIntOption(int option) override;
    void SetIntOption(int option, int value) override;
    unsigned int GetAvailable() override;
    vorn::io::CInputStream* GetInputStream() override;
    vorn::io::COutputStream* GetOutputStream() override;
    // The native socket is taken as the system gives it; a bad one fails at its next use.
    void Create(bool stream) override;
    // Closes only a socket that is connected; a listening one stays open. Also the Close of both
    // stream views.
    void Close() override;
    void Connect(char const* host, unsigned short port) override;
    // With a timeout, a connection that doesn't come in time leaves the socket closed and
    // unconnected, without an exception.
    void Connect(CInetAddress const& address, unsigned short port) override;
    void Bind(CInetAddress const& address, unsigned short port) override;
    bool IsPending() override;
    vorn::base::CRef<CSocketImpl> Accept(unsigned int milliseconds) override;
    // With a timeout, raises CInterruptedIOException when it runs out.
    vorn::base::CRef<CSocketImpl> Accept() override;
    void Listen(unsigned int backlog) override;

    // The input stream. A null buffer skips; a closed peer reads 0, not -1. With a timeout, a
    // read that waits too long raises CInterruptedIOException.
    using vorn::io::CInputStream::Read;
    unsigned int GetAvailable() const override;
    int Read(char* buffer, unsigned int offset, unsigned int count) override;
    // The byte unsigned, or EOS when none came.
    int Read() override;
    // Always raises.
    void Reset() override;

    // The output stream: one send of the whole block; a null buffer writes nothing.
    void Write(char const* buffer, unsigned int offset, unsigned int count) override;
    void Write(char const* buffer, unsigned int count) override;
    void Write(char value) override;
    void Flush() override;

private:
    CWinSocketImpl(const CWinSocketImpl&) = delete;
    CWinSocketImpl& operator=(const CWinSocketImpl&) = delete;

    // Stores a bound or connected socket's own address and port.
    void StoreLocalAddress(const unsigned char* native);
    vorn::base::CRef<CSocketImpl> AcceptConnection(unsigned int line, const char* description);

    bool m_connected;
    // The peer's address in the system's own form: an IPv4 socket address.
    alignas(4) unsigned char m_sockAddr[16];
    int m_socket;
};

} // namespace vorn::net

#include <vorn/net/WinSocketImpl.h>

#include <cstring>

#include <vorn/io/InterruptedIOException.h>
#include <vorn/net/SocketException.h>
#include <vorn/net/WinSocketException.h>

#include "platform/PtrCheck.h"
#include "platform/Socket.h"
#include "vorn/net/Handles.h"

namespace vorn::net {

using vorn::base::CRef;
namespace platform = vorn::platform;

namespace {

const char* const kSource = "vorn/net/WinSocketImpl";

// Starts the socket layer with the module and stops it at unload. A failed start is silent:
// sockets fail at their first use.
class CSocketLayer {
public:
    CSocketLayer()
        : m_started(platform::SocketStartup(0x0002) == 0 || platform::SocketStartup(0x0101) == 0) {}
    ~CSocketLayer() {
        if (m_started)
            platform::SocketCleanup();
    }

private:
    bool m_started;
};

CSocketLayer socketLayer;

struct OptionKind {
    platform::SocketOption native;
    bool isBool;
};

const OptionKind kOptions[] = {
    {platform::SocketOption::MulticastLoop, true},  {platform::SocketOption::TypeOfService, false},
    {platform::SocketOption::Broadcast, true},      {platform::SocketOption::KeepAlive, true},
    {platform::SocketOption::Linger, false},        {platform::SocketOption::OOBInline, true},
    {platform::SocketOption::ReceiveBuffer, false}, {platform::SocketOption::ReuseAddress, true},
    {platform::SocketOption::SendBuffer, false},    {platform::SocketOption::NoDelay, true}};

// The entry of an option of the kind asked for; any other index raises.
const OptionKind& OptionOfKind(int option, bool isBool, unsigned int line) {
    if (static_cast<unsigned int>(option) >= sizeof kOptions / sizeof kOptions[0] ||
        kOptions[option].isBool != isBool)
        throw CSocketException(kSource, line,
                               isBool ? "The specified option is not a bool option."
                                      : "The specified option is not an int option.",
                               nullptr);
    return kOptions[option];
}

// The remainder goes in as microseconds, not milliseconds: 1500 ms waits about one second.
platform::SocketWaitLimit Limit(unsigned int milliseconds) {
    return {milliseconds / 1000, milliseconds % 1000};
}

[[noreturn]] void Fail(unsigned int line, const char* description) {
    throw CWinSocketException(kSource, line, description, platform::SocketLastError());
}

} // namespace

VORN_DEFINE_CLASS_BASE(CWinSocketImpl, "vorn::net::CWinSocketImpl", "vorn::net::CSocketImpl")

CWinSocketImpl::CWinSocketImpl()
    : m_connected(false), m_sockAddr(), m_socket(platform::kNoSocket) {}

CWinSocketImpl::~CWinSocketImpl() {
    if (m_socket != platform::kNoSocket)
        platform::SocketClose(m_socket);
}

bool CWinSocketImpl::Equals(const vorn::base::CObject* other) const {
    if (other == nullptr || other->GetClass() != GetClass())
        return false;
    return dynamic_cast<const CWinSocketImpl*>(other)->m_socket == m_socket;
}

bool CWinSocketImpl::GetBoolOption(int option) {
    const OptionKind& kind = OptionOfKind(option, true, __LINE__);
    int value = 0;
    if (platform::SocketGetOption(m_socket, kind.native, &value) != 0)
        Fail(__LINE__, "Failed to get the specified option.");
    return value != 0;
}

void CWinSocketImpl::SetBoolOption(int option, bool value) {
    const OptionKind& kind = OptionOfKind(option, true, __LINE__);
    if (platform::SocketSetOption(m_socket, kind.native, value ? 1 : 0) != 0)
        Fail(__LINE__, "Failed to set the specified option.");
}

int CWinSocketImpl::GetIntOption(int option) {
    const OptionKind& kind = OptionOfKind(option, false, __LINE__);
    int value = 0;
    if (kind.native == platform::SocketOption::Linger) {
        bool on = false;
        if (platform::SocketGetLinger(m_socket, &on, &value) != 0)
            Fail(__LINE__, "Failed to get the specified option.");
        return on ? value : -1;
    }
    if (platform::SocketGetOption(m_socket, kind.native, &value) != 0)
        Fail(__LINE__, "Failed to get the specified option.");
    return value;
}

void CWinSocketImpl::SetIntOption(int option, int value) {
    const OptionKind& kind = OptionOfKind(option, false, __LINE__);
    int result = kind.native == platform::SocketOption::Linger
                     ? platform::SocketSetLinger(m_socket, value > 0, value > 0 ? value : 0)
                     : platform::SocketSetOption(m_socket, kind.native, value);
    if (result != 0)
        Fail(__LINE__, "Failed to set the specified option.");
}

unsigned int CWinSocketImpl::GetAvailable() {
    unsigned int count = 0;
    if (platform::SocketAvailable(m_socket, &count) != 0)
        Fail(__LINE__, "Failed to get the number of available on the socket.");
    return count;
}

unsigned int CWinSocketImpl::GetAvailable() const {
    return const_cast<CWinSocketImpl*>(this)->GetAvailable();
}

vorn::io::CInputStream* CWinSocketImpl::GetInputStream() {
    return this;
}

vorn::io::COutputStream* CWinSocketImpl::GetOutputStream() {
    return this;
}

void CWinSocketImpl::Create(bool stream) {
    // A second Create would otherwise lose the first socket for good.
    if (m_socket != platform::kNoSocket)
        platform::SocketClose(m_socket);
    m_socket = platform::SocketCreate(stream);
}

void CWinSocketImpl::Close() {
    if (!m_connected)
        return;
    int result = platform::SocketClose(m_socket);
    // The system has let the descriptor go even when it reports a failure: it is not ours to
    // close again.
    m_socket = platform::kNoSocket;
    m_connected = false;
    if (result != 0)
        Fail(__LINE__, "Failed to close the socket.");
}

void CWinSocketImpl::StoreLocalAddress(const unsigned char* native) {
    unsigned char bytes[4];
    unsigned short port = 0;
    platform::SplitSocketAddress(native, bytes, &port);
    m_localAddress = Owned<CInetAddress>(new CInetAddress(bytes));
    m_localPort = port;
}

void CWinSocketImpl::Bind(CInetAddress const& address, unsigned short port) {
    unsigned char native[platform::kSocketAddressSize];
    platform::MakeSocketAddress(native, address.GetAddress(), port);
    if (platform::SocketBind(m_socket, native) != 0)
        Fail(__LINE__, "Bind socket failed.");
    if (platform::SocketName(m_socket, native) != 0)
        Fail(__LINE__, "Failed to get the local address of the bound socket.");
    StoreLocalAddress(native);
}

void CWinSocketImpl::Connect(char const* host, unsigned short port) {
    Connect(CInetAddress::GetByName(host), port);
}

void CWinSocketImpl::Connect(CInetAddress const& address, unsigned short port) {
    platform::MakeSocketAddress(m_sockAddr, address.GetAddress(), port);
    if (m_timeout != 0) {
        if (platform::SocketSetNonBlocking(m_socket, true) != 0)
            Fail(__LINE__, "ioctlsocket failed.");
        if (platform::SocketConnect(m_socket, m_sockAddr) != 0) {
            if (platform::SocketLastError() != platform::kSocketWouldBlock)
                Fail(__LINE__, "connect failed.");
            platform::SocketWaitLimit limit = Limit(m_timeout);
            bool failed = false;
            int result = platform::SocketWaitConnected(m_socket, &limit, &failed);
            if (result == 0) {
                if (platform::SocketSetNonBlocking(m_socket, false) != 0)
                    Fail(__LINE__, "ioctlsocket failed.");
                platform::SocketClose(m_socket);
                m_socket = platform::kNoSocket;
                return;
            }
            if (result < 0 || failed)
                Fail(__LINE__, "connect failed.");
        }
        if (platform::SocketSetNonBlocking(m_socket, false) != 0)
            Fail(__LINE__, "ioctlsocket failed.");
    } else if (platform::SocketConnect(m_socket, m_sockAddr) != 0) {
        Fail(__LINE__, "Connect socket failed.");
    }
    if (m_localAddress.IsNull() && m_localPort == 0) {
        unsigned char native[platform::kSocketAddressSize];
        if (platform::SocketName(m_socket, native) != 0)
            Fail(__LINE__, "getsockname failed.");
        StoreLocalAddress(native);
    }
    m_connected = true;
}

void CWinSocketImpl::Listen(unsigned int backlog) {
    if (platform::SocketListen(m_socket, backlog) != 0)
        Fail(__LINE__, "Failed to place the socket in a state in which it is listening for an "
                       "incoming connection.");
}

bool CWinSocketImpl::IsPending() {
    if (platform::SocketWaitReadable(m_socket, nullptr) < 0)
        Fail(__LINE__, "Failed to determine if there are pending connection requests.");
    return true;
}

CRef<CSocketImpl> CWinSocketImpl::AcceptConnection(unsigned int line, const char* description) {
    unsigned char native[platform::kSocketAddressSize];
    platform::SocketHandle socket = platform::SocketAccept(m_socket, native);
    if (socket == platform::kNoSocket)
        Fail(line, description);
    CWinSocketImpl* impl = nullptr;
    try {
        impl = new CWinSocketImpl();
    } catch (...) {
        platform::SocketClose(socket);
        throw;
    }
    // From here the new object owns the socket, and closes it if what follows runs out of memory.
    impl->m_socket = socket;
    CRef<CSocketImpl> result = Owned<CSocketImpl>(impl);
    unsigned char bytes[4];
    unsigned short port = 0;
    platform::SplitSocketAddress(native, bytes, &port);
    impl->m_address = Owned<CInetAddress>(new CInetAddress(bytes));
    impl->m_port = port;
    std::memcpy(impl->m_sockAddr, native, sizeof native);
    impl->m_connected = true;
    return result;
}

CRef<CSocketImpl> CWinSocketImpl::Accept(unsigned int milliseconds) {
    platform::SocketWaitLimit limit = Limit(milliseconds);
    int result = platform::SocketWaitReadable(m_socket, &limit);
    if (result < 0)
        Fail(__LINE__, "Failed to determine if there are pending connection requests.");
    if (result == 0)
        return CRef<CSocketImpl>();
    return AcceptConnection(__LINE__, "Failed to accept the incoming connection.");
}

CRef<CSocketImpl> CWinSocketImpl::Accept() {
    if (m_timeout != 0) {
        platform::SocketWaitLimit limit = Limit(m_timeout);
        int result = platform::SocketWaitReadable(m_socket, &limit);
        if (result == 0)
            throw vorn::io::CInterruptedIOException(kSource, __LINE__, "Accept timed-out.",
                                                    nullptr);
        if (result < 0)
            Fail(__LINE__, "Failed to accept the incoming connection.");
    }
    return AcceptConnection(__LINE__, "accept failed.");
}

int CWinSocketImpl::Read(char* buffer, unsigned int offset, unsigned int count) {
    if (buffer == nullptr || !BNValidWritePtr(buffer + offset, count))
        return count == 0 ? 0 : Skip(count);
    if (count == 0)
        return 0;
    if (m_timeout != 0) {
        platform::SocketWaitLimit limit = Limit(m_timeout);
        int result = platform::SocketWaitReadable(m_socket, &limit);
        if (result == 0)
            throw vorn::io::CInterruptedIOException(kSource, __LINE__, "Read timed-out.", nullptr);
        if (result < 0)
            Fail(__LINE__, "select failed.");
    }
    int received = platform::SocketReceive(m_socket, buffer + offset, count);
    if (received < 0)
        Fail(__LINE__,
             "Failed to read the specified number of bytes from the socket input stream.");
    return received;
}

int CWinSocketImpl::Read() {
    char byte = 0;
    if (Read(&byte, 0, 1) != 1)
        return EOS;
    return static_cast<unsigned char>(byte);
}

void CWinSocketImpl::Reset() {
    throw CSocketException(kSource, __LINE__,
                           "Socket input stream doesn't support the reset operation.", nullptr);
}

void CWinSocketImpl::Write(char const* buffer, unsigned int offset, unsigned int count) {
    if (buffer == nullptr || !BNValidReadPtr(buffer + offset, count))
        return;
    if (platform::SocketSendAll(m_socket, buffer + offset, count) != 0)
        Fail(__LINE__, "Failed to send the specified data.");
}

void CWinSocketImpl::Write(char const* buffer, unsigned int count) {
    Write(buffer, 0, count);
}

void CWinSocketImpl::Write(char value) {
    Write(&value, 0, 1);
}

void CWinSocketImpl::Flush() {}

} // namespace vorn::net

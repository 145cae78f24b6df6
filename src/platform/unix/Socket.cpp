// BSD sockets behind the platform's socket calls. Descriptors are close-on-exec, a call that a
// signal interrupts is resumed, and sends never raise SIGPIPE.
#include "platform/Socket.h"

#include <atomic>
#include <cerrno>
#include <climits>
#include <cstring>
#include <ctime>

#include <arpa/inet.h>
#include <fcntl.h>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace vorn::platform {

static_assert(sizeof(sockaddr_in) == kSocketAddressSize, "the native address is 16 bytes");

const int kSocketWouldBlock = EINPROGRESS;
const int kHostNameTooLong = ENAMETOOLONG;

namespace {

std::atomic<unsigned long> g_hostNameLookups{0};

sockaddr_in ToNative(const unsigned char* native) {
    sockaddr_in address;
    std::memcpy(&address, native, sizeof address);
    return address;
}

// Fails with EBADF where select would refuse a socket that is none.
int Wait(SocketHandle socket, short events, const SocketWaitLimit* limit, short* revents) {
    if (socket < 0) {
        errno = EBADF;
        return -1;
    }
    pollfd entry{socket, events, 0};
    timespec left{};
    timespec deadline{};
    if (limit != nullptr) {
        left.tv_sec = static_cast<time_t>(limit->seconds + limit->microseconds / 1000000);
        left.tv_nsec = static_cast<long>(limit->microseconds % 1000000) * 1000;
        clock_gettime(CLOCK_MONOTONIC, &deadline);
        deadline.tv_sec += left.tv_sec;
        deadline.tv_nsec += left.tv_nsec;
        if (deadline.tv_nsec >= 1000000000) {
            deadline.tv_sec += 1;
            deadline.tv_nsec -= 1000000000;
        }
    }
    for (;;) {
        int result = ::ppoll(&entry, 1, limit != nullptr ? &left : nullptr, nullptr);
        if (result > 0 && (entry.revents & POLLNVAL) != 0) {
            errno = EBADF;
            return -1;
        }
        if (result >= 0) {
            *revents = entry.revents;
            return result;
        }
        if (errno != EINTR)
            return -1;
        if (limit != nullptr) {
            timespec now;
            clock_gettime(CLOCK_MONOTONIC, &now);
            long long ns =
                (deadline.tv_sec - now.tv_sec) * 1000000000LL + (deadline.tv_nsec - now.tv_nsec);
            if (ns < 0)
                ns = 0;
            left.tv_sec = static_cast<time_t>(ns / 1000000000LL);
            left.tv_nsec = static_cast<long>(ns % 1000000000LL);
        }
    }
}

// The connection's own error, made the last error; 0 when it has none.
int PendingError(SocketHandle socket) {
    int error = 0;
    socklen_t length = sizeof error;
    if (::getsockopt(socket, SOL_SOCKET, SO_ERROR, &error, &length) != 0)
        return errno;
    errno = error;
    return error;
}

struct NativeOption {
    int level;
    int name;
};

NativeOption Native(SocketOption option) {
    switch (option) {
    case SocketOption::MulticastLoop:
        return {IPPROTO_IP, IP_MULTICAST_LOOP};
    case SocketOption::TypeOfService:
        return {IPPROTO_IP, IP_TOS};
    case SocketOption::Broadcast:
        return {SOL_SOCKET, SO_BROADCAST};
    case SocketOption::KeepAlive:
        return {SOL_SOCKET, SO_KEEPALIVE};
    case SocketOption::Linger:
        return {SOL_SOCKET, SO_LINGER};
    case SocketOption::OOBInline:
        return {SOL_SOCKET, SO_OOBINLINE};
    case SocketOption::ReceiveBuffer:
        return {SOL_SOCKET, SO_RCVBUF};
    case SocketOption::ReuseAddress:
        return {SOL_SOCKET, SO_REUSEADDR};
    case SocketOption::SendBuffer:
        return {SOL_SOCKET, SO_SNDBUF};
    case SocketOption::NoDelay:
        break;
    }
    return {IPPROTO_TCP, TCP_NODELAY};
}

} // namespace

int SocketLastError() {
    return errno;
}

int SocketStartup(unsigned short version) {
    return version != 0 ? 0 : EINVAL;
}

void SocketCleanup() {}

SocketHandle SocketCreate(bool stream) {
    return ::socket(AF_INET, (stream ? SOCK_STREAM : SOCK_DGRAM) | SOCK_CLOEXEC, 0);
}

int SocketClose(SocketHandle socket) {
    // Linux releases the descriptor even when close reports EINTR: it must not be closed again.
    if (::close(socket) != 0 && errno != EINTR)
        return -1;
    return 0;
}

void MakeSocketAddress(unsigned char* native, const unsigned char* address, unsigned short port) {
    sockaddr_in result;
    std::memset(&result, 0, sizeof result);
    result.sin_family = AF_INET;
    result.sin_port = htons(port);
    std::memcpy(&result.sin_addr, address, 4);
    std::memcpy(native, &result, sizeof result);
}

void SplitSocketAddress(const unsigned char* native, unsigned char* address, unsigned short* port) {
    sockaddr_in source = ToNative(native);
    std::memcpy(address, &source.sin_addr, 4);
    *port = ntohs(source.sin_port);
}

int SocketBind(SocketHandle socket, const unsigned char* native) {
    sockaddr_in address = ToNative(native);
    return ::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address);
}

int SocketName(SocketHandle socket, unsigned char* native) {
    sockaddr_in address;
    socklen_t length = sizeof address;
    if (::getsockname(socket, reinterpret_cast<sockaddr*>(&address), &length) != 0)
        return -1;
    std::memcpy(native, &address, sizeof address);
    return 0;
}

int SocketConnect(SocketHandle socket, const unsigned char* native) {
    sockaddr_in address = ToNative(native);
    if (::connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0)
        return 0;
    if (errno != EINTR)
        return -1;
    // An interrupted blocking connect goes on in the background: wait for its end.
    short revents = 0;
    if (Wait(socket, POLLOUT, nullptr, &revents) < 0 || PendingError(socket) != 0)
        return -1;
    return 0;
}

int SocketListen(SocketHandle socket, unsigned int backlog) {
    return ::listen(socket, backlog > INT_MAX ? INT_MAX : static_cast<int>(backlog));
}

SocketHandle SocketAccept(SocketHandle socket, unsigned char* native) {
    sockaddr_in address;
    for (;;) {
        socklen_t length = sizeof address;
        int accepted =
            ::accept4(socket, reinterpret_cast<sockaddr*>(&address), &length, SOCK_CLOEXEC);
        if (accepted >= 0) {
            std::memcpy(native, &address, sizeof address);
            return accepted;
        }
        if (errno != EINTR)
            return kNoSocket;
    }
}

int SocketSetNonBlocking(SocketHandle socket, bool nonBlocking) {
    int value = nonBlocking ? 1 : 0;
    return ::ioctl(socket, FIONBIO, &value);
}

int SocketAvailable(SocketHandle socket, unsigned int* count) {
    int value = 0;
    if (::ioctl(socket, FIONREAD, &value) != 0)
        return -1;
    *count = static_cast<unsigned int>(value);
    return 0;
}

int SocketReceive(SocketHandle socket, char* buffer, unsigned int count) {
    if (count > INT_MAX)
        count = INT_MAX;
    for (;;) {
        ssize_t received = ::recv(socket, buffer, count, 0);
        if (received >= 0 || errno != EINTR)
            return static_cast<int>(received);
    }
}

int SocketSendAll(SocketHandle socket, const char* buffer, unsigned int count) {
    // A blocking send comes back short only when a signal cut in: the rest follows, as a Winsock
    // blocking send would have sent it all.
    do {
        ssize_t sent = ::send(socket, buffer, count, MSG_NOSIGNAL);
        if (sent < 0) {
            if (errno == EINTR)
                continue;
            return -1;
        }
        buffer += sent;
        count -= static_cast<unsigned int>(sent);
    } while (count != 0);
    return 0;
}

int SocketWaitReadable(SocketHandle socket, const SocketWaitLimit* limit) {
    short revents = 0;
    return Wait(socket, POLLIN, limit, &revents);
}

int SocketWaitConnected(SocketHandle socket, const SocketWaitLimit* limit, bool* failed) {
    short revents = 0;
    int result = Wait(socket, POLLOUT, limit, &revents);
    *failed = false;
    if (result > 0) {
        int error = PendingError(socket);
        if (error == 0 && (revents & (POLLERR | POLLHUP)) != 0)
            errno = error = ECONNREFUSED;
        *failed = error != 0;
    }
    return result;
}

int SocketGetOption(SocketHandle socket, SocketOption option, int* value) {
    NativeOption native = Native(option);
    socklen_t length = sizeof *value;
    *value = 0;
    return ::getsockopt(socket, native.level, native.name, value, &length);
}

int SocketSetOption(SocketHandle socket, SocketOption option, int value) {
    NativeOption native = Native(option);
    return ::setsockopt(socket, native.level, native.name, &value, sizeof value);
}

int SocketGetLinger(SocketHandle socket, bool* on, int* seconds) {
    linger value{};
    socklen_t length = sizeof value;
    if (::getsockopt(socket, SOL_SOCKET, SO_LINGER, &value, &length) != 0)
        return -1;
    *on = value.l_onoff != 0;
    *seconds = value.l_linger;
    return 0;
}

int SocketSetLinger(SocketHandle socket, bool on, int seconds) {
    linger value{on ? 1 : 0, seconds};
    return ::setsockopt(socket, SOL_SOCKET, SO_LINGER, &value, sizeof value);
}

bool LookupHostAddress(const char* name, unsigned char* address) {
    addrinfo hints{};
    hints.ai_family = AF_INET;
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    if (::getaddrinfo(name, nullptr, &hints, &found) != 0 || found == nullptr)
        return false;
    std::memcpy(address, &reinterpret_cast<const sockaddr_in*>(found->ai_addr)->sin_addr, 4);
    ::freeaddrinfo(found);
    return true;
}

bool LookupHostName(const unsigned char* address, char* name, unsigned int size) {
    ++g_hostNameLookups;
    sockaddr_in native;
    MakeSocketAddress(reinterpret_cast<unsigned char*>(&native), address, 0);
    return ::getnameinfo(reinterpret_cast<const sockaddr*>(&native), sizeof native, name, size,
                         nullptr, 0, NI_NAMEREQD) == 0;
}

int LocalHostName(char* name, unsigned int size) {
    return ::gethostname(name, size) == 0 ? 0 : errno;
}

unsigned long HostNameLookups() {
    return g_hostNameLookups.load();
}

} // namespace vorn::platform

// Sockets of the platform layer: the BSD-style calls the network classes are written against, IPv4
// and TCP only. A failing call returns -1 (or false) and leaves its code for SocketLastError.
#pragma once

namespace vorn::platform {

// A native socket; kNoSocket when there is none.
using SocketHandle = int;
constexpr SocketHandle kNoSocket = -1;

// Bytes of the native IPv4 socket address that callers keep as an opaque block.
constexpr unsigned int kSocketAddressSize = 16;

// A time limit as select takes it.
struct SocketWaitLimit {
    unsigned long seconds;
    unsigned long microseconds;
};

// The options the library offers, in the order of its option indices.
enum class SocketOption {
    MulticastLoop,
    TypeOfService,
    Broadcast,
    KeepAlive,
    Linger,
    OOBInline,
    ReceiveBuffer,
    ReuseAddress,
    SendBuffer,
    NoDelay
};

// Codes of SocketLastError that callers test for.
extern const int kSocketWouldBlock; // a non-blocking connect is under way
extern const int kHostNameTooLong;  // LocalHostName's buffer is too small

// The code of the last failed call on this thread.
int SocketLastError();

// Start and stop of the socket layer, once per process: 0 when `version` is served.
int SocketStartup(unsigned short version);
void SocketCleanup();

SocketHandle SocketCreate(bool stream);
int SocketClose(SocketHandle socket);
// A native address of `address` (4 bytes) and `port` in host order, and back.
void MakeSocketAddress(unsigned char* native, const unsigned char* address, unsigned short port);
void SplitSocketAddress(const unsigned char* native, unsigned char* address, unsigned short* port);

int SocketBind(SocketHandle socket, const unsigned char* native);
int SocketName(SocketHandle socket, unsigned char* native);
// On a non-blocking socket a connect under way fails with kSocketWouldBlock.
int SocketConnect(SocketHandle socket, const unsigned char* native);
int SocketListen(SocketHandle socket, unsigned int backlog);
// The new socket, blocking, with the peer's address in `native`.
SocketHandle SocketAccept(SocketHandle socket, unsigned char* native);
int SocketSetNonBlocking(SocketHandle socket, bool nonBlocking);
int SocketAvailable(SocketHandle socket, unsigned int* count);
// The bytes received, 0 when the peer has closed.
int SocketReceive(SocketHandle socket, char* buffer, unsigned int count);
// Sends all `count` bytes: 0, or -1 when the connection failed.
int SocketSendAll(SocketHandle socket, const char* buffer, unsigned int count);

// Waits until input or a connection is pending: 1, 0 when the limit ran out, -1 on failure. A
// null limit waits for ever.
int SocketWaitReadable(SocketHandle socket, const SocketWaitLimit* limit);
// Waits for a non-blocking connect to end, as above; `failed` tells a connection that failed
// (its code is then the last error).
int SocketWaitConnected(SocketHandle socket, const SocketWaitLimit* limit, bool* failed);

// Four-byte options; the linger pair apart.
int SocketGetOption(SocketHandle socket, SocketOption option, int* value);
int SocketSetOption(SocketHandle socket, SocketOption option, int value);
int SocketGetLinger(SocketHandle socket, bool* on, int* seconds);
int SocketSetLinger(SocketHandle socket, bool on, int seconds);

// Room for any host name LookupHostName gives, terminator included.
constexpr unsigned int kHostNameSize = 1025;

// The first IPv4 address of a host name or a dotted address.
bool LookupHostAddress(const char* name, unsigned char* address);
// The canonical name of an IPv4 address.
bool LookupHostName(const unsigned char* address, char* name, unsigned int size);
// This machine's host name: 0, kHostNameTooLong, or another code.
int LocalHostName(char* name, unsigned int size);
// Calls of LookupHostName so far, for tests.
unsigned long HostNameLookups();

} // namespace vorn::platform

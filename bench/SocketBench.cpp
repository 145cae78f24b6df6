// The socket streams beside plain POSIX send/recv over loopback. One thread drives both ends of
// one connection, so each figure is the whole cost of the calls, without a second thread's
// wake-up in it. Each case is registered as "Case/vorn" and "Case/posix".
#include <benchmark/benchmark.h>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

#include <vorn/net/ServerSocket.h>
#include <vorn/net/Socket.h>

using vorn::base::CRef;
using vorn::net::CInetAddress;
using vorn::net::CServerSocket;
using vorn::net::CSocket;

namespace {

constexpr unsigned int kBlock = 64 * 1024;
constexpr unsigned int kBlocks = (1u << 30) / kBlock; // 1 GB
constexpr unsigned int kPairs = 100000;
constexpr unsigned int kMessage = 32;

const CInetAddress& Loopback() {
    static const unsigned char bytes[] = {127, 0, 0, 1};
    static const CInetAddress address(bytes);
    return address;
}

// A connected pair of the library's sockets.
struct VornPair {
    CServerSocket server{0, 1, Loopback()};
    CSocket client{Loopback(), server.GetLocalPort()};
    CRef<CSocket> accepted = server.Accept();
};

void ReadAll(vorn::io::CInputStream* in, char* buffer, unsigned int count) {
    for (unsigned int done = 0; done < count;) {
        int n = in->Read(buffer, done, count - done);
        if (n <= 0)
            std::abort();
        done += static_cast<unsigned int>(n);
    }
}

// The same pair of plain sockets.
struct PosixPair {
    int client = -1;
    int accepted = -1;
    PosixPair() {
        int listener = ::socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t length = sizeof address;
        if (::bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0 ||
            ::listen(listener, 1) != 0 ||
            ::getsockname(listener, reinterpret_cast<sockaddr*>(&address), &length) != 0)
            std::abort();
        client = ::socket(AF_INET, SOCK_STREAM, 0);
        if (::connect(client, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0)
            std::abort();
        accepted = ::accept(listener, nullptr, nullptr);
        ::close(listener);
    }
    ~PosixPair() {
        ::close(client);
        ::close(accepted);
    }
};

void SendAll(int socket, const char* buffer, unsigned int count) {
    for (unsigned int done = 0; done < count;) {
        ssize_t n = ::send(socket, buffer + done, count - done, MSG_NOSIGNAL);
        if (n <= 0)
            std::abort();
        done += static_cast<unsigned int>(n);
    }
}

void ReceiveAll(int socket, char* buffer, unsigned int count) {
    for (unsigned int done = 0; done < count;) {
        ssize_t n = ::recv(socket, buffer + done, count - done, 0);
        if (n <= 0)
            std::abort();
        done += static_cast<unsigned int>(n);
    }
}

// ---- 1 GB in 64 KB blocks: each block written at one end and read at the other

void VornThroughput(benchmark::State& state) {
    VornPair pair;
    std::string out(kBlock, 'v');
    std::string in(kBlock, '\0');
    vorn::io::COutputStream* writer = pair.client.GetOutputStream();
    vorn::io::CInputStream* reader = pair.accepted->GetInputStream();
    for (auto _ : state) {
        for (unsigned int i = 0; i < kBlocks; ++i) {
            writer->Write(out.data(), kBlock);
            ReadAll(reader, &in[0], kBlock);
        }
        benchmark::DoNotOptimize(in.data());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * kBlocks * kBlock);
}
BENCHMARK(VornThroughput)->Name("SocketThroughput1G/vorn")->Unit(benchmark::kMillisecond);

void PosixThroughput(benchmark::State& state) {
    PosixPair pair;
    std::string out(kBlock, 'p');
    std::string in(kBlock, '\0');
    for (auto _ : state) {
        for (unsigned int i = 0; i < kBlocks; ++i) {
            SendAll(pair.client, out.data(), kBlock);
            ReceiveAll(pair.accepted, &in[0], kBlock);
        }
        benchmark::DoNotOptimize(in.data());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * kBlocks * kBlock);
}
BENCHMARK(PosixThroughput)->Name("SocketThroughput1G/posix")->Unit(benchmark::kMillisecond);

// ---- 100,000 request/response pairs of 32 bytes, with TCP_NODELAY on both ends

void VornRoundTrip(benchmark::State& state) {
    VornPair pair;
    pair.client.SetTCPNoDelay(true);
    pair.accepted->SetTCPNoDelay(true);
    char request[kMessage] = "request";
    char response[kMessage] = "response";
    char buffer[kMessage];
    vorn::io::CInputStream* clientIn = pair.client.GetInputStream();
    vorn::io::COutputStream* clientOut = pair.client.GetOutputStream();
    vorn::io::CInputStream* serverIn = pair.accepted->GetInputStream();
    vorn::io::COutputStream* serverOut = pair.accepted->GetOutputStream();
    for (auto _ : state) {
        for (unsigned int i = 0; i < kPairs; ++i) {
            clientOut->Write(request, kMessage);
            ReadAll(serverIn, buffer, kMessage);
            serverOut->Write(response, kMessage);
            ReadAll(clientIn, buffer, kMessage);
        }
        benchmark::DoNotOptimize(buffer);
    }
}
BENCHMARK(VornRoundTrip)->Name("SocketRoundTrip100K/vorn")->Unit(benchmark::kMillisecond);

void PosixRoundTrip(benchmark::State& state) {
    PosixPair pair;
    int on = 1;
    ::setsockopt(pair.client, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    ::setsockopt(pair.accepted, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    char request[kMessage] = "request";
    char response[kMessage] = "response";
    char buffer[kMessage];
    for (auto _ : state) {
        for (unsigned int i = 0; i < kPairs; ++i) {
            SendAll(pair.client, request, kMessage);
            ReceiveAll(pair.accepted, buffer, kMessage);
            SendAll(pair.accepted, response, kMessage);
            ReceiveAll(pair.client, buffer, kMessage);
        }
        benchmark::DoNotOptimize(buffer);
    }
}
BENCHMARK(PosixRoundTrip)->Name("SocketRoundTrip100K/posix")->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();

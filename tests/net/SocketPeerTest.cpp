// The library against peers it did not write: Debian's python3, and plain POSIX sockets.
#include <gtest/gtest.h>

#include <atomic>
#include <cerrno>
#include <cstring>
#include <string>
#include <thread>
#include <vector>

#include <vorn/net/ServerSocket.h>
#include <vorn/net/Socket.h>
#include <vorn/net/WinSocketException.h>

#include "support/Sockets.h"

namespace {

using vorn::base::CRef;
using vorn::net::CServerSocket;
using vorn::net::CSocket;
using vorn::net::CWinSocketException;
using vorn::test::Loopback;
using vorn::test::Payload;
using vorn::test::PythonPeer;
using vorn::test::ReadFully;

// Serves one connection: echoes, or only collects, until the peer's end.
std::string Serve(CServerSocket& server, bool echo) {
    CRef<CSocket> socket = server.Accept();
    std::string received;
    char buffer[65536];
    for (int n; (n = socket->GetInputStream()->Read(buffer, sizeof buffer)) > 0;) {
        received.append(buffer, static_cast<std::size_t>(n));
        if (echo)
            socket->GetOutputStream()->Write(buffer, static_cast<unsigned int>(n));
    }
    return received;
}

TEST(SocketPython, LibraryClientAgainstPythonServers) {
    const std::string data = Payload(65536);
    char buffer[512];
    {
        PythonPeer peer("server echo 65536");
        unsigned short port = peer.Port();
        CSocket client(Loopback(), port);
        client.GetOutputStream()->Write(data.data(), static_cast<unsigned int>(data.size()));
        EXPECT_EQ(ReadFully(client.GetInputStream(), data.size()), data);
        EXPECT_EQ(client.GetInputStream()->Read(buffer, 1), 0);
        EXPECT_EQ(peer.Wait(), 0);
        try {
            CSocket again(Loopback(), port);
            ADD_FAILURE() << "the peer's closed port took a connection";
        } catch (const CWinSocketException& e) {
            EXPECT_STREQ(e.GetErrorDescription(), "Connect socket failed.");
            EXPECT_EQ(e.GetErrorCode(), ECONNREFUSED);
        }
    }
    {
        // One byte at a time with pauses: counted reads take what has come.
        PythonPeer peer("server slow 300");
        CSocket client("127.0.0.1", peer.Port());
        std::string received;
        int reads = 0;
        for (int n; (n = client.GetInputStream()->Read(buffer, sizeof buffer)) > 0; ++reads)
            received.append(buffer, static_cast<std::size_t>(n));
        EXPECT_EQ(received, Payload(300));
        EXPECT_GT(reads, 10);
    }
    {
        // A server that stops half-way: half the echo, then the end.
        PythonPeer peer("server half 20000");
        CSocket client("localhost", peer.Port());
        client.GetOutputStream()->Write(data.data(), 20000);
        EXPECT_EQ(ReadFully(client.GetInputStream(), 20000), data.substr(0, 10000));
        EXPECT_EQ(client.GetInputStream()->Read(), vorn::io::CInputStream::EOS);
    }
}

TEST(SocketPython, PythonClientsAgainstTheLibraryServer) {
    CServerSocket server(0, 5, Loopback());
    server.SetTimeout(30000); // a peer that never comes fails the test instead of hanging it
    std::string port = std::to_string(server.GetLocalPort());
    for (std::size_t size : {300000, 300}) {
        std::string mode = size == 300 ? "slow" : "echo";
        PythonPeer peer("client " + mode + " " + port + " " + std::to_string(size));
        EXPECT_EQ(Serve(server, true), Payload(size)) << mode;
        EXPECT_EQ(peer.Wait(), 0) << mode << ": the client saw other bytes come back";
    }
    PythonPeer half("client half " + port + " 20000");
    EXPECT_EQ(Serve(server, false), Payload(10000));
    EXPECT_EQ(half.Wait(), 0);
}

TEST(SocketPosix, PlainSocketOnTheOtherEnd) {
    CServerSocket server(0, 5, Loopback());
    int peer = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{AF_INET, htons(server.GetLocalPort()), {htonl(INADDR_LOOPBACK)}, {}};
    ASSERT_EQ(::connect(peer, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    CRef<CSocket> accepted = server.Accept();
    ASSERT_EQ(::send(peer, "ping", 4, 0), 4);
    EXPECT_EQ(ReadFully(accepted->GetInputStream(), 4), "ping");
    accepted->GetOutputStream()->Write("pong!", 5);
    char buffer[8] = {};
    EXPECT_EQ(::recv(peer, buffer, 5, MSG_WAITALL), 5);
    EXPECT_STREQ(buffer, "pong!");
    ::close(peer);
    EXPECT_EQ(accepted->GetInputStream()->Read(buffer, 8), 0);
}

TEST(SocketResetThreads, PeerResetsInTheMiddleOfAWrite) {
    unsigned short port = 0;
    int listener = vorn::test::PosixListener(&port, 1);
    std::thread peer([listener] {
        int s = ::accept(listener, nullptr, nullptr);
        char buffer[65536];
        ::recv(s, buffer, sizeof buffer, MSG_WAITALL);
        linger abort{1, 0};
        ::setsockopt(s, SOL_SOCKET, SO_LINGER, &abort, sizeof abort);
        ::close(s);
    });
    CSocket client(Loopback(), port);
    const std::string block(1 << 20, 'r');
    // The write after the first failure meets EPIPE, where a send without MSG_NOSIGNAL would
    // raise SIGPIPE and end the process.
    for (int expected : {ECONNRESET, EPIPE}) {
        try {
            for (int i = 0; i < 64; ++i)
                client.GetOutputStream()->Write(block.data(), 1 << 20);
            ADD_FAILURE() << "writes go on after a reset";
        } catch (const CWinSocketException& e) {
            EXPECT_STREQ(e.GetErrorDescription(), "Failed to send the specified data.");
            EXPECT_TRUE(e.GetErrorCode() == expected || e.GetErrorCode() == EPIPE);
        }
    }
    peer.join();
    ::close(listener);
}

TEST(SocketLoadThreads, HundredConnectionsEchoAMegabyteEach) {
    constexpr int kConnections = 100;
    constexpr unsigned int kSize = 1 << 20;
    constexpr unsigned int kBlock = 65536;
    const std::string data = Payload(kSize);
    CServerSocket server(0, kConnections, Loopback());
    server.SetTimeout(60000);
    // The accepting thread alone holds the references; a handler has its socket's address.
    std::vector<CRef<CSocket>> accepted;
    std::vector<std::thread> handlers;
    std::thread acceptor([&] {
        while (accepted.size() < kConnections) {
            accepted.push_back(server.Accept());
            handlers.emplace_back([socket = accepted.back().GetPointer()] {
                std::vector<char> buffer(kBlock);
                for (int n; (n = socket->GetInputStream()->Read(buffer.data(), kBlock)) > 0;)
                    socket->GetOutputStream()->Write(buffer.data(), static_cast<unsigned int>(n));
            });
        }
    });
    std::atomic<int> matched{0};
    std::vector<std::thread> clients;
    for (int i = 0; i < kConnections; ++i)
        clients.emplace_back([&] {
            CSocket client(Loopback(), server.GetLocalPort());
            client.SetTimeout(60000); // a stall fails the test, within its time limit
            bool same = true;
            for (unsigned int at = 0; at < kSize; at += kBlock) {
                client.GetOutputStream()->Write(data.data() + at, kBlock);
                same =
                    ReadFully(client.GetInputStream(), kBlock) == data.substr(at, kBlock) && same;
            }
            matched += same ? 1 : 0;
        });
    for (auto& client : clients)
        client.join();
    acceptor.join();
    for (auto& handler : handlers)
        handler.join();
    EXPECT_EQ(matched, kConnections);
}

} // namespace

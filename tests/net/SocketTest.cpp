#include <gtest/gtest.h>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <string>
#include <thread>

#include <vorn/io/InterruptedIOException.h>
#include <vorn/net/ServerSocket.h>
#include <vorn/net/Socket.h>
#include <vorn/net/TCPIPSocketImplFactory.h>
#include <vorn/net/UnknownHostException.h>
#include <vorn/net/WinSocketException.h>

#include "support/Sockets.h"
#include "support/Throws.h"

namespace {

using namespace vorn::net;
using vorn::base::CRef;
using vorn::io::CInputStream;
using vorn::io::CInterruptedIOException;
using vorn::test::ExpectThrow;
using vorn::test::Loopback;

const char* const kImpl = "vorn/net/WinSocketImpl";

// A native failure: the words of the raise as description, the system's text as message.
template <typename F> void ExpectNative(F&& call, const char* description, int code) {
    try {
        call();
        ADD_FAILURE() << "no exception: " << description;
    } catch (const CWinSocketException& e) {
        EXPECT_STREQ(e.GetSourceFile(), kImpl);
        EXPECT_STREQ(e.GetErrorDescription(), description);
        EXPECT_EQ(e.GetErrorCode(), code) << description;
        EXPECT_STREQ(e.GetMessage(), std::strerror(e.GetErrorCode()));
    }
}

double SecondsSince(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

CRef<CSocketImpl> TimedConnect(unsigned short port, unsigned int milliseconds) {
    CRef<CSocketImpl> impl = CTCPIPSocketImplFactory::GetInstance().CreateSocketImpl();
    impl->Create(true);
    impl->SetTimeout(milliseconds);
    impl->Connect(Loopback(), port);
    return impl;
}

struct Pair {
    CServerSocket server{0, 5, Loopback()};
    CSocket client{Loopback(), server.GetLocalPort()};
    CRef<CSocket> accepted = server.Accept();
};

TEST(SocketStreams, BytesCrossAndEndAtThePeersClose) {
    Pair p;
    vorn::io::COutputStream* out = p.client.GetOutputStream();
    CInputStream* in = p.accepted->GetInputStream();
    out->Write('\xFF');
    out->Write("abcdef", 2, 3);
    out->Write("xyz", 2);
    out->Write(nullptr, 4);
    out->Flush();
    for (int i = 0; i < 1000 && in->GetAvailable() < 6; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    EXPECT_EQ(in->GetAvailable(), 6u);
    EXPECT_EQ(in->Read(), 255);         // unsigned, where the base stream sign-extends
    EXPECT_EQ(in->Read(nullptr, 1), 0); // skips 'c': nothing left unskipped
    char buffer[8] = {};
    EXPECT_EQ(in->Read(buffer, 1, 2), 2);
    EXPECT_STREQ(buffer + 1, "de");
    p.accepted->GetOutputStream()->Write("pong", 4);
    EXPECT_EQ(vorn::test::ReadFully(p.client.GetInputStream(), 4), "pong");

    p.client.Close();
    p.client.Close();
    EXPECT_EQ(in->Skip(5), 3); // "xy", then the end: what was not skipped
    EXPECT_EQ(in->Read(buffer, 4), 0);
    EXPECT_EQ(in->Read(), CInputStream::EOS);
    ExpectThrow<CSocketException>([&] { in->Reset(); }, kImpl,
                                  "Socket input stream doesn't support the reset operation.");
}

TEST(SocketStreams, AddressesPortsAndEquality) {
    Pair p;
    unsigned short port = p.server.GetLocalPort();
    EXPECT_TRUE(*p.accepted->GetInetAddress() == Loopback());
    EXPECT_EQ(p.accepted->GetPort(), p.client.GetLocalPort());
    EXPECT_TRUE(*p.client.GetLocalInetAddress() == Loopback());
    // A connect keeps the peer in native form only; an accepted socket records no local end.
    EXPECT_TRUE(p.client.GetInetAddress().IsNull());
    EXPECT_EQ(p.client.GetPort(), 0);
    EXPECT_TRUE(p.accepted->GetLocalInetAddress().IsNull());
    EXPECT_TRUE(p.server.GetInetAddress().IsNull());

    CSocket copy = p.client;
    EXPECT_TRUE(copy == p.client);
    EXPECT_TRUE(copy != *p.accepted);
    CServerSocket serverCopy = p.server;
    EXPECT_TRUE(serverCopy == p.server);

    // A server's Close leaves it listening.
    p.server.Close();
    CSocket another(Loopback(), port);
    EXPECT_FALSE(p.server.Accept(0).IsNull());
    CSocket bound("127.0.0.1", port, Loopback(), 0);
    EXPECT_NE(bound.GetLocalPort(), 0);
    unsigned short fixed = vorn::test::ClosedPort();
    CSocket boundToPort(Loopback(), port, Loopback(), fixed);
    EXPECT_EQ(boundToPort.GetLocalPort(), fixed);

    // Sockets without a native one left compare equal.
    p.client.Close();
    p.accepted->Close();
    EXPECT_TRUE(p.client == *p.accepted);
}

TEST(SocketOptions, BoolAndIntOptionsByIndex) {
    CRef<CSocketImpl> impl = CTCPIPSocketImplFactory::GetInstance().CreateSocketImpl();
    impl->Create(true);
    for (int option : {0, 2, 3, 5, 7, 9}) {
        impl->SetBoolOption(option, true);
        EXPECT_TRUE(impl->GetBoolOption(option)) << option;
        impl->SetBoolOption(option, false);
        EXPECT_FALSE(impl->GetBoolOption(option)) << option;
    }
    for (int option : {1, 4, 6, 8, 10, -1}) {
        ExpectThrow<CSocketException>([&] { impl->GetBoolOption(option); }, kImpl,
                                      "The specified option is not a bool option.");
        ExpectThrow<CSocketException>([&] { impl->SetBoolOption(option, true); }, kImpl,
                                      "The specified option is not a bool option.");
    }
    for (int option : {0, 3, 9, 10, -1}) {
        ExpectThrow<CSocketException>([&] { impl->GetIntOption(option); }, kImpl,
                                      "The specified option is not an int option.");
        ExpectThrow<CSocketException>([&] { impl->SetIntOption(option, 1); }, kImpl,
                                      "The specified option is not an int option.");
    }
    impl->SetIntOption(CSocketImpl::OptionLinger, 7);
    EXPECT_EQ(impl->GetIntOption(CSocketImpl::OptionLinger), 7);
    impl->SetIntOption(CSocketImpl::OptionLinger, 0);
    EXPECT_EQ(impl->GetIntOption(CSocketImpl::OptionLinger), -1);
    impl->SetIntOption(CSocketImpl::OptionSendBuffer, 1 << 16);
    EXPECT_GE(impl->GetIntOption(CSocketImpl::OptionSendBuffer), 1 << 16);

    Pair p;
    p.client.SetTCPNoDelay(true);
    p.client.SetKeepAlive(true);
    p.client.SetOOBInline(true);
    p.client.SetReuseAddress(true);
    EXPECT_TRUE(p.client.GetTCPNoDelay() && p.client.GetKeepAlive() && p.client.GetOOBInline() &&
                p.client.GetReuseAddress());
    p.client.Close();
    ExpectNative([&] { p.client.GetKeepAlive(); }, "Failed to get the specified option.", EBADF);
    ExpectNative([&] { p.client.SetTCPNoDelay(false); }, "Failed to set the specified option.",
                 EBADF);
}

TEST(SocketTimeouts, AcceptAndReadLimits) {
    CServerSocket server(0, 5, Loopback());
    EXPECT_TRUE(server.Accept(10).IsNull());
    server.SetTimeout(10);
    EXPECT_EQ(server.GetTimeout(), 10u);
    ExpectThrow<CInterruptedIOException>([&] { server.Accept(); }, kImpl, "Accept timed-out.");

    CSocket client(Loopback(), server.GetLocalPort());
    EXPECT_TRUE(server.IsPending());
    CRef<CSocket> accepted = server.Accept();
    accepted->SetTimeout(1);
    ExpectThrow<CInterruptedIOException>([&] { accepted->GetInputStream()->Read(); }, kImpl,
                                         "Read timed-out.");
    // The part below a second counts microseconds: 1500 ms wait about one second.
    accepted->SetTimeout(1500);
    char buffer[4];
    auto start = std::chrono::steady_clock::now();
    ExpectThrow<CInterruptedIOException>([&] { accepted->GetInputStream()->Read(buffer, 4); },
                                         kImpl, "Read timed-out.");
    EXPECT_GT(SecondsSince(start), 0.95);
    EXPECT_LT(SecondsSince(start), 1.4);
    client.GetOutputStream()->Write('z');
    EXPECT_EQ(accepted->GetInputStream()->Read(), 'z');
}

TEST(SocketTimeouts, TimedConnectSucceedsFailsOrGivesUpInSilence) {
    CServerSocket server(0, 5, Loopback());
    CRef<CSocketImpl> connected = TimedConnect(server.GetLocalPort(), 1000);
    connected->GetOutputStream()->Write("ok", 2);
    EXPECT_EQ(vorn::test::ReadFully(server.Accept()->GetInputStream(), 2), "ok");
    EXPECT_TRUE(*connected->GetLocalInetAddress() == Loopback());
    ExpectNative([] { TimedConnect(vorn::test::ClosedPort(), 1000); }, "connect failed.",
                 ECONNREFUSED);

    // A listener whose queue is full lets the next connection wait.
    unsigned short port = 0;
    int full = vorn::test::PosixListener(&port, 0);
    CSocket first(Loopback(), port);
    auto start = std::chrono::steady_clock::now();
    CRef<CSocketImpl> late = TimedConnect(port, 1000);
    EXPECT_GT(SecondsSince(start), 0.95);
    ExpectNative([&] { late->GetInputStream()->Read(); }, "select failed.", EBADF);
    ::close(full);
}

TEST(SocketFaults, FailuresLeaveNoDescriptorBehind) {
    CServerSocket server(0, 50, Loopback());
    unsigned short port = server.GetLocalPort();
    unsigned short closed = vorn::test::ClosedPort();
    bool isolated = vorn::test::OnlyLoopback();
    auto failures = [&] {
        ExpectNative([&] { CSocket s(Loopback(), closed); }, "Connect socket failed.",
                     ECONNREFUSED);
        ExpectNative([&] { CServerSocket s(port, 5, Loopback()); }, "Bind socket failed.",
                     EADDRINUSE);
        ExpectNative([&] { CSocket s(Loopback(), port, Loopback(), port); }, "Bind socket failed.",
                     EADDRINUSE);
        if (isolated) {
            EXPECT_THROW(CSocket("nowhere.invalid", port), CUnknownHostException);
        }
        CSocket client(Loopback(), port);
        CRef<CSocket> accepted = server.Accept();
        client.Close();
        char buffer[4];
        ExpectNative([&] { client.GetInputStream()->Read(buffer, 4); },
                     "Failed to read the specified number of bytes from the socket input stream.",
                     EBADF);
        ExpectNative([&] { client.GetOutputStream()->Write("x", 1); },
                     "Failed to send the specified data.", EBADF);
        ExpectNative([&] { client.GetInputStream()->GetAvailable(); },
                     "Failed to get the number of available on the socket.", EBADF);
        client.SetTimeout(5);
        ExpectNative([&] { client.GetInputStream()->Read(); }, "select failed.", EBADF);
    };
    failures(); // the first round opens what stays open for good, such as the resolver's files
    std::size_t before = vorn::test::OpenDescriptors();
    for (int i = 0; i < 20; ++i)
        failures();
    EXPECT_EQ(vorn::test::OpenDescriptors(), before);
}

TEST(SocketFaults, NoMemoryLeavesNoDescriptorBehind) {
    CServerSocket server(0, 50, Loopback());
    std::size_t before = vorn::test::OpenDescriptors();
    bool completed = false;
    // Each allocation of a connect and an accept fails in turn, until a round needs no more.
    for (unsigned long nth = 1; nth < 30 && !completed; ++nth) {
        try {
            vorn::test::FailAllocation fail(nth);
            CSocket client(Loopback(), server.GetLocalPort());
            completed = !server.Accept()->GetInetAddress().IsNull();
        } catch (const vorn::base::CMemoryException&) {
        }
        while (!server.Accept(0).IsNull()) {
        }
    }
    EXPECT_TRUE(completed);
    EXPECT_EQ(vorn::test::OpenDescriptors(), before);
}

} // namespace

#include <gtest/gtest.h>

#include <unistd.h>
#include <utility>

#include <vorn/base/IllegalArgumentException.h>
#include <vorn/net/UnknownHostException.h>

#include "platform/Socket.h"
#include "support/Sockets.h"
#include "support/Throws.h"

namespace {

using vorn::net::CInetAddress;
using vorn::net::CUnknownHostException;
using vorn::test::ExpectThrow;

const char* const kSource = "vorn/net/InetAddress";

CInetAddress Address(unsigned char a, unsigned char b, unsigned char c, unsigned char d) {
    const unsigned char bytes[] = {a, b, c, d};
    return CInetAddress(bytes);
}

TEST(SocketInetAddress, BytesTextAndEquality) {
    ExpectThrow<vorn::base::CIllegalArgumentException>([] { CInetAddress a(nullptr); }, kSource,
                                                       "Invalid IPv4 address.");
    EXPECT_STREQ(Address(10, 0, 0, 1).GetHostAddress(), "10.0.0.1");
    EXPECT_STREQ(Address(255, 254, 0, 9).GetHostAddress(), "255.254.0.9");
    CInetAddress any = CInetAddress::AnyInetAddress;
    EXPECT_STREQ(any.GetHostAddress(), "0.0.0.0");

    // A looked-up name plays no part, and copies keep it.
    CInetAddress named = vorn::test::Loopback();
    EXPECT_STREQ(named.GetHostName(), "localhost");
    EXPECT_TRUE(named == vorn::test::Loopback());
    EXPECT_TRUE(named != Address(127, 0, 0, 2));
    CInetAddress copy(named);
    CInetAddress moved(std::move(copy));
    EXPECT_STREQ(moved.GetHostName(), "localhost");

    EXPECT_FALSE(Address(223, 255, 255, 255).IsMulticastAddress());
    EXPECT_TRUE(Address(224, 0, 0, 0).IsMulticastAddress());
    EXPECT_TRUE(Address(240, 1, 1, 1).IsMulticastAddress());
    EXPECT_FALSE(Address(241, 0, 0, 0).IsMulticastAddress());
    EXPECT_FALSE(Address(0, 0, 0, 0).IsMulticastAddress());
}

TEST(SocketInetAddress, LookUpsOfNamesAndAddresses) {
    EXPECT_TRUE(CInetAddress::GetByName("127.0.0.1") == vorn::test::Loopback());
    EXPECT_TRUE(CInetAddress::GetByName("localhost") == vorn::test::Loopback());
    EXPECT_TRUE(CInetAddress::GetByName("10.20.30.40") == Address(10, 20, 30, 40));
    char name[256] = {};
    ASSERT_EQ(gethostname(name, sizeof name - 1), 0);
    EXPECT_TRUE(CInetAddress::GetLocalHost() == CInetAddress::GetByName(name));

    for (const char* empty : {static_cast<const char*>(nullptr), ""})
        ExpectThrow<vorn::base::CIllegalArgumentException>([&] { CInetAddress::GetByName(empty); },
                                                           kSource, "Invalid host name.");
    if (!vorn::test::OnlyLoopback())
        GTEST_SKIP() << "not in a namespace of its own: failing look-ups would leave the machine";
    for (const char* bad : {"nowhere.invalid", "256.1.1.1", "1.2.3.4.5", "1..2.3", "127.0.0.x"}) {
        try {
            CInetAddress::GetByName(bad);
            ADD_FAILURE() << bad;
        } catch (const CUnknownHostException& e) {
            EXPECT_STREQ(e.GetSourceFile(), kSource);
            EXPECT_STREQ(e.GetErrorDescription(), "Unknown host name.");
            EXPECT_STREQ(e.GetHostName(), bad);
        }
    }
    // No reverse entry: an empty name, from one look-up.
    CInetAddress nameless = Address(127, 0, 0, 99);
    unsigned long before = vorn::platform::HostNameLookups();
    EXPECT_STREQ(nameless.GetHostName(), "");
    EXPECT_STREQ(nameless.GetHostName(), "");
    EXPECT_EQ(vorn::platform::HostNameLookups() - before, 1u);
}

} // namespace

// Helpers of the socket tests: loopback, known bytes, descriptor counts, plain POSIX listeners and
// the Python peer. Only loopback is ever a target.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <arpa/inet.h>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <vorn/io/InputStream.h>
#include <vorn/net/InetAddress.h>

namespace vorn::test {

inline vorn::net::CInetAddress Loopback() {
    const unsigned char bytes[] = {127, 0, 0, 1};
    return vorn::net::CInetAddress(bytes);
}

// The peers' bytes: (7 * i + 3) mod 256.
inline std::string Payload(std::size_t size) {
    std::string bytes(size, '\0');
    for (std::size_t i = 0; i < size; ++i)
        bytes[i] = static_cast<char>((7 * i + 3) & 0xFF);
    return bytes;
}

inline std::ptrdiff_t OpenDescriptors() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

// In a network namespace with loopback alone, a failing look-up stays on the machine.
inline bool OnlyLoopback() {
    std::ifstream devices("/proc/self/net/dev");
    std::string text((std::istreambuf_iterator<char>(devices)), {});
    return std::count(text.begin(), text.end(), ':') == 1 && text.find("lo:") != std::string::npos;
}

// A plain socket bound to 127.0.0.1, listening unless `backlog` is negative.
inline int PosixListener(unsigned short* port, int backlog) {
    int s = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{AF_INET, 0, {htonl(INADDR_LOOPBACK)}, {}};
    socklen_t length = sizeof address;
    EXPECT_EQ(::bind(s, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    EXPECT_EQ(::getsockname(s, reinterpret_cast<sockaddr*>(&address), &length), 0);
    EXPECT_TRUE(backlog < 0 || ::listen(s, backlog) == 0);
    *port = ntohs(address.sin_port);
    return s;
}
// A port that was just free: connections to it are refused.
inline unsigned short ClosedPort() {
    unsigned short port = 0;
    ::close(PosixListener(&port, -1));
    return port;
}

// All `count` bytes, unless the stream ends first.
inline std::string ReadFully(vorn::io::CInputStream* in, std::size_t count) {
    std::string bytes(count, '\0');
    std::size_t done = 0;
    while (done < count) {
        int n = in->Read(&bytes[0], static_cast<unsigned int>(done),
                         static_cast<unsigned int>(count - done));
        if (n <= 0)
            break;
        done += static_cast<std::size_t>(n);
    }
    bytes.resize(done);
    return bytes;
}

// tests/net/peer.py with `arguments`: a server prints its port first; Wait gives the exit status.
class PythonPeer {
public:
    explicit PythonPeer(const std::string& arguments)
        : m_out(::popen((VORN_PYTHON3 " " VORN_TEST_SOURCE_DIR "/net/peer.py " + arguments).c_str(),
                        "r")) {}
    ~PythonPeer() { Wait(); }
    PythonPeer(const PythonPeer&) = delete;
    PythonPeer& operator=(const PythonPeer&) = delete;

    unsigned short Port() {
        unsigned short port = 0;
        EXPECT_EQ(std::fscanf(m_out, "%hu", &port), 1);
        return port;
    }
    int Wait() {
        int status = m_out != nullptr ? ::pclose(m_out) : -1;
        m_out = nullptr;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

private:
    FILE* m_out;
};

} // namespace vorn::test

// Helpers of the socket tests: loopback addresses, known bytes, descriptor counts and a Python
// peer process. Only loopback is ever a target.
#pragma once

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <netinet/in.h>
#include <spawn.h>
#include <string>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include <vorn/io/InputStream.h>
#include <vorn/net/InetAddress.h>

extern char** environ;

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

inline std::size_t OpenDescriptors() {
    std::size_t count = 0;
    for ([[maybe_unused]] auto& entry : std::filesystem::directory_iterator("/proc/self/fd"))
        ++count;
    return count;
}

// True in a network namespace with loopback alone, where a failing look-up stays on the machine.
inline bool OnlyLoopback() {
    std::ifstream devices("/proc/self/net/dev");
    std::string line;
    int count = 0;
    while (std::getline(devices, line))
        if (line.find(':') != std::string::npos && ++count && line.find("lo:") == std::string::npos)
            return false;
    return count == 1;
}

// A plain POSIX socket on 127.0.0.1: listening (with its port) or bound and closed again, which
// leaves a port that refuses connections.
inline int PosixListener(unsigned short* port, int backlog) {
    int s = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    EXPECT_EQ(::bind(s, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    EXPECT_EQ(::getsockname(s, reinterpret_cast<sockaddr*>(&address), &length), 0);
    if (backlog >= 0) {
        EXPECT_EQ(::listen(s, backlog), 0);
    }
    *port = ntohs(address.sin_port);
    return s;
}
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

// tests/net/peer.py in a process of its own; a server prints its port first.
class PythonPeer {
public:
    explicit PythonPeer(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {VORN_PYTHON3, VORN_TEST_SOURCE_DIR "/net/peer.py"});
        std::vector<char*> argv;
        for (auto& argument : arguments)
            argv.push_back(&argument[0]);
        argv.push_back(nullptr);
        int out[2];
        EXPECT_EQ(::pipe2(out, O_CLOEXEC), 0);
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, out[1], 1);
        EXPECT_EQ(posix_spawn(&m_pid, VORN_PYTHON3, &actions, nullptr, argv.data(), environ), 0);
        posix_spawn_file_actions_destroy(&actions);
        ::close(out[1]);
        m_out = ::fdopen(out[0], "r");
    }
    ~PythonPeer() {
        if (m_pid > 0) {
            ::kill(m_pid, SIGKILL);
            Wait();
        }
        std::fclose(m_out);
    }
    PythonPeer(const PythonPeer&) = delete;
    PythonPeer& operator=(const PythonPeer&) = delete;

    unsigned short Port() {
        unsigned int port = 0;
        EXPECT_EQ(std::fscanf(m_out, "%u", &port), 1);
        return static_cast<unsigned short>(port);
    }
    // The exit status, -1 when killed.
    int Wait() {
        int status = 0;
        ::waitpid(m_pid, &status, 0);
        m_pid = 0;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

private:
    pid_t m_pid = 0;
    FILE* m_out = nullptr;
};

} // namespace vorn::test

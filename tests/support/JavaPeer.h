// The JVM peer of the data stream tests (tests/io/java/DataStreamPeer.java), compiled into a
// temporary directory on first use, and the values that both sides write and expect.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "support/Utf16.h"

namespace vorn::test {

class JavaPeer {
public:
    // The one peer of the process; its directory goes when the process ends.
    static JavaPeer& Get() {
        static JavaPeer peer;
        return peer;
    }
    // False where javac or java is missing: the test is then skipped.
    bool HasJdk() const { return m_hasJdk; }
    // False when the JDK is there but the peer didn't compile: the test then fails.
    bool IsCompiled() const { return !m_classes.empty(); }
    std::string File(const char* name) const { return m_classes + "/" + name; }
    // "write" or "check" `file`; the exit status of the JVM.
    int Run(const char* mode, const std::string& file) const {
        const std::string command =
            "java -cp " + m_classes + " DataStreamPeer " + mode + " " + file;
        return std::system(command.c_str());
    }

    ~JavaPeer() {
        if (!m_classes.empty())
            std::filesystem::remove_all(m_classes);
    }

private:
    JavaPeer() {
        m_hasJdk = std::system("command -v javac >/dev/null 2>&1 && "
                               "command -v java >/dev/null 2>&1") == 0;
        if (!m_hasJdk)
            return;
        char directory[] = "/tmp/vorn-java-XXXXXX";
        if (mkdtemp(directory) == nullptr)
            return;
        const std::string command = std::string("javac -d ") + directory + " " +
                                    VORN_TEST_SOURCE_DIR "/io/java/DataStreamPeer.java";
        if (std::system(command.c_str()) == 0)
            m_classes = directory;
        else
            std::filesystem::remove_all(directory);
    }

    bool m_hasJdk = false;
    std::string m_classes;
};

// The values of DataStreamPeer, in its order.
inline const int kPeerInts[] = {0, 1, -1, 16909060, -2147483647 - 1, 2147483647};
inline const short kPeerShorts[] = {0, -2, 32767, -32768};
inline const bool kPeerBools[] = {true, false};
inline std::vector<WString> PeerStrings() {
    WString euros;
    for (int i = 0; i < 21845; ++i)
        euros.push_back(0x20AC);
    return {W(u""),
            W(u"plain"),
            W(u"\u00e9t\u00e9"),
            W(u"\u20ac \u2713 \u4e2d\u6587"),
            W(u"\u0800\u07ff\u0080\u007f\ud7ff\ue000\ufffd"),
            euros};
}

} // namespace vorn::test

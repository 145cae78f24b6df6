// Runs a piece of a test in a forked child, for what must not touch the test process: a changed
// user, a mount namespace, a limit. The child reports a text; the parent compares it.
#pragma once

#include <functional>
#include <string>

#include <sys/wait.h>
#include <unistd.h>

namespace vorn::test {

// What `body` returned in the child, or "child died" when it did not end normally.
inline std::string InChild(const std::function<std::string()>& body) {
    int pipeEnds[2];
    if (pipe(pipeEnds) != 0)
        return "no pipe";
    const pid_t pid = fork();
    if (pid == 0) {
        close(pipeEnds[0]);
        std::string text;
        try {
            text = body();
        } catch (...) {
            text = "exception";
        }
        ssize_t ignored = write(pipeEnds[1], text.data(), text.size());
        (void)ignored;
        _exit(0);
    }
    close(pipeEnds[1]);
    std::string text;
    char chunk[256];
    for (ssize_t n; (n = read(pipeEnds[0], chunk, sizeof chunk)) > 0;)
        text.append(chunk, static_cast<std::size_t>(n));
    close(pipeEnds[0]);
    int status = 0;
    waitpid(pid, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? text : "child died";
}

// In a child: gives up root for the user nobody, so that file permissions apply. False when that
// fails; a process that is not root already meets them.
inline bool DropRoot() {
    return getuid() != 0 || (setgid(65534) == 0 && setuid(65534) == 0);
}

} // namespace vorn::test

// Runs a piece of a test in a forked child, for what must not touch the test process: another
// user, a mount namespace. The child reports a text; the parent compares it.
#pragma once

#include <functional>
#include <string>

#include <sys/wait.h>
#include <unistd.h>

namespace vorn::test {

// What `body` returned in the child, or "child died".
inline std::string InChild(const std::function<std::string()>& body) {
    int ends[2];
    if (pipe(ends) != 0)
        return "no pipe";
    const pid_t pid = fork();
    if (pid == 0) {
        const std::string text = body();
        _exit(write(ends[1], text.data(), text.size()) == static_cast<ssize_t>(text.size()) ? 0
                                                                                            : 1);
    }
    close(ends[1]);
    std::string text;
    char chunk[256];
    for (ssize_t n; (n = read(ends[0], chunk, sizeof chunk)) > 0;)
        text.append(chunk, static_cast<std::size_t>(n));
    close(ends[0]);
    int status = 0;
    waitpid(pid, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? text : "child died";
}

// In a child: gives up root for the user nobody, so that file permissions apply; a process that
// is not root meets them already. False when that fails.
inline bool DropRoot() {
    return getuid() != 0 || (setgid(65534) == 0 && setuid(65534) == 0);
}

} // namespace vorn::test

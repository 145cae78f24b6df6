// The write and sync steps that IO::File and the native files share.
#pragma once

#include <cerrno>

#include <unistd.h>

namespace vorn::platform::posix {

// Writes all `count` bytes across short writes and interruptions; 0, or the error that stopped
// it. `*done` holds the bytes that went out either way.
inline int WriteAll(int descriptor, const char* data, unsigned int count, unsigned int* done) {
    *done = 0;
    while (*done < count) {
        const ssize_t n = ::write(descriptor, data + *done, count - *done);
        if (n > 0)
            *done += static_cast<unsigned int>(n);
        else if (n == 0)
            return ENOSPC; // a write that takes nothing would loop for ever: the medium is full
        else if (errno != EINTR)
            return errno;
    }
    return 0;
}

// fsync; devices, pipes and read-only media have nothing to sync and succeed.
inline int Sync(int descriptor) {
    if (::fsync(descriptor) == 0 || errno == EINVAL || errno == EROFS)
        return 0;
    return errno;
}

} // namespace vorn::platform::posix

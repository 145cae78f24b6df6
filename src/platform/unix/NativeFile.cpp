#include "platform/NativeFile.h"

#include <cerrno>

#include <fcntl.h>
#include <unistd.h>

#include "platform/unix/Descriptor.h"

namespace vorn::platform {

int OpenNativeFileForWriting(const char* path, bool* accessDenied) {
    int handle;
    do
        handle = ::open(path, O_WRONLY | O_CREAT | O_CLOEXEC | O_NOCTTY, 0666);
    while (handle < 0 && errno == EINTR);
    *accessDenied = handle < 0 && (errno == EACCES || errno == EPERM);
    return handle < 0 ? kNoNativeFile : handle;
}

bool SeekNativeFileToEnd(int handle) {
    return ::lseek(handle, 0, SEEK_END) >= 0;
}

bool WriteNativeFile(int handle, const char* data, unsigned int count) {
    unsigned int done;
    return posix::WriteAll(handle, data, count, &done) == 0;
}

bool FlushNativeFile(int handle) {
    return posix::Sync(handle) == 0;
}

void CloseNativeFile(int handle) {
    ::close(handle);
}

} // namespace vorn::platform

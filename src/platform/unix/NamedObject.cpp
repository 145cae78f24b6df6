// Named objects: one POSIX shared-memory segment per name, holding the object's core. Each
// handle keeps a shared flock on its own descriptor of the segment, so "no handle left in any
// process" is "an exclusive flock succeeds"; a process that dies drops its locks with its
// descriptors, and the next opening removes the segments that nobody holds any more. Opening and
// closing run under one exclusive flock, so they never cross.
#include <cerrno>
#include <cstdio>
#include <cstring>

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/TextConvert.h"
#include "platform/unix/WaitObject.h"

namespace vorn::platform::posix {

namespace {

// The segment's name: the user's prefix, then the name's UTF-8 with every byte but letters,
// digits, '.', '_' and '-' written as %XX.
bool SegmentName(const unsigned short* name, char (&segment)[kSegmentNameSize]) {
    char text[kSegmentNameSize];
    int length = CHUnicode2ANSI(name, -1, nullptr, 0, 0, true, nullptr);
    int used = std::snprintf(segment, sizeof segment, "/vorn.%u.obj.", getuid());
    if (length < 0 || used + length >= static_cast<int>(sizeof segment)) {
        errno = ENAMETOOLONG;
        return false;
    }
    length = CHUnicode2ANSI(name, -1, text, length, 0, true, nullptr);
    for (int i = 0; i < length; ++i) {
        auto byte = static_cast<unsigned char>(text[i]);
        bool plain = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') ||
                     (byte >= '0' && byte <= '9') || byte == '.' || byte == '_' || byte == '-';
        int room = static_cast<int>(sizeof segment) - used;
        int wrote = std::snprintf(segment + used, room, plain ? "%c" : "%%%02X", byte);
        if (wrote >= room) {
            errno = ENAMETOOLONG;
            return false;
        }
        used += wrote;
    }
    return true;
}

class NamesLock {
public:
    NamesLock() {
        char name[64];
        std::snprintf(name, sizeof name, "/vorn.%u.lock", getuid());
        m_fd = shm_open(name, O_RDWR | O_CREAT | O_CLOEXEC, 0600);
        int error = 0;
        while (m_fd >= 0 && (error = flock(m_fd, LOCK_EX)) != 0 && errno == EINTR) {
        }
        if (m_fd >= 0 && error != 0) {
            error = errno;
            close(m_fd);
            m_fd = -1;
            errno = error;
        }
    }
    // Closing the descriptor drops the lock.
    ~NamesLock() {
        if (m_fd >= 0)
            close(m_fd);
    }
    NamesLock(const NamesLock&) = delete;
    NamesLock& operator=(const NamesLock&) = delete;
    bool Held() const { return m_fd >= 0; }

private:
    int m_fd;
};

// Removes the user's segments that no handle holds: those of processes that ended without
// closing them.
void RemoveLeftovers() {
    char prefix[64];
    int length = std::snprintf(prefix, sizeof prefix, "vorn.%u.obj.", getuid());
    DIR* directory = opendir("/dev/shm");
    if (directory == nullptr)
        return;
    while (dirent* entry = readdir(directory)) {
        if (std::strncmp(entry->d_name, prefix, static_cast<std::size_t>(length)) != 0)
            continue;
        char segment[kSegmentNameSize + 1];
        std::snprintf(segment, sizeof segment, "/%s", entry->d_name);
        int fd = shm_open(segment, O_RDWR | O_CLOEXEC, 0);
        if (fd < 0)
            continue;
        if (flock(fd, LOCK_EX | LOCK_NB) == 0)
            shm_unlink(segment);
        close(fd);
    }
    closedir(directory);
}

} // namespace

bool OpenNamed(Object& object, const unsigned short* name, const CoreSettings& settings) {
    if (!SegmentName(name, object.segment))
        return false;
    NamesLock names;
    if (!names.Held())
        return false;
    RemoveLeftovers();
    int fd = shm_open(object.segment, O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (fd < 0)
        return false;
    struct stat status;
    int error = fstat(fd, &status) == 0 ? 0 : errno;
    bool fresh = error == 0 && status.st_size == 0;
    void* mapping = MAP_FAILED;
    if (error == 0 && !fresh && status.st_size != static_cast<off_t>(sizeof(Core)))
        error = EINVAL;
    if (error == 0 && fresh && ftruncate(fd, sizeof(Core)) != 0)
        error = errno;
    if (error == 0) {
        mapping = mmap(nullptr, sizeof(Core), PROT_READ | PROT_WRITE, MAP_SHARED, fd, 0);
        if (mapping == MAP_FAILED)
            error = errno;
    }
    auto* core = static_cast<Core*>(mapping);
    if (error == 0 && fresh && !InitCore(*core, settings, true))
        error = errno;
    if (error == 0 && !fresh && core->kind != settings.kind)
        error = EINVAL;
    if (error == 0 && flock(fd, LOCK_SH) != 0)
        error = errno;
    if (error != 0) {
        if (mapping != MAP_FAILED)
            munmap(mapping, sizeof(Core));
        if (fresh)
            shm_unlink(object.segment);
        close(fd);
        errno = error;
        return false;
    }
    object.core = core;
    object.segmentFd = fd;
    return true;
}

void CloseNamed(Object& object, bool keep) {
    NamesLock names;
    if (!keep)
        munmap(object.core, sizeof(Core));
    if (flock(object.segmentFd, LOCK_EX | LOCK_NB) == 0)
        shm_unlink(object.segment);
    close(object.segmentFd);
}

} // namespace vorn::platform::posix

// IO::File over POSIX descriptors.
#include <vorn/platform/File.h>

#include <cerrno>
#include <climits>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/unix/Descriptor.h"

namespace IO {

namespace {

ZK::Status StatusOf(int error) {
    switch (error) {
    case EACCES:
    case EPERM:
        return kStatusAccessDenied;
    case ENOENT:
    case ENOTDIR:
        return kStatusNotFound;
    case EISDIR:
        return kStatusIsDirectory;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return kStatusNoSpace;
    case EINVAL:
        return kStatusInvalidArgument;
    default:
        return kStatusSystemError;
    }
}

} // namespace

File::File(const Location& location, OnNotFound onNotFound)
    : m_location(location), m_onNotFound(onNotFound), m_descriptor(-1), m_status(ZK::kStatusOK),
      m_systemError(0), m_outputStatus(ZK::kStatusOK) {
    if (!m_location.IsValid()) {
        m_status = kStatusInvalidLocation;
        return;
    }
    // Only a missing file is reported here; every other obstacle is Open's to report.
    struct stat info;
    if (onNotFound == kFailIfNotFound && ::stat(m_location.GetPath(), &info) != 0 &&
        (errno == ENOENT || errno == ENOTDIR))
        Failed(errno);
}

File::~File() {
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

ZK::Status File::Done(ZK::Status status) const {
    m_status = status;
    m_systemError = 0;
    return status;
}

ZK::Status File::Failed(int error) const {
    m_status = StatusOf(error);
    m_systemError = error;
    return m_status;
}

ZK::Status File::Output(ZK::Status status) {
    m_outputStatus = status;
    return status;
}

ZK::Status File::Open(OpenMode mode, AccessDeniedTreatment treatment) {
    if (!m_location.IsValid())
        return Done(kStatusInvalidLocation);
    if (m_descriptor >= 0)
        return Done(kStatusAlreadyOpen);
    int flags;
    switch (mode) {
    case kOpenRead:
        flags = O_RDONLY;
        break;
    case kOpenWrite:
        flags = O_WRONLY | O_TRUNC;
        break;
    case kOpenAppend:
        flags = O_WRONLY | O_APPEND;
        break;
    default:
        return Done(kStatusInvalidArgument);
    }
    if (treatment != kReportAccessDenied)
        return Done(kStatusInvalidArgument);
    if (m_onNotFound == kCreateIfNotFound)
        flags |= O_CREAT;
    int descriptor;
    do
        descriptor = ::open(m_location.GetPath(), flags | O_CLOEXEC | O_NOCTTY, 0666);
    while (descriptor < 0 && errno == EINTR);
    if (descriptor < 0)
        return Failed(errno);
    // Linux opens a directory for reading; a file layer has nothing to read there.
    struct stat info;
    const int error = ::fstat(descriptor, &info) != 0 ? errno : S_ISDIR(info.st_mode) ? EISDIR : 0;
    if (error != 0) {
        ::close(descriptor);
        return Failed(error);
    }
    m_descriptor = descriptor;
    return Done(ZK::kStatusOK);
}

ZK::Status File::Close() {
    if (m_descriptor < 0)
        return Done(kStatusNotOpen);
    const int result = ::close(m_descriptor);
    m_descriptor = -1;
    // Linux releases the descriptor even when close reports an error; EINTR loses nothing.
    if (result != 0 && errno != EINTR)
        return Failed(errno);
    return Done(ZK::kStatusOK);
}

ZK::Status File::ReadBin(char* buffer, unsigned int count, unsigned int* read) {
    unsigned int done = 0;
    ZK::Status status = ZK::kStatusOK;
    if (m_descriptor < 0)
        status = Done(kStatusNotOpen);
    else if (buffer == nullptr && count > 0)
        status = Done(kStatusInvalidArgument);
    else {
        while (done < count) {
            const ssize_t n = ::read(m_descriptor, buffer + done, count - done);
            if (n > 0) {
                done += static_cast<unsigned int>(n);
            } else if (n == 0) {
                status = ZK::kStatusEndOfInput;
                break;
            } else if (errno != EINTR) {
                status = Failed(errno);
                break;
            }
        }
        if (status == ZK::kStatusOK || status == ZK::kStatusEndOfInput)
            Done(status);
    }
    if (read != nullptr)
        *read = done;
    return status;
}

ZK::Status File::Read(char& value) {
    return ReadBin(&value, 1, nullptr);
}

ZK::Status File::Read(short& value) {
    char bytes[sizeof value];
    const ZK::Status status = ReadBin(bytes, sizeof bytes, nullptr);
    if (status == ZK::kStatusOK)
        std::memcpy(&value, bytes, sizeof value);
    return status;
}

ZK::Status File::WriteBin(const char* buffer, unsigned int count, unsigned int* written) {
    unsigned int done = 0;
    ZK::Status status;
    if (m_descriptor < 0)
        status = Done(kStatusNotOpen);
    else if (buffer == nullptr && count > 0)
        status = Done(kStatusInvalidArgument);
    else if (const int error = vorn::platform::posix::WriteAll(m_descriptor, buffer, count, &done))
        status = Failed(error);
    else
        status = Done(ZK::kStatusOK);
    if (written != nullptr)
        *written = done;
    return Output(status);
}

ZK::OChannel& File::operator<<(char value) {
    WriteBin(&value, 1, nullptr);
    return *this;
}

ZK::OChannel& File::operator<<(short value) {
    char bytes[sizeof value];
    std::memcpy(bytes, &value, sizeof value);
    WriteBin(bytes, sizeof bytes, nullptr);
    return *this;
}

ZK::Status File::Flush() {
    if (m_descriptor < 0)
        return Output(Done(kStatusNotOpen));
    if (const int error = vorn::platform::posix::Sync(m_descriptor))
        return Output(Failed(error));
    return Output(Done(ZK::kStatusOK));
}

ZK::Status File::GetAvailable(unsigned long long* available) const {
    if (m_descriptor < 0)
        return Done(kStatusNotOpen);
    struct stat info;
    if (::fstat(m_descriptor, &info) != 0)
        return Failed(errno);
    const off_t position = ::lseek(m_descriptor, 0, SEEK_CUR);
    if (position < 0)
        return Failed(errno);
    *available =
        info.st_size > position ? static_cast<unsigned long long>(info.st_size - position) : 0;
    return Done(ZK::kStatusOK);
}

ZK::Status File::GetDataLength(unsigned long long* length) const {
    if (m_descriptor < 0)
        return Done(kStatusNotOpen);
    struct stat info;
    if (::fstat(m_descriptor, &info) != 0)
        return Failed(errno);
    *length = static_cast<unsigned long long>(info.st_size);
    return Done(ZK::kStatusOK);
}

ZK::Status File::SetPosition(unsigned long long position) {
    if (position > static_cast<unsigned long long>(LLONG_MAX))
        return Done(kStatusInvalidArgument);
    return Seek(kSeekBegin, static_cast<long long>(position));
}

ZK::Status File::Seek(SeekOrigin origin, long long offset) {
    if (m_descriptor < 0)
        return Done(kStatusNotOpen);
    int whence;
    switch (origin) {
    case kSeekBegin:
        whence = SEEK_SET;
        break;
    case kSeekCurrent:
        whence = SEEK_CUR;
        break;
    case kSeekEnd:
        whence = SEEK_END;
        break;
    default:
        return Done(kStatusInvalidArgument);
    }
    if (::lseek(m_descriptor, static_cast<off_t>(offset), whence) < 0)
        return Failed(errno);
    return Done(ZK::kStatusOK);
}

} // namespace IO

// IO::File: one file of the file system as a channel. Every operation reports a status and keeps
// it as the object's status; nothing is buffered, so each call reaches the system and a failure
// is reported by the call that met it.
#pragma once

#include <vorn/base/Export.h>
#include <vorn/platform/Channel.h>
#include <vorn/platform/Location.h>

namespace IO {

enum OnNotFound { kFailIfNotFound = 0, kCreateIfNotFound = 1 };
// Write truncates an existing file; append writes every byte at the end.
enum OpenMode { kOpenRead = 0, kOpenWrite = 2, kOpenAppend = 4 };
enum AccessDeniedTreatment { kReportAccessDenied = 2 };
enum SeekOrigin { kSeekBegin = 0, kSeekCurrent = 1, kSeekEnd = 2 };

// Statuses of files, beside those of the channels.
constexpr ZK::Status kStatusInvalidLocation = 0x81000001;
constexpr ZK::Status kStatusNotOpen = 0x81000002;
constexpr ZK::Status kStatusAlreadyOpen = 0x81000003;
constexpr ZK::Status kStatusInvalidArgument = 0x81000004;
constexpr ZK::Status kStatusSystemError = 0x81000200; // any other failure: see GetSystemError
constexpr ZK::Status kStatusNotFound = 0x81010101;
constexpr ZK::Status kStatusAccessDenied = 0x81010102;
constexpr ZK::Status kStatusIsDirectory = 0x81010103;
constexpr ZK::Status kStatusNoSpace = 0x81010104; // the disk, a quota or a size limit is full

class VORN_API File final : public ZK::IChannel, public ZK::OChannel {
public:
    // Binds the location. With kFailIfNotFound a missing file makes the status kStatusNotFound;
    // with kCreateIfNotFound, Open creates it. Nothing else is checked before Open.
    File(const Location& location, OnNotFound onNotFound);
    // Closes a file that is still open.
    ~File();
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    // The outcome of the last operation, construction included.
    ZK::Status GetStatus() const { return m_status; }
    // The system's error number behind the last failure, 0 when there was none.
    int GetSystemError() const { return m_systemError; }

    // A directory is refused (kStatusIsDirectory) in every mode.
    ZK::Status Open(OpenMode mode, AccessDeniedTreatment treatment);
    bool IsOpen() const { return m_descriptor >= 0; }
    // The file is closed afterwards even when the status reports a failure.
    ZK::Status Close();

    ZK::Status Read(char& value) override;
    ZK::Status Read(short& value) override;
    ZK::Status ReadBin(char* buffer, unsigned int count, unsigned int* read) override;
    OChannel& operator<<(char value) override;
    OChannel& operator<<(short value) override;
    ZK::Status WriteBin(const char* buffer, unsigned int count, unsigned int* written) override;
    // Hands the written bytes to the storage device; files that have no such step succeed.
    ZK::Status Flush() override;
    ZK::Status GetOutputStatus() const override { return m_outputStatus; }

    // Bytes from the position to the end (0 past the end).
    ZK::Status GetAvailable(unsigned long long* available) const;
    ZK::Status GetDataLength(unsigned long long* length) const;
    ZK::Status SetPosition(unsigned long long position);
    ZK::Status Seek(SeekOrigin origin, long long offset);

private:
    ZK::Status Done(ZK::Status status) const;
    ZK::Status Failed(int error) const;
    ZK::Status Output(ZK::Status status);

    Location m_location;
    OnNotFound m_onNotFound;
    int m_descriptor;
    // Queries keep their outcome too.
    mutable ZK::Status m_status;
    mutable int m_systemError;
    ZK::Status m_outputStatus;
};

} // namespace IO

// The two channel interfaces of the root library: a source and a sink of bytes that report each
// outcome as a status code. Files are the channels of this library.
#pragma once

#include <vorn/base/Export.h>

namespace ZK {

// 0 is success; anything else names the failure.
using Status = unsigned int;

constexpr Status kStatusOK = 0;
// The input ended before the request was met; what was read before it is valid.
constexpr Status kStatusEndOfInput = 0x81000100;

class VORN_API IChannel {
public:
    // One value, in memory order; kStatusEndOfInput when the input ends first.
    virtual Status Read(char& value) = 0;
    virtual Status Read(short& value) = 0;
    // Reads `count` bytes unless the input ends first; `*read` (when given) holds the bytes read
    // whatever the result.
    virtual Status ReadBin(char* buffer, unsigned int count, unsigned int* read) = 0;

protected:
    ~IChannel() = default;
};

class VORN_API OChannel {
public:
    // One value, in memory order; the outcome is GetOutputStatus().
    virtual OChannel& operator<<(char value) = 0;
    virtual OChannel& operator<<(short value) = 0;
    // Writes all `count` bytes or fails; `*written` (when given) holds the bytes that went out.
    virtual Status WriteBin(const char* buffer, unsigned int count, unsigned int* written) = 0;
    virtual Status Flush() = 0;
    // The outcome of the last output operation.
    virtual Status GetOutputStatus() const = 0;

protected:
    ~OChannel() = default;
};

} // namespace ZK

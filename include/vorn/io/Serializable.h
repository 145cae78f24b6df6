// ISerializable: an object that reads and writes itself through the data streams. The format
// carries no tags: Read must ask for exactly what Write wrote, in the same order.
#pragma once

#include <vorn/base/Export.h>

namespace vorn::io {

class CDataInputStream;
class CDataOutputStream;

class VORN_API ISerializable {
public:
    virtual ~ISerializable();
    ISerializable(const ISerializable&) = default;
    ISerializable& operator=(const ISerializable&) = default;

    virtual void Read(CDataInputStream& stream) = 0;
    virtual void Write(CDataOutputStream& stream) const = 0;

protected:
    ISerializable() = default;
};

} // namespace vorn::io

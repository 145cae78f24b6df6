// IXMLSerializable: an object that reads itself from an XML reader and writes itself to an XML
// writer.
#pragma once

#include <vorn/base/Export.h>

namespace vorn::io {

class CXMLReader;
class CXMLWriter;

class VORN_API IXMLSerializable {
public:
    IXMLSerializable() = default;
    IXMLSerializable(const IXMLSerializable&) = default;
    IXMLSerializable& operator=(const IXMLSerializable&) = default;
    virtual ~IXMLSerializable();

    virtual void ReadXML(CXMLReader& reader) = 0;
    virtual void WriteXML(CXMLWriter& writer) const = 0;
};

} // namespace vorn::io

// XMLTextWriterContext: what the XML text writer keeps of one open element, its qualified name and
// the namespaces declared at it. Internal to the text writer.
#pragma once

#include <vorn/base/Base.h>
#include <vorn/base/UnicodeString.h>
#include <vorn/util/UnicodeStringMap.h>

namespace vorn::io {

class XMLTextWriterContext : public vorn::base::CBase {
public:
    // A null name is the empty one.
    explicit XMLTextWriterContext(const unsigned short* name);

    XMLTextWriterContext(const XMLTextWriterContext&) = delete;
    XMLTextWriterContext& operator=(const XMLTextWriterContext&) = delete;

    // The first prefix bound to `uri` here; CNoSuchElementException when there is none.
    const vorn::base::CUnicodeString& GetPrefix(const unsigned short* uri) const;

    vorn::base::CUnicodeString m_name;             // as printed in the start tag
    vorn::base::CUnicodeString m_defaultNamespace; // in force when the flag below says so
    bool m_hasDefaultNamespace;
    vorn::util::CUnicodeStringMap m_prefixes; // prefix to URI
};

} // namespace vorn::io

// XML documents for the reader tests: a text in a memory stream, and the tokens a reader gives as
// one line of text.
#pragma once

#include <cstring>
#include <string>

#include <vorn/base/Ref.h>
#include <vorn/io/MemoryInputStream.h>
#include <vorn/io/XMLReader.h>

#include "platform/Memory.h"
#include "support/Utf16.h"

namespace vorn::test {

// A memory stream that owns a copy of `text`.
inline vorn::base::CRef<vorn::io::CInputStream> XmlStream(const std::string& text) {
    char* copy = static_cast<char*>(ZK_malloc(text.size()));
    std::memcpy(copy, text.data(), text.size());
    return vorn::base::CRef<vorn::io::CInputStream>(
        new vorn::io::CMemoryInputStream(copy, static_cast<unsigned int>(text.size()), true));
}

// A wide name for a call, from a pool of eight: enough for the names of one statement.
inline const unsigned short* N(const char16_t* name) {
    static WString names[8];
    static int next = 0;
    return (names[next++ % 8] = W(name)).c_str();
}

inline std::string Str(const vorn::base::CUnicodeString& text) {
    return Narrow(Units(text));
}

// "C:text", "P:target=data", "T:text", "D:cdata", "S:qname{uri}local[attributes]", "E:qname",
// the element's URI and local name only when it has them.
inline std::string Describe(vorn::io::IXMLToken& token) {
    using namespace vorn::io;
    switch (token.GetType()) {
    case XMLTokenComment:
        return "C:" + Str(token.GetValue());
    case XMLTokenPI: {
        auto& pi = dynamic_cast<IXMLPIToken&>(token);
        return "P:" + Str(pi.GetTarget()) + "=" + Str(pi.GetData());
    }
    case XMLTokenText:
        return "T:" + Str(token.GetValue());
    case XMLTokenCDATA:
        return "D:" + Str(token.GetValue());
    default: {
        auto& element = dynamic_cast<IXMLElementToken&>(token);
        std::string text = (token.GetType() == XMLTokenStartElement ? "S:" : "E:") +
                           Str(element.GetQualifiedName());
        if (!element.GetNamespaceURI().IsEmpty())
            text += "{" + Str(element.GetNamespaceURI()) + "}" + Str(element.GetLocalName());
        return text;
    }
    }
}

// Every token from the reader's position to the end, one space apart.
inline std::string ReadAll(vorn::io::CXMLReader& reader) {
    std::string all;
    while (reader.ReadToken())
        all += (all.empty() ? "" : " ") + Describe(*reader.GetCurrentToken());
    return all;
}

} // namespace vorn::test

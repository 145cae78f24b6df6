// Xerces-C DOM trees for the DOM reader and writer tests: a text parsed by Xerces-C's own DOM
// parser, and the tree serialised back to text.
#pragma once

#include <memory>
#include <string>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>

#include "support/Utf16.h"

namespace vorn::test {

// A document parsed from `text`, alive as long as the object. Namespaces are on unless asked
// otherwise; nothing external is loaded. Null when the text isn't well-formed.
class ParsedDocument {
public:
    explicit ParsedDocument(const std::string& text, bool namespaces = true,
                            bool entityReferences = false)
        : m_parser(new xercesc::XercesDOMParser) {
        m_parser->setDoNamespaces(namespaces);
        m_parser->setLoadExternalDTD(false);
        m_parser->setValidationScheme(xercesc::XercesDOMParser::Val_Never);
        m_parser->setCreateEntityReferenceNodes(entityReferences);
        m_parser->setErrorHandler(nullptr);
        xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(text.data()),
                                          text.size(), "test");
        try {
            m_parser->parse(source);
        } catch (...) {
        }
        if (m_parser->getErrorCount() == 0)
            m_document = m_parser->getDocument();
    }
    xercesc::DOMDocument* Get() const { return m_document; }

private:
    std::unique_ptr<xercesc::XercesDOMParser> m_parser;
    xercesc::DOMDocument* m_document = nullptr;
};

inline std::string Str(const XMLCh* text) {
    return text == nullptr ? "" : Narrow(Units(reinterpret_cast<const unsigned short*>(text)));
}

inline const XMLCh* X(const WString& text) {
    return reinterpret_cast<const XMLCh*>(text.c_str());
}

} // namespace vorn::test

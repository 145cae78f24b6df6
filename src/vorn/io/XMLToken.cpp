#include <vorn/io/XMLToken.h>

#include "vorn/io/XMLAttributeList.h"
#include "vorn/io/XMLTokens.h"

namespace vorn::io {

using vorn::base::CUnicodeString;

IXMLToken::~IXMLToken() = default;
IXMLTextToken::~IXMLTextToken() = default;
IXMLCDATAToken::~IXMLCDATAToken() = default;
IXMLCommentToken::~IXMLCommentToken() = default;
IXMLPIToken::~IXMLPIToken() = default;
IXMLElementToken::~IXMLElementToken() = default;
IXMLStartElementToken::~IXMLStartElementToken() = default;
IXMLEndElementToken::~IXMLEndElementToken() = default;

// ---- Elements

CXMLElementToken::CXMLElementToken(XMLTokenType type, const unsigned short* namespaceURI,
                                   const unsigned short* localName,
                                   const unsigned short* qualifiedName)
    : CXMLToken(type), m_qualifiedName(CopyText(qualifiedName)),
      m_localName(CopyText(localName, qualifiedName, m_qualifiedName)),
      m_namespaceURI(CopyText(namespaceURI)) {}

CXMLElementToken::CXMLElementToken(XMLTokenType type, const unsigned short* qualifiedName)
    : CXMLToken(type), m_qualifiedName(CopyText(qualifiedName)) {}

CUnicodeString CXMLElementToken::GetValue() const {
    return CUnicodeString();
}

bool CXMLElementToken::HasNamespaceURI() const {
    return m_namespaceURI.IsEmpty();
}

CXMLStartElementToken::CXMLStartElementToken(const unsigned short* namespaceURI,
                                             const unsigned short* localName,
                                             const unsigned short* qualifiedName)
    : CXMLElementToken(XMLTokenStartElement, namespaceURI, localName, qualifiedName),
      m_attributes(new XMLAttributeList(2, 2)) {}

CXMLStartElementToken::CXMLStartElementToken(const unsigned short* qualifiedName)
    : CXMLElementToken(XMLTokenStartElement, qualifiedName),
      m_attributes(new XMLAttributeList(2, 2)) {}

CXMLStartElementToken::~CXMLStartElementToken() {
    delete m_attributes;
}

void CXMLStartElementToken::AddAttribute(const unsigned short* namespaceURI,
                                         const unsigned short* localName,
                                         const unsigned short* qualifiedName,
                                         const unsigned short* value) {
    m_attributes->AddAttribute(namespaceURI, localName, qualifiedName, value);
}

void CXMLStartElementToken::AddAttribute(const unsigned short* qualifiedName,
                                         const unsigned short* value) {
    m_attributes->AddAttribute(qualifiedName, value);
}

bool CXMLStartElementToken::HasAttribute(const unsigned short* namespaceURI,
                                         const unsigned short* localName) const {
    return m_attributes->HasAttribute(namespaceURI, localName);
}

bool CXMLStartElementToken::HasAttribute(const unsigned short* qualifiedName) const {
    return m_attributes->HasAttribute(qualifiedName);
}

CUnicodeString CXMLStartElementToken::GetAttribute(const unsigned short* namespaceURI,
                                                   const unsigned short* localName) const {
    return m_attributes->GetAttribute(namespaceURI, localName);
}

CUnicodeString CXMLStartElementToken::GetAttribute(const unsigned short* qualifiedName) const {
    return m_attributes->GetAttribute(qualifiedName);
}

CXMLEndElementToken::CXMLEndElementToken(const unsigned short* namespaceURI,
                                         const unsigned short* localName,
                                         const unsigned short* qualifiedName)
    : CXMLElementToken(XMLTokenEndElement, namespaceURI, localName, qualifiedName) {}

CXMLEndElementToken::CXMLEndElementToken(const unsigned short* qualifiedName)
    : CXMLElementToken(XMLTokenEndElement, qualifiedName) {}

// ---- Text, CDATA, comments, processing instructions

CXMLTextToken::CXMLTextToken(const unsigned short* text)
    : CXMLToken(XMLTokenText), m_text(CopyText(text)) {}

CXMLTextToken::CXMLTextToken(const CUnicodeString& text) : CXMLToken(XMLTokenText), m_text(text) {}

CXMLCDATAToken::CXMLCDATAToken(const unsigned short* text)
    : CXMLToken(XMLTokenCDATA), m_text(CopyText(text)) {}

CXMLCommentToken::CXMLCommentToken(const unsigned short* text)
    : CXMLToken(XMLTokenComment), m_text(CopyText(text)) {}

CXMLPIToken::CXMLPIToken(const unsigned short* target, const unsigned short* data)
    : CXMLToken(XMLTokenPI), m_target(CopyText(target)), m_data(CopyText(data)) {}

CUnicodeString CXMLPIToken::GetValue() const {
    return CUnicodeString();
}

} // namespace vorn::io

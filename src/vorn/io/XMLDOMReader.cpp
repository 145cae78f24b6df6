#include <vorn/io/XMLDOMReader.h>

#include <vorn/io/XMLException.h>

#include "platform/UniText.h"
#include "vorn/io/XMLDOMTokenizer.h"
#include "vorn/io/XMLDOMTokens.h"
#include "vorn/io/XMLPull.h"
#include "vorn/io/XMLReaderState.h"
#include "vorn/io/XercesText.h"

namespace vorn::io {

using vorn::base::CNullReferenceException;
using vorn::base::CRef;
using vorn::base::CUnicodeString;

VORN_DEFINE_CLASS_BASE(CXMLDOMReader, "vorn::io::CXMLDOMReader", "vorn::io::CXMLReader")

namespace {

const char* const kSource = "vorn/io/XMLDOMReader";
const unsigned short kEmpty[] = {0};

// The node under the current token; a token without one is the null access a failed cast gives.
const xercesc::DOMNode& NodeOf(const CRef<IXMLToken>& token) {
    auto* element = dynamic_cast<const CXMLDOMElementToken*>(token.GetPointer());
    if (element == nullptr)
        throw CNullReferenceException(kSource, __LINE__);
    return *element->GetNode();
}

// ZK::ucscmp on a node's text, which must be there.
bool Same(const XMLCh* text, const unsigned short* name) {
    if (text == nullptr)
        throw CNullReferenceException(kSource, __LINE__);
    return ZK::ucscmp(U(text), name) == 0;
}

} // namespace

// ---- Life

CXMLDOMReader::CXMLDOMReader(const xercesc::DOMDocument* document)
    : m_tokenizer(new XMLDOMTokenizer(document)), m_state(NewReaderState(m_tokenizer)) {}

CXMLDOMReader::~CXMLDOMReader() {
    if (m_tokenizer != nullptr)
        Close();
}

void CXMLDOMReader::Close() {
    if (m_tokenizer == nullptr)
        ThrowIO(kSource, __LINE__, "Reader closed.");
    delete m_tokenizer;
    m_tokenizer = nullptr;
    delete m_state;
    m_state = nullptr;
}

// ---- The current token

const CRef<IXMLToken>* CXMLDOMReader::Current() const {
    return m_tokenizer == nullptr ? nullptr : &m_state->current;
}

const CRef<IXMLToken>& CXMLDOMReader::GetCurrentToken() const {
    return pull::Guard(Current(), kSource, __LINE__);
}

XMLTokenType CXMLDOMReader::GetCurrentTokenType() const {
    return pull::TypeOf(pull::Guard(Current(), kSource, __LINE__), kSource, __LINE__,
                        "Failed to get the token type of current XML token.");
}

CUnicodeString CXMLDOMReader::GetCurrentTokenValue() const {
    return pull::ValueOf(pull::Guard(Current(), kSource, __LINE__), kSource, __LINE__,
                         "Failed to get the value of current XML token.");
}

bool CXMLDOMReader::HasAttribute(const unsigned short* localName,
                                 const unsigned short* namespaceURI) {
    // The token asks for the namespace URI first.
    return pull::StartElement(Current(), kSource, __LINE__).HasAttribute(namespaceURI, localName);
}

bool CXMLDOMReader::HasAttribute(const unsigned short* qualifiedName) {
    return pull::StartElement(Current(), kSource, __LINE__).HasAttribute(qualifiedName);
}

CUnicodeString CXMLDOMReader::ReadAttribute(const unsigned short* namespaceURI,
                                            const unsigned short* localName) {
    return pull::StartElement(Current(), kSource, __LINE__).GetAttribute(namespaceURI, localName);
}

CUnicodeString CXMLDOMReader::ReadAttribute(const unsigned short* qualifiedName) {
    return pull::StartElement(Current(), kSource, __LINE__).GetAttribute(qualifiedName);
}

// ---- Stepping and searching

bool CXMLDOMReader::ReadToken() {
    return pull::ReadToken(m_tokenizer, m_state, kSource, __LINE__);
}

template <typename Matches>
void CXMLDOMReader::Seek(XMLTokenType type, unsigned int line, const char* failed,
                         Matches matches) {
    pull::Seek(
        *this, [this]() -> const CRef<IXMLToken>& { return m_state->current; }, type, matches,
        kSource, line, failed);
}

bool CXMLDOMReader::IsElementNameEqualsWith(const unsigned short* localName,
                                            const unsigned short* namespaceURI) const {
    const xercesc::DOMNode& node = NodeOf(m_state->current);
    if (!Same(node.getLocalName(), localName))
        return false;
    const XMLCh* uri = node.getNamespaceURI();
    return Same(uri != nullptr ? uri : X(kEmpty), namespaceURI);
}

bool CXMLDOMReader::IsElementNameEqualsWith(const unsigned short* qualifiedName) const {
    return Same(NodeOf(m_state->current).getNodeName(), qualifiedName);
}

void CXMLDOMReader::ReadStartElement(const unsigned short* localName,
                                     const unsigned short* namespaceURI) {
    pull::CheckNames(localName, namespaceURI, kSource, __LINE__);
    Seek(XMLTokenStartElement, __LINE__, "Failed to read start element.",
         [&] { return IsElementNameEqualsWith(localName, namespaceURI); });
}

void CXMLDOMReader::ReadStartElement(const unsigned short* qualifiedName) {
    pull::CheckName(qualifiedName, kSource, __LINE__, "Invalid qualified name.");
    Seek(XMLTokenStartElement, __LINE__, "Failed to read the specified start element.",
         [&] { return IsElementNameEqualsWith(qualifiedName); });
}

void CXMLDOMReader::ReadStartElement() {
    Seek(XMLTokenStartElement, __LINE__, "Failed to read start element.", [] { return true; });
}

void CXMLDOMReader::ReadEndElement(const unsigned short* localName,
                                   const unsigned short* namespaceURI) {
    pull::CheckNames(localName, namespaceURI, kSource, __LINE__);
    Seek(XMLTokenEndElement, __LINE__, "Failed to read the specified end element.",
         [&] { return IsElementNameEqualsWith(localName, namespaceURI); });
}

void CXMLDOMReader::ReadEndElement(const unsigned short* qualifiedName) {
    pull::CheckName(qualifiedName, kSource, __LINE__, "Invalid qualified name.");
    Seek(XMLTokenEndElement, __LINE__, "Failed to read the specified end element.",
         [&] { return IsElementNameEqualsWith(qualifiedName); });
}

void CXMLDOMReader::ReadEndElement() {
    Seek(XMLTokenEndElement, __LINE__, "Failed to read end element.", [] { return true; });
}

// ---- Text

void CXMLDOMReader::ReadElementText(CUnicodeString& text) {
    pull::ReadRun(*this, m_state, true, &text, kSource, __LINE__);
}

void CXMLDOMReader::ReadElementText() {
    pull::ReadRun(*this, m_state, true, nullptr, kSource, __LINE__);
}

bool CXMLDOMReader::ReadElementTextIfAvailable() {
    return pull::ReadRunIfAvailable(*this, m_state, kSource, __LINE__);
}

} // namespace vorn::io

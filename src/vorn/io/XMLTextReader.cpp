#include <vorn/io/XMLTextReader.h>

#include <vorn/io/XMLException.h>

#include "vorn/io/XMLPull.h"
#include "vorn/io/XMLReaderState.h"
#include "vorn/io/XMLTextTokenizer.h"
#include "vorn/io/XMLTokens.h"

namespace vorn::io {

using vorn::base::CNullReferenceException;
using vorn::base::CRef;
using vorn::base::CUnicodeString;

VORN_DEFINE_CLASS_BASE(CXMLTextReader, "vorn::io::CXMLTextReader", "vorn::io::CXMLReader")

namespace {

const char* const kSource = "vorn/io/XMLTextReader";

// The element face of the current token; one without it is the null access a failed cast gives.
const CXMLElementToken& AsElement(const CRef<IXMLToken>& token) {
    auto* element = dynamic_cast<const CXMLElementToken*>(token.GetPointer());
    if (element == nullptr)
        throw CNullReferenceException(kSource, __LINE__);
    return *element;
}

} // namespace

// ---- Life

CXMLTextReader::CXMLTextReader(const CRef<CInputStream>& stream)
    : m_tokenizer(new CXMLTextTokenizer(stream)), m_state(nullptr) {
    MakeState();
}

CXMLTextReader::CXMLTextReader(CInputStream* stream)
    : m_tokenizer(new CXMLTextTokenizer(stream)), m_state(nullptr) {
    MakeState();
}

CXMLTextReader::CXMLTextReader(const IO::Location& location)
    : m_tokenizer(new CXMLTextTokenizer(location)), m_state(nullptr) {
    MakeState();
}

void CXMLTextReader::MakeState() {
    m_state = NewReaderState(m_tokenizer);
}

CXMLTextReader::~CXMLTextReader() {
    if (m_tokenizer != nullptr)
        Close();
}

void CXMLTextReader::Close() {
    if (m_tokenizer == nullptr)
        return;
    delete m_tokenizer;
    m_tokenizer = nullptr;
    delete m_state;
    m_state = nullptr;
}

// ---- The current token

const CRef<IXMLToken>* CXMLTextReader::Current() const {
    return m_tokenizer == nullptr ? nullptr : &m_state->current;
}

const CRef<IXMLToken>& CXMLTextReader::GetCurrentToken() const {
    return pull::Guard(Current(), kSource, __LINE__);
}

XMLTokenType CXMLTextReader::GetCurrentTokenType() const {
    return pull::TypeOf(pull::Guard(Current(), kSource, __LINE__), kSource, __LINE__,
                        "Failed to get the token type of the current XML token.");
}

CUnicodeString CXMLTextReader::GetCurrentTokenValue() const {
    return pull::ValueOf(pull::Guard(Current(), kSource, __LINE__), kSource, __LINE__,
                         "Failed to get the value of the current XML token.");
}

bool CXMLTextReader::HasAttribute(const unsigned short* localName,
                                  const unsigned short* namespaceURI) {
    // The token asks for the namespace URI first.
    return pull::StartElement(Current(), kSource, __LINE__).HasAttribute(namespaceURI, localName);
}

bool CXMLTextReader::HasAttribute(const unsigned short* qualifiedName) {
    return pull::StartElement(Current(), kSource, __LINE__).HasAttribute(qualifiedName);
}

CUnicodeString CXMLTextReader::ReadAttribute(const unsigned short* namespaceURI,
                                             const unsigned short* localName) {
    return pull::StartElement(Current(), kSource, __LINE__).GetAttribute(namespaceURI, localName);
}

CUnicodeString CXMLTextReader::ReadAttribute(const unsigned short* qualifiedName) {
    return pull::StartElement(Current(), kSource, __LINE__).GetAttribute(qualifiedName);
}

// ---- Stepping and searching

bool CXMLTextReader::ReadToken() {
    return pull::ReadToken(m_tokenizer, m_state, kSource, __LINE__);
}

template <typename Matches>
void CXMLTextReader::Seek(XMLTokenType type, unsigned int line, const char* failed,
                          Matches matches) {
    pull::Seek(
        *this, [this]() -> const CRef<IXMLToken>& { return m_state->current; }, type, matches,
        kSource, line, failed);
}

bool CXMLTextReader::IsElementNameEqualsWith(const unsigned short* localName,
                                             const unsigned short* namespaceURI) const {
    const CXMLElementToken& element = AsElement(m_state->current);
    return element.LocalName() == localName && element.NamespaceURI() == namespaceURI;
}

bool CXMLTextReader::IsElementNameEqualsWith(const unsigned short* qualifiedName) const {
    // The name as written, prefix included: it isn't split.
    return AsElement(m_state->current).QualifiedName() == qualifiedName;
}

void CXMLTextReader::ReadStartElement(const unsigned short* localName,
                                      const unsigned short* namespaceURI) {
    pull::CheckNames(localName, namespaceURI, kSource, __LINE__);
    Seek(XMLTokenStartElement, __LINE__, "Failed to read the specified start element.",
         [&] { return IsElementNameEqualsWith(localName, namespaceURI); });
}

void CXMLTextReader::ReadStartElement(const unsigned short* qualifiedName) {
    pull::CheckName(qualifiedName, kSource, __LINE__, "Invalid local name.");
    Seek(XMLTokenStartElement, __LINE__, "Failed to read the specified start element.",
         [&] { return IsElementNameEqualsWith(qualifiedName); });
}

void CXMLTextReader::ReadStartElement() {
    Seek(XMLTokenStartElement, __LINE__, "Failed to read start element.", [] { return true; });
}

void CXMLTextReader::ReadEndElement(const unsigned short* localName,
                                    const unsigned short* namespaceURI) {
    pull::CheckNames(localName, namespaceURI, kSource, __LINE__);
    Seek(XMLTokenEndElement, __LINE__, "Failed to read the specified end element.",
         [&] { return IsElementNameEqualsWith(localName, namespaceURI); });
}

void CXMLTextReader::ReadEndElement(const unsigned short* qualifiedName) {
    pull::CheckName(qualifiedName, kSource, __LINE__, "Invalid local name.");
    Seek(XMLTokenEndElement, __LINE__, "Failed to read the specified end element.",
         [&] { return IsElementNameEqualsWith(qualifiedName); });
}

void CXMLTextReader::ReadEndElement() {
    Seek(XMLTokenEndElement, __LINE__, "Failed to read the end element.", [] { return true; });
}

// ---- Text

void CXMLTextReader::ReadElementText(CUnicodeString& text) {
    // Only text continues a run here, even one that a CDATA section began.
    pull::ReadRun(*this, m_state, false, &text, kSource, __LINE__);
}

void CXMLTextReader::ReadElementText() {
    pull::ReadRun(*this, m_state, true, nullptr, kSource, __LINE__);
}

bool CXMLTextReader::ReadElementTextIfAvailable() {
    return pull::ReadRunIfAvailable(*this, m_state, kSource, __LINE__);
}

} // namespace vorn::io

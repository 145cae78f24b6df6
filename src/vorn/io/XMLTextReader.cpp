#include <vorn/io/XMLTextReader.h>

#include <vorn/base/System.h>
#include <vorn/io/XMLException.h>

#include "vorn/io/XMLReaderState.h"
#include "vorn/io/XMLTextTokenizer.h"
#include "vorn/io/XMLTokens.h"

namespace vorn::io {

using vorn::base::CException;
using vorn::base::CMemoryException;
using vorn::base::CNullReferenceException;
using vorn::base::CRef;
using vorn::base::CSystem;
using vorn::base::CUnicodeString;

VORN_DEFINE_CLASS_BASE(CXMLTextReader, "vorn::io::CXMLTextReader", "vorn::io::CXMLReader")

namespace {

const char* const kSource = "vorn/io/XMLTextReader";

[[noreturn]] void Fail(unsigned int line, const char* words) {
    ThrowIO(kSource, line, words);
}

[[noreturn]] void Reprint(const CException& e, unsigned int line, const char* words) {
    ReplaceWith(e, kSource, line, words);
}

bool IsEmptyText(const unsigned short* text) {
    return text == nullptr || *text == 0;
}

void CheckName(const unsigned short* qualifiedName) {
    if (IsEmptyText(qualifiedName))
        throw CXMLException(kSource, __LINE__, "Invalid local name.", nullptr);
}

void CheckNames(const unsigned short* localName, const unsigned short* namespaceURI) {
    if (IsEmptyText(localName))
        throw CXMLException(kSource, __LINE__, "Invalid local name.", nullptr);
    for (const unsigned short* p = localName; *p != 0; ++p)
        if (*p == u':')
            throw CXMLException(kSource, __LINE__, "Local name must be unqualified name.", nullptr);
    // An empty URI is fine: it asks for an element in no namespace.
    if (namespaceURI == nullptr)
        throw CXMLException(kSource, __LINE__, "Invalid namespace URI.", nullptr);
}

bool IsText(XMLTokenType type) {
    return type == XMLTokenText || type == XMLTokenCDATA;
}

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
    try {
        m_state = new XMLReaderState;
    } catch (...) {
        delete m_tokenizer;
        m_tokenizer = nullptr;
        throw;
    }
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

const CRef<IXMLToken>& CXMLTextReader::Current(unsigned int line) const {
    if (m_tokenizer == nullptr)
        Fail(line, "Reader closed.");
    if (m_state->current.IsNull())
        Fail(line, "There is no valid token.");
    return m_state->current;
}

const CRef<IXMLToken>& CXMLTextReader::GetCurrentToken() const {
    return Current(__LINE__);
}

XMLTokenType CXMLTextReader::GetCurrentTokenType() const {
    const CRef<IXMLToken>& token = Current(__LINE__);
    try {
        return token->GetType();
    } catch (const CNullReferenceException& e) {
        Reprint(e, __LINE__, "Failed to get the token type of the current XML token.");
    }
}

CUnicodeString CXMLTextReader::GetCurrentTokenValue() const {
    const CRef<IXMLToken>& token = Current(__LINE__);
    try {
        return token->GetValue();
    } catch (const CNullReferenceException& e) {
        Reprint(e, __LINE__, "Failed to get the value of the current XML token.");
    }
}

IXMLStartElementToken& CXMLTextReader::StartElement(unsigned int line) const {
    const CRef<IXMLToken>& token = Current(line);
    try {
        // A CXMLException here, where the base class says CIOException.
        if (token->GetType() != XMLTokenStartElement)
            throw CXMLException(kSource, line, "Attributes available only in start element nodes.",
                                nullptr);
        return AsStartElement(token, kSource, line);
    } catch (const CNullReferenceException&) {
        Fail(line, "Failed to check the type of current token.");
    }
}

bool CXMLTextReader::HasAttribute(const unsigned short* localName,
                                  const unsigned short* namespaceURI) {
    // The token asks for the namespace URI first.
    return StartElement(__LINE__).HasAttribute(namespaceURI, localName);
}

bool CXMLTextReader::HasAttribute(const unsigned short* qualifiedName) {
    return StartElement(__LINE__).HasAttribute(qualifiedName);
}

CUnicodeString CXMLTextReader::ReadAttribute(const unsigned short* namespaceURI,
                                             const unsigned short* localName) {
    return StartElement(__LINE__).GetAttribute(namespaceURI, localName);
}

CUnicodeString CXMLTextReader::ReadAttribute(const unsigned short* qualifiedName) {
    return StartElement(__LINE__).GetAttribute(qualifiedName);
}

// ---- Stepping and searching

bool CXMLTextReader::ReadToken() {
    if (m_tokenizer == nullptr)
        Fail(__LINE__, "Reader closed.");
    try {
        if (!m_state->pending.IsNull()) {
            m_state->current = m_state->pending;
            m_state->pending = vorn::null;
            return true;
        }
        m_state->current = m_tokenizer->GetNextToken();
        return !m_state->current.IsNull();
    } catch (const CMemoryException&) {
        Fail(__LINE__, "Memory full.");
    }
}

template <typename Matches>
void CXMLTextReader::Seek(XMLTokenType type, const char* failure, Matches matches) {
    try {
        // Everything on the way is dropped, at any depth: the search runs on past the enclosing
        // element.
        while (ReadToken())
            if (m_state->current->GetType() == type && matches())
                break;
        if (m_state->current.IsNull())
            Fail(__LINE__, "End of stream reached.");
    } catch (const CNullReferenceException& e) {
        Reprint(e, __LINE__, failure);
    }
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
    CheckNames(localName, namespaceURI);
    Seek(XMLTokenStartElement, "Failed to read the specified start element.",
         [&] { return IsElementNameEqualsWith(localName, namespaceURI); });
}

void CXMLTextReader::ReadStartElement(const unsigned short* qualifiedName) {
    CheckName(qualifiedName);
    Seek(XMLTokenStartElement, "Failed to read the specified start element.",
         [&] { return IsElementNameEqualsWith(qualifiedName); });
}

void CXMLTextReader::ReadStartElement() {
    Seek(XMLTokenStartElement, "Failed to read start element.", [] { return true; });
}

void CXMLTextReader::ReadEndElement(const unsigned short* localName,
                                    const unsigned short* namespaceURI) {
    CheckNames(localName, namespaceURI);
    Seek(XMLTokenEndElement, "Failed to read the specified end element.",
         [&] { return IsElementNameEqualsWith(localName, namespaceURI); });
}

void CXMLTextReader::ReadEndElement(const unsigned short* qualifiedName) {
    CheckName(qualifiedName);
    Seek(XMLTokenEndElement, "Failed to read the specified end element.",
         [&] { return IsElementNameEqualsWith(qualifiedName); });
}

void CXMLTextReader::ReadEndElement() {
    Seek(XMLTokenEndElement, "Failed to read the end element.", [] { return true; });
}

// ---- Text

void CXMLTextReader::JoinRun(bool cdataContinues) {
    CUnicodeString run = m_state->current->GetValue();
    while (ReadToken()) {
        const XMLTokenType type = m_state->current->GetType();
        if (type != XMLTokenText && !(cdataContinues && type == XMLTokenCDATA))
            break;
        run += m_state->current->GetValue();
    }
    // The token that ended the run is given out next; empty at the end of the input.
    m_state->pending = m_state->current;
    m_state->current = HoldToken(new CXMLTextToken(run));
}

void CXMLTextReader::ReadRun(bool cdataContinues, CUnicodeString* text) {
    try {
        // No stop at an end tag: an element without text runs on into what follows.
        while (ReadToken())
            if (IsText(m_state->current->GetType()))
                break;
        if (!m_state->current.IsNull())
            JoinRun(cdataContinues);
        if (m_state->current.IsNull())
            Fail(__LINE__, "End of stream reached.");
        if (text != nullptr)
            *text = m_state->current->GetValue();
    } catch (const CMemoryException&) {
        Fail(__LINE__, "Memory full.");
    } catch (const CNullReferenceException& e) {
        Reprint(e, __LINE__, "Failed to read element text.");
    }
}

void CXMLTextReader::ReadElementText(CUnicodeString& text) {
    // Only text continues a run here, even one that a CDATA section began.
    ReadRun(false, &text);
}

void CXMLTextReader::ReadElementText() {
    ReadRun(true, nullptr);
}

bool CXMLTextReader::ReadElementTextIfAvailable() {
    try {
        // This operation has no closed check of its own: on a closed reader the state is the
        // null it reads, reported as that null access.
        if (m_state == nullptr)
            throw CNullReferenceException(kSource, __LINE__);
        const CRef<IXMLToken> kept = m_state->current;
        if (ReadToken()) {
            // Only this one token is looked at: a comment before the text counts as no text.
            if (!IsText(m_state->current->GetType())) {
                m_state->pending = m_state->current;
                m_state->current = kept;
                return false;
            }
            JoinRun(true);
        }
        if (m_state->current.IsNull())
            Fail(__LINE__, "End of stream reached.");
        return true;
    } catch (const CMemoryException&) {
        Fail(__LINE__, "Memory full.");
    } catch (const CNullReferenceException& e) {
        Reprint(e, __LINE__, "Failed to read element text.");
    }
}

} // namespace vorn::io

#include <vorn/io/XMLDOMWriter.h>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include <vorn/base/BinaryData.h>
#include <vorn/base/MemoryException.h>
#include <vorn/base/System.h>
#include <vorn/base/UnicodeString.h>
#include <vorn/io/IOException.h>
#include <vorn/io/XMLException.h>

#include "platform/UniText.h"

namespace vorn::io {

using vorn::base::CBinaryData;
using vorn::base::CException;
using vorn::base::CUnicodeString;
using xercesc::DOMDocument;
using xercesc::DOMElement;
using xercesc::DOMException;
using xercesc::DOMNode;

VORN_DEFINE_CLASS_BASE(CXMLDOMWriter, "vorn::io::CXMLDOMWriter", "vorn::io::CXMLWriter")

namespace {

const char* const kSource = "vorn/io/XMLDOMWriter";
const XMLCh kPlaceholderName[] = u"DocumentRoot";
const XMLCh kEmpty[] = u"";

const XMLCh* X(const unsigned short* text) {
    return reinterpret_cast<const XMLCh*>(text);
}

// Xerces-C reads a null value as no text at all; an empty one says so without relying on that.
const XMLCh* Value(const unsigned short* text) {
    return text == nullptr ? kEmpty : X(text);
}

bool IsEmptyText(const unsigned short* text) {
    return text == nullptr || *text == 0;
}

[[noreturn]] void Refuse(unsigned int line, const char* words) {
    throw CXMLException(kSource, line, words, nullptr);
}

[[noreturn]] void Fail(unsigned int line, const char* words) {
    throw CIOException(kSource, line, words, nullptr);
}

void CheckLocalName(const unsigned short* local) {
    if (IsEmptyText(local))
        Refuse(__LINE__, "Invalid local name.");
    if (ZK::ucschr(local, ':') != nullptr)
        Refuse(__LINE__, "Local name must be unqualified name.");
}

void CheckUri(const unsigned short* uri) {
    if (IsEmptyText(uri))
        Refuse(__LINE__, "Invalid namespace URI.");
}

void CheckPrefix(const unsigned short* prefix) {
    if (IsEmptyText(prefix))
        Refuse(__LINE__, "Invalid prefix.");
}

// What a DOMException becomes.
enum class Codes { None, All, AllBut14, Character };

// How an operation that touches the DOM turns what it catches into its own failure, tried in
// this order; a null text leaves the exception to the next handler, or to the caller.
struct Handlers {
    bool rethrowIO;
    const char* memory;  // CMemoryException: a CIOException with these words
    const char* printed; // any other CException: printed, then a CXMLException
    Codes codes;         // DOMException
    bool anythingIO;     // anything else: a CIOException rather than a CXMLException
    const char* anything;
};

const Handlers kStartElement{true,       "Memory full.", "Failed to write start element.",
                             Codes::All, false,          "Failed to write start element."};
const Handlers kEndElement{true,        nullptr, "Failed to write end element.",
                           Codes::None, false,   nullptr};
const Handlers kAttributeNS{false,   nullptr,
                            nullptr, Codes::All,
                            false,   "Failed to add attribute to the current DOM element node."};
const Handlers kAttribute{false,   nullptr,
                          nullptr, Codes::AllBut14,
                          false,   "Failed to add attribute to the current DOM element node."};
const Handlers kElementStringNS{true,    nullptr,
                                nullptr, Codes::All,
                                false,   "Failed to create DOM element node with text content."};
const Handlers kElementString{true,    nullptr,
                              nullptr, Codes::AllBut14,
                              false,   "Failed to create DOM element node with text content."};
const Handlers kEntityRef{
    true, nullptr, nullptr, Codes::Character, false, "Failed to create DOM entity ref node."};
const Handlers kProcessingInstruction{true,    nullptr,
                                      nullptr, Codes::Character,
                                      true,    "Failed to create processing instruction DOM node."};
const Handlers kCDATA{true,        nullptr, nullptr,
                      Codes::None, true,    "Failed to create DOM CDATA node."};
const Handlers kComment{true,        nullptr, nullptr,
                        Codes::None, true,    "Failed to create DOM comment node."};
const Handlers kText{false,       nullptr, nullptr,
                     Codes::None, false,   "Failed to create DOM text node."};

// Inside a handler: the last resort, or the exception as it is when there is none.
[[noreturn]] void Anything(const Handlers& h, unsigned int line) {
    if (h.anything == nullptr)
        throw;
    if (h.anythingIO)
        Fail(line, h.anything);
    Refuse(line, h.anything);
}

[[noreturn]] void ByCode(const DOMException& e, const Handlers& h, unsigned int line) {
    if (h.codes == Codes::None)
        Anything(h, line);
    if (h.codes == Codes::Character || e.code == DOMException::INVALID_CHARACTER_ERR)
        Refuse(line, "Invalid character error.");
    if (e.code == DOMException::NAMESPACE_ERR && h.codes == Codes::All)
        Refuse(line, "Namespace error.");
    Refuse(line, "DOM exception.");
}

template <typename F> void Guarded(const Handlers& h, unsigned int line, F&& body) {
    try {
        body();
    } catch (const DOMException& e) {
        ByCode(e, h, line);
    } catch (const CException& e) {
        if (h.rethrowIO && dynamic_cast<const CIOException*>(&e) != nullptr)
            throw;
        if (h.memory != nullptr && dynamic_cast<const vorn::base::CMemoryException*>(&e) != nullptr)
            Fail(line, h.memory);
        if (h.printed != nullptr) {
            e.Print(vorn::base::CSystem::debugOut);
            Refuse(line, h.printed);
        }
        Anything(h, line);
    } catch (...) {
        Anything(h, line);
    }
}

using Encoder = void (*)(const char*, unsigned int, CUnicodeString&);

// `data + offset` encoded; a null `data` reaches the encoder, which refuses it.
void Encode(Encoder encode, const char* data, unsigned int offset, unsigned int count,
            CUnicodeString& text) {
    // No bytes make no text; the base64 encoder would first ask for 2.8 GB to find that out.
    if (data != nullptr && count == 0)
        return;
    encode(data == nullptr ? nullptr : data + offset, count, text);
}

} // namespace

CXMLDOMWriter::CXMLDOMWriter()
    : m_document(nullptr), m_current(nullptr), m_elements(10, 5), m_rootWritten(false),
      m_closed(false), m_startElementOpen(false) {}

CXMLDOMWriter::~CXMLDOMWriter() {
    if (m_document != nullptr)
        m_document->release();
}

void CXMLDOMWriter::CheckStarted() const {
    if (m_document == nullptr)
        Refuse(__LINE__, "Document hasn't been started yet.");
    if (m_closed)
        Refuse(__LINE__, "Document has already been closed.");
}

void CXMLDOMWriter::CheckRoot(unsigned int line, const char* words) const {
    if (!m_rootWritten)
        Refuse(line, words);
}

void CXMLDOMWriter::Place(DOMNode* node) {
    if (m_rootWritten)
        m_current->appendChild(node);
    else
        m_document->insertBefore(node, m_document->getDocumentElement());
}

// ---- The document

void CXMLDOMWriter::WriteStartDocument() {
    if (m_document != nullptr)
        Refuse(__LINE__, "Document has already been started once.");
    try {
        m_document = xercesc::DOMImplementation::getImplementation()->createDocument(
            nullptr, kPlaceholderName, nullptr, xercesc::XMLPlatformUtils::fgMemoryManager);
        m_current = m_document->getDocumentElement();
    } catch (...) {
        Refuse(__LINE__, "Failed to create the underlying DOM document.");
    }
}

void CXMLDOMWriter::WriteEndDocument() {
    CheckStarted();
}

// ---- Elements

void CXMLDOMWriter::ReplacePlaceholder(unsigned short const* local, unsigned short const* uri) {
    DOMDocument* placeholder = m_document;
    xercesc::DOMNodeList* children = placeholder->getChildNodes();
    m_document = xercesc::DOMImplementation::getImplementation()->createDocument(
        X(uri), X(local), nullptr, xercesc::XMLPlatformUtils::fgMemoryManager);
    // From here the placeholder goes whatever happens; a failure does not undo the swap.
    struct Release {
        DOMDocument* document;
        ~Release() { document->release(); }
    } release{placeholder};
    m_current = m_document->getDocumentElement();
    m_elements.Push(m_current);
    const XMLSize_t length = children->getLength();
    // The last child is the placeholder's own element.
    for (XMLSize_t i = 0; i + 1 < length; ++i) {
        DOMNode* node = children->item(i);
        DOMNode* copy = nullptr;
        if (node->getNodeType() == DOMNode::COMMENT_NODE) {
            copy = m_document->createComment(node->getNodeValue());
        } else if (node->getNodeType() == DOMNode::PROCESSING_INSTRUCTION_NODE) {
            auto* pi = static_cast<xercesc::DOMProcessingInstruction*>(node);
            copy = m_document->createProcessingInstruction(pi->getTarget(), pi->getData());
        }
        if (copy != nullptr)
            m_document->insertBefore(copy, m_current);
    }
    m_rootWritten = true;
}

void CXMLDOMWriter::StartElement(unsigned short const* local, unsigned short const* uri) {
    Guarded(kStartElement, __LINE__, [&] {
        if (m_rootWritten) {
            DOMElement* node = uri == nullptr ? m_document->createElement(X(local))
                                              : m_document->createElementNS(X(uri), X(local));
            if (node != nullptr) {
                m_current->appendChild(node);
                m_elements.Push(m_current);
                m_current = node;
            }
        } else {
            ReplacePlaceholder(local, uri);
        }
        m_startElementOpen = true;
    });
}

void CXMLDOMWriter::WriteStartElement(unsigned short const* prefix, unsigned short const* local,
                                      unsigned short const* uri) {
    CheckPrefix(prefix);
    WriteStartElement(local, uri);
}

void CXMLDOMWriter::WriteStartElement(unsigned short const* local, unsigned short const* uri) {
    CheckStarted();
    CheckLocalName(local);
    CheckUri(uri);
    StartElement(local, uri);
}

void CXMLDOMWriter::WriteStartElement(unsigned short const* local) {
    CheckStarted();
    CheckLocalName(local);
    StartElement(local, nullptr);
}

void CXMLDOMWriter::WriteEndElement() {
    CheckStarted();
    CheckRoot(__LINE__, "Document element hasn't been written yet.");
    if (m_elements.IsEmpty())
        Refuse(__LINE__, "Element stack is empty.");
    Guarded(kEndElement, __LINE__, [&] {
        m_current = m_elements.Pop();
        m_startElementOpen = false;
    });
}

void CXMLDOMWriter::WriteFullEndElement() {
    WriteEndElement();
}

void CXMLDOMWriter::ElementString(unsigned short const* local, unsigned short const* uri,
                                  unsigned short const* value) {
    DOMElement* element = uri == nullptr ? m_document->createElement(X(local))
                                         : m_document->createElementNS(X(uri), X(local));
    if (element == nullptr)
        Fail(__LINE__, uri == nullptr ? "Failed to create element DOM node."
                                      : "Failed to create DOM element node.");
    DOMNode* text = m_document->createTextNode(Value(value));
    if (text == nullptr)
        Fail(__LINE__, uri == nullptr ? "Failed to create text DOM node."
                                      : "Failed to create DOM text node.");
    // appendChild gives the text back, and appending it again moves it out of the element.
    m_current->appendChild(element->appendChild(text));
}

void CXMLDOMWriter::WriteElementString(unsigned short const* local, unsigned short const* uri,
                                       unsigned short const* value) {
    CheckStarted();
    CheckRoot(__LINE__, "Document element hasn't been written yet.");
    CheckLocalName(local);
    CheckUri(uri);
    Guarded(kElementStringNS, __LINE__, [&] { ElementString(local, uri, value); });
}

void CXMLDOMWriter::WriteElementString(unsigned short const* local, unsigned short const* value) {
    CheckStarted();
    CheckRoot(__LINE__, "Document element hasn't been written yet.");
    CheckLocalName(local);
    Guarded(kElementString, __LINE__, [&] { ElementString(local, nullptr, value); });
}

// ---- Attributes

void CXMLDOMWriter::Attribute(unsigned short const* local, unsigned short const* uri,
                              unsigned short const* value) {
    CheckStarted();
    CheckRoot(__LINE__, "Document element hasn't been written yet.");
    if (!m_startElementOpen)
        Refuse(__LINE__, "Attributes can be written only in start element state.");
    CheckLocalName(local);
    if (uri == nullptr) {
        Guarded(kAttribute, __LINE__, [&] { m_current->setAttribute(X(local), Value(value)); });
        return;
    }
    CheckUri(uri);
    Guarded(kAttributeNS, __LINE__,
            [&] { m_current->setAttributeNS(X(uri), X(local), Value(value)); });
}

void CXMLDOMWriter::WriteAttribute(unsigned short const* prefix, unsigned short const* local,
                                   unsigned short const* uri, unsigned short const* value) {
    CheckPrefix(prefix);
    WriteAttribute(local, uri, value);
}

void CXMLDOMWriter::WriteAttribute(unsigned short const* local, unsigned short const* uri,
                                   unsigned short const* value) {
    // A null URI is refused as an empty one, not taken for the form without.
    Attribute(local, uri == nullptr ? reinterpret_cast<const unsigned short*>(kEmpty) : uri, value);
}

void CXMLDOMWriter::WriteAttribute(unsigned short const* local, unsigned short const* value) {
    Attribute(local, nullptr, value);
}

void CXMLDOMWriter::WriteAttrDefaultNamespaceDeclaration(unsigned short const*) {}

void CXMLDOMWriter::WriteAttrNamespaceDeclaration(unsigned short const*, unsigned short const*) {}

// ---- Content

void CXMLDOMWriter::AppendText(unsigned short const* text) {
    if (IsEmptyText(text))
        return;
    DOMNode* node = m_document->createTextNode(X(text));
    if (node != nullptr)
        m_current->appendChild(node);
}

void CXMLDOMWriter::WriteString(unsigned short const* value) {
    CheckStarted();
    CheckRoot(__LINE__, "Document element hasn't been written yet.");
    Guarded(kText, __LINE__, [&] { AppendText(value); });
}

void CXMLDOMWriter::AppendEncoded(bool base64, char const* data, unsigned int offset,
                                  unsigned int count) {
    CheckStarted();
    CheckRoot(__LINE__, "Document element hasn't been written yet.");
    Encoder encode = CBinaryData::ToBinHexUnicodeString;
    if (base64)
        encode = CBinaryData::ToBase64UnicodeString;
    Guarded(kText, __LINE__, [&] {
        CUnicodeString text;
        Encode(encode, data, offset, count, text);
        AppendText(text);
    });
}

void CXMLDOMWriter::WriteBase64(char const* data, unsigned int offset, unsigned int count) {
    AppendEncoded(true, data, offset, count);
}

void CXMLDOMWriter::WriteBinHex(char const* data, unsigned int offset, unsigned int count) {
    AppendEncoded(false, data, offset, count);
}

void CXMLDOMWriter::WriteWhitespace(unsigned short const* text) {
    CheckStarted();
    CheckRoot(__LINE__, "Whitespaces don't allowed top of XML document.");
    Guarded(kText, __LINE__, [&] { AppendText(text); });
    m_startElementOpen = false;
}

void CXMLDOMWriter::WriteCDATA(unsigned short const* text) {
    CheckStarted();
    CheckRoot(__LINE__, "CDATA section invalid at the top of XML document.");
    Guarded(kCDATA, __LINE__, [&] {
        if (IsEmptyText(text))
            return;
        DOMNode* node = m_document->createCDATASection(X(text));
        if (node == nullptr)
            Fail(__LINE__, "Failed to create DOM CDATA node.");
        m_current->appendChild(node);
    });
    m_startElementOpen = false;
}

void CXMLDOMWriter::WriteEntityRef(unsigned short const* name) {
    if (IsEmptyText(name))
        Refuse(__LINE__, "Invalid entity name.");
    CheckStarted();
    CheckRoot(__LINE__, "Entity reference invalid at the top of XML document.");
    Guarded(kEntityRef, __LINE__, [&] {
        DOMNode* node = m_document->createEntityReference(X(name));
        if (node != nullptr)
            m_current->appendChild(node);
    });
    m_startElementOpen = false;
}

void CXMLDOMWriter::WriteComment(unsigned short const* text) {
    CheckStarted();
    Guarded(kComment, __LINE__, [&] {
        if (IsEmptyText(text))
            return;
        DOMNode* node = m_document->createComment(X(text));
        if (node == nullptr)
            Fail(__LINE__, "Failed to create comment DOM node.");
        Place(node);
    });
    m_startElementOpen = false;
}

void CXMLDOMWriter::WriteProcessingInstruction(unsigned short const* target,
                                               unsigned short const* data) {
    if (IsEmptyText(target))
        Refuse(__LINE__, "Invalid processing instruction target.");
    if (IsEmptyText(data))
        Refuse(__LINE__, "Invalid processing instruction data.");
    CheckStarted();
    Guarded(kProcessingInstruction, __LINE__, [&] {
        DOMNode* node = m_document->createProcessingInstruction(X(target), X(data));
        if (node == nullptr)
            Fail(__LINE__, "Failed to create processing instruction DOM node.");
        Place(node);
    });
    m_startElementOpen = false;
}

void CXMLDOMWriter::Flush() {}

void CXMLDOMWriter::Close() {}

} // namespace vorn::io

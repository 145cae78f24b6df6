#include <vorn/io/XMLPushbackReader.h>

#include <cstdarg>
#include <new>

#include <vorn/base/Bool.h>
#include <vorn/io/XMLException.h>

#include "platform/Format.h"
#include "vorn/io/StreamBeneath.h"
#include "vorn/io/XMLPull.h"
#include "vorn/io/XMLTokenPushbackBuffer.h"
#include "vorn/io/XMLTokens.h"

namespace vorn::io {

using vorn::base::CBool;
using vorn::base::CMemoryException;
using vorn::base::CNullReferenceException;
using vorn::base::CRef;
using vorn::base::CUnicodeString;

VORN_DEFINE_CLASS_BASE(CXMLPushbackReader, "vorn::io::CXMLPushbackReader", "vorn::io::CXMLReader")

namespace {

const char* const kSource = "vorn/io/XMLPushbackReader";

// A value as text, in a buffer of 256 units.
class Formatted {
public:
    explicit Formatted(const char* format, ...) {
        va_list arguments;
        va_start(arguments, format);
        ZK::vsnuprintf(m_text, kUnits, format, arguments);
        va_end(arguments);
        m_text[kUnits - 1] = 0;
    }
    operator const unsigned short*() const { return m_text; }

private:
    static constexpr unsigned int kUnits = 256;
    unsigned short m_text[kUnits];
};

const IXMLElementToken& AsElement(const CRef<IXMLToken>& token) {
    auto* element = dynamic_cast<const IXMLElementToken*>(token.GetPointer());
    if (element == nullptr)
        throw CNullReferenceException(kSource, __LINE__);
    return *element;
}

// By two names the local name serves as the qualified name too.
template <typename Token>
CRef<IXMLToken> Element(const unsigned short* localName, const unsigned short* namespaceURI) {
    return HoldToken(new Token(namespaceURI, localName, localName));
}

template <typename Token> CRef<IXMLToken> Element(const unsigned short* qualifiedName) {
    return HoldToken(new Token(qualifiedName));
}

void CheckNames(const unsigned short* localName, const unsigned short* namespaceURI) {
    pull::CheckNames(localName, namespaceURI, kSource, __LINE__);
}

void CheckNames(const unsigned short* qualifiedName) {
    pull::CheckName(qualifiedName, kSource, __LINE__, "Invalid local name.");
}

void CheckText(bool missing) {
    if (missing)
        throw CXMLException(kSource, __LINE__, "Invalid element text.", nullptr);
}

} // namespace

// ---- Life

CXMLPushbackReader::CXMLPushbackReader(const CRef<CXMLReader>& reader, unsigned int size)
    : m_reader(reader.GetPointer()), m_readerRef(reader), m_current(nullptr), m_pushback(nullptr) {
    Init(size);
}

CXMLPushbackReader::CXMLPushbackReader(CXMLReader* reader, unsigned int size)
    : m_reader(reader), m_current(nullptr), m_pushback(nullptr) {
    Init(size);
}

void CXMLPushbackReader::Init(unsigned int size) {
    beneath::Require(m_reader, kSource, __LINE__, "Invalid XML reader.");
    if (size == 0)
        throw vorn::base::CIllegalArgumentException(kSource, __LINE__,
                                                    "Invalid pushback buffer size.");
    m_current = ::new (buffered::Allocate<CRef<IXMLToken>>(1, kSource, __LINE__)) CRef<IXMLToken>();
    try {
        m_pushback = new XMLTokenPushbackBuffer(size, kSource, __LINE__);
    } catch (...) {
        m_current->~CRef();
        ZK_free(m_current);
        throw;
    }
}

CXMLPushbackReader::~CXMLPushbackReader() {
    m_current->~CRef();
    ZK_free(m_current);
    delete m_pushback;
}

void CXMLPushbackReader::Close() {
    CheckOpen(__LINE__);
    try {
        m_reader->Close();
    } catch (const CIOException&) {
        // Closed all the same; the caller hears nothing.
    }
    m_reader = nullptr;
}

void CXMLPushbackReader::CheckOpen(unsigned int line) const {
    if (m_reader == nullptr)
        ThrowIO(kSource, line, "Reader closed.");
}

// ---- The current token

const CRef<IXMLToken>& CXMLPushbackReader::GetCurrentToken() const {
    return pull::Guard(m_reader == nullptr ? nullptr : m_current, kSource, __LINE__);
}

XMLTokenType CXMLPushbackReader::GetCurrentTokenType() const {
    return pull::TypeOf(GetCurrentToken(), kSource, __LINE__,
                        "Failed to get the token type of the current XML token.");
}

CUnicodeString CXMLPushbackReader::GetCurrentTokenValue() const {
    return pull::ValueOf(GetCurrentToken(), kSource, __LINE__,
                         "Failed to get the value of the current XML token.");
}

// ---- Stepping and searching

bool CXMLPushbackReader::ReadToken() {
    CheckOpen(__LINE__);
    if (!m_pushback->IsEmpty()) {
        // The slot keeps its reference until a push writes over it.
        *m_current = m_pushback->m_tokens[m_pushback->m_next++];
        return true;
    }
    *m_current = vorn::null;
    if (!m_reader->ReadToken())
        return false;
    *m_current = m_reader->GetCurrentToken();
    return true;
}

template <typename Matches>
void CXMLPushbackReader::Seek(XMLTokenType type, unsigned int line, const char* failed,
                              Matches matches) {
    pull::Seek(
        *this, [this]() -> const CRef<IXMLToken>& { return *m_current; }, type, matches, kSource,
        line, failed);
}

bool CXMLPushbackReader::IsElementNameEqualsWith(const unsigned short* localName,
                                                 const unsigned short* namespaceURI) const {
    const IXMLElementToken& element = AsElement(*m_current);
    try {
        const CUnicodeString local = element.GetLocalName();
        const CUnicodeString uri = element.GetNamespaceURI();
        return local == localName && uri == namespaceURI;
    } catch (const CMemoryException&) {
        return false;
    }
}

bool CXMLPushbackReader::IsElementNameEqualsWith(const unsigned short* qualifiedName) const {
    const IXMLElementToken& element = AsElement(*m_current);
    try {
        return element.GetQualifiedName() == qualifiedName;
    } catch (const CMemoryException&) {
        return false;
    }
}

void CXMLPushbackReader::ReadStartElement(const unsigned short* localName,
                                          const unsigned short* namespaceURI) {
    pull::CheckNames(localName, namespaceURI, kSource, __LINE__);
    Seek(XMLTokenStartElement, __LINE__, "Failed to read the specified start element.",
         [&] { return IsElementNameEqualsWith(localName, namespaceURI); });
}

void CXMLPushbackReader::ReadStartElement(const unsigned short* qualifiedName) {
    pull::CheckName(qualifiedName, kSource, __LINE__, "Invalid local name.");
    Seek(XMLTokenStartElement, __LINE__, "Failed to read the specified start element.",
         [&] { return IsElementNameEqualsWith(qualifiedName); });
}

void CXMLPushbackReader::ReadStartElement() {
    Seek(XMLTokenStartElement, __LINE__, "Failed to read start element.", [] { return true; });
}

void CXMLPushbackReader::ReadEndElement(const unsigned short* localName,
                                        const unsigned short* namespaceURI) {
    pull::CheckNames(localName, namespaceURI, kSource, __LINE__);
    Seek(XMLTokenEndElement, __LINE__, "Failed to read the specified end element.",
         [&] { return IsElementNameEqualsWith(localName, namespaceURI); });
}

void CXMLPushbackReader::ReadEndElement(const unsigned short* qualifiedName) {
    pull::CheckName(qualifiedName, kSource, __LINE__, "Invalid local name.");
    Seek(XMLTokenEndElement, __LINE__, "Failed to read the specified end element.",
         [&] { return IsElementNameEqualsWith(qualifiedName); });
}

void CXMLPushbackReader::ReadEndElement() {
    Seek(XMLTokenEndElement, __LINE__, "Failed to read end element.", [] { return true; });
}

// ---- Text

void CXMLPushbackReader::ReadText(CUnicodeString* text) {
    try {
        while (ReadToken())
            if (pull::IsText((*m_current)->GetType()))
                break;
        if (m_current->IsNull())
            ThrowIO(kSource, __LINE__, "End of stream reached.");
        if (text != nullptr)
            *text = (*m_current)->GetValue();
    } catch (const CNullReferenceException& e) {
        ReplaceWith(e, kSource, __LINE__, "Failed to read element text.");
    }
}

void CXMLPushbackReader::ReadElementText(CUnicodeString& text) {
    ReadText(&text);
}

void CXMLPushbackReader::ReadElementText() {
    ReadText(nullptr);
}

bool CXMLPushbackReader::ReadElementTextIfAvailable() {
    try {
        if (ReadToken() && !pull::IsText((*m_current)->GetType())) {
            // What stood before it isn't restored: the reader stays on the token put back.
            UnreadToken(*m_current);
            return false;
        }
        CUnicodeString run;
        if (!m_current->IsNull()) {
            run = (*m_current)->GetValue();
            while (ReadToken() && pull::IsText((*m_current)->GetType()))
                run += (*m_current)->GetValue();
        }
        // The token that ended the run goes back; none, at the end of the input, is a failure.
        UnreadToken();
        *m_current = HoldToken(new CXMLTextToken(run));
        if (m_current->IsNull())
            ThrowIO(kSource, __LINE__, "End of stream reached.");
        return true;
    } catch (const CNullReferenceException& e) {
        ReplaceWith(e, kSource, __LINE__, "Failed to read element text.");
    }
}

// ---- Putting back

void CXMLPushbackReader::Push(const CRef<IXMLToken>& token) {
    if (m_pushback->IsFull())
        ThrowIO(kSource, __LINE__, "Pushback buffer is full.");
    m_pushback->m_tokens[--m_pushback->m_next] = token;
}

void CXMLPushbackReader::UnreadToken() {
    CheckOpen(__LINE__);
    if (m_current->IsNull())
        ThrowIO(kSource, __LINE__, "There is no valid token.");
    Push(*m_current);
}

void CXMLPushbackReader::UnreadToken(const CRef<IXMLToken>& token) {
    CheckOpen(__LINE__);
    Push(token);
}

void CXMLPushbackReader::UnreadStartElement(const unsigned short* localName,
                                            const unsigned short* namespaceURI) {
    CheckNames(localName, namespaceURI);
    CheckOpen(__LINE__);
    Push(Element<CXMLStartElementToken>(localName, namespaceURI));
}

void CXMLPushbackReader::UnreadStartElement(const unsigned short* qualifiedName) {
    CheckNames(qualifiedName);
    CheckOpen(__LINE__);
    Push(Element<CXMLStartElementToken>(qualifiedName));
}

void CXMLPushbackReader::UnreadEndElement(const unsigned short* localName,
                                          const unsigned short* namespaceURI) {
    CheckNames(localName, namespaceURI);
    CheckOpen(__LINE__);
    Push(Element<CXMLEndElementToken>(localName, namespaceURI));
}

void CXMLPushbackReader::UnreadEndElement(const unsigned short* qualifiedName) {
    CheckNames(qualifiedName);
    CheckOpen(__LINE__);
    Push(Element<CXMLEndElementToken>(qualifiedName));
}

void CXMLPushbackReader::UnreadElementText(const unsigned short* text) {
    CheckText(pull::IsEmptyText(text));
    CheckOpen(__LINE__);
    Push(HoldToken(new CXMLTextToken(text)));
}

template <typename... Name>
void CXMLPushbackReader::PushElement(const unsigned short* text, Name... name) {
    // In reverse, so that the start comes out first; no rollback when the buffer fills.
    Push(Element<CXMLEndElementToken>(name...));
    Push(HoldToken(new CXMLTextToken(text)));
    Push(Element<CXMLStartElementToken>(name...));
}

void CXMLPushbackReader::UnreadElementString(const unsigned short* localName,
                                             const unsigned short* namespaceURI,
                                             const unsigned short* text) {
    CheckNames(localName, namespaceURI);
    CheckText(text == nullptr);
    CheckOpen(__LINE__);
    PushElement(text, localName, namespaceURI);
}

void CXMLPushbackReader::UnreadElementString(const unsigned short* qualifiedName,
                                             const unsigned short* text) {
    CheckNames(qualifiedName);
    CheckText(text == nullptr);
    CheckOpen(__LINE__);
    PushElement(text, qualifiedName);
}

// The typed forms: names, state, then the value as text.
#define VORN_UNREAD_ELEMENT(Name, Type, ...)                                                       \
    void CXMLPushbackReader::Name(const unsigned short* localName,                                 \
                                  const unsigned short* namespaceURI, Type value) {                \
        CheckNames(localName, namespaceURI);                                                       \
        CheckOpen(__LINE__);                                                                       \
        PushElement(Formatted(__VA_ARGS__), localName, namespaceURI);                              \
    }                                                                                              \
    void CXMLPushbackReader::Name(const unsigned short* qualifiedName, Type value) {               \
        CheckNames(qualifiedName);                                                                 \
        CheckOpen(__LINE__);                                                                       \
        PushElement(Formatted(__VA_ARGS__), qualifiedName);                                        \
    }

VORN_UNREAD_ELEMENT(UnreadElementBool, bool, "%ls", value ? CBool::WSZ_TRUE : CBool::WSZ_FALSE)
VORN_UNREAD_ELEMENT(UnreadElementShort, short, "%hd", value)
VORN_UNREAD_ELEMENT(UnreadElementLong, int, "%ld", value)
VORN_UNREAD_ELEMENT(UnreadElementFloat, float, "%g", static_cast<double>(value))
VORN_UNREAD_ELEMENT(UnreadElementDouble, double, "%lg", value)

#undef VORN_UNREAD_ELEMENT

} // namespace vorn::io

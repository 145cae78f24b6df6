#include "vorn/io/XMLTextTokenizer.h"

#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/framework/XMLBuffer.hpp>
#include <xercesc/internal/WFXMLScanner.hpp>
#include <xercesc/sax/InputSource.hpp>
#include <xercesc/util/BinInputStream.hpp>
#include <xercesc/util/XMLResourceIdentifier.hpp>
#include <xercesc/validators/DTD/DTDValidator.hpp>
#include <xercesc/validators/common/GrammarResolver.hpp>

#include <vorn/base/String.h>
#include <vorn/base/System.h>
#include <vorn/io/XMLException.h>

#include <vorn/io/AccessDeniedException.h>

#include "platform/Cancellation.h"
#include "platform/ChannelInputSource.h"
#include "vorn/io/XMLTokens.h"

namespace vorn::io {

using vorn::base::CException;
using vorn::base::CMemoryException;
using vorn::base::CRef;
using vorn::base::CString;
using vorn::base::CSystem;
using xercesc::XMLPlatformUtils;

namespace {

const char* const kSource = "vorn/io/XMLTextTokenizer";
const char kEmptyDocument[] = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>";
static_assert(sizeof kEmptyDocument - 1 == 38, "the empty document is 38 bytes");

// Xerces-C's XMLCh is char16_t, the library's wide character unsigned short: the same units.
const unsigned short* U(const XMLCh* text) {
    return reinterpret_cast<const unsigned short*>(text);
}
const XMLCh* X(const unsigned short* text) {
    return reinterpret_cast<const XMLCh*>(text);
}

// Hands the scanner what the stream gives, a whole block per call.
class CInputStreamBinInputStream : public xercesc::BinInputStream {
public:
    CInputStreamBinInputStream(const CRef<CInputStream>& owned, CInputStream* stream)
        : m_owned(owned), m_stream(stream), m_position(0) {}

    XMLFilePos curPos() const override { return m_position; }

    XMLSize_t readBytes(XMLByte* toFill, XMLSize_t maxToRead) override {
        const int count = m_stream->Read(reinterpret_cast<char*>(toFill), 0,
                                         static_cast<unsigned int>(maxToRead));
        // -1, a memory stream's end, is the end here too: 0, never 0xFFFFFFFF to the scanner.
        if (count <= 0)
            return 0;
        m_position += static_cast<unsigned int>(count);
        return static_cast<unsigned int>(count);
    }

    const XMLCh* getContentType() const override { return nullptr; }

private:
    // Keeps a shared stream alive for as long as the scanner reads it.
    CRef<CInputStream> m_owned;
    CInputStream* m_stream;
    unsigned int m_position;
};

class CInputStreamInputSource : public xercesc::InputSource {
public:
    explicit CInputStreamInputSource(const CRef<CInputStream>& stream)
        : xercesc::InputSource(XMLPlatformUtils::fgMemoryManager), m_owned(stream),
          m_stream(stream.GetPointer()) {}
    explicit CInputStreamInputSource(CInputStream* stream)
        : xercesc::InputSource(XMLPlatformUtils::fgMemoryManager), m_stream(stream) {}

    // The scanner owns what this makes.
    xercesc::BinInputStream* makeStream() const override {
        return new CInputStreamBinInputStream(m_owned, m_stream);
    }

private:
    CRef<CInputStream> m_owned;
    CInputStream* m_stream;
};

[[noreturn]] void FailToCreate(unsigned int line) {
    throw CIOException(kSource, line, "Failed to create XML text tokenizer.", nullptr);
}

} // namespace

// ---- Life

CXMLTextTokenizer::CXMLTextTokenizer(const CRef<CInputStream>& stream) {
    if (stream.IsNull())
        throw CIOException(kSource, __LINE__, "Invalid input stream.", nullptr);
    StartOnStream(CInputStreamInputSource(stream));
}

CXMLTextTokenizer::CXMLTextTokenizer(CInputStream* stream) {
    if (stream == nullptr)
        throw CIOException(kSource, __LINE__, "Invalid input stream.", nullptr);
    StartOnStream(CInputStreamInputSource(stream));
}

void CXMLTextTokenizer::StartOnStream(const xercesc::InputSource& source) {
    try {
        Start(source);
    } catch (const vorn::platform::ThreadCancellation&) {
        DeleteAll();
        throw;
    } catch (...) {
        // A malformed prolog loses its CXMLException here.
        DeleteAll();
        FailToCreate(__LINE__);
    }
}

CXMLTextTokenizer::CXMLTextTokenizer(const IO::Location& location) {
    try {
        m_file = new IO::File(location, IO::kFailIfNotFound);
        if (m_file->GetStatus() != ZK::kStatusOK)
            throw CIOException(kSource, __LINE__,
                               "Failed to create file for reading the specified xml file.",
                               nullptr);
        const ZK::Status opened = m_file->Open(IO::kOpenRead, IO::kReportAccessDenied);
        if (opened == IO::kStatusAccessDenied)
            throw CAccessDeniedException(kSource, __LINE__, "Access denied.", nullptr);
        if (opened != ZK::kStatusOK)
            throw CIOException(kSource, __LINE__, "An error occured while trying to open file.",
                               nullptr);
        Start(ZKXML::IChannelInputSource(*m_file));
    } catch (const CIOException&) {
        // The file's own words, and a fault in the prolog as the scanner's.
        DeleteAll();
        throw;
    } catch (const vorn::platform::ThreadCancellation&) {
        DeleteAll();
        throw;
    } catch (...) {
        DeleteAll();
        FailToCreate(__LINE__);
    }
}

CXMLTextTokenizer::~CXMLTextTokenizer() {
    DeleteAll();
}

void CXMLTextTokenizer::Start(const xercesc::InputSource& source) {
    m_validator = new xercesc::DTDValidator(nullptr);
    m_grammarResolver = new xercesc::GrammarResolver(nullptr, XMLPlatformUtils::fgMemoryManager);
    m_scanner = new xercesc::WFXMLScanner(this, nullptr, nullptr, this, m_validator,
                                          m_grammarResolver, XMLPlatformUtils::fgMemoryManager);
    m_scanner->setDoNamespaces(true);
    m_scanner->setEntityHandler(this);
    m_scanner->setURIStringPool(m_grammarResolver->getStringPool());
    m_scanner->scanFirst(source, m_scanToken);
}

void CXMLTextTokenizer::DeleteAll() {
    if (m_file != nullptr) {
        if (m_file->IsOpen())
            m_file->Close();
        delete m_file;
        m_file = nullptr;
    }
    // The scanner was given the validator but doesn't delete it.
    delete m_validator;
    m_validator = nullptr;
    delete m_grammarResolver;
    m_grammarResolver = nullptr;
    delete m_scanner;
    m_scanner = nullptr;
}

// ---- Tokens

CRef<IXMLToken> CXMLTextTokenizer::GetNextToken() {
    const char* const failed = "Failed to get the next token of xml text tokenizer.";
    try {
        while (m_queue.IsEmpty() && !m_finished && m_scanner->scanNext(m_scanToken)) {
        }
        if (m_queue.IsEmpty())
            return CRef<IXMLToken>();
        return m_queue.Dequeue();
    } catch (const CIOException&) {
        throw;
    } catch (const CMemoryException&) {
        throw;
    } catch (const CException& e) {
        e.Print(CSystem::debugOut);
        throw CIOException(kSource, __LINE__, failed, nullptr);
    } catch (const xercesc::XMLException&) {
        throw CIOException(kSource, __LINE__, failed, nullptr);
    } catch (const vorn::platform::ThreadCancellation&) {
        throw;
    } catch (...) {
        throw CIOException(kSource, __LINE__, failed, nullptr);
    }
}

unsigned int CXMLTextTokenizer::Line() const {
    return static_cast<unsigned int>(m_scanner->getLocator()->getLineNumber());
}

void CXMLTextTokenizer::Queue(IXMLToken* token) {
    m_queue.Enqueue(HoldToken(token));
}

template <typename Token>
Token* CXMLTextTokenizer::NewElementToken(unsigned int uriId, const xercesc::QName& name,
                                          xercesc::XMLBuffer& buffer) const {
    // With namespaces on, an element in no namespace has the id of the empty URI, not 0.
    if (uriId == 0)
        return new Token(U(name.getRawName()));
    m_scanner->getURIText(uriId, buffer);
    return new Token(U(buffer.getRawBuffer()), U(name.getLocalPart()), U(name.getRawName()));
}

void CXMLTextTokenizer::docCharacters(const XMLCh* chars, XMLSize_t, bool cdataSection) {
    // Text outside the root element makes no token.
    if (m_depth == 0)
        return;
    CXMLToken* token = cdataSection ? static_cast<CXMLToken*>(new CXMLCDATAToken(U(chars)))
                                    : new CXMLTextToken(U(chars));
    token->SetLineNumber(Line());
    Queue(token);
}

void CXMLTextTokenizer::docComment(const XMLCh* comment) {
    if (m_rootEnded)
        return;
    CXMLCommentToken* token = new CXMLCommentToken(U(comment));
    token->SetLineNumber(Line());
    Queue(token);
}

void CXMLTextTokenizer::docPI(const XMLCh* target, const XMLCh* data) {
    if (m_rootEnded)
        return;
    CXMLPIToken* token = new CXMLPIToken(U(target), U(data));
    token->SetLineNumber(Line());
    Queue(token);
}

void CXMLTextTokenizer::endDocument() {
    m_finished = true;
}

void CXMLTextTokenizer::startElement(const xercesc::XMLElementDecl& elemDecl, unsigned int uriId,
                                     const XMLCh*,
                                     const xercesc::RefVectorOf<xercesc::XMLAttr>& attrList,
                                     XMLSize_t attrCount, bool isEmpty, bool isRoot) {
    if (!isEmpty)
        ++m_depth;
    xercesc::XMLBuffer buffer(1023, XMLPlatformUtils::fgMemoryManager);
    const xercesc::QName& name = *elemDecl.getElementName();
    CXMLStartElementToken* start = NewElementToken<CXMLStartElementToken>(uriId, name, buffer);
    // Held at once, so that a failure while the attributes go in doesn't lose it.
    CRef<IXMLToken> held = HoldToken(start);
    for (XMLSize_t i = 0; i < attrCount; ++i) {
        const xercesc::XMLAttr* attribute = attrList.elementAt(i);
        if (attribute->getURIId() == 0) {
            start->AddAttribute(U(attribute->getQName()), U(attribute->getValue()));
        } else {
            m_scanner->getURIText(attribute->getURIId(), buffer);
            start->AddAttribute(U(buffer.getRawBuffer()), U(attribute->getName()),
                                U(attribute->getQName()), U(attribute->getValue()));
        }
    }
    start->SetLineNumber(Line());
    m_queue.Enqueue(held);
    // An empty-element tag reads as a start and an end tag.
    if (isEmpty) {
        CXMLEndElementToken* end = NewElementToken<CXMLEndElementToken>(uriId, name, buffer);
        end->SetLineNumber(Line());
        Queue(end);
        m_rootEnded = isRoot;
    }
}

void CXMLTextTokenizer::endElement(const xercesc::XMLElementDecl& elemDecl, unsigned int uriId,
                                   bool isRoot, const XMLCh*) {
    xercesc::XMLBuffer buffer(1023, XMLPlatformUtils::fgMemoryManager);
    CXMLEndElementToken* end =
        NewElementToken<CXMLEndElementToken>(uriId, *elemDecl.getElementName(), buffer);
    end->SetLineNumber(Line());
    Queue(end);
    m_rootEnded = isRoot;
    if (m_depth != 0)
        --m_depth;
}

// ---- Entities and faults

xercesc::InputSource* CXMLTextTokenizer::resolveEntity(const unsigned short* publicId,
                                                       const unsigned short*,
                                                       const unsigned short*) {
    return new xercesc::MemBufInputSource(reinterpret_cast<const XMLByte*>(kEmptyDocument),
                                          sizeof kEmptyDocument - 1, X(publicId), false,
                                          XMLPlatformUtils::fgMemoryManager);
}

xercesc::InputSource* CXMLTextTokenizer::resolveEntity(xercesc::XMLResourceIdentifier* identifier) {
    return resolveEntity(U(identifier->getPublicId()), U(identifier->getSystemId()),
                         U(identifier->getBaseURI()));
}

void CXMLTextTokenizer::error(unsigned int, const XMLCh*, ErrTypes, const XMLCh* errorText,
                              const XMLCh*, const XMLCh*, XMLFileLoc, XMLFileLoc) {
    const CString message(U(errorText));
    throw CXMLException(kSource, __LINE__, nullptr, message);
}

} // namespace vorn::io

// CXMLTextTokenizer: turns XML text into tokens on the Xerces-C progressive scanner. Each scanner
// step calls back into the handlers below, which queue the tokens the step made; GetNextToken
// hands them out one at a time. The scanner checks well-formedness and resolves namespaces; it
// neither validates nor builds a tree, so memory does not grow with the document.
#pragma once

#include <xercesc/framework/XMLDocumentHandler.hpp>
#include <xercesc/framework/XMLEntityHandler.hpp>
#include <xercesc/framework/XMLErrorReporter.hpp>
#include <xercesc/framework/XMLPScanToken.hpp>

#include <vorn/base/Base.h>
#include <vorn/base/Ref.h>
#include <vorn/io/InputStream.h>
#include <vorn/io/XMLToken.h>
#include <vorn/platform/File.h>
#include <vorn/util/Queue.h>

XERCES_CPP_NAMESPACE_BEGIN
class DTDValidator;
class GrammarResolver;
class QName;
class WFXMLScanner;
class XMLBuffer;
XERCES_CPP_NAMESPACE_END

namespace vorn::io {

class CXMLTextTokenizer : public vorn::base::CBase,
                          public xercesc::XMLDocumentHandler,
                          public xercesc::XMLEntityHandler,
                          public xercesc::XMLErrorReporter {
public:
    // Faults in the prolog surface here as "Failed to create XML text tokenizer.".
    explicit CXMLTextTokenizer(const vorn::base::CRef<CInputStream>& stream);
    // The caller keeps the stream alive and closes it.
    explicit CXMLTextTokenizer(CInputStream* stream);
    // Opens the file itself and closes it when deleted. A file that can't be had gives the words
    // of the step that failed; so does a fault in the prolog, as the scanner's CXMLException.
    explicit CXMLTextTokenizer(const IO::Location& location);
    ~CXMLTextTokenizer() override;

    // The next token, or an empty reference at the end (and for good after it).
    vorn::base::CRef<IXMLToken> GetNextToken();

    // ---- XMLDocumentHandler
    void docCharacters(const XMLCh* chars, XMLSize_t length, bool cdataSection) override;
    void docComment(const XMLCh* comment) override;
    void docPI(const XMLCh* target, const XMLCh* data) override;
    void endDocument() override;
    void endElement(const xercesc::XMLElementDecl& elemDecl, unsigned int uriId, bool isRoot,
                    const XMLCh* prefixName) override;
    void endEntityReference(const xercesc::XMLEntityDecl&) override {}
    void ignorableWhitespace(const XMLCh*, XMLSize_t, bool) override {}
    void resetDocument() override {}
    void startDocument() override {}
    void startElement(const xercesc::XMLElementDecl& elemDecl, unsigned int uriId,
                      const XMLCh* prefixName,
                      const xercesc::RefVectorOf<xercesc::XMLAttr>& attrList, XMLSize_t attrCount,
                      bool isEmpty, bool isRoot) override;
    void startEntityReference(const xercesc::XMLEntityDecl&) override {}
    void XMLDecl(const XMLCh*, const XMLCh*, const XMLCh*, const XMLCh*) override {}

    // Every external entity and external DTD subset reads as an empty document: nothing a
    // document refers to is ever fetched or opened.
    virtual xercesc::InputSource* resolveEntity(const unsigned short* publicId,
                                                const unsigned short* systemId,
                                                const unsigned short* baseURI);

    // ---- XMLEntityHandler
    void endInputSource(const xercesc::InputSource&) override {}
    bool expandSystemId(const XMLCh*, xercesc::XMLBuffer&) override { return false; }
    void resetEntities() override {}
    xercesc::InputSource* resolveEntity(xercesc::XMLResourceIdentifier* identifier) override;
    void startInputSource(const xercesc::InputSource&) override {}

    // ---- XMLErrorReporter: every report, warnings included, ends the scan with CXMLException.
    void error(unsigned int code, const XMLCh* domain, ErrTypes type, const XMLCh* errorText,
               const XMLCh* systemId, const XMLCh* publicId, XMLFileLoc lineNumber,
               XMLFileLoc columnNumber) override;
    void resetErrors() override {}

private:
    CXMLTextTokenizer(const CXMLTextTokenizer&) = delete;
    CXMLTextTokenizer& operator=(const CXMLTextTokenizer&) = delete;

    // Makes the scanner and takes its first step on `source`.
    void Start(const xercesc::InputSource& source);
    // The same for a stream, where any failure reads "Failed to create XML text tokenizer.".
    void StartOnStream(const xercesc::InputSource& source);
    // Deletes what the tokenizer made, the file first: on a failed construction and at the end.
    void DeleteAll();
    unsigned int Line() const;
    // An element token of either kind: by URI, local part and raw name, or by the raw name alone
    // for the URI id 0.
    template <typename Token>
    Token* NewElementToken(unsigned int uriId, const xercesc::QName& name,
                           xercesc::XMLBuffer& buffer) const;
    void Queue(IXMLToken* token);

    IO::File* m_file = nullptr;
    vorn::util::CQueue<vorn::base::CRef<IXMLToken>> m_queue{2, 2};
    xercesc::DTDValidator* m_validator = nullptr;
    xercesc::GrammarResolver* m_grammarResolver = nullptr;
    xercesc::WFXMLScanner* m_scanner = nullptr;
    xercesc::XMLPScanToken m_scanToken;
    unsigned int m_depth = 0;
    bool m_finished = false;
    // Comments and instructions after the root element make no token: the scanner reports them
    // in the step that ends the document, whose tokens past the root's end are dropped.
    bool m_rootEnded = false;
};

} // namespace vorn::io

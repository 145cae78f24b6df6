// CXMLDOMReader: the pull reader over a Xerces-C DOM already in memory, so that code written
// against CXMLReader reads a tree as it reads text. Its tokens stand over the nodes and ask them
// on every call. Start elements and text come in document order; end elements do not all come,
// and after the last token the walk starts over at the document element, so a caller stops by
// the document's structure, not by waiting for ReadToken to say false. docs/GUIDE.md lists what
// differs from CXMLTextReader.
#pragma once

#include <xercesc/util/XercesDefs.hpp>

#include <vorn/base/Ref.h>
#include <vorn/io/XMLReader.h>

XERCES_CPP_NAMESPACE_BEGIN
class DOMDocument;
XERCES_CPP_NAMESPACE_END

namespace vorn::io {

class XMLDOMTokenizer;
struct XMLReaderState;

class VORN_API CXMLDOMReader : public CXMLReader {
    VORN_DECLARE_CLASS(CXMLDOMReader)

public:
    // The document is neither owned nor copied: it must outlive the reader and every token taken
    // from it, and must not change while it is read. A null document, or one without a document
    // element, gives CIOException "Invalid DOM document.".
    explicit CXMLDOMReader(const xercesc::DOMDocument* document);
    // Closes the reader if it is open.
    ~CXMLDOMReader() override;

    const vorn::base::CRef<IXMLToken>& GetCurrentToken() const override;
    XMLTokenType GetCurrentTokenType() const override;
    vorn::base::CUnicodeString GetCurrentTokenValue() const override;

    bool ReadToken() override;
    void ReadStartElement(const unsigned short* localName,
                          const unsigned short* namespaceURI) override;
    void ReadStartElement(const unsigned short* qualifiedName) override;
    void ReadStartElement() override;
    // A DOM answers an absent attribute with the empty string: HasAttribute is true for any name.
    bool HasAttribute(const unsigned short* localName, const unsigned short* namespaceURI) override;
    bool HasAttribute(const unsigned short* qualifiedName) override;
    vorn::base::CUnicodeString ReadAttribute(const unsigned short* namespaceURI,
                                             const unsigned short* localName) override;
    vorn::base::CUnicodeString ReadAttribute(const unsigned short* qualifiedName) override;
    void ReadEndElement(const unsigned short* localName,
                        const unsigned short* namespaceURI) override;
    void ReadEndElement(const unsigned short* qualifiedName) override;
    void ReadEndElement() override;
    // Text and CDATA both continue the run, in both forms.
    void ReadElementText(vorn::base::CUnicodeString& text) override;
    void ReadElementText() override;
    // Not on a closed reader: there it fails with "Failed to read element text.".
    bool ReadElementTextIfAvailable() override;
    // Frees the walk; the document stays. A second Close throws "Reader closed.".
    void Close() override;

private:
    CXMLDOMReader(const CXMLDOMReader&) = delete;
    CXMLDOMReader& operator=(const CXMLDOMReader&) = delete;

    // By the node's names. In a DOM built without namespaces an element has no local name, and
    // asking by two names is then the null access it meets.
    bool IsElementNameEqualsWith(const unsigned short* localName,
                                 const unsigned short* namespaceURI) const;
    bool IsElementNameEqualsWith(const unsigned short* qualifiedName) const;

    const vorn::base::CRef<IXMLToken>* Current() const;
    template <typename Matches>
    void Seek(XMLTokenType type, unsigned int line, const char* failed, Matches matches);

    XMLDOMTokenizer* m_tokenizer; // null when closed
    XMLReaderState* m_state;
};

} // namespace vorn::io

// CXMLDOMWriter: the XML writer that builds a Xerces-C DOM document in memory; GetDocument gives
// the tree. Its typed operations are those of CXMLWriter ("%f" for the floating types, where the
// text writer has "%g"), and its checks are lighter than the text writer's: Xerces-C judges the
// characters of names.
//
// Until the first element it holds a placeholder document whose element is "DocumentRoot", so
// that comments and processing instructions can be collected ahead of the real root; the first
// WriteStartElement makes the real document and moves them over. Closing the root leaves it
// current: whatever comes after goes under it. WriteElementString keeps only the value, as a
// text child of the current element: the element it names is left outside the tree. Namespace
// declarations, prefixes, Flush and Close have no effect. docs/GUIDE.md lists every difference
// from the text writer.
#pragma once

#include <xercesc/util/XercesDefs.hpp>

#include <vorn/io/XMLWriter.h>
#include <vorn/util/Stack.h>

XERCES_CPP_NAMESPACE_BEGIN
class DOMDocument;
class DOMElement;
class DOMNode;
XERCES_CPP_NAMESPACE_END

namespace vorn::io {

class VORN_API CXMLDOMWriter : public CXMLWriter {
    VORN_DECLARE_CLASS(CXMLDOMWriter)

public:
    CXMLDOMWriter();
    // Releases the document, and with it every node GetDocument has shown.
    ~CXMLDOMWriter() override;

    // Null before WriteStartDocument; the writer keeps it.
    xercesc::DOMDocument const* GetDocument() const { return m_document; }

    // The placeholder document; a second call is refused.
    void WriteStartDocument() override;
    // Checks only: nothing is closed.
    void WriteEndDocument() override;
    void WriteCDATA(unsigned short const* text) override;
    // Before the root, ahead of it.
    void WriteComment(unsigned short const* text) override;
    void WriteProcessingInstruction(unsigned short const* target,
                                    unsigned short const* data) override;
    // An entity reference node without children.
    void WriteEntityRef(unsigned short const* name) override;
    void WriteWhitespace(unsigned short const* text) override;
    // The prefix is checked, then dropped.
    void WriteStartElement(unsigned short const* prefix, unsigned short const* local,
                           unsigned short const* uri) override;
    void WriteStartElement(unsigned short const* local, unsigned short const* uri) override;
    void WriteStartElement(unsigned short const* local) override;
    void WriteEndElement() override;
    void WriteFullEndElement() override;
    // Only the value reaches the tree, as text of the current element.
    void WriteElementString(unsigned short const* local, unsigned short const* uri,
                            unsigned short const* value) override;
    void WriteElementString(unsigned short const* local, unsigned short const* value) override;
    // The prefix is checked, then dropped: the attribute is in `uri` without one.
    void WriteAttribute(unsigned short const* prefix, unsigned short const* local,
                        unsigned short const* uri, unsigned short const* value) override;
    void WriteAttribute(unsigned short const* local, unsigned short const* uri,
                        unsigned short const* value) override;
    void WriteAttribute(unsigned short const* local, unsigned short const* value) override;
    // No effect, in any state.
    void WriteAttrDefaultNamespaceDeclaration(unsigned short const* uri) override;
    void WriteAttrNamespaceDeclaration(unsigned short const* prefix,
                                       unsigned short const* uri) override;
    // Unchecked text; attributes may still follow it.
    void WriteString(unsigned short const* value) override;
    // Unlike the base, a null `data` is refused ("Failed to create DOM text node.").
    void WriteBase64(char const* data, unsigned int offset, unsigned int count) override;
    void WriteBinHex(char const* data, unsigned int offset, unsigned int count) override;
    // No effect, in any state.
    void Flush() override;
    void Close() override;

private:
    CXMLDOMWriter(const CXMLDOMWriter&) = delete;
    CXMLDOMWriter& operator=(const CXMLDOMWriter&) = delete;

    void CheckStarted() const;
    void CheckRoot(unsigned int line, const char* words) const;
    // `uri` null: no namespace.
    void StartElement(unsigned short const* local, unsigned short const* uri);
    void ReplacePlaceholder(unsigned short const* local, unsigned short const* uri);
    void Attribute(unsigned short const* local, unsigned short const* uri,
                   unsigned short const* value);
    void ElementString(unsigned short const* local, unsigned short const* uri,
                       unsigned short const* value);
    void AppendText(unsigned short const* text);
    void AppendEncoded(bool base64, char const* data, unsigned int offset, unsigned int count);
    // Before the document element while there is no root, else into the current element.
    void Place(xercesc::DOMNode* node);

    xercesc::DOMDocument* m_document; // owned
    xercesc::DOMElement* m_current;
    vorn::util::CStack<xercesc::DOMElement*> m_elements;
    bool m_rootWritten;
    bool m_closed; // nothing sets it
    bool m_startElementOpen;
};

} // namespace vorn::io

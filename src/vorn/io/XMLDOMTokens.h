// The tokens of the DOM reader. Each stands over one node of a Xerces-C DOM and asks it on every
// call, where the text tokens hold copies: the document must outlive every token taken from it.
// A line number is not known in a DOM and stays 0. Internal.
#pragma once

#include <xercesc/dom/DOMNode.hpp>

#include <vorn/io/XMLToken.h>

namespace vorn::io {

// Gives the type, the line and the node; the kinds give the value.
class CXMLDOMToken : public virtual IXMLToken {
public:
    XMLTokenType GetType() const override { return m_type; }
    unsigned int GetLineNumber() const override { return m_lineNumber; }
    xercesc::DOMNode* GetNode() const { return m_node; }

protected:
    CXMLDOMToken(XMLTokenType type, xercesc::DOMNode* node)
        : m_type(type), m_node(node), m_lineNumber(0) {}

    // The data of a text, CDATA section or comment node. Any other node (an entity reference
    // made a text token) has none: asking is the null access that a failed cast to character
    // data gives.
    vorn::base::CUnicodeString CharacterData() const;

private:
    XMLTokenType m_type;
    xercesc::DOMNode* m_node; // not owned
    unsigned int m_lineNumber;
};

// The names of the node, copied. HasNamespaceURI is true when the node HAS a namespace URI, the
// opposite of the text tokens.
class CXMLDOMElementToken : public virtual IXMLElementToken, public CXMLDOMToken {
public:
    vorn::base::CUnicodeString GetValue() const override;
    bool HasNamespaceURI() const override;
    vorn::base::CUnicodeString GetQualifiedName() const override;
    vorn::base::CUnicodeString GetLocalName() const override;
    vorn::base::CUnicodeString GetNamespaceURI() const override;

protected:
    CXMLDOMElementToken(XMLTokenType type, xercesc::DOMNode* node) : CXMLDOMToken(type, node) {}
};

// Asks the element for its attributes. The DOM answers an absent attribute with the empty string,
// not null: so HasAttribute is true for any name and GetAttribute gives the empty string.
class CXMLDOMStartElementToken : public virtual IXMLStartElementToken, public CXMLDOMElementToken {
public:
    // `node` is an element.
    explicit CXMLDOMStartElementToken(xercesc::DOMNode* node)
        : CXMLDOMElementToken(XMLTokenStartElement, node) {}

    bool HasAttribute(const unsigned short* namespaceURI,
                      const unsigned short* localName) const override;
    bool HasAttribute(const unsigned short* qualifiedName) const override;
    vorn::base::CUnicodeString GetAttribute(const unsigned short* namespaceURI,
                                            const unsigned short* localName) const override;
    vorn::base::CUnicodeString GetAttribute(const unsigned short* qualifiedName) const override;
};

class CXMLDOMEndElementToken : public virtual IXMLEndElementToken, public CXMLDOMElementToken {
public:
    explicit CXMLDOMEndElementToken(xercesc::DOMNode* node)
        : CXMLDOMElementToken(XMLTokenEndElement, node) {}
};

class CXMLDOMTextToken : public virtual IXMLTextToken, public CXMLDOMToken {
public:
    explicit CXMLDOMTextToken(xercesc::DOMNode* node) : CXMLDOMToken(XMLTokenText, node) {}
    vorn::base::CUnicodeString GetValue() const override { return CharacterData(); }
    vorn::base::CUnicodeString GetText() const override { return CharacterData(); }
};

class CXMLDOMCDATAToken : public virtual IXMLCDATAToken, public CXMLDOMToken {
public:
    explicit CXMLDOMCDATAToken(xercesc::DOMNode* node) : CXMLDOMToken(XMLTokenCDATA, node) {}
    vorn::base::CUnicodeString GetValue() const override { return CharacterData(); }
    vorn::base::CUnicodeString GetText() const override { return CharacterData(); }
};

class CXMLDOMCommentToken : public virtual IXMLCommentToken, public CXMLDOMToken {
public:
    explicit CXMLDOMCommentToken(xercesc::DOMNode* node) : CXMLDOMToken(XMLTokenComment, node) {}
    vorn::base::CUnicodeString GetValue() const override { return CharacterData(); }
    vorn::base::CUnicodeString GetText() const override { return CharacterData(); }
};

// The data of a processing instruction is not its value: GetValue gives the empty string.
class CXMLDOMPIToken : public virtual IXMLPIToken, public CXMLDOMToken {
public:
    explicit CXMLDOMPIToken(xercesc::DOMNode* node) : CXMLDOMToken(XMLTokenPI, node) {}
    vorn::base::CUnicodeString GetValue() const override;
    vorn::base::CUnicodeString GetTarget() const override;
    vorn::base::CUnicodeString GetData() const override;
};

} // namespace vorn::io

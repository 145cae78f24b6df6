// IXMLToken and its family: the read-only view of one piece of a document, as a pull reader hands
// it out. A caller holds a CRef<IXMLToken>, asks GetType and casts at run time to the interface
// that the type promises. Results are new values and outlive the token.
#pragma once

#include <vorn/base/Base.h>
#include <vorn/base/UnicodeString.h>

namespace vorn::io {

enum XMLTokenType {
    XMLTokenComment = 1,      // IXMLCommentToken
    XMLTokenPI = 2,           // IXMLPIToken
    XMLTokenText = 3,         // IXMLTextToken
    XMLTokenCDATA = 4,        // IXMLCDATAToken
    XMLTokenStartElement = 5, // IXMLStartElementToken
    XMLTokenEndElement = 6    // IXMLEndElementToken
};

// Tokens are plain heap objects, not registered classes.
class VORN_API IXMLToken : public vorn::base::CBase {
public:
    IXMLToken() = default;
    virtual ~IXMLToken();

    virtual XMLTokenType GetType() const = 0;
    // The text of a text, CDATA or comment token; empty for the other kinds.
    virtual vorn::base::CUnicodeString GetValue() const = 0;
    // The line the scanner was on when it made the token; 0 where nobody knows it.
    virtual unsigned int GetLineNumber() const = 0;
};

// The interfaces below take their bases virtually, so a token reaches IXMLToken (and
// IXMLElementToken) by one path whichever interface it came in through.
class VORN_API IXMLTextToken : public virtual IXMLToken {
public:
    IXMLTextToken() = default;
    ~IXMLTextToken() override;
    virtual vorn::base::CUnicodeString GetText() const = 0;
};

class VORN_API IXMLCDATAToken : public virtual IXMLToken {
public:
    IXMLCDATAToken() = default;
    ~IXMLCDATAToken() override;
    virtual vorn::base::CUnicodeString GetText() const = 0;
};

class VORN_API IXMLCommentToken : public virtual IXMLToken {
public:
    IXMLCommentToken() = default;
    ~IXMLCommentToken() override;
    virtual vorn::base::CUnicodeString GetText() const = 0;
};

// The data of a processing instruction is not its value: GetValue gives the empty string.
class VORN_API IXMLPIToken : public virtual IXMLToken {
public:
    IXMLPIToken() = default;
    ~IXMLPIToken() override;
    virtual vorn::base::CUnicodeString GetTarget() const = 0;
    virtual vorn::base::CUnicodeString GetData() const = 0;
};

class VORN_API IXMLElementToken : public virtual IXMLToken {
public:
    IXMLElementToken() = default;
    ~IXMLElementToken() override;
    // The text tokens answer true when the element has NO namespace URI, the DOM tokens when it
    // has one; no reader of the library asks.
    virtual bool HasNamespaceURI() const = 0;
    // The name as written, prefix included.
    virtual vorn::base::CUnicodeString GetQualifiedName() const = 0;
    virtual vorn::base::CUnicodeString GetLocalName() const = 0;
    virtual vorn::base::CUnicodeString GetNamespaceURI() const = 0;
};

// Attribute lookups take the namespace URI first. A null or empty name is refused with
// CXMLException, so an attribute in no namespace is found by its qualified name only.
class VORN_API IXMLStartElementToken : public virtual IXMLElementToken {
public:
    IXMLStartElementToken() = default;
    ~IXMLStartElementToken() override;
    virtual bool HasAttribute(const unsigned short* namespaceURI,
                              const unsigned short* localName) const = 0;
    virtual bool HasAttribute(const unsigned short* qualifiedName) const = 0;
    // "No such attribute." when nothing matches; with duplicates the first one added wins.
    virtual vorn::base::CUnicodeString GetAttribute(const unsigned short* namespaceURI,
                                                    const unsigned short* localName) const = 0;
    virtual vorn::base::CUnicodeString GetAttribute(const unsigned short* qualifiedName) const = 0;
};

class VORN_API IXMLEndElementToken : public virtual IXMLElementToken {
public:
    IXMLEndElementToken() = default;
    ~IXMLEndElementToken() override;
};

} // namespace vorn::io

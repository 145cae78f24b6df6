// The concrete tokens that the text tokenizer and the pushback reader make. A token is filled
// once, by its maker, and never changes after it has been handed on in a CRef<IXMLToken>.
#pragma once

#include <vorn/base/Ref.h>
#include <vorn/io/XMLToken.h>

namespace vorn::io {

class XMLAttributeList;

// A new token in its counted handle; the token goes if the handle's block can't be had.
inline vorn::base::CRef<IXMLToken> HoldToken(IXMLToken* token) {
    try {
        return vorn::base::CRef<IXMLToken>(token);
    } catch (...) {
        delete token;
        throw;
    }
}

// The start element face of a token of type 5. One without it is taken for the null pointer a
// failed cast gives, and reported as that null access, from `source` and `line`.
inline IXMLStartElementToken& AsStartElement(const vorn::base::CRef<IXMLToken>& token,
                                             const char* source, unsigned int line) {
    auto* start = dynamic_cast<IXMLStartElementToken*>(token.GetPointer());
    if (start == nullptr)
        throw vorn::base::CNullReferenceException(source, line);
    return *start;
}

// Gives the type and the line; the kinds give the value.
class CXMLToken : public virtual IXMLToken {
public:
    XMLTokenType GetType() const override { return m_type; }
    unsigned int GetLineNumber() const override { return m_lineNumber; }
    // The tokenizer's, once after construction; tokens made elsewhere keep 0.
    void SetLineNumber(unsigned int lineNumber) { m_lineNumber = lineNumber; }

protected:
    explicit CXMLToken(XMLTokenType type) : m_type(type), m_lineNumber(0) {}

private:
    XMLTokenType m_type;
    unsigned int m_lineNumber;
};

class CXMLElementToken : public virtual IXMLElementToken, public CXMLToken {
public:
    vorn::base::CUnicodeString GetValue() const override;
    // True when the element has no namespace URI.
    bool HasNamespaceURI() const override;
    vorn::base::CUnicodeString GetQualifiedName() const override { return m_qualifiedName; }
    vorn::base::CUnicodeString GetLocalName() const override { return m_localName; }
    vorn::base::CUnicodeString GetNamespaceURI() const override { return m_namespaceURI; }

    // For the reader's name search: the fields themselves, without a counted copy.
    const vorn::base::CUnicodeString& QualifiedName() const { return m_qualifiedName; }
    const vorn::base::CUnicodeString& LocalName() const { return m_localName; }
    const vorn::base::CUnicodeString& NamespaceURI() const { return m_namespaceURI; }

protected:
    CXMLElementToken(XMLTokenType type, const unsigned short* namespaceURI,
                     const unsigned short* localName, const unsigned short* qualifiedName);
    // The name is not split at its colon: local name and namespace URI stay empty.
    CXMLElementToken(XMLTokenType type, const unsigned short* qualifiedName);

private:
    vorn::base::CUnicodeString m_qualifiedName;
    vorn::base::CUnicodeString m_localName;
    vorn::base::CUnicodeString m_namespaceURI;
};

// Has an attribute list from the start, empty, so that every lookup has a list to ask.
class CXMLStartElementToken : public virtual IXMLStartElementToken, public CXMLElementToken {
public:
    CXMLStartElementToken(const unsigned short* namespaceURI, const unsigned short* localName,
                          const unsigned short* qualifiedName);
    explicit CXMLStartElementToken(const unsigned short* qualifiedName);
    ~CXMLStartElementToken() override;

    void AddAttribute(const unsigned short* namespaceURI, const unsigned short* localName,
                      const unsigned short* qualifiedName, const unsigned short* value);
    void AddAttribute(const unsigned short* qualifiedName, const unsigned short* value);

    bool HasAttribute(const unsigned short* namespaceURI,
                      const unsigned short* localName) const override;
    bool HasAttribute(const unsigned short* qualifiedName) const override;
    vorn::base::CUnicodeString GetAttribute(const unsigned short* namespaceURI,
                                            const unsigned short* localName) const override;
    vorn::base::CUnicodeString GetAttribute(const unsigned short* qualifiedName) const override;
    // Every attribute in document order, for code that must visit them all.
    const XMLAttributeList& GetAttributeList() const { return *m_attributes; }

private:
    CXMLStartElementToken(const CXMLStartElementToken&) = delete;
    CXMLStartElementToken& operator=(const CXMLStartElementToken&) = delete;

    XMLAttributeList* m_attributes;
};

// Takes its interface directly, where the start token takes it virtually.
class CXMLEndElementToken : public IXMLEndElementToken, public CXMLElementToken {
public:
    CXMLEndElementToken(const unsigned short* namespaceURI, const unsigned short* localName,
                        const unsigned short* qualifiedName);
    explicit CXMLEndElementToken(const unsigned short* qualifiedName);
};

class CXMLTextToken : public IXMLTextToken, public CXMLToken {
public:
    // Copies `text` up to its terminator.
    explicit CXMLTextToken(const unsigned short* text);
    // Shares the buffer of `text`: the joined run of a reader is made once, not copied again.
    explicit CXMLTextToken(const vorn::base::CUnicodeString& text);
    vorn::base::CUnicodeString GetValue() const override { return m_text; }
    vorn::base::CUnicodeString GetText() const override { return m_text; }

private:
    vorn::base::CUnicodeString m_text;
};

class CXMLCDATAToken : public IXMLCDATAToken, public CXMLToken {
public:
    explicit CXMLCDATAToken(const unsigned short* text);
    vorn::base::CUnicodeString GetValue() const override { return m_text; }
    vorn::base::CUnicodeString GetText() const override { return m_text; }

private:
    vorn::base::CUnicodeString m_text;
};

class CXMLCommentToken : public IXMLCommentToken, public CXMLToken {
public:
    explicit CXMLCommentToken(const unsigned short* text);
    vorn::base::CUnicodeString GetValue() const override { return m_text; }
    vorn::base::CUnicodeString GetText() const override { return m_text; }

private:
    vorn::base::CUnicodeString m_text;
};

class CXMLPIToken : public IXMLPIToken, public CXMLToken {
public:
    CXMLPIToken(const unsigned short* target, const unsigned short* data);
    vorn::base::CUnicodeString GetValue() const override;
    vorn::base::CUnicodeString GetTarget() const override { return m_target; }
    vorn::base::CUnicodeString GetData() const override { return m_data; }

private:
    vorn::base::CUnicodeString m_target;
    vorn::base::CUnicodeString m_data;
};

} // namespace vorn::io

// CXMLReader: the pull reader of XML. A concrete reader gives the core (the current token,
// stepping, the search for start and end elements, element text, closing); on it this class reads
// numbers, truth values, binary data and strings from the current token, from an attribute of the
// current start element, or from a whole element.
//
// Mind the argument order: ReadStartElement, ReadEndElement, ReadElement... and HasAttribute take
// the local name first and the namespace URI second; ReadAttribute and ReadAttr... take the
// namespace URI first. Names and texts are NUL-terminated UTF-16.
#pragma once

#include <vorn/base/Object.h>
#include <vorn/base/Ref.h>
#include <vorn/base/UnicodeString.h>
#include <vorn/io/XMLSerializable.h>
#include <vorn/io/XMLToken.h>

namespace vorn::io {

class VORN_API CXMLReader : public vorn::base::CObject {
    VORN_DECLARE_CLASS(CXMLReader)

public:
    CXMLReader() = default;
    ~CXMLReader() override;

    virtual const vorn::base::CRef<IXMLToken>& GetCurrentToken() const = 0;
    virtual XMLTokenType GetCurrentTokenType() const;
    virtual vorn::base::CUnicodeString GetCurrentTokenValue() const;

    // The value of the current token, trimmed, whatever kind it is: an element token has the
    // empty value, which is no number. The reader doesn't move. ReadBool takes "false" and "true"
    // only, case significant.
    virtual bool ReadBool() const;
    virtual short ReadShort() const;
    virtual int ReadLong() const;
    virtual unsigned int ReadUnsignedLong() const;
    virtual long long ReadInt64() const;
    virtual unsigned long long ReadUInt64() const;
    virtual float ReadFloat() const;
    virtual double ReadDouble() const;
    // Untrimmed.
    virtual vorn::base::CUnicodeString ReadString() const;
    // `data` comes from ZK_malloc (the caller ZK_frees it); it is null and `size` 0 on failure.
    virtual void ReadBinHex(char*& data, unsigned int& size) const;
    virtual void ReadBase64(char*& data, unsigned int& size) const;

    // Makes the next token current; false at the end of the input.
    virtual bool ReadToken() = 0;
    // The searches drop every token on the way, at any depth, and stop on the token found; at the
    // end of the input they throw "End of stream reached.".
    virtual void ReadStartElement(const unsigned short* localName,
                                  const unsigned short* namespaceURI) = 0;
    virtual void ReadStartElement(const unsigned short* qualifiedName) = 0;
    virtual void ReadStartElement() = 0;

    // On the current start element. Local name first here...
    virtual bool HasAttribute(const unsigned short* localName, const unsigned short* namespaceURI);
    virtual bool HasAttribute(const unsigned short* qualifiedName);
    // ...and namespace URI first here and in the ReadAttr... family. Attribute values are not
    // trimmed.
    virtual vorn::base::CUnicodeString ReadAttribute(const unsigned short* namespaceURI,
                                                     const unsigned short* localName);
    virtual vorn::base::CUnicodeString ReadAttribute(const unsigned short* qualifiedName);
    virtual bool ReadAttrBool(const unsigned short* namespaceURI, const unsigned short* localName);
    virtual bool ReadAttrBool(const unsigned short* qualifiedName);
    virtual short ReadAttrShort(const unsigned short* namespaceURI,
                                const unsigned short* localName);
    virtual short ReadAttrShort(const unsigned short* qualifiedName);
    virtual int ReadAttrLong(const unsigned short* namespaceURI, const unsigned short* localName);
    virtual int ReadAttrLong(const unsigned short* qualifiedName);
    // A bad literal reads "Invalid Int32 literal." in this form and "Invalid UInt32 literal." in
    // the next.
    virtual unsigned int ReadAttrUnsignedLong(const unsigned short* namespaceURI,
                                              const unsigned short* localName);
    virtual unsigned int ReadAttrUnsignedLong(const unsigned short* qualifiedName);
    virtual float ReadAttrFloat(const unsigned short* namespaceURI,
                                const unsigned short* localName);
    virtual float ReadAttrFloat(const unsigned short* qualifiedName);
    virtual double ReadAttrDouble(const unsigned short* namespaceURI,
                                  const unsigned short* localName);
    virtual double ReadAttrDouble(const unsigned short* qualifiedName);

    virtual void ReadEndElement(const unsigned short* localName,
                                const unsigned short* namespaceURI) = 0;
    virtual void ReadEndElement(const unsigned short* qualifiedName) = 0;
    virtual void ReadEndElement() = 0;

    // The next run of text, joined into one current text token; the search for it doesn't stop
    // at an end tag.
    virtual void ReadElementText(vorn::base::CUnicodeString& text) = 0;
    virtual void ReadElementText() = 0;
    // False, with the reader as it was, when the very next token is no text.
    virtual bool ReadElementTextIfAvailable() = 0;

    // Drops everything up to the next CDATA section.
    virtual void ReadCDATA(vorn::base::CUnicodeString& text);
    virtual void ReadCDATA();

    // Start tag, text, typed read, end tag. The numeric forms need text in the element: an empty
    // element makes them run on to the next text in the document and fail there.
    virtual bool ReadElementBool(const unsigned short* localName,
                                 const unsigned short* namespaceURI);
    virtual bool ReadElementBool(const unsigned short* qualifiedName);
    virtual short ReadElementShort(const unsigned short* localName,
                                   const unsigned short* namespaceURI);
    virtual short ReadElementShort(const unsigned short* qualifiedName);
    virtual int ReadElementLong(const unsigned short* localName,
                                const unsigned short* namespaceURI);
    virtual int ReadElementLong(const unsigned short* qualifiedName);
    virtual unsigned int ReadElementUnsignedLong(const unsigned short* localName,
                                                 const unsigned short* namespaceURI);
    virtual unsigned int ReadElementUnsignedLong(const unsigned short* qualifiedName);
    virtual long long ReadElementInt64(const unsigned short* localName,
                                       const unsigned short* namespaceURI);
    virtual long long ReadElementInt64(const unsigned short* qualifiedName);
    virtual unsigned long long ReadElementUInt64(const unsigned short* localName,
                                                 const unsigned short* namespaceURI);
    virtual unsigned long long ReadElementUInt64(const unsigned short* qualifiedName);
    virtual float ReadElementFloat(const unsigned short* localName,
                                   const unsigned short* namespaceURI);
    virtual float ReadElementFloat(const unsigned short* qualifiedName);
    virtual double ReadElementDouble(const unsigned short* localName,
                                     const unsigned short* namespaceURI);
    virtual double ReadElementDouble(const unsigned short* qualifiedName);
    // The empty string for an element without text.
    virtual vorn::base::CUnicodeString ReadElementString(const unsigned short* localName,
                                                         const unsigned short* namespaceURI);
    virtual vorn::base::CUnicodeString ReadElementString(const unsigned short* qualifiedName);
    virtual void ReadElementBinHex(const unsigned short* localName,
                                   const unsigned short* namespaceURI, char*& data,
                                   unsigned int& size);
    virtual void ReadElementBinHex(const unsigned short* qualifiedName, char*& data,
                                   unsigned int& size);
    virtual void ReadElementBase64(const unsigned short* localName,
                                   const unsigned short* namespaceURI, char*& data,
                                   unsigned int& size);
    virtual void ReadElementBase64(const unsigned short* qualifiedName, char*& data,
                                   unsigned int& size);

    virtual void ReadObject(IXMLSerializable& object);

    virtual void Close() = 0;

private:
    CXMLReader(const CXMLReader&) = delete;
    CXMLReader& operator=(const CXMLReader&) = delete;
};

} // namespace vorn::io

// CXMLPushbackReader: a decorator of any CXMLReader that takes tokens back, or takes tokens the
// document never held: a whole element with a typed value can be put in, to be read by the
// ordinary ReadElement... calls as if it stood in the document. Tokens put back are read before
// any from the reader beneath, last in first out, up to a number fixed at construction; putting
// back changes nothing beneath. The XML counterpart of the pushback streams, and unrelated to
// them.
//
// Argument order, as everywhere in the readers: local name first, namespace URI second.
#pragma once

#include <vorn/base/Ref.h>
#include <vorn/io/XMLReader.h>

namespace vorn::io {

struct XMLTokenPushbackBuffer;

class VORN_API CXMLPushbackReader : public CXMLReader {
    VORN_DECLARE_CLASS(CXMLPushbackReader)

public:
    // `size` is the most tokens that can wait at one time; an element with a value takes three.
    // A null reader gives CIllegalArgumentException "Invalid XML reader.", a size of 0 "Invalid
    // pushback buffer size.". The handle shares ownership of `reader`; the raw pointer leaves it
    // with the caller.
    CXMLPushbackReader(const vorn::base::CRef<CXMLReader>& reader, unsigned int size);
    CXMLPushbackReader(CXMLReader* reader, unsigned int size);
    // Doesn't close the reader beneath.
    ~CXMLPushbackReader() override;

    const vorn::base::CRef<IXMLToken>& GetCurrentToken() const override;
    XMLTokenType GetCurrentTokenType() const override;
    vorn::base::CUnicodeString GetCurrentTokenValue() const override;

    bool ReadToken() override;
    void ReadStartElement(const unsigned short* localName,
                          const unsigned short* namespaceURI) override;
    void ReadStartElement(const unsigned short* qualifiedName) override;
    void ReadStartElement() override;
    void ReadEndElement(const unsigned short* localName,
                        const unsigned short* namespaceURI) override;
    void ReadEndElement(const unsigned short* qualifiedName) override;
    void ReadEndElement() override;
    // Stops on the next text or CDATA token and gives its value: no joining, a following text
    // token is left to be read.
    void ReadElementText(vorn::base::CUnicodeString& text) override;
    void ReadElementText() override;
    // Joins the run when the very next token is text. Otherwise false, with that token put back
    // and current: the token before it isn't restored. Text that runs to the end of the input
    // fails with "There is no valid token.".
    bool ReadElementTextIfAvailable() override;
    // Closes the reader beneath, also one given by raw pointer; its CIOException is swallowed.
    // A second Close throws "Reader closed.".
    void Close() override;

    // Puts back the current token, which stays current.
    void UnreadToken();
    // Puts back `token`, an empty reference included.
    void UnreadToken(const vorn::base::CRef<IXMLToken>& token);
    // Made tokens have line 0 and no attributes. Those made by two names take the local name as
    // their qualified name too; those made by a qualified name alone are found only by qualified
    // name.
    void UnreadStartElement(const unsigned short* localName, const unsigned short* namespaceURI);
    void UnreadStartElement(const unsigned short* qualifiedName);
    void UnreadEndElement(const unsigned short* localName, const unsigned short* namespaceURI);
    void UnreadEndElement(const unsigned short* qualifiedName);
    // A text token; the empty text is refused.
    void UnreadElementText(const unsigned short* text);
    // A whole element: start, text and end, read in that order. The empty text is taken. When the
    // buffer fills part-way, what went in stays.
    void UnreadElementString(const unsigned short* localName, const unsigned short* namespaceURI,
                             const unsigned short* text);
    void UnreadElementString(const unsigned short* qualifiedName, const unsigned short* text);
    // The same with the value as text: "true" or "false", "%hd", "%ld", "%g", "%lg".
    void UnreadElementBool(const unsigned short* localName, const unsigned short* namespaceURI,
                           bool value);
    void UnreadElementBool(const unsigned short* qualifiedName, bool value);
    void UnreadElementShort(const unsigned short* localName, const unsigned short* namespaceURI,
                            short value);
    void UnreadElementShort(const unsigned short* qualifiedName, short value);
    void UnreadElementLong(const unsigned short* localName, const unsigned short* namespaceURI,
                           int value);
    void UnreadElementLong(const unsigned short* qualifiedName, int value);
    void UnreadElementFloat(const unsigned short* localName, const unsigned short* namespaceURI,
                            float value);
    void UnreadElementFloat(const unsigned short* qualifiedName, float value);
    void UnreadElementDouble(const unsigned short* localName, const unsigned short* namespaceURI,
                             double value);
    void UnreadElementDouble(const unsigned short* qualifiedName, double value);

private:
    CXMLPushbackReader(const CXMLPushbackReader&) = delete;
    CXMLPushbackReader& operator=(const CXMLPushbackReader&) = delete;

    void Init(unsigned int size);
    // By the names the token gives, so that tokens of every family work.
    bool IsElementNameEqualsWith(const unsigned short* localName,
                                 const unsigned short* namespaceURI) const;
    bool IsElementNameEqualsWith(const unsigned short* qualifiedName) const;
    template <typename Matches>
    void Seek(XMLTokenType type, unsigned int line, const char* failed, Matches matches);
    void ReadText(vorn::base::CUnicodeString* text);

    void CheckOpen(unsigned int line) const;
    void Push(const vorn::base::CRef<IXMLToken>& token);
    // End, text, start, after the names, the text and the state are checked.
    template <typename... Name> void PushElement(const unsigned short* text, Name... name);

    CXMLReader* m_reader; // null once closed
    vorn::base::CRef<CXMLReader> m_readerRef;
    vorn::base::CRef<IXMLToken>* m_current;
    XMLTokenPushbackBuffer* m_pushback;
};

} // namespace vorn::io

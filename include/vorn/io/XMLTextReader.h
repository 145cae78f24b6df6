// CXMLTextReader: the pull reader of XML text, from a byte stream. It keeps a current token and
// one token of lookahead; the typed reads come from CXMLReader. The scanner beneath checks
// well-formedness only: see docs/GUIDE.md for what it leaves unchecked.
#pragma once

#include <vorn/base/Ref.h>
#include <vorn/io/InputStream.h>
#include <vorn/io/XMLReader.h>
#include <vorn/platform/Location.h>

namespace vorn::io {

class CXMLTextTokenizer;
struct XMLReaderState;

class VORN_API CXMLTextReader : public CXMLReader {
    VORN_DECLARE_CLASS(CXMLTextReader)

public:
    // The encoding comes from the byte order mark and the XML declaration. A fault in the prolog
    // gives "Failed to create XML text tokenizer."; later faults give CXMLException with the
    // scanner's words as the message.
    explicit CXMLTextReader(const vorn::base::CRef<CInputStream>& stream);
    // The caller keeps the stream alive until the reader is closed.
    explicit CXMLTextReader(CInputStream* stream);
    // Reads the file at `location` and closes it with the reader. A missing file gives "Failed to
    // create file for reading the specified xml file.", one that may not be read
    // CAccessDeniedException "Access denied.", a directory "An error occured while trying to open
    // file."; here a fault in the prolog keeps its CXMLException.
    explicit CXMLTextReader(const IO::Location& location);
    // Closes the reader if it is open.
    ~CXMLTextReader() override;

    const vorn::base::CRef<IXMLToken>& GetCurrentToken() const override;
    XMLTokenType GetCurrentTokenType() const override;
    vorn::base::CUnicodeString GetCurrentTokenValue() const override;

    // Comments and processing instructions are tokens like any other here.
    bool ReadToken() override;
    void ReadStartElement(const unsigned short* localName,
                          const unsigned short* namespaceURI) override;
    void ReadStartElement(const unsigned short* qualifiedName) override;
    void ReadStartElement() override;
    bool HasAttribute(const unsigned short* localName, const unsigned short* namespaceURI) override;
    bool HasAttribute(const unsigned short* qualifiedName) override;
    vorn::base::CUnicodeString ReadAttribute(const unsigned short* namespaceURI,
                                             const unsigned short* localName) override;
    vorn::base::CUnicodeString ReadAttribute(const unsigned short* qualifiedName) override;
    void ReadEndElement(const unsigned short* localName,
                        const unsigned short* namespaceURI) override;
    void ReadEndElement(const unsigned short* qualifiedName) override;
    void ReadEndElement() override;
    // Joins text and CDATA; this form stops the run at a CDATA section that follows text, and the
    // section is the next token.
    void ReadElementText(vorn::base::CUnicodeString& text) override;
    void ReadElementText() override;
    // Not on a closed reader: there it fails with "Failed to read element text.".
    bool ReadElementTextIfAvailable() override;
    // Deletes the tokenizer; a stream given to the reader stays open. Closing twice is harmless.
    void Close() override;

private:
    CXMLTextReader(const CXMLTextReader&) = delete;
    CXMLTextReader& operator=(const CXMLTextReader&) = delete;

    bool IsElementNameEqualsWith(const unsigned short* localName,
                                 const unsigned short* namespaceURI) const;
    bool IsElementNameEqualsWith(const unsigned short* qualifiedName) const;

    void MakeState();
    const vorn::base::CRef<IXMLToken>& Current(unsigned int line) const;
    IXMLStartElementToken& StartElement(unsigned int line) const;
    // Steps until a token of `type` that `matches`; "End of stream reached." if none comes, and
    // `failure` for a null access on the way.
    template <typename Matches> void Seek(XMLTokenType type, const char* failure, Matches matches);
    // Joins the run that begins at the current token into one text token; see ReadElementText.
    void JoinRun(bool cdataContinues);
    // ReadElementText: finds the next run, joins it, and gives it in `text` unless that is null.
    void ReadRun(bool cdataContinues, vorn::base::CUnicodeString* text);

    CXMLTextTokenizer* m_tokenizer;
    XMLReaderState* m_state;
};

} // namespace vorn::io

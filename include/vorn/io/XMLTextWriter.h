// CXMLTextWriter: writes XML as text, through a CPrintWriter over a CBufferedWriter over a
// COutputStreamWriter onto a byte stream. It checks the order of calls, names and characters,
// keeps the open elements and their namespaces, and escapes text and attribute values.
//
// It is no pretty-printer. A start tag's '>' is always followed by a line end, as is every end
// tag, comment, CDATA section and processing instruction; text is not. A tabulator indents
// WriteStartElement(local), the end tag of an element with content, WriteCDATA and the
// two-argument inline elements, and nothing else.
//
// The checks are not a guarantee of well-formed output: docs/GUIDE.md lists what gets through
// (a second root element, text before the root, the prefixed WriteAttribute unescaped...).
// Nothing is flushed or closed by the destructor: without Close, buffered text is lost.
//
// A failed write beneath loses the rest of the call that met it. When it failed just as the
// encoder's buffer came out full, the buffered writer offers its last chunk again at the next
// write or flush, so that chunk reaches the stream twice.
//
// Threads: one writer serves one thread at a time. Its typed operations format into a scratch
// area of this object, not into the process-wide area of the CXMLWriter base (see XMLWriter.h).
#pragma once

#include <vorn/base/Ref.h>
#include <vorn/base/String.h>
#include <vorn/base/UnicodeString.h>
#include <vorn/io/OutputStream.h>
#include <vorn/io/PrintWriter.h>
#include <vorn/io/XMLTextTabulator.h>
#include <vorn/io/XMLWriter.h>
#include <vorn/platform/Location.h>

namespace vorn::io {

class XMLTextWriterContextStack;

class VORN_API CXMLTextWriter : public CXMLWriter {
    VORN_DECLARE_CLASS(CXMLTextWriter)

public:
    // `bufferSize` units of buffer, which must not be 0 ("Invalid buffer size."); a null
    // `endOfLine` is CR LF; the tabulator is the caller's to keep alive and may be null. A null
    // stream or a null or empty encoding is a CIllegalArgumentException; "UTF-8" is the encoding
    // there is.
    CXMLTextWriter(vorn::base::CRef<COutputStream> const& stream, char const* encoding,
                   unsigned int bufferSize, CXMLTextTabulator* tabulator,
                   unsigned short const* endOfLine, bool writeByteOrderMark);
    // The caller keeps ownership of `stream`.
    CXMLTextWriter(COutputStream* stream, char const* encoding, unsigned int bufferSize,
                   CXMLTextTabulator* tabulator, unsigned short const* endOfLine,
                   bool writeByteOrderMark);
    // Writes a file, replacing what it held.
    CXMLTextWriter(IO::Location const& location, char const* encoding, unsigned int bufferSize,
                   CXMLTextTabulator* tabulator, unsigned short const* endOfLine,
                   bool writeByteOrderMark);
    ~CXMLTextWriter() override;

    vorn::base::CString const& GetEncoding() const { return m_encoding; }
    void GetEndOfLine(vorn::base::CUnicodeString& result);

    // The declaration, again at each call.
    void WriteStartDocument() override;
    // Ends the open elements; flushes nothing.
    void WriteEndDocument() override;
    // Unchecked text; right after a start tag it lands inside the tag.
    void WriteWhitespace(unsigned short const* text) override;
    // Drops the characters that are no XML characters; a "]]>" in the text is left as it is.
    void WriteCDATA(unsigned short const* text) override;
    // "<!-- " + text + "-->", unchecked.
    void WriteComment(unsigned short const* text) override;
    void WriteProcessingInstruction(unsigned short const* target,
                                    unsigned short const* data) override;
    void WriteEntityRef(unsigned short const* name) override;

    // Declares `uri` for `prefix` unless the nearest binding of `prefix` already is `uri`.
    void WriteStartElement(unsigned short const* prefix, unsigned short const* local,
                           unsigned short const* uri) override;
    // Unprefixed when `uri` is the default namespace in scope, prefixed when a prefix is bound to
    // it, else unprefixed with a default namespace declaration.
    void WriteStartElement(unsigned short const* local, unsigned short const* uri) override;
    void WriteStartElement(unsigned short const* local) override;
    // "/>" for an element without content.
    void WriteEndElement() override;
    // Always a separate end tag.
    void WriteFullEndElement() override;

    void WriteElementBool(unsigned short const* local, unsigned short const* uri,
                          bool value) override;
    void WriteElementBool(unsigned short const* local, bool value) override;
    void WriteElementChar(unsigned short const* local, unsigned short const* uri, char value);
    void WriteElementChar(unsigned short const* local, char value);
    void WriteElementUnsignedChar(unsigned short const* local, unsigned short const* uri,
                                  unsigned char value);
    void WriteElementUnsignedChar(unsigned short const* local, unsigned char value);
    void WriteElementShort(unsigned short const* local, unsigned short const* uri,
                           short value) override;
    void WriteElementShort(unsigned short const* local, short value) override;
    void WriteElementUnsignedShort(unsigned short const* local, unsigned short const* uri,
                                   unsigned short value);
    void WriteElementUnsignedShort(unsigned short const* local, unsigned short value);
    void WriteElementLong(unsigned short const* local, unsigned short const* uri,
                          int value) override;
    void WriteElementLong(unsigned short const* local, int value) override;
    void WriteElementInt(unsigned short const* local, unsigned short const* uri, int value);
    void WriteElementInt(unsigned short const* local, int value);
    void WriteElementInt32(unsigned short const* local, unsigned short const* uri, int value);
    void WriteElementInt32(unsigned short const* local, int value);
    void WriteElementUnsignedLong(unsigned short const* local, unsigned short const* uri,
                                  unsigned int value) override;
    void WriteElementUnsignedLong(unsigned short const* local, unsigned int value) override;
    void WriteElementUnsignedInt(unsigned short const* local, unsigned short const* uri,
                                 unsigned int value);
    void WriteElementUnsignedInt(unsigned short const* local, unsigned int value);
    void WriteElementUInt32(unsigned short const* local, unsigned short const* uri,
                            unsigned int value);
    void WriteElementUInt32(unsigned short const* local, unsigned int value);
    void WriteElementInt64(unsigned short const* local, unsigned short const* uri, long long value);
    void WriteElementInt64(unsigned short const* local, long long value);
    void WriteElementUnsignedInt64(unsigned short const* local, unsigned short const* uri,
                                   unsigned long long value);
    void WriteElementUnsignedInt64(unsigned short const* local, unsigned long long value);
    // Six significant digits ("%g").
    void WriteElementFloat(unsigned short const* local, unsigned short const* uri,
                           float value) override;
    void WriteElementFloat(unsigned short const* local, float value) override;
    // Six significant digits in this form ("%lg")...
    void WriteElementDouble(unsigned short const* local, unsigned short const* uri,
                            double value) override;
    // ...and fifteen in this one ("%.15g").
    void WriteElementDouble(unsigned short const* local, double value) override;
    // Escaped; the empty value gives <a></a>.
    void WriteElementString(unsigned short const* local, unsigned short const* uri,
                            unsigned short const* value) override;
    void WriteElementString(unsigned short const* local, unsigned short const* value) override;
    void WriteElementBinHex(unsigned short const* local, unsigned short const* uri,
                            char const* data, unsigned int offset, unsigned int count) override;
    void WriteElementBinHex(unsigned short const* local, char const* data, unsigned int offset,
                            unsigned int count) override;
    void WriteElementBase64(unsigned short const* local, unsigned short const* uri,
                            char const* data, unsigned int offset, unsigned int count) override;
    void WriteElementBase64(unsigned short const* local, char const* data, unsigned int offset,
                            unsigned int count) override;

    // Binds `prefix` to `uri` for the element but declares nothing, and writes `value` as it is,
    // unescaped: see WriteAttrNamespaceDeclaration.
    void WriteAttribute(unsigned short const* prefix, unsigned short const* local,
                        unsigned short const* uri, unsigned short const* value) override;
    // Needs a prefix bound to `uri`; a default namespace does not count. Escaped.
    void WriteAttribute(unsigned short const* local, unsigned short const* uri,
                        unsigned short const* value) override;
    // Escaped.
    void WriteAttribute(unsigned short const* local, unsigned short const* value) override;
    // Elements started after it on this element's content do not see it until an end tag.
    void WriteAttrDefaultNamespaceDeclaration(unsigned short const* uri) override;
    void WriteAttrNamespaceDeclaration(unsigned short const* prefix,
                                       unsigned short const* uri) override;
    // "true" or "false".
    void WriteAttrBool(unsigned short const* local, unsigned short const* uri, bool value) override;
    void WriteAttrBool(unsigned short const* local, bool value) override;
    void WriteAttrChar(unsigned short const* local, unsigned short const* uri, char value);
    void WriteAttrChar(unsigned short const* local, char value);
    void WriteAttrUnsignedChar(unsigned short const* local, unsigned short const* uri,
                               unsigned char value);
    void WriteAttrUnsignedChar(unsigned short const* local, unsigned char value);
    void WriteAttrShort(unsigned short const* local, unsigned short const* uri,
                        short value) override;
    void WriteAttrShort(unsigned short const* local, short value) override;
    void WriteAttrUnsignedShort(unsigned short const* local, unsigned short const* uri,
                                unsigned short value);
    void WriteAttrUnsignedShort(unsigned short const* local, unsigned short value);
    void WriteAttrLong(unsigned short const* local, unsigned short const* uri, int value) override;
    void WriteAttrLong(unsigned short const* local, int value) override;
    void WriteAttrInt(unsigned short const* local, unsigned short const* uri, int value);
    void WriteAttrInt(unsigned short const* local, int value);
    void WriteAttrUnsignedLong(unsigned short const* local, unsigned short const* uri,
                               unsigned int value) override;
    void WriteAttrUnsignedLong(unsigned short const* local, unsigned int value) override;
    void WriteAttrUnsignedInt(unsigned short const* local, unsigned short const* uri,
                              unsigned int value);
    void WriteAttrUnsignedInt(unsigned short const* local, unsigned int value);
    void WriteAttrInt64(unsigned short const* local, unsigned short const* uri, long long value);
    void WriteAttrInt64(unsigned short const* local, long long value);
    void WriteAttrUnsignedInt64(unsigned short const* local, unsigned short const* uri,
                                unsigned long long value);
    void WriteAttrUnsignedInt64(unsigned short const* local, unsigned long long value);
    // "%g" and "%lg": six significant digits.
    void WriteAttrFloat(unsigned short const* local, unsigned short const* uri,
                        float value) override;
    void WriteAttrFloat(unsigned short const* local, float value) override;
    void WriteAttrDouble(unsigned short const* local, unsigned short const* uri,
                         double value) override;
    void WriteAttrDouble(unsigned short const* local, double value) override;

    // Content, formatted by the print writer: "%f" and "%lf" for the floating types.
    void WriteBool(bool value) override;
    // The character itself, neither checked nor escaped.
    void WriteChar(char value);
    void WriteUnsignedChar(unsigned char value);
    void WriteShort(short value) override;
    void WriteUnsignedShort(unsigned short value);
    void WriteInt(int value);
    void WriteUnsignedInt(unsigned int value);
    void WriteLong(int value) override;
    void WriteInt32(int value);
    void WriteUnsignedLong(unsigned int value) override;
    void WriteUInt32(unsigned int value);
    // Only the low 32 bits reach the text.
    void WriteUInt64(unsigned long long value);
    void WriteFloat(float value) override;
    void WriteDouble(double value) override;
    // Escaped.
    void WriteString(unsigned short const* value) override;
    // A null `data` is refused by the encoder (CIllegalArgumentException).
    void WriteBase64(char const* data, unsigned int offset, unsigned int count) override;
    void WriteBinHex(char const* data, unsigned int offset, unsigned int count) override;

    void Write(bool value) { WriteBool(value); }
    void Write(short value) { WriteShort(value); }
    void Write(int value) { WriteLong(value); }
    void Write(unsigned int value) { WriteUnsignedLong(value); }
    void Write(float value) { WriteFloat(value); }
    void Write(double value) { WriteDouble(value); }
    void Write(unsigned short const* value) { WriteString(value); }

    void Flush() override;
    // Ends ONE open element, then flushes and closes the pipeline and the stream beneath; closed
    // afterwards even when that fails. With elements still open, a second Close throws "Writer
    // closed.".
    void Close() override;

private:
    CXMLTextWriter(const CXMLTextWriter&) = delete;
    CXMLTextWriter& operator=(const CXMLTextWriter&) = delete;

    void Init(bool writeByteOrderMark, unsigned int bufferSize, unsigned short const* endOfLine);
    void CheckOpen() const;
    void CheckStarted() const;
    void CheckRootWritten() const;
    void CloseStartElement();
    // Starts `result` with the tabulation, if any.
    void GetTabulator(vorn::base::CUnicodeString& result);
    void InternalClose();
    // The value with its markup characters replaced by their entities.
    void PrintText(unsigned short const* text);
    void PrintAttribute(unsigned short const* local, unsigned short const* value, bool escape);
    void PrintAttribute(unsigned short const* local, unsigned short const* uri,
                        unsigned short const* value, bool escape);
    void PrintAttribute(unsigned short const* prefix, unsigned short const* local,
                        unsigned short const* uri, unsigned short const* value, bool escape);
    void PrintInlineElementString(unsigned short const* local, unsigned short const* value,
                                  bool escape);
    void PrintInlineElementString(unsigned short const* local, unsigned short const* uri,
                                  unsigned short const* value, bool escape);
    // Into m_scratch.
    unsigned short const* Format(char const* format, ...);

    vorn::base::CString m_encoding;
    vorn::base::CRef<COutputStream> m_streamRef;
    COutputStream* m_stream;
    vorn::base::CRef<CPrintWriter> m_writerRef;
    CPrintWriter* m_writer; // null once closed
    CXMLTextTabulator* m_tabulator;
    vorn::base::CUnicodeString m_line;
    unsigned short m_scratch[256];
    bool m_documentStarted;
    bool m_rootWritten;
    bool m_startElementOpen;
    XMLTextWriterContextStack* m_contexts;
};

} // namespace vorn::io

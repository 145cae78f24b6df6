#include <vorn/io/XMLTextWriter.h>

#include <cstdarg>
#include <cstddef>
#include <cstring>

#include <xercesc/util/XMLChar.hpp>

#include <vorn/base/BinaryData.h>
#include <vorn/base/Bool.h>
#include <vorn/base/IllegalArgumentException.h>
#include <vorn/base/MemoryException.h>
#include <vorn/io/BufferedWriter.h>
#include <vorn/io/FileOutputStream.h>
#include <vorn/io/IOException.h>
#include <vorn/io/OutputStreamWriter.h>
#include <vorn/io/XMLException.h>

#include "platform/Format.h"
#include "platform/PtrCheck.h"
#include "platform/UniText.h"
#include "vorn/io/XMLTextWriterContextStack.h"
#include "vorn/io/XMLWriterScratch.h"

namespace vorn::io {

using vorn::base::CBinaryData;
using vorn::base::CBool;
using vorn::base::CRef;
using vorn::base::CUnicodeString;

VORN_DEFINE_CLASS_BASE(CXMLTextWriter, "vorn::io::CXMLTextWriter", "vorn::io::CXMLWriter")
VORN_DEFINE_CLASS_BASE(CXMLTextTabulator, "vorn::io::CXMLTextTabulator", "vorn::base::CObject")

CXMLTextTabulator::CXMLTextTabulator() {}
CXMLTextTabulator::~CXMLTextTabulator() {}

namespace {

const char* const kSource = "vorn/io/XMLTextWriter";
constexpr unsigned int kScratchUnits = 256;

// An ASCII literal as UTF-16 text.
template <std::size_t N> struct Wide {
    unsigned short units[N];
    constexpr Wide(const char (&text)[N]) : units{} {
        for (std::size_t i = 0; i < N; ++i)
            units[i] = static_cast<unsigned char>(text[i]);
    }
    operator const unsigned short*() const { return units; }
    constexpr unsigned int Length() const { return N - 1; }
};

constexpr Wide kDeclaration("<?xml version=\"1.0\" encoding=\"");
constexpr Wide kDeclarationEnd("\"?>");
constexpr Wide kLess("<");
constexpr Wide kGreater(">");
constexpr Wide kEndTag("</");
constexpr Wide kEmptyEnd("/>");
constexpr Wide kColon(":");
constexpr Wide kBlank(" ");
constexpr Wide kQuote("\"");
constexpr Wide kValueStart("=\"");
constexpr Wide kDefaultDeclaration(" xmlns=\"");
constexpr Wide kPrefixDeclaration(" xmlns:");
constexpr Wide kCDATA("<![CDATA[");
constexpr Wide kCDATAEnd("]]>");
constexpr Wide kComment("<!-- ");
constexpr Wide kCommentEnd("-->");
constexpr Wide kPI("<?");
constexpr Wide kPIEnd("?>");
constexpr Wide kAmpersand("&");
constexpr Wide kSemicolon(";");
constexpr Wide kAmp("&amp;");
constexpr Wide kLt("&lt;");
constexpr Wide kGt("&gt;");
constexpr Wide kApos("&apos;");
constexpr Wide kQuot("&quot;");

// The character classes of the Xerces-C table (masks 0x02, 0x04 and 0x40), one unit at a time.
bool IsNameStartChar(unsigned short c) {
    return xercesc::XMLChar1_0::isFirstNameChar(static_cast<XMLCh>(c));
}
bool IsNameChar(unsigned short c) {
    return xercesc::XMLChar1_0::isNameChar(static_cast<XMLCh>(c));
}
bool IsXMLChar(unsigned short c) {
    return xercesc::XMLChar1_0::isXMLChar(static_cast<XMLCh>(c));
}

bool IsEmptyText(const unsigned short* text) {
    return text == nullptr || *text == 0;
}

[[noreturn]] void Refuse(unsigned int line, const char* words) {
    throw CXMLException(kSource, line, words, nullptr);
}

void CheckNameCharacters(const unsigned short* name) {
    if (!IsNameStartChar(*name))
        Refuse(__LINE__, "Invalid character error.");
    for (++name; *name != 0; ++name)
        if (!IsNameChar(*name))
            Refuse(__LINE__, "Invalid character error.");
}

void CheckPrefix(const unsigned short* prefix) {
    if (IsEmptyText(prefix))
        Refuse(__LINE__, "Invalid prefix.");
    CheckNameCharacters(prefix);
}

void CheckLocalName(const unsigned short* local) {
    if (IsEmptyText(local))
        Refuse(__LINE__, "Invalid local name.");
    if (ZK::ucschr(local, ':') != nullptr)
        Refuse(__LINE__, "Local name must be unqualified name.");
    CheckNameCharacters(local);
}

void CheckUri(const unsigned short* uri) {
    if (IsEmptyText(uri))
        Refuse(__LINE__, "Invalid namespace URI.");
}

// A surrogate, which the table refuses, fails too: a character beyond the BMP is refused.
void CheckValue(const unsigned short* value) {
    if (value == nullptr)
        return;
    for (; *value != 0; ++value)
        if (!IsXMLChar(*value))
            Refuse(__LINE__, "Invalid character error.");
}

// The entity that stands for `c` in text and attribute values, with its length; null if none.
struct Replacement {
    const unsigned short* text;
    unsigned int length;
};
Replacement Entity(unsigned short c) {
    switch (c) {
    case '&':
        return {kAmp, kAmp.Length()};
    case '<':
        return {kLt, kLt.Length()};
    case '>':
        return {kGt, kGt.Length()};
    case '\'':
        return {kApos, kApos.Length()};
    case '"':
        return {kQuot, kQuot.Length()};
    default:
        return {nullptr, 0};
    }
}

// The pieces of one call, gathered on the stack and handed to the print writer in blocks rather
// than in one write each.
class Gathered {
public:
    explicit Gathered(CPrintWriter* writer) : m_writer(writer), m_count(0) {}
    Gathered(const Gathered&) = delete;
    Gathered& operator=(const Gathered&) = delete;

    void Put(unsigned short c) {
        if (m_count == kUnits)
            Flush();
        m_units[m_count++] = c;
    }
    void Put(const unsigned short* text, unsigned int length) {
        while (length > 0) {
            if (m_count == kUnits)
                Flush();
            const unsigned int part = length < kUnits - m_count ? length : kUnits - m_count;
            std::memcpy(m_units + m_count, text, part * sizeof(unsigned short));
            m_count += part;
            text += part;
            length -= part;
        }
    }
    template <std::size_t N> void Put(const Wide<N>& text) { Put(text.units, N - 1); }
    void Put(const CUnicodeString& text) { Put(text, text.GetLength()); }
    // Up to its terminator; null is nothing.
    void PutText(const unsigned short* text) {
        if (text != nullptr)
            for (; *text != 0; ++text)
                Put(*text);
    }
    // The five replacements in one pass, the runs between them copied whole: no replacement
    // brings in a character that another one takes out, so the order of the five doesn't show.
    void PutEscaped(const unsigned short* text) {
        const unsigned short* run = text;
        for (;; ++text) {
            const unsigned short c = *text;
            // No markup character lies above '>'.
            if (c > '>')
                continue;
            if (c == 0)
                break;
            const Replacement entity = Entity(c);
            if (entity.text == nullptr)
                continue;
            Put(run, static_cast<unsigned int>(text - run));
            Put(entity.text, entity.length);
            run = text + 1;
        }
        Put(run, static_cast<unsigned int>(text - run));
    }
    void PutValue(const unsigned short* value, bool escape) {
        if (IsEmptyText(value))
            return;
        if (escape)
            PutEscaped(value);
        else
            PutText(value);
    }
    void Flush() {
        if (m_count == 0)
            return;
        m_writer->Write(m_units, 0, m_count);
        m_count = 0;
    }

private:
    static constexpr unsigned int kUnits = 256;
    CPrintWriter* m_writer;
    unsigned short m_units[kUnits];
    unsigned int m_count;
};

// Runs `body`; a failed allocation while it assembles its text is the stream's
// "Memory full.".
template <typename F> void Assembling(unsigned int line, F&& body) {
    try {
        body();
    } catch (const vorn::base::CMemoryException&) {
        throw CIOException(kSource, line, "Memory full.", nullptr);
    }
}

// A handle that owns `object`; the object goes when the handle's count block
// can't be had.
template <typename T> CRef<T> Owned(T* object) {
    try {
        return CRef<T>(object);
    } catch (...) {
        delete object;
        throw;
    }
}

// `data + offset`, without arithmetic on a null pointer, which the encoders
// refuse.
const char* At(const char* data, unsigned int offset) {
    return data == nullptr ? nullptr : data + offset;
}

// A value as the variadic formatter takes it.
template <typename T> T Promoted(T value) {
    return value;
}
double Promoted(float value) {
    return value;
}

void CheckEncoding(const char* encoding) {
    if (encoding == nullptr || *encoding == '\0')
        throw vorn::base::CIllegalArgumentException(kSource, __LINE__,
                                                    "Invalid encoding specification.");
}

void CheckStream(const void* stream) {
    if (stream == nullptr)
        throw vorn::base::CIllegalArgumentException(kSource, __LINE__, "Invalid output stream.");
}

} // namespace

// ---- Construction

CXMLTextWriter::CXMLTextWriter(CRef<COutputStream> const& stream, char const* encoding,
                               unsigned int bufferSize, CXMLTextTabulator* tabulator,
                               unsigned short const* endOfLine, bool writeByteOrderMark)
    : m_encoding(), m_streamRef(stream), m_stream(stream.GetPointer()), m_writerRef(),
      m_writer(nullptr), m_tabulator(tabulator), m_line(), m_scratch{}, m_documentStarted(false),
      m_rootWritten(false), m_startElementOpen(false), m_contexts(nullptr) {
    CheckStream(m_stream);
    CheckEncoding(encoding);
    m_encoding = encoding;
    Init(writeByteOrderMark, bufferSize, endOfLine);
}

CXMLTextWriter::CXMLTextWriter(COutputStream* stream, char const* encoding, unsigned int bufferSize,
                               CXMLTextTabulator* tabulator, unsigned short const* endOfLine,
                               bool writeByteOrderMark)
    : m_encoding(), m_streamRef(), m_stream(stream), m_writerRef(), m_writer(nullptr),
      m_tabulator(tabulator), m_line(), m_scratch{}, m_documentStarted(false), m_rootWritten(false),
      m_startElementOpen(false), m_contexts(nullptr) {
    CheckStream(m_stream);
    CheckEncoding(encoding);
    m_encoding = encoding;
    Init(writeByteOrderMark, bufferSize, endOfLine);
}

CXMLTextWriter::CXMLTextWriter(IO::Location const& location, char const* encoding,
                               unsigned int bufferSize, CXMLTextTabulator* tabulator,
                               unsigned short const* endOfLine, bool writeByteOrderMark)
    : m_encoding(), m_streamRef(), m_stream(nullptr), m_writerRef(), m_writer(nullptr),
      m_tabulator(tabulator), m_line(), m_scratch{}, m_documentStarted(false), m_rootWritten(false),
      m_startElementOpen(false), m_contexts(nullptr) {
    // The encoding first: a refused one leaves the file as it was.
    CheckEncoding(encoding);
    m_encoding = encoding;
    m_streamRef = Owned<COutputStream>(new CFileOutputStream(location, false));
    m_stream = m_streamRef.GetPointer();
    Init(writeByteOrderMark, bufferSize, endOfLine);
}

void CXMLTextWriter::Init(bool writeByteOrderMark, unsigned int bufferSize,
                          unsigned short const* endOfLine) {
    CRef<CWriter> encoder =
        Owned<CWriter>(new COutputStreamWriter(m_stream, m_encoding, writeByteOrderMark));
    CRef<CWriter> buffer = Owned<CWriter>(new CBufferedWriter(encoder, bufferSize));
    m_writerRef = Owned(new CPrintWriter(buffer, false, endOfLine));
    m_writer = m_writerRef.GetPointer();
    m_contexts = new XMLTextWriterContextStack();
}

CXMLTextWriter::~CXMLTextWriter() {
    delete m_contexts;
}

// ---- Checks and primitives

void CXMLTextWriter::CheckOpen() const {
    if (m_writer == nullptr)
        throw CIOException(kSource, __LINE__, "Writer closed.", nullptr);
}

void CXMLTextWriter::CheckStarted() const {
    CheckOpen();
    if (!m_documentStarted)
        Refuse(__LINE__, "Document hasn't been started yet.");
}

void CXMLTextWriter::CheckRootWritten() const {
    if (!m_rootWritten)
        Refuse(__LINE__, "Document root hasn't been written yet.");
}

void CXMLTextWriter::CloseStartElement() {
    if (!m_startElementOpen)
        return;
    m_writer->Println(kGreater);
    m_startElementOpen = false;
}

void CXMLTextWriter::GetTabulator(CUnicodeString& result) {
    result.Empty();
    if (m_tabulator == nullptr)
        return;
    const unsigned short* tabulation = m_tabulator->GetTabulation();
    if (tabulation != nullptr)
        result = tabulation;
}

void CXMLTextWriter::GetEndOfLine(CUnicodeString& result) {
    CheckOpen();
    Assembling(__LINE__, [&] {
        result.Empty();
        m_writer->GetEndOfLine(result);
    });
}

void CXMLTextWriter::PrintText(unsigned short const* text) {
    Gathered out(m_writer);
    out.PutEscaped(text);
    out.Flush();
}

unsigned short const* CXMLTextWriter::Format(char const* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const unsigned short* text = FormatIntoScratch(m_scratch, kScratchUnits, format, arguments);
    va_end(arguments);
    return text;
}

// ---- Document

void CXMLTextWriter::WriteStartDocument() {
    CheckOpen();
    Assembling(__LINE__, [&] {
        m_line = kDeclaration;
        m_line += static_cast<const char*>(m_encoding);
        m_line += kDeclarationEnd;
        m_writer->Println(m_line);
    });
    m_documentStarted = true;
}

void CXMLTextWriter::WriteEndDocument() {
    CheckStarted();
    CheckRootWritten();
    while (!m_contexts->IsEmpty())
        WriteEndElement();
}

void CXMLTextWriter::WriteWhitespace(unsigned short const* text) {
    CheckStarted();
    CheckRootWritten();
    if (text != nullptr)
        m_writer->Print(text);
}

void CXMLTextWriter::WriteCDATA(unsigned short const* text) {
    CheckStarted();
    CheckRootWritten();
    Assembling(__LINE__, [&] {
        CloseStartElement();
        GetTabulator(m_line);
        m_line += kCDATA;
        if (text != nullptr) {
            m_line += text;
            // The index moves on after a removal too, so a unit that slid into its
            // place stays.
            for (unsigned int i = 0; i < m_line.GetLength(); ++i) {
                const unsigned short c = m_line[i];
                if (!IsXMLChar(c))
                    m_line.Remove(c);
            }
        }
        m_line += kCDATAEnd;
        m_writer->Println(m_line);
    });
}

void CXMLTextWriter::WriteComment(unsigned short const* text) {
    CheckStarted();
    Assembling(__LINE__, [&] {
        CloseStartElement();
        m_line = kComment;
        m_line += text;
        m_line += kCommentEnd;
        m_writer->Println(m_line);
    });
}

void CXMLTextWriter::WriteProcessingInstruction(unsigned short const* target,
                                                unsigned short const* data) {
    if (IsEmptyText(target))
        Refuse(__LINE__, "Invalid processing instruction target.");
    if (IsEmptyText(data))
        Refuse(__LINE__, "Invalid processing instruction data.");
    CheckStarted();
    Assembling(__LINE__, [&] {
        CloseStartElement();
        m_line = kPI;
        m_line += target;
        m_line += kBlank;
        m_line += data;
        m_line += kPIEnd;
        m_writer->Println(m_line);
    });
}

void CXMLTextWriter::WriteEntityRef(unsigned short const* name) {
    if (IsEmptyText(name))
        Refuse(__LINE__, "Invalid entity name.");
    CheckStarted();
    CheckRootWritten();
    Assembling(__LINE__, [&] {
        CloseStartElement();
        m_line = kAmpersand;
        m_line += name;
        m_line += kSemicolon;
        m_writer->Print(m_line);
    });
}

// ---- Elements

void CXMLTextWriter::WriteStartElement(unsigned short const* local) {
    CheckStarted();
    Assembling(__LINE__, [&] {
        CloseStartElement();
        CheckLocalName(local);
        GetTabulator(m_line);
        Gathered out(m_writer);
        out.Put(m_line);
        out.Put(kLess);
        out.PutText(local);
        out.Flush();
        m_contexts->PushElement(local);
    });
    m_rootWritten = true;
    m_startElementOpen = true;
}

void CXMLTextWriter::WriteStartElement(unsigned short const* local, unsigned short const* uri) {
    CheckStarted();
    Assembling(__LINE__, [&] {
        CloseStartElement();
        CheckLocalName(local);
        CheckUri(uri);
        m_line = kLess;
        if (m_contexts->GetDefaultNamespace() == uri) {
            m_line += local;
            m_writer->Print(m_line);
            m_contexts->PushElement(local);
        } else if (m_contexts->HasPrefixForUri(uri)) {
            m_line += m_contexts->GetPrefixForUri(uri);
            m_line += kColon;
            m_line += local;
            m_writer->Print(m_line);
            m_contexts->PushElement(static_cast<const unsigned short*>(m_line) + 1);
        } else {
            m_line += local;
            m_line += kDefaultDeclaration;
            m_line += uri;
            m_line += kQuote;
            m_writer->Print(m_line);
            m_contexts->PushElementWithDefaultNamespace(local, uri);
        }
    });
    m_rootWritten = true;
    m_startElementOpen = true;
}

void CXMLTextWriter::WriteStartElement(unsigned short const* prefix, unsigned short const* local,
                                       unsigned short const* uri) {
    CheckStarted();
    Assembling(__LINE__, [&] {
        CloseStartElement();
        CheckPrefix(prefix);
        CheckLocalName(local);
        CheckUri(uri);
        const bool declare =
            !m_contexts->HasUriForPrefix(prefix) || !(m_contexts->GetUriForPrefix(prefix) == uri);
        m_line = kLess;
        m_line += prefix;
        m_line += kColon;
        m_line += local;
        const unsigned int nameEnd = m_line.GetLength();
        if (declare) {
            m_line += kPrefixDeclaration;
            m_line += prefix;
            m_line += kValueStart;
            m_line += uri;
            m_line += kQuote;
        }
        m_writer->Print(m_line);
        m_line.Delete(nameEnd, m_line.GetLength() - nameEnd);
        m_contexts->PushElementWithPrefix(static_cast<const unsigned short*>(m_line) + 1, prefix,
                                          uri);
    });
    m_rootWritten = true;
    m_startElementOpen = true;
}

void CXMLTextWriter::WriteEndElement() {
    CheckStarted();
    if (m_contexts->IsEmpty())
        Refuse(__LINE__, "There is no start elements to close in the current context.");
    Assembling(__LINE__, [&] {
        if (m_startElementOpen) {
            m_writer->Println(kEmptyEnd);
            m_startElementOpen = false;
        } else {
            GetTabulator(m_line);
            Gathered out(m_writer);
            out.Put(m_line);
            out.Put(kEndTag);
            out.Put(m_contexts->Top().m_name);
            out.Put(kGreater);
            out.Flush();
            m_writer->Println();
        }
        m_contexts->PopElement();
    });
}

void CXMLTextWriter::WriteFullEndElement() {
    CheckStarted();
    Assembling(__LINE__, [&] {
        CloseStartElement();
        if (m_contexts->IsEmpty())
            Refuse(__LINE__, "There is no start elements to close in the current context.");
        m_line = kEndTag;
        m_line += m_contexts->Top().m_name;
        m_line += kGreater;
        m_writer->Println(m_line);
        m_contexts->PopElement();
    });
}

// ---- Inline elements

void CXMLTextWriter::PrintInlineElementString(unsigned short const* local,
                                              unsigned short const* value, bool escape) {
    CheckStarted();
    Assembling(__LINE__, [&] {
        CloseStartElement();
        CheckLocalName(local);
        CheckValue(value);
        GetTabulator(m_line);
        Gathered out(m_writer);
        out.Put(m_line);
        out.Put(kLess);
        out.PutText(local);
        out.Put(kGreater);
        out.PutValue(value, escape);
        out.Put(kEndTag);
        out.PutText(local);
        out.Put(kGreater);
        out.Flush();
        m_writer->Println();
    });
}

void CXMLTextWriter::PrintInlineElementString(unsigned short const* local,
                                              unsigned short const* uri,
                                              unsigned short const* value, bool escape) {
    CheckStarted();
    Assembling(__LINE__, [&] {
        CloseStartElement();
        CheckLocalName(local);
        CheckUri(uri);
        CheckValue(value);
        // The prefix stays in its map while the element is written: nothing here
        // binds one.
        const unsigned short* prefix = nullptr;
        bool declare = false;
        if (!(m_contexts->GetDefaultNamespace() == uri)) {
            if (m_contexts->HasPrefixForUri(uri))
                prefix = m_contexts->GetPrefixForUri(uri);
            else
                declare = true;
        }
        Gathered out(m_writer);
        for (bool end : {false, true}) {
            if (end)
                out.Put(kEndTag);
            else
                out.Put(kLess);
            if (prefix != nullptr) {
                out.PutText(prefix);
                out.Put(kColon);
            }
            out.PutText(local);
            if (!end && declare) {
                out.Put(kDefaultDeclaration);
                out.PutText(uri);
                out.Put(kQuote);
            }
            out.Put(kGreater);
            if (!end)
                out.PutValue(value, escape);
        }
        out.Flush();
        m_writer->Println();
    });
    m_rootWritten = true;
}

void CXMLTextWriter::WriteElementString(unsigned short const* local, unsigned short const* uri,
                                        unsigned short const* value) {
    PrintInlineElementString(local, uri, value, true);
}
void CXMLTextWriter::WriteElementString(unsigned short const* local, unsigned short const* value) {
    PrintInlineElementString(local, value, true);
}

void CXMLTextWriter::WriteElementBool(unsigned short const* local, unsigned short const* uri,
                                      bool value) {
    PrintInlineElementString(local, uri, Format("%ls", CBool::ToUnicodeString(value)), false);
}
void CXMLTextWriter::WriteElementBool(unsigned short const* local, bool value) {
    PrintInlineElementString(local, Format("%ls", CBool::ToUnicodeString(value)), false);
}

// The typed element and attribute writes of one type, formatted into m_scratch: the element with
// a namespace, the element without, and both attribute forms.
#define VORN_XML_TYPED(Name, Type, ElementWithUri, Element, Attribute)                             \
    void CXMLTextWriter::WriteElement##Name(unsigned short const* local,                           \
                                            unsigned short const* uri, Type value) {               \
        PrintInlineElementString(local, uri, Format(ElementWithUri, Promoted(value)), false);      \
    }                                                                                              \
    void CXMLTextWriter::WriteElement##Name(unsigned short const* local, Type value) {             \
        PrintInlineElementString(local, Format(Element, Promoted(value)), false);                  \
    }                                                                                              \
    void CXMLTextWriter::WriteAttr##Name(unsigned short const* local, unsigned short const* uri,   \
                                         Type value) {                                             \
        PrintAttribute(local, uri, Format(Attribute, Promoted(value)), false);                     \
    }                                                                                              \
    void CXMLTextWriter::WriteAttr##Name(unsigned short const* local, Type value) {                \
        PrintAttribute(local, Format(Attribute, Promoted(value)), false);                          \
    }

VORN_XML_TYPED(Char, char, "%d", "%d", "%d")
VORN_XML_TYPED(UnsignedChar, unsigned char, "%u", "%u", "%u")
VORN_XML_TYPED(Short, short, "%hd", "%hd", "%d")
VORN_XML_TYPED(UnsignedShort, unsigned short, "%hu", "%hu", "%u")
VORN_XML_TYPED(Long, int, "%ld", "%ld", "%ld")
VORN_XML_TYPED(UnsignedLong, unsigned int, "%lu", "%lu", "%lu")
VORN_XML_TYPED(Int64, long long, "%lld", "%lld", "%lld")
VORN_XML_TYPED(UnsignedInt64, unsigned long long, "%llu", "%llu", "%llu")
VORN_XML_TYPED(Float, float, "%g", "%g", "%g")
// The form without a namespace keeps fifteen digits, the others six.
VORN_XML_TYPED(Double, double, "%lg", "%.15g", "%lg")

#undef VORN_XML_TYPED

void CXMLTextWriter::WriteElementInt(unsigned short const* local, unsigned short const* uri,
                                     int value) {
    WriteElementLong(local, uri, value);
}
void CXMLTextWriter::WriteElementInt(unsigned short const* local, int value) {
    WriteElementLong(local, value);
}
void CXMLTextWriter::WriteElementInt32(unsigned short const* local, unsigned short const* uri,
                                       int value) {
    WriteElementLong(local, uri, value);
}
void CXMLTextWriter::WriteElementInt32(unsigned short const* local, int value) {
    WriteElementLong(local, value);
}
void CXMLTextWriter::WriteElementUnsignedInt(unsigned short const* local, unsigned short const* uri,
                                             unsigned int value) {
    WriteElementUnsignedLong(local, uri, value);
}
void CXMLTextWriter::WriteElementUnsignedInt(unsigned short const* local, unsigned int value) {
    WriteElementUnsignedLong(local, value);
}
void CXMLTextWriter::WriteElementUInt32(unsigned short const* local, unsigned short const* uri,
                                        unsigned int value) {
    WriteElementUnsignedLong(local, uri, value);
}
void CXMLTextWriter::WriteElementUInt32(unsigned short const* local, unsigned int value) {
    WriteElementUnsignedLong(local, value);
}

void CXMLTextWriter::WriteElementBinHex(unsigned short const* local, unsigned short const* uri,
                                        char const* data, unsigned int offset, unsigned int count) {
    if (data == nullptr || !BNValidReadPtr(data + offset, count))
        return;
    CUnicodeString text;
    Assembling(__LINE__, [&] { CBinaryData::ToBinHexUnicodeString(data + offset, count, text); });
    PrintInlineElementString(local, uri, text, false);
}
void CXMLTextWriter::WriteElementBinHex(unsigned short const* local, char const* data,
                                        unsigned int offset, unsigned int count) {
    if (data == nullptr || !BNValidReadPtr(data + offset, count))
        return;
    CUnicodeString text;
    Assembling(__LINE__, [&] { CBinaryData::ToBinHexUnicodeString(data + offset, count, text); });
    PrintInlineElementString(local, text, false);
}
void CXMLTextWriter::WriteElementBase64(unsigned short const* local, unsigned short const* uri,
                                        char const* data, unsigned int offset, unsigned int count) {
    if (data == nullptr || !BNValidReadPtr(data + offset, count))
        return;
    CUnicodeString text;
    // No bytes make no text; the encoder would first ask for 2.8 GB to find that
    // out.
    if (count != 0)
        Assembling(__LINE__,
                   [&] { CBinaryData::ToBase64UnicodeString(data + offset, count, text); });
    PrintInlineElementString(local, uri, text, false);
}
void CXMLTextWriter::WriteElementBase64(unsigned short const* local, char const* data,
                                        unsigned int offset, unsigned int count) {
    if (data == nullptr || !BNValidReadPtr(data + offset, count))
        return;
    CUnicodeString text;
    if (count != 0)
        Assembling(__LINE__,
                   [&] { CBinaryData::ToBase64UnicodeString(data + offset, count, text); });
    PrintInlineElementString(local, text, false);
}

// ---- Attributes

void CXMLTextWriter::PrintAttribute(unsigned short const* local, unsigned short const* value,
                                    bool escape) {
    CheckStarted();
    if (!m_startElementOpen)
        Refuse(__LINE__, "Attributes must be written at start element.");
    CheckLocalName(local);
    CheckValue(value);
    Gathered out(m_writer);
    out.Put(kBlank);
    out.PutText(local);
    out.Put(kValueStart);
    out.PutValue(value, escape);
    out.Put(kQuote);
    out.Flush();
    m_rootWritten = true;
}

void CXMLTextWriter::PrintAttribute(unsigned short const* local, unsigned short const* uri,
                                    unsigned short const* value, bool escape) {
    CheckStarted();
    if (!m_startElementOpen)
        Refuse(__LINE__, "Attributes must be written at start element.");
    CheckLocalName(local);
    CheckValue(value);
    if (!m_contexts->HasPrefixForUri(uri))
        Refuse(__LINE__, "Undeclared namespace.");
    Gathered out(m_writer);
    out.Put(kBlank);
    out.Put(m_contexts->GetPrefixForUri(uri));
    out.Put(kColon);
    out.PutText(local);
    out.Put(kValueStart);
    out.PutValue(value, escape);
    out.Put(kQuote);
    out.Flush();
}

void CXMLTextWriter::PrintAttribute(unsigned short const* prefix, unsigned short const* local,
                                    unsigned short const* uri, unsigned short const* value,
                                    bool escape) {
    CheckStarted();
    if (!m_startElementOpen)
        Refuse(__LINE__, "Attributes must be written at start element.");
    CheckPrefix(prefix);
    CheckLocalName(local);
    CheckValue(value);
    Assembling(__LINE__, [&] { m_contexts->AddPrefix(prefix, uri); });
    Gathered out(m_writer);
    out.Put(kBlank);
    out.PutText(prefix);
    out.Put(kColon);
    out.PutText(local);
    out.Put(kValueStart);
    out.PutValue(value, escape);
    out.Put(kQuote);
    out.Flush();
}

void CXMLTextWriter::WriteAttribute(unsigned short const* prefix, unsigned short const* local,
                                    unsigned short const* uri, unsigned short const* value) {
    PrintAttribute(prefix, local, uri, value, false);
}
void CXMLTextWriter::WriteAttribute(unsigned short const* local, unsigned short const* uri,
                                    unsigned short const* value) {
    PrintAttribute(local, uri, value, true);
}
void CXMLTextWriter::WriteAttribute(unsigned short const* local, unsigned short const* value) {
    PrintAttribute(local, value, true);
}

void CXMLTextWriter::WriteAttrNamespaceDeclaration(unsigned short const* prefix,
                                                   unsigned short const* uri) {
    CheckStarted();
    if (!m_startElementOpen)
        Refuse(__LINE__, "Attributes must be written at start element.");
    CheckPrefix(prefix);
    CheckUri(uri);
    Assembling(__LINE__, [&] {
        m_line = kPrefixDeclaration;
        m_line += prefix;
        m_line += kValueStart;
        m_line += uri;
        m_line += kQuote;
        m_writer->Print(m_line);
        m_contexts->AddPrefix(prefix, uri);
    });
}

void CXMLTextWriter::WriteAttrDefaultNamespaceDeclaration(unsigned short const* uri) {
    CheckStarted();
    if (!m_startElementOpen)
        Refuse(__LINE__, "Attributes must be written at start element.");
    CheckUri(uri);
    if (m_contexts->IsEmpty())
        return;
    XMLTextWriterContext& top = m_contexts->Top();
    if (top.m_hasDefaultNamespace)
        Refuse(__LINE__, "This start element already contains default namespace declaration.");
    Assembling(__LINE__, [&] {
        m_line = kDefaultDeclaration;
        m_line += uri;
        m_line += kQuote;
        m_writer->Print(m_line);
        top.m_defaultNamespace = uri;
        top.m_hasDefaultNamespace = true;
    });
}

void CXMLTextWriter::WriteAttrBool(unsigned short const* local, unsigned short const* uri,
                                   bool value) {
    PrintAttribute(local, uri, CBool::ToUnicodeString(value), false);
}
void CXMLTextWriter::WriteAttrBool(unsigned short const* local, bool value) {
    PrintAttribute(local, CBool::ToUnicodeString(value), false);
}
void CXMLTextWriter::WriteAttrInt(unsigned short const* local, unsigned short const* uri,
                                  int value) {
    WriteAttrLong(local, uri, value);
}
void CXMLTextWriter::WriteAttrInt(unsigned short const* local, int value) {
    WriteAttrLong(local, value);
}
void CXMLTextWriter::WriteAttrUnsignedInt(unsigned short const* local, unsigned short const* uri,
                                          unsigned int value) {
    WriteAttrUnsignedLong(local, uri, value);
}
void CXMLTextWriter::WriteAttrUnsignedInt(unsigned short const* local, unsigned int value) {
    WriteAttrUnsignedLong(local, value);
}

// ---- Content

void CXMLTextWriter::WriteString(unsigned short const* value) {
    CheckStarted();
    CheckValue(value);
    CloseStartElement();
    if (!IsEmptyText(value))
        PrintText(value);
}

void CXMLTextWriter::WriteBase64(char const* data, unsigned int offset, unsigned int count) {
    CheckStarted();
    Assembling(__LINE__, [&] {
        CloseStartElement();
        // No bytes make no text; the encoder would first ask for 2.8 GB to find
        // that out.
        if (data != nullptr && count == 0)
            m_line.Empty();
        else
            CBinaryData::ToBase64UnicodeString(At(data, offset), count, m_line);
        m_writer->Print(m_line);
    });
}

void CXMLTextWriter::WriteBinHex(char const* data, unsigned int offset, unsigned int count) {
    CheckStarted();
    Assembling(__LINE__, [&] {
        CloseStartElement();
        CBinaryData::ToBinHexUnicodeString(At(data, offset), count, m_line);
        m_writer->Print(m_line);
    });
}

// One print each, after the start tag is closed: the print writer's formats.
#define VORN_XML_CONTENT(Operation, Type, Call)                                                    \
    void CXMLTextWriter::Operation(Type value) {                                                   \
        CheckStarted();                                                                            \
        CloseStartElement();                                                                       \
        m_writer->Call(value);                                                                     \
    }

VORN_XML_CONTENT(WriteBool, bool, Print)
VORN_XML_CONTENT(WriteChar, char, Print)
VORN_XML_CONTENT(WriteShort, short, Print)
VORN_XML_CONTENT(WriteUnsignedChar, unsigned char, PrintUnsignedChar)
VORN_XML_CONTENT(WriteUnsignedShort, unsigned short, PrintUnsignedShort)
VORN_XML_CONTENT(WriteInt, int, PrintInt)
VORN_XML_CONTENT(WriteUnsignedInt, unsigned int, PrintUnsignedInt)
VORN_XML_CONTENT(WriteLong, int, Print)
VORN_XML_CONTENT(WriteInt32, int, Print)
VORN_XML_CONTENT(WriteUnsignedLong, unsigned int, Print)
VORN_XML_CONTENT(WriteUInt32, unsigned int, Print)
VORN_XML_CONTENT(WriteUInt64, unsigned long long, Print)
VORN_XML_CONTENT(WriteFloat, float, Print)
VORN_XML_CONTENT(WriteDouble, double, Print)

#undef VORN_XML_CONTENT

// ---- Flush and close

void CXMLTextWriter::Flush() {
    CheckOpen();
    m_writer->Flush();
}

void CXMLTextWriter::Close() {
    if (!m_contexts->IsEmpty())
        WriteEndElement();
    if (m_writer == nullptr)
        return;
    try {
        m_writer->Flush();
    } catch (const CIOException&) {
        try {
            InternalClose();
        } catch (const CIOException&) {
            // the flush's failure is the one to report
        }
        throw;
    }
    InternalClose();
}

void CXMLTextWriter::InternalClose() {
    // The handle keeps the pipeline alive through its Close; the writer is closed
    // whatever it does.
    const CRef<CPrintWriter> pipeline(m_writerRef);
    m_writer = nullptr;
    m_writerRef = vorn::null;
    pipeline->Close();
}

} // namespace vorn::io

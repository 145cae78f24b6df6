#include <vorn/io/XMLWriter.h>

#include <vorn/base/BinaryData.h>
#include <vorn/base/MemoryException.h>
#include <vorn/base/UnicodeString.h>
#include <vorn/io/IOException.h>

#include "platform/Format.h"
#include "platform/PtrCheck.h"
#include "platform/UniText.h"
#include "vorn/io/XMLWriterScratch.h"

namespace vorn::io {

using vorn::base::CBinaryData;
using vorn::base::CUnicodeString;

VORN_DEFINE_CLASS_BASE(CXMLWriter, "vorn::io::CXMLWriter", "vorn::base::CObject")

namespace {

const char* const kSource = "vorn/io/XMLWriter";
const unsigned short kTrue[] = {'t', 'r', 'u', 'e', 0};
const unsigned short kFalse[] = {'f', 'a', 'l', 's', 'e', 0};

// The one formatting area of every writer that keeps these operations; see the header.
constexpr unsigned int kScratchUnits = 256;
unsigned short scratch[kScratchUnits];

const unsigned short* Formatted(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const unsigned short* text = FormatIntoScratch(scratch, kScratchUnits, format, arguments);
    va_end(arguments);
    return text;
}

const unsigned short* Word(bool value) {
    return value ? kTrue : kFalse;
}

using Encoder = void (*)(const char*, unsigned int, CUnicodeString&);

// The encoded text of the bytes, or false for a null or refused `data`, which writes nothing.
bool Encode(Encoder encode, const char* data, unsigned int offset, unsigned int count,
            CUnicodeString& text) {
    if (data == nullptr || !BNValidReadPtr(data + offset, count))
        return false;
    // No bytes make no text; the base64 encoder would first ask for 2.8 GB to find that out.
    if (count == 0)
        return true;
    try {
        encode(data + offset, count, text);
    } catch (const vorn::base::CMemoryException&) {
        throw CIOException(kSource, __LINE__, "Memory full.", nullptr);
    }
    return true;
}

} // namespace

CXMLWriter::CXMLWriter() {}

CXMLWriter::~CXMLWriter() {}

void CXMLWriter::WriteElementBool(unsigned short const* local, unsigned short const* uri,
                                  bool value) {
    WriteElementString(local, uri, Word(value));
}
void CXMLWriter::WriteElementBool(unsigned short const* local, bool value) {
    WriteElementString(local, Word(value));
}
void CXMLWriter::WriteElementShort(unsigned short const* local, unsigned short const* uri,
                                   short value) {
    WriteElementString(local, uri, Formatted("%d", value));
}
void CXMLWriter::WriteElementShort(unsigned short const* local, short value) {
    WriteElementString(local, Formatted("%d", value));
}
void CXMLWriter::WriteElementLong(unsigned short const* local, unsigned short const* uri,
                                  int value) {
    WriteElementString(local, uri, Formatted("%ld", value));
}
void CXMLWriter::WriteElementLong(unsigned short const* local, int value) {
    WriteElementString(local, Formatted("%ld", value));
}
void CXMLWriter::WriteElementUnsignedLong(unsigned short const* local, unsigned short const* uri,
                                          unsigned int value) {
    WriteElementString(local, uri, Formatted("%lu", value));
}
void CXMLWriter::WriteElementUnsignedLong(unsigned short const* local, unsigned int value) {
    WriteElementString(local, Formatted("%lu", value));
}
void CXMLWriter::WriteElementFloat(unsigned short const* local, unsigned short const* uri,
                                   float value) {
    WriteElementString(local, uri, Formatted("%f", static_cast<double>(value)));
}
void CXMLWriter::WriteElementFloat(unsigned short const* local, float value) {
    WriteElementString(local, Formatted("%f", static_cast<double>(value)));
}
void CXMLWriter::WriteElementDouble(unsigned short const* local, unsigned short const* uri,
                                    double value) {
    WriteElementString(local, uri, Formatted("%lf", value));
}
void CXMLWriter::WriteElementDouble(unsigned short const* local, double value) {
    WriteElementString(local, Formatted("%lf", value));
}

void CXMLWriter::WriteElementBinHex(unsigned short const* local, unsigned short const* uri,
                                    char const* data, unsigned int offset, unsigned int count) {
    CUnicodeString text;
    if (Encode(CBinaryData::ToBinHexUnicodeString, data, offset, count, text))
        WriteElementString(local, uri, text);
}
void CXMLWriter::WriteElementBinHex(unsigned short const* local, char const* data,
                                    unsigned int offset, unsigned int count) {
    CUnicodeString text;
    if (Encode(CBinaryData::ToBinHexUnicodeString, data, offset, count, text))
        WriteElementString(local, text);
}
void CXMLWriter::WriteElementBase64(unsigned short const* local, unsigned short const* uri,
                                    char const* data, unsigned int offset, unsigned int count) {
    CUnicodeString text;
    if (Encode(CBinaryData::ToBase64UnicodeString, data, offset, count, text))
        WriteElementString(local, uri, text);
}
void CXMLWriter::WriteElementBase64(unsigned short const* local, char const* data,
                                    unsigned int offset, unsigned int count) {
    CUnicodeString text;
    if (Encode(CBinaryData::ToBase64UnicodeString, data, offset, count, text))
        WriteElementString(local, text);
}

void CXMLWriter::WriteAttrBool(unsigned short const* local, unsigned short const* uri, bool value) {
    WriteAttribute(local, uri, Word(value));
}
void CXMLWriter::WriteAttrBool(unsigned short const* local, bool value) {
    WriteAttribute(local, Word(value));
}
void CXMLWriter::WriteAttrShort(unsigned short const* local, unsigned short const* uri,
                                short value) {
    WriteAttribute(local, uri, Formatted("%d", value));
}
void CXMLWriter::WriteAttrShort(unsigned short const* local, short value) {
    WriteAttribute(local, Formatted("%d", value));
}
void CXMLWriter::WriteAttrLong(unsigned short const* local, unsigned short const* uri, int value) {
    WriteAttribute(local, uri, Formatted("%ld", value));
}
void CXMLWriter::WriteAttrLong(unsigned short const* local, int value) {
    WriteAttribute(local, Formatted("%ld", value));
}
void CXMLWriter::WriteAttrUnsignedLong(unsigned short const* local, unsigned short const* uri,
                                       unsigned int value) {
    WriteAttribute(local, uri, Formatted("%lu", value));
}
void CXMLWriter::WriteAttrUnsignedLong(unsigned short const* local, unsigned int value) {
    WriteAttribute(local, Formatted("%lu", value));
}
void CXMLWriter::WriteAttrFloat(unsigned short const* local, unsigned short const* uri,
                                float value) {
    WriteAttribute(local, uri, Formatted("%f", static_cast<double>(value)));
}
void CXMLWriter::WriteAttrFloat(unsigned short const* local, float value) {
    WriteAttribute(local, Formatted("%f", static_cast<double>(value)));
}
void CXMLWriter::WriteAttrDouble(unsigned short const* local, unsigned short const* uri,
                                 double value) {
    WriteAttribute(local, uri, Formatted("%lf", value));
}
void CXMLWriter::WriteAttrDouble(unsigned short const* local, double value) {
    WriteAttribute(local, Formatted("%lf", value));
}

void CXMLWriter::WriteBool(bool value) {
    WriteString(Word(value));
}
void CXMLWriter::WriteShort(short value) {
    WriteString(Formatted("%d", value));
}
void CXMLWriter::WriteLong(int value) {
    WriteString(Formatted("%ld", value));
}
void CXMLWriter::WriteUnsignedLong(unsigned int value) {
    WriteString(Formatted("%lu", value));
}
void CXMLWriter::WriteFloat(float value) {
    WriteString(Formatted("%f", static_cast<double>(value)));
}
void CXMLWriter::WriteDouble(double value) {
    WriteString(Formatted("%lf", value));
}

void CXMLWriter::WriteBase64(char const* data, unsigned int offset, unsigned int count) {
    CUnicodeString text;
    if (Encode(CBinaryData::ToBase64UnicodeString, data, offset, count, text))
        WriteString(text);
}

void CXMLWriter::WriteBinHex(char const* data, unsigned int offset, unsigned int count) {
    CUnicodeString text;
    if (Encode(CBinaryData::ToBinHexUnicodeString, data, offset, count, text))
        WriteString(text);
}

void CXMLWriter::WriteObject(IXMLSerializable const& object) {
    object.WriteXML(*this);
}

} // namespace vorn::io

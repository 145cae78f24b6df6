#include <vorn/io/XMLReader.h>

#include <vorn/base/BinaryData.h>
#include <vorn/base/Bool.h>
#include <vorn/base/NumberFormatException.h>
#include <vorn/base/System.h>
#include <vorn/io/XMLException.h>

#include "platform/Memory.h"
#include "platform/NumberParse.h"
#include "platform/UniText.h"
#include "vorn/io/XMLReaderState.h"
#include "vorn/io/XMLTokens.h"

namespace vorn::io {

using vorn::base::CBinaryData;
using vorn::base::CBool;
using vorn::base::CException;
using vorn::base::CMemoryException;
using vorn::base::CNullReferenceException;
using vorn::base::CNumberFormatException;
using vorn::base::CRef;
using vorn::base::CSystem;
using vorn::base::CUnicodeString;

VORN_DEFINE_CLASS_BASE(CXMLReader, "vorn::io::CXMLReader", "vorn::base::CObject")

IXMLSerializable::~IXMLSerializable() = default;

namespace {

const char* const kSource = "vorn/io/XMLReader";
const unsigned short kUInt64Format[] = {'%', 'l', 'l', 'u', 0};
const char* const kUInt64Arguments[] = {"%llu", nullptr};

[[noreturn]] void Fail(unsigned int line, const char* words) {
    ThrowIO(kSource, line, words);
}

[[noreturn]] void Reprint(const CException& e, unsigned int line, const char* words) {
    ReplaceWith(e, kSource, line, words);
}

// TrimLeft and TrimRight, asked only when there is white space to cut: each unshares the text
// first, and most values have none.
void Trim(CUnicodeString& value) {
    const unsigned int length = value.GetLength();
    if (length == 0)
        return;
    if (ZK::isuspace(value[0u]))
        value.TrimLeft();
    if (!value.IsEmpty() && ZK::isuspace(value[value.GetLength() - 1]))
        value.TrimRight();
}

bool ParseLiteral(const CUnicodeString& text, bool& value) {
    if (text == CBool::WSZ_FALSE)
        value = false;
    else if (text == CBool::WSZ_TRUE)
        value = true;
    else
        return false;
    return true;
}

template <typename T> bool ParseLiteral(const CUnicodeString& text, T& value) {
    return ZK::strtovalue(text, value, ZK::ToValueStrict, ZK::TrimWSNone);
}

bool ParseLiteral(const CUnicodeString& text, unsigned long long& value) {
    return ZK::checkedsscanf(0, text, kUInt64Format, kUInt64Arguments, &value) >= 1;
}

// The current token's value, trimmed, as a T.
template <typename T>
T ReadCurrent(const CXMLReader& reader, const char* badLiteral, const char* noToken) {
    try {
        CUnicodeString text = reader.GetCurrentToken()->GetValue();
        Trim(text);
        T value{};
        if (!ParseLiteral(text, value))
            throw CXMLException(kSource, __LINE__, badLiteral, nullptr);
        return value;
    } catch (const CMemoryException&) {
        Fail(__LINE__, "Memory full.");
    } catch (const CNullReferenceException& e) {
        Reprint(e, __LINE__, noToken);
    }
}

IXMLStartElementToken& StartElementOf(const CXMLReader& reader) {
    const CRef<IXMLToken>& token = reader.GetCurrentToken();
    if (token->GetType() != XMLTokenStartElement)
        Fail(__LINE__, "Attributes available only in start element nodes.");
    return AsStartElement(token, kSource, __LINE__);
}

// An attribute's value, untrimmed, as a T.
template <typename T, typename... Name>
T ReadAttr(const CXMLReader& reader, const char* badLiteral, Name... name) {
    try {
        const CUnicodeString text = StartElementOf(reader).GetAttribute(name...);
        T value{};
        if (!ParseLiteral(text, value))
            throw CXMLException(kSource, __LINE__, badLiteral, nullptr);
        return value;
    } catch (const CMemoryException&) {
        Fail(__LINE__, "Memory full.");
    }
}

// Start tag, text, the typed read of the current token, end tag.
template <typename T, typename... Name>
T ReadElement(CXMLReader& reader, T (CXMLReader::*read)() const, Name... name) {
    reader.ReadStartElement(name...);
    reader.ReadElementText();
    const T value = (reader.*read)();
    reader.ReadEndElement(name...);
    return value;
}

template <typename... Name>
void ReadElementBinary(CXMLReader& reader, void (CXMLReader::*read)(char*&, unsigned int&) const,
                       char*& data, unsigned int& size, Name... name) {
    data = nullptr;
    size = 0;
    try {
        reader.ReadStartElement(name...);
        reader.ReadElementText();
        (reader.*read)(data, size);
        reader.ReadEndElement(name...);
    } catch (...) {
        ZK_free(data);
        data = nullptr;
        size = 0;
        throw;
    }
}

template <typename... Name> CUnicodeString ReadStringElement(CXMLReader& reader, Name... name) {
    try {
        reader.ReadStartElement(name...);
        CUnicodeString text;
        if (reader.ReadElementTextIfAvailable())
            text = reader.GetCurrentToken()->GetValue();
        reader.ReadEndElement(name...);
        return text;
    } catch (const CNullReferenceException& e) {
        Reprint(e, __LINE__, "Failed to read element with string content.");
    }
}

using Parser = void (*)(const CUnicodeString&, char*&, unsigned int&);

void ReadBinary(const CXMLReader& reader, Parser parse, char*& data, unsigned int& size,
                const char* failure) {
    data = nullptr;
    size = 0;
    try {
        CUnicodeString text = reader.GetCurrentToken()->GetValue();
        Trim(text);
        parse(text, data, size);
        return;
    } catch (...) {
        // The parsers leave a block behind when a character is bad; nothing half-made goes out.
        ZK_free(data);
        data = nullptr;
        size = 0;
        try {
            throw;
        } catch (const CIOException&) {
            throw;
        } catch (const CMemoryException&) {
            throw;
        } catch (const CNumberFormatException&) {
            // Both forms say binhex.
            Fail(__LINE__, "Invalid binhex encoded string literal.");
        } catch (const CException& e) {
            Reprint(e, __LINE__, failure);
        }
    }
}

} // namespace

CXMLReader::~CXMLReader() = default;

XMLTokenType CXMLReader::GetCurrentTokenType() const {
    try {
        return GetCurrentToken()->GetType();
    } catch (const CNullReferenceException& e) {
        Reprint(e, __LINE__, "Failed to get the token type of current XML token.");
    }
}

CUnicodeString CXMLReader::GetCurrentTokenValue() const {
    try {
        return GetCurrentToken()->GetValue();
    } catch (const CNullReferenceException& e) {
        Reprint(e, __LINE__, "Failed to get the value of current XML token.");
    }
}

// ---- The current token

bool CXMLReader::ReadBool() const {
    return ReadCurrent<bool>(*this, "Invalid bool literal.",
                             "Failed to read the value of current token as bool.");
}

short CXMLReader::ReadShort() const {
    return ReadCurrent<short>(*this, "Invalid short literal.",
                              "Failed to read the value of current token as short.");
}

int CXMLReader::ReadLong() const {
    return ReadCurrent<int>(*this, "Invalid Int32 literal.",
                            "Failed to read the value of current token as Int32.");
}

unsigned int CXMLReader::ReadUnsignedLong() const {
    // Says Int32 on a bad literal, as it always has.
    return ReadCurrent<unsigned int>(*this, "Invalid Int32 literal.",
                                     "Failed to read the value of current token as UInt32.");
}

long long CXMLReader::ReadInt64() const {
    return ReadCurrent<long long>(*this, "Invalid Int64 literal.",
                                  "Failed to read the value of current token as Int64.");
}

unsigned long long CXMLReader::ReadUInt64() const {
    return ReadCurrent<unsigned long long>(*this, "Invalid UInt64 literal.",
                                           "Failed to read the value of current token as UInt64.");
}

float CXMLReader::ReadFloat() const {
    return ReadCurrent<float>(*this, "Invalid float literal.",
                              "Failed to read the value of current token as float.");
}

double CXMLReader::ReadDouble() const {
    return ReadCurrent<double>(*this, "Invalid double literal.",
                               "Failed to read the value of current token as double.");
}

CUnicodeString CXMLReader::ReadString() const {
    try {
        return GetCurrentToken()->GetValue();
    } catch (const CMemoryException&) {
        Fail(__LINE__, "Memory full.");
    }
}

void CXMLReader::ReadBinHex(char*& data, unsigned int& size) const {
    ReadBinary(*this, &CBinaryData::ParseBinHexUnicodeString, data, size,
               "Failed to read the value of current token as binhex encoded binary data.");
}

void CXMLReader::ReadBase64(char*& data, unsigned int& size) const {
    ReadBinary(*this, &CBinaryData::ParseBase64UnicodeString, data, size,
               "Failed to read the value of current token as base64 encoded binary data.");
}

// ---- Attributes of the current start element

bool CXMLReader::HasAttribute(const unsigned short* localName, const unsigned short* namespaceURI) {
    return StartElementOf(*this).HasAttribute(namespaceURI, localName);
}

bool CXMLReader::HasAttribute(const unsigned short* qualifiedName) {
    return StartElementOf(*this).HasAttribute(qualifiedName);
}

CUnicodeString CXMLReader::ReadAttribute(const unsigned short* namespaceURI,
                                         const unsigned short* localName) {
    return StartElementOf(*this).GetAttribute(namespaceURI, localName);
}

CUnicodeString CXMLReader::ReadAttribute(const unsigned short* qualifiedName) {
    return StartElementOf(*this).GetAttribute(qualifiedName);
}

bool CXMLReader::ReadAttrBool(const unsigned short* namespaceURI, const unsigned short* localName) {
    return ReadAttr<bool>(*this, "Invalid bool literal.", namespaceURI, localName);
}

bool CXMLReader::ReadAttrBool(const unsigned short* qualifiedName) {
    return ReadAttr<bool>(*this, "Invalid bool literal.", qualifiedName);
}

short CXMLReader::ReadAttrShort(const unsigned short* namespaceURI,
                                const unsigned short* localName) {
    return ReadAttr<short>(*this, "Invalid short literal.", namespaceURI, localName);
}

short CXMLReader::ReadAttrShort(const unsigned short* qualifiedName) {
    return ReadAttr<short>(*this, "Invalid short literal.", qualifiedName);
}

int CXMLReader::ReadAttrLong(const unsigned short* namespaceURI, const unsigned short* localName) {
    return ReadAttr<int>(*this, "Invalid Int32 literal.", namespaceURI, localName);
}

int CXMLReader::ReadAttrLong(const unsigned short* qualifiedName) {
    return ReadAttr<int>(*this, "Invalid Int32 literal.", qualifiedName);
}

unsigned int CXMLReader::ReadAttrUnsignedLong(const unsigned short* namespaceURI,
                                              const unsigned short* localName) {
    // Int32 here, UInt32 in the qualified form: both are what callers have seen.
    return ReadAttr<unsigned int>(*this, "Invalid Int32 literal.", namespaceURI, localName);
}

unsigned int CXMLReader::ReadAttrUnsignedLong(const unsigned short* qualifiedName) {
    return ReadAttr<unsigned int>(*this, "Invalid UInt32 literal.", qualifiedName);
}

float CXMLReader::ReadAttrFloat(const unsigned short* namespaceURI,
                                const unsigned short* localName) {
    return ReadAttr<float>(*this, "Invalid float literal.", namespaceURI, localName);
}

float CXMLReader::ReadAttrFloat(const unsigned short* qualifiedName) {
    return ReadAttr<float>(*this, "Invalid float literal.", qualifiedName);
}

double CXMLReader::ReadAttrDouble(const unsigned short* namespaceURI,
                                  const unsigned short* localName) {
    return ReadAttr<double>(*this, "Invalid double literal.", namespaceURI, localName);
}

double CXMLReader::ReadAttrDouble(const unsigned short* qualifiedName) {
    return ReadAttr<double>(*this, "Invalid double literal.", qualifiedName);
}

// ---- CDATA

void CXMLReader::ReadCDATA(CUnicodeString& text) {
    ReadCDATA();
    try {
        text = GetCurrentToken()->GetValue();
    } catch (const CNullReferenceException& e) {
        Reprint(e, __LINE__, "Failed to read XML CDATA token.");
    }
}

void CXMLReader::ReadCDATA() {
    try {
        while (ReadToken())
            if (GetCurrentToken()->GetType() == XMLTokenCDATA)
                return;
    } catch (const CNullReferenceException& e) {
        Reprint(e, __LINE__, "Failed to read XML CDATA token.");
    }
    // ReadToken said false: the current reference is empty.
    Fail(__LINE__, "End of stream reached.");
}

// ---- Whole elements

bool CXMLReader::ReadElementBool(const unsigned short* localName,
                                 const unsigned short* namespaceURI) {
    return ReadElement(*this, &CXMLReader::ReadBool, localName, namespaceURI);
}

bool CXMLReader::ReadElementBool(const unsigned short* qualifiedName) {
    return ReadElement(*this, &CXMLReader::ReadBool, qualifiedName);
}

short CXMLReader::ReadElementShort(const unsigned short* localName,
                                   const unsigned short* namespaceURI) {
    return ReadElement(*this, &CXMLReader::ReadShort, localName, namespaceURI);
}

short CXMLReader::ReadElementShort(const unsigned short* qualifiedName) {
    return ReadElement(*this, &CXMLReader::ReadShort, qualifiedName);
}

int CXMLReader::ReadElementLong(const unsigned short* localName,
                                const unsigned short* namespaceURI) {
    return ReadElement(*this, &CXMLReader::ReadLong, localName, namespaceURI);
}

int CXMLReader::ReadElementLong(const unsigned short* qualifiedName) {
    return ReadElement(*this, &CXMLReader::ReadLong, qualifiedName);
}

unsigned int CXMLReader::ReadElementUnsignedLong(const unsigned short* localName,
                                                 const unsigned short* namespaceURI) {
    return ReadElement(*this, &CXMLReader::ReadUnsignedLong, localName, namespaceURI);
}

unsigned int CXMLReader::ReadElementUnsignedLong(const unsigned short* qualifiedName) {
    return ReadElement(*this, &CXMLReader::ReadUnsignedLong, qualifiedName);
}

long long CXMLReader::ReadElementInt64(const unsigned short* localName,
                                       const unsigned short* namespaceURI) {
    return ReadElement(*this, &CXMLReader::ReadInt64, localName, namespaceURI);
}

long long CXMLReader::ReadElementInt64(const unsigned short* qualifiedName) {
    return ReadElement(*this, &CXMLReader::ReadInt64, qualifiedName);
}

unsigned long long CXMLReader::ReadElementUInt64(const unsigned short* localName,
                                                 const unsigned short* namespaceURI) {
    return ReadElement(*this, &CXMLReader::ReadUInt64, localName, namespaceURI);
}

unsigned long long CXMLReader::ReadElementUInt64(const unsigned short* qualifiedName) {
    return ReadElement(*this, &CXMLReader::ReadUInt64, qualifiedName);
}

float CXMLReader::ReadElementFloat(const unsigned short* localName,
                                   const unsigned short* namespaceURI) {
    return ReadElement(*this, &CXMLReader::ReadFloat, localName, namespaceURI);
}

float CXMLReader::ReadElementFloat(const unsigned short* qualifiedName) {
    return ReadElement(*this, &CXMLReader::ReadFloat, qualifiedName);
}

double CXMLReader::ReadElementDouble(const unsigned short* localName,
                                     const unsigned short* namespaceURI) {
    return ReadElement(*this, &CXMLReader::ReadDouble, localName, namespaceURI);
}

double CXMLReader::ReadElementDouble(const unsigned short* qualifiedName) {
    return ReadElement(*this, &CXMLReader::ReadDouble, qualifiedName);
}

CUnicodeString CXMLReader::ReadElementString(const unsigned short* localName,
                                             const unsigned short* namespaceURI) {
    return ReadStringElement(*this, localName, namespaceURI);
}

CUnicodeString CXMLReader::ReadElementString(const unsigned short* qualifiedName) {
    return ReadStringElement(*this, qualifiedName);
}

void CXMLReader::ReadElementBinHex(const unsigned short* localName,
                                   const unsigned short* namespaceURI, char*& data,
                                   unsigned int& size) {
    ReadElementBinary(*this, &CXMLReader::ReadBinHex, data, size, localName, namespaceURI);
}

void CXMLReader::ReadElementBinHex(const unsigned short* qualifiedName, char*& data,
                                   unsigned int& size) {
    ReadElementBinary(*this, &CXMLReader::ReadBinHex, data, size, qualifiedName);
}

void CXMLReader::ReadElementBase64(const unsigned short* localName,
                                   const unsigned short* namespaceURI, char*& data,
                                   unsigned int& size) {
    ReadElementBinary(*this, &CXMLReader::ReadBase64, data, size, localName, namespaceURI);
}

void CXMLReader::ReadElementBase64(const unsigned short* qualifiedName, char*& data,
                                   unsigned int& size) {
    ReadElementBinary(*this, &CXMLReader::ReadBase64, data, size, qualifiedName);
}

void CXMLReader::ReadObject(IXMLSerializable& object) {
    object.ReadXML(*this);
}

} // namespace vorn::io

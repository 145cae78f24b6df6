#include <vorn/base/BinaryData.h>
#include <vorn/base/IllegalArgumentException.h>
#include <vorn/base/MemoryException.h>
#include <vorn/base/NumberFormatException.h>
#include <vorn/base/StringBuffer.h>
#include <vorn/base/UnicodeStringBuffer.h>

#include <cctype>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "platform/Memory.h"
#include "platform/PtrCheck.h"
#include "platform/UniText.h"

namespace vorn::base {

namespace {

constexpr const char* kSource = "vorn/base/BinaryData";
constexpr const char* kBadBase64Char = "Invalid base 64 char found.";
constexpr const char* kBadBinHexDigit = "Invalid binhex digit.";
constexpr const char* kBadValueBuffer = "Invalid value buffer.";
constexpr const char* kBadValueBufferLength = "Invalid value buffer length.";
constexpr const char* kBadDataPointer = "Illegal data pointer.";
constexpr unsigned int kTextIncrement = 10;

constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr char kPad = '=';

struct WideAlphabet {
    unsigned short units[64];
};
constexpr WideAlphabet MakeWideAlphabet() {
    WideAlphabet wide{};
    for (int i = 0; i < 64; ++i)
        wide.units[i] = static_cast<unsigned char>(kAlphabet[i]);
    return wide;
}
constexpr WideAlphabet kWideAlphabet = MakeWideAlphabet();

// For each byte: whether it belongs to the alphabet, and its place there.
struct Base64Tables {
    bool member[256];
    unsigned char value[256];
};
constexpr Base64Tables MakeTables() {
    Base64Tables tables{};
    for (int i = 0; i < 64; ++i) {
        const auto c = static_cast<unsigned char>(kAlphabet[i]);
        tables.member[c] = true;
        tables.value[c] = static_cast<unsigned char>(i);
    }
    return tables;
}
constexpr Base64Tables kTables = MakeTables();

template <typename Char> bool InAlphabet(Char c) {
    const auto v = static_cast<unsigned int>(static_cast<std::make_unsigned_t<Char>>(c));
    return v < 256 && kTables.member[v];
}

template <typename Char> unsigned int ValueOf(Char c) {
    return kTables.value[static_cast<std::make_unsigned_t<Char>>(c)];
}

// Where each of the three group checks throws, by character width.
struct GroupLines {
    unsigned int full;
    unsigned int onePad;
    unsigned int twoPads;
};
constexpr GroupLines kNarrowGroup = {202, 185, 172};
constexpr GroupLines kWideGroup = {253, 236, 222};

// Decodes the four characters at `group` to `out`; returns the bytes written.
template <typename Char>
unsigned int DecodeGroup(const Char* group, unsigned char* out, const GroupLines& lines) {
    auto require = [](bool ok, unsigned int line) {
        if (!ok)
            throw CNumberFormatException(kSource, line, kBadBase64Char, nullptr);
    };
    if (group[3] != static_cast<Char>(kPad)) {
        require(InAlphabet(group[0]) && InAlphabet(group[1]) && InAlphabet(group[2]) &&
                    InAlphabet(group[3]),
                lines.full);
    } else if (group[2] == static_cast<Char>(kPad)) {
        require(InAlphabet(group[0]) && InAlphabet(group[1]), lines.twoPads);
        out[0] = static_cast<unsigned char>(ValueOf(group[0]) << 2 | ValueOf(group[1]) >> 4);
        return 1;
    } else {
        require(InAlphabet(group[0]) && InAlphabet(group[1]) && InAlphabet(group[2]), lines.onePad);
        out[0] = static_cast<unsigned char>(ValueOf(group[0]) << 2 | ValueOf(group[1]) >> 4);
        out[1] = static_cast<unsigned char>(ValueOf(group[1]) << 4 | ValueOf(group[2]) >> 2);
        return 2;
    }
    out[0] = static_cast<unsigned char>(ValueOf(group[0]) << 2 | ValueOf(group[1]) >> 4);
    out[1] = static_cast<unsigned char>(ValueOf(group[1]) << 4 | ValueOf(group[2]) >> 2);
    out[2] = static_cast<unsigned char>(ValueOf(group[2]) << 6 | ValueOf(group[3]));
    return 3;
}

template <typename Char>
void ParseBase64(const Char* text, unsigned int textLength, char*& data, unsigned int& length,
                 unsigned int badLengthLine, unsigned int memoryLine, const GroupLines& lines) {
    if (textLength % 4 != 0)
        throw CNumberFormatException(kSource, badLengthLine, "Invalid base64 encoded binary data.",
                                     nullptr);
    const unsigned int groups = textLength / 4;
    // Callers are told one byte per group, but every decoded byte has its room.
    data = static_cast<char*>(ZK_malloc(std::size_t{groups} * 3));
    if (data == nullptr)
        throw CMemoryException(kSource, memoryLine);
    length = groups;
    auto* out = reinterpret_cast<unsigned char*>(data);
    for (unsigned int i = 0; i < textLength; i += 4)
        out += DecodeGroup(text + i, out, lines);
}

unsigned int BinHexDigit(char c, unsigned int line) {
    if (std::isdigit(static_cast<unsigned char>(c)))
        return static_cast<unsigned int>(c - '0');
    if (c >= 'A' && c <= 'F')
        return static_cast<unsigned int>(c - 'A' + 10);
    throw CNumberFormatException(kSource, line, kBadBinHexDigit, nullptr);
}

unsigned int BinHexDigit(unsigned short c, unsigned int line) {
    if (ZK::isudigit(c))
        return c - u'0';
    if (c >= u'A' && c <= u'F')
        return c - u'A' + 10u;
    throw CNumberFormatException(kSource, line, kBadBinHexDigit, nullptr);
}

template <typename Char>
void ParseBinHex(const Char* text, unsigned int textLength, char*& data, unsigned int& length,
                 unsigned int oddLine, unsigned int memoryLine, unsigned int digitLine) {
    if (textLength % 2 != 0)
        throw CNumberFormatException(kSource, oddLine, "Invalid binhex encoded binary data.",
                                     nullptr);
    const unsigned int bytes = textLength / 2;
    data = static_cast<char*>(ZK_malloc(bytes));
    if (data == nullptr)
        throw CMemoryException(kSource, memoryLine);
    length = bytes;
    for (unsigned int i = 0; i < bytes; ++i) {
        const unsigned int high = BinHexDigit(text[2 * i], digitLine);
        data[i] = static_cast<char>(high << 4 | BinHexDigit(text[2 * i + 1], digitLine));
    }
}

// The text buffers count in 32 bits; a block whose text can't be counted gets no buffer.
unsigned int TextCapacity(std::uint64_t capacity) {
    if (capacity > 0xFFFFFFFFu)
        throw CMemoryException(kSource, __LINE__);
    return static_cast<unsigned int>(capacity);
}

template <typename Char>
void EncodeBase64(const unsigned char* data, unsigned int length, Char* out, const Char* alphabet) {
    unsigned int i = 0;
    for (; length - i >= 3; i += 3) {
        *out++ = alphabet[data[i] >> 2];
        *out++ = alphabet[(data[i] & 0x03) << 4 | data[i + 1] >> 4];
        *out++ = alphabet[(data[i + 1] & 0x0F) << 2 | data[i + 2] >> 6];
        *out++ = alphabet[data[i + 2] & 0x3F];
    }
    if (length - i == 1) {
        *out++ = alphabet[data[i] >> 2];
        *out++ = alphabet[(data[i] & 0x03) << 4];
        *out++ = static_cast<Char>(kPad);
        *out++ = static_cast<Char>(kPad);
    } else if (length - i == 2) {
        *out++ = alphabet[data[i] >> 2];
        *out++ = alphabet[(data[i] & 0x03) << 4 | data[i + 1] >> 4];
        *out++ = alphabet[(data[i + 1] & 0x0F) << 2];
        *out++ = static_cast<Char>(kPad);
    }
}

// Room for the base64 text of `length` bytes with its terminator, and the terminator's place.
// For 0 the unsigned arithmetic wraps, and the buffer asked for is that large.
unsigned int Base64Capacity(unsigned int length) {
    if (length == 0)
        return (length - 1) / 3 * 4 + 5;
    return TextCapacity((std::uint64_t{length} - 1) / 3 * 4 + 5);
}

template <typename Char>
void EncodeBinHex(const unsigned char* data, unsigned int length, Char* out) {
    auto digit = [](unsigned int v) { return static_cast<Char>(v < 10 ? '0' + v : '7' + v); };
    for (unsigned int i = 0; i < length; ++i) {
        *out++ = digit(data[i] >> 4);
        *out++ = digit(data[i] & 0x0F);
    }
}

void CheckDataPointer(const char* data, unsigned int length, unsigned int line) {
    if (data == nullptr || !BNValidReadPtr(data, length))
        throw CIllegalArgumentException(kSource, line, kBadDataPointer);
}

const unsigned char* Bytes(const char* data) {
    return reinterpret_cast<const unsigned char*>(data);
}

} // namespace

// ---- Construction and assignment

CBinaryData::CBinaryData(unsigned int length) : m_data(nullptr), m_length(0) {
    if (length == 0)
        return;
    m_data = static_cast<char*>(ZK_malloc(length));
    if (m_data == nullptr)
        throw CMemoryException(kSource, 405);
    std::memset(m_data, 0, length);
    m_length = length;
}

CBinaryData::CBinaryData(const char* data, unsigned int length) : m_data(nullptr), m_length(0) {
    if (data == nullptr || !BNValidReadPtr(data, length))
        throw CIllegalArgumentException(kSource, 422, "Invalid binary data.");
    m_data = static_cast<char*>(ZK_malloc(length));
    if (m_data == nullptr)
        throw CMemoryException(kSource, 428);
    std::memcpy(m_data, data, length);
    m_length = length;
}

CBinaryData::CBinaryData(const CBinaryData& source) : m_data(nullptr), m_length(0) {
    if (source.m_data == nullptr)
        return;
    m_data = static_cast<char*>(ZK_malloc(source.m_length));
    if (m_data == nullptr)
        throw CMemoryException(kSource, 449);
    std::memcpy(m_data, source.m_data, source.m_length);
    m_length = source.m_length;
}

CBinaryData::~CBinaryData() {
    if (m_data != nullptr)
        ZK_free(m_data);
}

CBinaryData& CBinaryData::operator=(const CBinaryData& source) {
    if (this == &source)
        return *this;
    if (source.m_data != nullptr && source.m_length < m_length) {
        m_length = source.m_length;
        std::memcpy(m_data, source.m_data, m_length);
    } else if (m_data != nullptr) {
        ZK_free(m_data);
    }
    if (source.m_data == nullptr) {
        m_data = nullptr;
        m_length = 0;
        return *this;
    }
    // After the copy into the present block above, that block is overwritten here unreleased and
    // lost: the result is right and the block leaks, which is how this assignment is defined.
    m_data = static_cast<char*>(ZK_malloc(source.m_length));
    if (m_data == nullptr) {
        m_length = 0;
        throw CMemoryException(kSource, 499);
    }
    std::memcpy(m_data, source.m_data, source.m_length);
    m_length = source.m_length;
    return *this;
}

// ---- Comparison and length

bool CBinaryData::operator==(const CBinaryData& other) const {
    if (this == &other)
        return true;
    if (m_length != other.m_length)
        return false;
    return m_length == 0 || std::memcmp(m_data, other.m_data, m_length) == 0;
}

int CBinaryData::Compare(const CBinaryData& other) const {
    if (m_length != other.m_length)
        return m_length < other.m_length ? -1 : 1;
    return m_length == 0 ? 0 : std::memcmp(m_data, other.m_data, m_length);
}

void CBinaryData::Truncate(unsigned int length) {
    if (length > m_length)
        throw CIllegalArgumentException(kSource, 547, "Invalid new data length.");
    if (length == 0) {
        ZK_free(m_data);
        m_data = nullptr;
    }
    m_length = length;
}

// ---- Binhex into this object

void CBinaryData::FromBinHexString(const char* text) {
    if (text == nullptr || *text == '\0')
        throw CIllegalArgumentException(kSource, 585, kBadValueBuffer);
    FromBinHexString(text, static_cast<unsigned int>(std::strlen(text)));
}

void CBinaryData::FromBinHexString(const char* text, unsigned int length) {
    if (text == nullptr)
        throw CIllegalArgumentException(kSource, 604, kBadValueBuffer);
    if (length == 0)
        throw CIllegalArgumentException(kSource, 606, kBadValueBufferLength);
    ZK_free(m_data);
    ParseBinHexString(text, length, m_data, m_length);
}

void CBinaryData::FromBinHexUnicodeString(const unsigned short* text) {
    if (text == nullptr || *text == 0)
        throw CIllegalArgumentException(kSource, 625, kBadValueBuffer);
    FromBinHexUnicodeString(text, static_cast<unsigned int>(ZK::ucslen(text)));
}

void CBinaryData::FromBinHexUnicodeString(const unsigned short* text, unsigned int length) {
    if (text == nullptr)
        throw CIllegalArgumentException(kSource, 644, kBadValueBuffer);
    if (length == 0)
        throw CIllegalArgumentException(kSource, 646, kBadValueBufferLength);
    ZK_free(m_data);
    ParseBinHexUnicodeString(text, length, m_data, m_length);
}

// ---- Binhex of this object

CString CBinaryData::ToBinHexString() {
    CString result;
    ToBinHexString(result);
    return result;
}

void CBinaryData::ToBinHexString(CString& result) const {
    if (m_length != 0)
        ToBinHexString(m_data, m_length, result);
}

CUnicodeString CBinaryData::ToBinHexUnicodeString() {
    CUnicodeString result;
    ToBinHexUnicodeString(result);
    return result;
}

void CBinaryData::ToBinHexUnicodeString(CUnicodeString& result) const {
    if (m_length != 0)
        ToBinHexUnicodeString(m_data, m_length, result);
}

// ---- Parsers

void CBinaryData::ParseBase64String(const CString& text, char*& data, unsigned int& length) {
    data = nullptr;
    length = 0;
    ParseBase64(static_cast<const char*>(text), text.GetLength(), data, length, 672, 679,
                kNarrowGroup);
}

void CBinaryData::ParseBase64UnicodeString(const CUnicodeString& text, char*& data,
                                           unsigned int& length) {
    data = nullptr;
    length = 0;
    ParseBase64(static_cast<const unsigned short*>(text), text.GetLength(), data, length, 714, 721,
                kWideGroup);
}

void CBinaryData::ParseBinHexString(const CString& text, char*& data, unsigned int& length) {
    data = nullptr;
    length = 0;
    ParseBinHex(static_cast<const char*>(text), text.GetLength(), data, length, 756, 763, 269);
}

void CBinaryData::ParseBinHexString(const char* text, char*& data, unsigned int& length) {
    data = nullptr;
    length = 0;
    if (text == nullptr || *text == '\0')
        throw CIllegalArgumentException(kSource, 833, kBadValueBuffer);
    ParseBinHexString(text, static_cast<unsigned int>(std::strlen(text)), data, length);
}

void CBinaryData::ParseBinHexString(const char* text, unsigned int textLength, char*& data,
                                    unsigned int& length) {
    data = nullptr;
    length = 0;
    if (text == nullptr)
        throw CIllegalArgumentException(kSource, 848, kBadValueBuffer);
    if (textLength == 0)
        throw CIllegalArgumentException(kSource, 850, kBadValueBufferLength);
    ParseBinHex(text, textLength, data, length, 318, 325, 269);
}

void CBinaryData::ParseBinHexUnicodeString(const CUnicodeString& text, char*& data,
                                           unsigned int& length) {
    data = nullptr;
    length = 0;
    ParseBinHex(static_cast<const unsigned short*>(text), text.GetLength(), data, length, 796, 803,
                285);
}

void CBinaryData::ParseBinHexUnicodeString(const unsigned short* text, char*& data,
                                           unsigned int& length) {
    data = nullptr;
    length = 0;
    if (text == nullptr || *text == 0)
        throw CIllegalArgumentException(kSource, 865, kBadValueBuffer);
    ParseBinHexUnicodeString(text, static_cast<unsigned int>(ZK::ucslen(text)), data, length);
}

void CBinaryData::ParseBinHexUnicodeString(const unsigned short* text, unsigned int textLength,
                                           char*& data, unsigned int& length) {
    data = nullptr;
    length = 0;
    if (text == nullptr)
        throw CIllegalArgumentException(kSource, 880, kBadValueBuffer);
    if (textLength == 0)
        throw CIllegalArgumentException(kSource, 882, kBadValueBufferLength);
    ParseBinHex(text, textLength, data, length, 356, 363, 285);
}

// ---- Encoders

void CBinaryData::ToBase64String(const char* data, unsigned int length, CString& result) {
    CheckDataPointer(data, length, 907);
    const unsigned int capacity = Base64Capacity(length);
    CStringBuffer buffer(kTextIncrement);
    char* text = buffer.GetBuffer(capacity);
    EncodeBase64(Bytes(data), length, text, kAlphabet);
    text[capacity - 1] = '\0';
    result = static_cast<const char*>(buffer);
}

CString CBinaryData::ToBase64String(const char* data, unsigned int length) {
    CString result;
    ToBase64String(data, length, result);
    return result;
}

void CBinaryData::ToBase64UnicodeString(const char* data, unsigned int length,
                                        CUnicodeString& result) {
    CheckDataPointer(data, length, 946);
    const unsigned int capacity = Base64Capacity(length);
    CUnicodeStringBuffer buffer(kTextIncrement);
    unsigned short* text = buffer.GetBuffer(capacity);
    EncodeBase64(Bytes(data), length, text, kWideAlphabet.units);
    text[capacity - 1] = 0;
    result = static_cast<const unsigned short*>(buffer);
}

CUnicodeString CBinaryData::ToBase64UnicodeString(const char* data, unsigned int length) {
    CUnicodeString result;
    ToBase64UnicodeString(data, length, result);
    return result;
}

void CBinaryData::ToBinHexString(const char* data, unsigned int length, CString& result) {
    CheckDataPointer(data, length, 985);
    const unsigned int capacity = TextCapacity(std::uint64_t{length} * 2 + 1);
    CStringBuffer buffer(kTextIncrement);
    char* text = buffer.GetBuffer(capacity);
    EncodeBinHex(Bytes(data), length, text);
    text[capacity - 1] = '\0';
    result = static_cast<const char*>(buffer);
}

CString CBinaryData::ToBinHexString(const char* data, unsigned int length) {
    CString result;
    ToBinHexString(data, length, result);
    return result;
}

void CBinaryData::ToBinHexUnicodeString(const char* data, unsigned int length,
                                        CUnicodeString& result) {
    CheckDataPointer(data, length, 1024);
    const unsigned int capacity = TextCapacity(std::uint64_t{length} * 2 + 1);
    CUnicodeStringBuffer buffer(kTextIncrement);
    unsigned short* text = buffer.GetBuffer(capacity);
    EncodeBinHex(Bytes(data), length, text);
    text[capacity - 1] = 0;
    result = static_cast<const unsigned short*>(buffer);
}

CUnicodeString CBinaryData::ToBinHexUnicodeString(const char* data, unsigned int length) {
    CUnicodeString result;
    ToBinHexUnicodeString(data, length, result);
    return result;
}

} // namespace vorn::base

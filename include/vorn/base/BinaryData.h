// CBinaryData: an owned block of bytes and the library's two text forms of bytes, base64 and
// binhex (two upper-case hexadecimal digits per byte), for narrow and UTF-16 text. It is a plain
// value: a copy copies the block.
#pragma once

#include <vorn/base/Export.h>
#include <vorn/base/String.h>
#include <vorn/base/UnicodeString.h>
#include <vorn/platform/Memory.h>

namespace vorn::base {

class VORN_API CBinaryData {
public:
    CBinaryData() : m_data(nullptr), m_length(0) {}
    // `length` zero bytes; none for 0.
    explicit CBinaryData(unsigned int length);
    // A copy of `length` bytes at `data`, which must not be null.
    CBinaryData(const char* data, unsigned int length);
    CBinaryData(const CBinaryData& source);
    ~CBinaryData();

    CBinaryData& operator=(const CBinaryData& source);
    bool operator==(const CBinaryData& other) const;
    bool operator!=(const CBinaryData& other) const { return !(*this == other); }
    // A shorter block orders first whatever its bytes; equal lengths compare the bytes.
    int Compare(const CBinaryData& other) const;

    char* GetData() { return m_data; }
    const char* GetData() const { return m_data; }
    unsigned int GetDataLength() const { return m_length; }
    // Shortens the length and keeps the block; 0 releases it.
    void Truncate(unsigned int length);

    // Replace the block by the decoded text. A bad digit leaves the partly decoded block here.
    void FromBinHexString(const char* text);
    void FromBinHexString(const char* text, unsigned int length);
    void FromBinHexUnicodeString(const unsigned short* text);
    void FromBinHexUnicodeString(const unsigned short* text, unsigned int length);

    // For a length of 0 these give an empty text, or leave `result` as it is.
    CString ToBinHexString();
    void ToBinHexString(CString& result) const;
    CUnicodeString ToBinHexUnicodeString();
    void ToBinHexUnicodeString(CUnicodeString& result) const;

    // The parsers give a new block from ZK_malloc, for the caller to release with ZK_free, even
    // when decoding fails part way. The base64 ones report one byte per group of four characters
    // as `length`, while the block holds every decoded byte.
    static void ParseBase64String(const CString& text, char*& data, unsigned int& length);
    static void ParseBase64UnicodeString(const CUnicodeString& text, char*& data,
                                         unsigned int& length);
    static void ParseBinHexString(const CString& text, char*& data, unsigned int& length);
    static void ParseBinHexString(const char* text, char*& data, unsigned int& length);
    static void ParseBinHexString(const char* text, unsigned int textLength, char*& data,
                                  unsigned int& length);
    static void ParseBinHexUnicodeString(const CUnicodeString& text, char*& data,
                                         unsigned int& length);
    static void ParseBinHexUnicodeString(const unsigned short* text, char*& data,
                                         unsigned int& length);
    static void ParseBinHexUnicodeString(const unsigned short* text, unsigned int textLength,
                                         char*& data, unsigned int& length);

    // Base64 on one line, padded with '='. A length of 0 isn't set apart and asks for a text
    // buffer of 0x55555559 bytes.
    static void ToBase64String(const char* data, unsigned int length, CString& result);
    static CString ToBase64String(const char* data, unsigned int length);
    static void ToBase64UnicodeString(const char* data, unsigned int length,
                                      CUnicodeString& result);
    static CUnicodeString ToBase64UnicodeString(const char* data, unsigned int length);
    static void ToBinHexString(const char* data, unsigned int length, CString& result);
    static CString ToBinHexString(const char* data, unsigned int length);
    static void ToBinHexUnicodeString(const char* data, unsigned int length,
                                      CUnicodeString& result);
    static CUnicodeString ToBinHexUnicodeString(const char* data, unsigned int length);

private:
    char* m_data;
    unsigned int m_length;
};

} // namespace vorn::base

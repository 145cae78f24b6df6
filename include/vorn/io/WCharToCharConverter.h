// CWCharToCharConverter: turns UTF-16 code units into the bytes of one encoding. A converter
// keeps state between calls, so each belongs to one writer; GetConverter makes a new one.
#pragma once

#include <vorn/base/Base.h>
#include <vorn/base/Ref.h>
#include <vorn/base/String.h>

namespace vorn::io {

class VORN_API CWCharToCharConverter : public vorn::base::CBase {
public:
    // An empty or null encoding is refused with "Invalid encoding.".
    explicit CWCharToCharConverter(const vorn::base::CString& encoding);
    explicit CWCharToCharConverter(const char* encoding);
    CWCharToCharConverter(const CWCharToCharConverter& other);
    CWCharToCharConverter& operator=(const CWCharToCharConverter& other);
    virtual ~CWCharToCharConverter();

    // Converts the whole source range into `target + targetOffset` and returns the bytes
    // written, or -1 when `targetCount` is too small. Partial progress isn't reported.
    virtual int Convert(const unsigned short* source, unsigned int sourceOffset,
                        unsigned int sourceCount, char* target, unsigned int targetOffset,
                        unsigned int targetCount) = 0;
    // Forgets the state carried between calls.
    virtual void Reset() = 0;
    // The encoding's signature: its size alone for a null target, nothing (size 0) when `*size`
    // is too small.
    virtual void GetByteOrderMark(char* target, unsigned int* size) = 0;

    const vorn::base::CString& GetEncoding() const { return m_encoding; }

    // A new converter from the factory registered under `encoding`, or
    // CUnsupportedEncodingException.
    static vorn::base::CRef<CWCharToCharConverter>
    GetConverter(const vorn::base::CString& encoding);
    // Refuses every name: an empty one as invalid, any other through the check of
    // CWCharToCharConverterFactory::GetConverterFactory(const char*). Use the CString form.
    static vorn::base::CRef<CWCharToCharConverter> GetConverter(const char* encoding);

private:
    vorn::base::CString m_encoding;
};

} // namespace vorn::io

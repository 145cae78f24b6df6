#include <vorn/base/IllegalArgumentException.h>
#include <vorn/io/UnsupportedEncodingException.h>
#include <vorn/io/WCharToCharConverter.h>
#include <vorn/io/WCharToCharConverterFactory.h>

namespace vorn::io {

using vorn::base::CRef;
using vorn::base::CString;

namespace {

const CString& CheckedEncoding(const CString& encoding, unsigned int line) {
    if (encoding.IsEmpty())
        throw vorn::base::CIllegalArgumentException("vorn/io/WCharToCharConverter", line,
                                                    "Invalid encoding.");
    return encoding;
}

const char* CheckedEncoding(const char* encoding, unsigned int line) {
    if (encoding == nullptr || *encoding == '\0')
        throw vorn::base::CIllegalArgumentException("vorn/io/WCharToCharConverter", line,
                                                    "Invalid encoding.");
    return encoding;
}

} // namespace

CWCharToCharConverter::CWCharToCharConverter(const CString& encoding)
    : m_encoding(CheckedEncoding(encoding, __LINE__)) {}

CWCharToCharConverter::CWCharToCharConverter(const char* encoding)
    : m_encoding(CheckedEncoding(encoding, __LINE__)) {}

CWCharToCharConverter::CWCharToCharConverter(const CWCharToCharConverter& other)
    : vorn::base::CBase(other), m_encoding(other.m_encoding) {}

CWCharToCharConverter& CWCharToCharConverter::operator=(const CWCharToCharConverter& other) {
    m_encoding = other.m_encoding;
    return *this;
}

CWCharToCharConverter::~CWCharToCharConverter() = default;

CRef<CWCharToCharConverter> CWCharToCharConverter::GetConverter(const CString& encoding) {
    CWCharToCharConverterFactory* factory =
        CWCharToCharConverterFactory::GetConverterFactory(encoding);
    if (factory == nullptr)
        throw CUnsupportedEncodingException("vorn/io/WCharToCharConverter", __LINE__, encoding);
    return factory->CreateConverter();
}

CRef<CWCharToCharConverter> CWCharToCharConverter::GetConverter(const char* encoding) {
    CheckedEncoding(encoding, __LINE__);
    CWCharToCharConverterFactory* factory =
        CWCharToCharConverterFactory::GetConverterFactory(encoding);
    if (factory == nullptr)
        throw CUnsupportedEncodingException("vorn/io/WCharToCharConverter", __LINE__, encoding);
    return factory->CreateConverter();
}

} // namespace vorn::io

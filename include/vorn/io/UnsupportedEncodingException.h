// CUnsupportedEncodingException: an encoding name that no converter is registered for.
#pragma once

#include <vorn/base/String.h>
#include <vorn/io/IOException.h>

namespace vorn::io {

class VORN_API CUnsupportedEncodingException : public CIOException {
    VORN_DECLARE_CLASS(CUnsupportedEncodingException)

public:
    // No description and no message; an empty or null `encoding` leaves the name empty.
    CUnsupportedEncodingException(const char* file, unsigned int line, const char* encoding);
    CUnsupportedEncodingException(const CUnsupportedEncodingException& other);
    CUnsupportedEncodingException& operator=(const CUnsupportedEncodingException& other);

    const vorn::base::CString& GetEncoding() const { return m_encoding; }

private:
    vorn::base::CString m_encoding;
};

} // namespace vorn::io

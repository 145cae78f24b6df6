// CUnknownHostException: a host name that doesn't resolve.
#pragma once

#include <vorn/base/String.h>
#include <vorn/io/IOException.h>

namespace vorn::net {

class VORN_API CUnknownHostException : public vorn::io::CIOException {
    VORN_DECLARE_CLASS(CUnknownHostException)

public:
    // The description is "Unknown host name." and there is no message.
    CUnknownHostException(const char* file, unsigned int line, const char* hostName);
    CUnknownHostException(const CUnknownHostException& other);
    CUnknownHostException& operator=(const CUnknownHostException& other);

    // Never null: an empty name gives the empty text.
    const char* GetHostName() const { return m_hostName; }

private:
    vorn::base::CString m_hostName;
};

} // namespace vorn::net

// CInetAddress: an IPv4 address, with its host name looked up when first asked for.
#pragma once

#include <vorn/base/Base.h>
#include <vorn/base/String.h>

namespace vorn::net {

class VORN_API CInetAddress : public vorn::base::CBase {
public:
    // The first four bytes of `bytes`, in network order.
    CInetAddress(unsigned char const* bytes);
    CInetAddress(const CInetAddress& other);
    CInetAddress(CInetAddress&& other);
    CInetAddress& operator=(const CInetAddress& other);
    CInetAddress& operator=(CInetAddress&& other);
    ~CInetAddress();

    // A dotted address or a name, through the system's resolver.
    static CInetAddress GetByName(char const* hostName);
    static CInetAddress GetLocalHost();

    unsigned char const* GetAddress() const { return m_address; }
    // "a.b.c.d".
    vorn::base::CString GetHostAddress();
    // Looked up once, whether found or not; empty when there is no name.
    vorn::base::CString GetHostName();
    // 224.0.0.0 to 240.255.255.255: the top block is counted in.
    bool IsMulticastAddress() const;

    // The bytes alone decide; names play no part.
    bool operator==(const CInetAddress& other) const;
    bool operator!=(const CInetAddress& other) const;

    // 0.0.0.0.
    static const CInetAddress AnyInetAddress;

private:
    struct AnyTag {};
    constexpr explicit CInetAddress(AnyTag)
        : m_address{0, 0, 0, 0}, m_hostName(), m_hostNameResolved(false) {}

    unsigned char m_address[4];
    vorn::base::CString m_hostName;
    bool m_hostNameResolved;
};

} // namespace vorn::net

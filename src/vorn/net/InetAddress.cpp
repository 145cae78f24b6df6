#include <vorn/net/InetAddress.h>

#include <cstring>

#include <vorn/base/IllegalArgumentException.h>
#include <vorn/base/MemoryException.h>
#include <vorn/net/UnknownHostException.h>

#include "platform/Memory.h"
#include "platform/PtrCheck.h"
#include "platform/Socket.h"

namespace vorn::net {

using vorn::base::CString;

namespace {
const char* const kSource = "vorn/net/InetAddress";

// Frees the host name buffer on every way out of GetLocalHost.
struct CNameBuffer {
    char* text;
    ~CNameBuffer() { ZK_free(text); }
};
} // namespace

const CInetAddress CInetAddress::AnyInetAddress{AnyTag{}};

CInetAddress::CInetAddress(unsigned char const* bytes) : m_hostNameResolved(false) {
    if (bytes == nullptr || !BNValidReadPtr(bytes, 4))
        throw vorn::base::CIllegalArgumentException(kSource, __LINE__, "Invalid IPv4 address.");
    std::memcpy(m_address, bytes, 4);
}

CInetAddress::CInetAddress(const CInetAddress& other)
    : CBase(other), m_hostName(other.m_hostName), m_hostNameResolved(other.m_hostNameResolved) {
    std::memcpy(m_address, other.m_address, 4);
}

CInetAddress::CInetAddress(CInetAddress&& other)
    : CBase(other), m_hostNameResolved(other.m_hostNameResolved) {
    std::memcpy(m_address, other.m_address, 4);
    m_hostName = other.m_hostName;
    other.m_hostName.Empty();
}

CInetAddress& CInetAddress::operator=(const CInetAddress& other) {
    std::memcpy(m_address, other.m_address, 4);
    m_hostName = other.m_hostName;
    m_hostNameResolved = other.m_hostNameResolved;
    return *this;
}

CInetAddress& CInetAddress::operator=(CInetAddress&& other) {
    if (this != &other) {
        *this = static_cast<const CInetAddress&>(other);
        other.m_hostName.Empty();
    }
    return *this;
}

CInetAddress::~CInetAddress() = default;

CInetAddress CInetAddress::GetByName(char const* hostName) {
    if (hostName == nullptr || *hostName == '\0')
        throw vorn::base::CIllegalArgumentException(kSource, __LINE__, "Invalid host name.");
    unsigned char address[4];
    if (!vorn::platform::LookupHostAddress(hostName, address))
        throw CUnknownHostException(kSource, __LINE__, hostName);
    return CInetAddress(address);
}

CInetAddress CInetAddress::GetLocalHost() {
    char local[1024];
    int error = vorn::platform::LocalHostName(local, sizeof local);
    if (error == 0)
        return GetByName(local);
    for (unsigned int size = 2048; error == vorn::platform::kHostNameTooLong; size *= 2) {
        CNameBuffer buffer{static_cast<char*>(ZK_malloc(size))};
        if (buffer.text == nullptr || size == 0)
            throw vorn::base::CMemoryException(kSource, __LINE__);
        error = vorn::platform::LocalHostName(buffer.text, size);
        if (error == 0)
            return GetByName(buffer.text);
    }
    throw CUnknownHostException(kSource, __LINE__, "localhost");
}

CString CInetAddress::GetHostAddress() {
    CString text;
    text.Format("%u.%u.%u.%u", m_address[0], m_address[1], m_address[2], m_address[3]);
    return text;
}

CString CInetAddress::GetHostName() {
    if (!m_hostNameResolved) {
        char name[vorn::platform::kHostNameSize];
        if (vorn::platform::LookupHostName(m_address, name, sizeof name))
            m_hostName = name;
        m_hostNameResolved = true;
    }
    return m_hostName;
}

bool CInetAddress::IsMulticastAddress() const {
    return static_cast<unsigned char>(m_address[0] + 0x20) <= 0x10;
}

bool CInetAddress::operator==(const CInetAddress& other) const {
    return std::memcmp(m_address, other.m_address, 4) == 0;
}

bool CInetAddress::operator!=(const CInetAddress& other) const {
    return !(*this == other);
}

} // namespace vorn::net

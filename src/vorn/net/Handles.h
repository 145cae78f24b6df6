// Helpers of the socket handles and their implementations.
#pragma once

#include <vorn/base/Ref.h>
#include <vorn/net/SocketImpl.h>

namespace vorn::net {

// A new object handed to a counted reference, deleted if the reference can't be made.
template <typename T, typename U> vorn::base::CRef<T> Owned(U* object) {
    try {
        return vorn::base::CRef<T>(object);
    } catch (...) {
        delete object;
        throw;
    }
}

// The equality of CSocket and CServerSocket: one implementation, or equal ones.
inline bool SameSocket(const vorn::base::CRef<CSocketImpl>& a,
                       const vorn::base::CRef<CSocketImpl>& b) {
    if (a == b)
        return true;
    if (a.IsNull() || b.IsNull())
        return false;
    return a->Equals(b.GetPointer());
}

} // namespace vorn::net

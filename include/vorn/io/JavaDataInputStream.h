// CJavaDataInputStream: CDataInputStream reading strings with a 16-bit big-endian byte count, as
// a JVM's DataOutputStream writes them with writeUTF.
#pragma once

#include <vorn/io/DataInputStream.h>

namespace vorn::io {

class VORN_API CJavaDataInputStream : public CDataInputStream {
    VORN_DECLARE_CLASS(CJavaDataInputStream)

public:
    CJavaDataInputStream(vorn::base::CRef<CInputStream> const& stream);
    CJavaDataInputStream(CInputStream* stream);
    ~CJavaDataInputStream() override;

    vorn::base::CUnicodeString ReadString() override;
};

} // namespace vorn::io

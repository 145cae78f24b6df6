// CJavaDataOutputStream: CDataOutputStream with the string form that a JVM's DataInputStream
// reads with readUTF: a 16-bit big-endian byte count, so at most 65535 bytes of UTF-8. The UTF-8
// is the library's own (no special form of NUL or of characters beyond U+FFFF).
#pragma once

#include <vorn/io/DataOutputStream.h>

namespace vorn::io {

class VORN_API CJavaDataOutputStream : public CDataOutputStream {
    VORN_DECLARE_CLASS(CJavaDataOutputStream)

public:
    CJavaDataOutputStream(vorn::base::CRef<COutputStream> const& stream);
    CJavaDataOutputStream(COutputStream* stream);
    ~CJavaDataOutputStream() override;

    // A text of more than 65535 UTF-8 bytes throws before anything is written.
    void WriteString(vorn::base::CUnicodeString const& text) override;
    // A null or empty text writes the count 0, unlike the base class.
    void WriteString(unsigned short const* text) override;
};

} // namespace vorn::io

#include <vorn/base/String.h>
#include <vorn/io/IOException.h>
#include <vorn/io/JavaDataOutputStream.h>

#include "vorn/io/StreamBeneath.h"

namespace vorn::io {

using vorn::base::CString;
using vorn::base::CUnicodeString;

namespace {
constexpr const char* kSource = "vorn/io/JavaDataOutputStream";
// The base class's rule, with this file's name.
constexpr beneath::ClosedRule kClosed{kSource, __LINE__, "Stream closed.",
                                      beneath::SecondClose::kQuiet};
} // namespace

VORN_DEFINE_CLASS_BASE(CJavaDataOutputStream, "vorn::io::CJavaDataOutputStream",
                       "vorn::io::CDataOutputStream")

CJavaDataOutputStream::CJavaDataOutputStream(vorn::base::CRef<COutputStream> const& stream)
    : CDataOutputStream(stream) {}

CJavaDataOutputStream::CJavaDataOutputStream(COutputStream* stream) : CDataOutputStream(stream) {}

CJavaDataOutputStream::~CJavaDataOutputStream() {}

void CJavaDataOutputStream::WriteString(CUnicodeString const& text) {
    beneath::Open(m_stream, kClosed);
    const CString utf8 = text.ToUTF8();
    if (utf8.GetLength() > 65535)
        throw CIOException(kSource, __LINE__, "The specified string is too long.", nullptr);
    WriteCounted(utf8, 2);
}

void CJavaDataOutputStream::WriteString(unsigned short const* text) {
    WriteString(CUnicodeString(text));
}

} // namespace vorn::io

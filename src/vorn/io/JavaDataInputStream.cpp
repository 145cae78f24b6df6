#include <vorn/io/IOException.h>
#include <vorn/io/JavaDataInputStream.h>

#include "vorn/io/StreamBeneath.h"

namespace vorn::io {

namespace {
constexpr const char* kSource = "vorn/io/JavaDataInputStream";
// The base class's rule, with this file's name.
constexpr beneath::ClosedRule kClosed{kSource, __LINE__, "Stream closed.",
                                      beneath::SecondClose::kQuiet};
} // namespace

VORN_DEFINE_CLASS_BASE(CJavaDataInputStream, "vorn::io::CJavaDataInputStream",
                       "vorn::io::CDataInputStream")

CJavaDataInputStream::CJavaDataInputStream(vorn::base::CRef<CInputStream> const& stream)
    : CDataInputStream(stream) {}

CJavaDataInputStream::CJavaDataInputStream(CInputStream* stream) : CDataInputStream(stream) {}

CJavaDataInputStream::~CJavaDataInputStream() {}

vorn::base::CUnicodeString CJavaDataInputStream::ReadString() {
    beneath::Open(m_stream, kClosed);
    unsigned char count[2] = {};
    m_stream->Read(reinterpret_cast<char*>(count), 2);
    return ReadText(static_cast<unsigned int>(count[0] << 8 | count[1]));
}

} // namespace vorn::io

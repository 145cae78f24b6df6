#include <vorn/io/IOException.h>
#include <vorn/io/JavaDataInputStream.h>

namespace vorn::io {

namespace {
constexpr const char* kSource = "vorn/io/JavaDataInputStream";
}

VORN_DEFINE_CLASS_BASE(CJavaDataInputStream, "vorn::io::CJavaDataInputStream",
                       "vorn::io::CDataInputStream")

CJavaDataInputStream::CJavaDataInputStream(vorn::base::CRef<CInputStream> const& stream)
    : CDataInputStream(stream) {}

CJavaDataInputStream::CJavaDataInputStream(CInputStream* stream) : CDataInputStream(stream) {}

CJavaDataInputStream::~CJavaDataInputStream() {}

vorn::base::CUnicodeString CJavaDataInputStream::ReadString() {
    if (m_stream == nullptr)
        throw CIOException(kSource, __LINE__, "Stream closed.", nullptr);
    unsigned char count[2] = {};
    m_stream->Read(reinterpret_cast<char*>(count), 2);
    return ReadText(static_cast<unsigned int>(count[0] << 8 | count[1]));
}

} // namespace vorn::io

#include <vorn/io/OutputStream.h>

namespace vorn::io {

VORN_DEFINE_CLASS_BASE(COutputStream, "vorn::io::COutputStream", "vorn::base::CObject")

void COutputStream::Write(char const* buffer, unsigned int offset, unsigned int count) {
    if (buffer == nullptr || !(offset < offset + count))
        return;
    for (unsigned int i = 0; i < count; ++i)
        Write(buffer[offset + i]);
}

void COutputStream::Write(char const* buffer, unsigned int count) {
    if (buffer == nullptr)
        return;
    Write(buffer, 0, count);
}

} // namespace vorn::io

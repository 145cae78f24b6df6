#include <vorn/io/Writer.h>

#include "platform/UniText.h"

namespace vorn::io {

using vorn::base::CUnicodeString;

VORN_DEFINE_CLASS_BASE(CWriter, "vorn::io::CWriter", "vorn::base::CObject")

void CWriter::Write(CUnicodeString const& text, unsigned int offset, unsigned int count) {
    unsigned int length = text.GetLength();
    if (length == 0 || offset >= length)
        return;
    // Compared without the sum, which could wrap and let the count run past the text.
    if (count > length - offset)
        count = length - offset;
    Write(static_cast<unsigned short const*>(text), offset, count);
}

void CWriter::Write(CUnicodeString const& text) {
    if (text.IsEmpty())
        return;
    Write(text, 0, text.GetLength());
}

void CWriter::Write(unsigned short const* text, unsigned int count) {
    if (text == nullptr)
        return;
    Write(text, 0, count);
}

void CWriter::Write(unsigned short const* text) {
    if (text == nullptr)
        return;
    Write(text, 0, static_cast<unsigned int>(ZK::ucslen(text)));
}

void CWriter::Write(unsigned short value) {
    Write(&value, 0, 1);
}

} // namespace vorn::io

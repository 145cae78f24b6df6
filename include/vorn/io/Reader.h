// CReader: the interface of every UTF-16 source, unit by unit.
#pragma once

#include <vorn/base/Object.h>

namespace vorn::io {

class VORN_API CReader : public vorn::base::CObject {
    VORN_DECLARE_CLASS(CReader)

public:
    // What the single-unit Read() gives at the end; it differs from CInputStream::EOS on purpose.
    static constexpr int EOS = 1048575;

    // Reads up to `count` units to `buffer + offset`: the number read, or -1 at the end.
    virtual int Read(unsigned short* buffer, unsigned int offset, unsigned int count) = 0;
    virtual int Read(unsigned short* buffer, unsigned int count);
    // The next unit zero-extended, or EOS.
    virtual int Read();
    // As CInputStream::Skip: the base returns the units NOT skipped.
    virtual int Skip(unsigned int count);
    virtual void Reset() = 0;
    virtual void Close() = 0;
};

} // namespace vorn::io

// CCRLFPrintStream: a print stream whose line end is CR LF on every platform.
#pragma once

#include <vorn/io/PrintStream.h>

namespace vorn::io {

class VORN_API CCRLFPrintStream : public CPrintStream {
    VORN_DECLARE_CLASS(CCRLFPrintStream)

public:
    CCRLFPrintStream(vorn::base::CRef<COutputStream> const& stream, bool autoFlush);
    CCRLFPrintStream(COutputStream* stream, bool autoFlush);
};

} // namespace vorn::io

#include <vorn/io/CRLFPrintStream.h>

namespace vorn::io {

VORN_DEFINE_CLASS_BASE(CCRLFPrintStream, "vorn::io::CCRLFPrintStream", "vorn::io::CPrintStream")

CCRLFPrintStream::CCRLFPrintStream(vorn::base::CRef<COutputStream> const& stream, bool autoFlush)
    : CPrintStream(stream, autoFlush) {
    m_endOfLine = "\r\n";
}

CCRLFPrintStream::CCRLFPrintStream(COutputStream* stream, bool autoFlush)
    : CPrintStream(stream, autoFlush) {
    m_endOfLine = "\r\n";
}

} // namespace vorn::io

// CSystem: the library's process-wide debug output, for what nobody else can report.
#pragma once

#include <vorn/io/DebugPrintStream.h>

namespace vorn::base {

class VORN_API CSystem {
public:
    // Ready before any static initialiser runs; a Close silences it for good.
    static vorn::io::CDebugPrintStream debugOut;

private:
    CSystem() = delete;
};

} // namespace vorn::base

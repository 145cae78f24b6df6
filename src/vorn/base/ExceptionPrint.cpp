#include <vorn/base/Exception.h>

namespace vorn::base {

// Writing to a print stream needs the print streams, which are built on the stream layer.
void CException::Print(vorn::io::CPrintStream& /*stream*/) const {}

} // namespace vorn::base

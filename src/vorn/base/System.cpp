#include <vorn/base/System.h>

// Other statics print here while they start and stop, so it must not wait for dynamic
// initialisation: the compilers are asked to prove it constant.
#if defined(__clang__)
#define VORN_CONSTANT_INIT [[clang::require_constant_initialization]]
#elif defined(__GNUC__)
#define VORN_CONSTANT_INIT __constinit
#else
#define VORN_CONSTANT_INIT
#endif

namespace vorn::base {

VORN_CONSTANT_INIT vorn::io::CDebugPrintStream CSystem::debugOut;

} // namespace vorn::base

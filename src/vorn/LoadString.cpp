#include "vorn/LoadString.h"

#include "platform/Resources.h"
#include "vorn/base/Module.h"

namespace vorn {

char* LoadString(char* buffer, std::size_t bufferSize, short index) {
    // The resource layer is told this helper's own name and place, whoever asks.
    return RSGetIndString_ParamAdapter("vorn/LoadString", 45, buffer, bufferSize, 1, index,
                                       module::ModuleResourceCache, 0);
}

} // namespace vorn

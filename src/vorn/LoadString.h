// The library's one reader of localised text: resource id 1 of the module's resource cache.
#pragma once

#include <cstddef>

namespace vorn {

// Fills `buffer` with the text at `index`, the empty text when there is none, and returns it.
char* LoadString(char* buffer, std::size_t bufferSize, short index);

} // namespace vorn

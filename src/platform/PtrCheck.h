// Pointer checks of the platform layer: a block operation refuses a null pointer with a length.
#pragma once

#include <cstddef>

inline bool BNValidReadPtr(const void* p, std::size_t length) {
    return p != nullptr || length == 0;
}
inline bool BNValidWritePtr(const void* p, std::size_t length) {
    return p != nullptr || length == 0;
}

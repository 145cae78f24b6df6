// The steps that the byte and the UTF-16 pushback streams share, over elements of either width.
// The buffer fills from its end downwards: the elements held are those from `position` to
// `size - 1`, in reading order, and the room left is `position` itself. Internal.
#pragma once

#include <cstring>

#include <vorn/io/IOException.h>

#include "platform/PtrCheck.h"

namespace vorn::io::pushback {

[[noreturn]] inline void ThrowFull(const char* source, unsigned int line) {
    throw CIOException(source, line, "Pushback buffer is full.", nullptr);
}

// `buffer + offset`, without arithmetic on a null pointer.
template <typename T> T* At(T* buffer, unsigned int offset) {
    return buffer == nullptr ? nullptr : buffer + offset;
}

// In front of what is held: single elements come back last one first.
template <typename T>
void UnreadOne(T* held, unsigned int& position, T value, const char* source, unsigned int line) {
    if (position == 0)
        ThrowFull(source, line);
    held[--position] = value;
}

// A block comes back in its own order. The room is checked first, for a null block too.
template <typename T>
void UnreadBlock(T* held, unsigned int& position, const T* block, unsigned int count,
                 const char* source, unsigned int line) {
    if (count > position)
        ThrowFull(source, line);
    if (block == nullptr || !BNValidReadPtr(block, sizeof(T) * std::size_t{count}) || count == 0)
        return;
    position -= count;
    std::memcpy(held + position, block, sizeof(T) * count);
}

// A counted read of `count` (not 0) elements to `buffer + offset`: what is held, then the rest
// from beneath, asked even for 0 elements.
template <typename S, typename T>
int ReadBlock(S* stream, const T* held, unsigned int size, unsigned int& position, T* buffer,
              unsigned int offset, unsigned int count) {
    const unsigned int kept = size - position;
    if (count < kept) {
        std::memcpy(buffer + offset, held + position, sizeof(T) * count);
        position += count;
        return static_cast<int>(count);
    }
    if (kept > 0)
        std::memcpy(buffer + offset, held + position, sizeof(T) * kept);
    position = size;
    // Added whatever it is: at the end beneath, the -1 makes the result one below what was held.
    // Summed unsigned, so that a sum past INT_MAX wraps instead of overflowing.
    return static_cast<int>(
        static_cast<unsigned int>(stream->Read(buffer, offset + kept, count - kept)) + kept);
}

template <typename S>
int Skip(S* stream, unsigned int size, unsigned int& position, unsigned int count) {
    const unsigned int kept = size - position;
    if (count < kept) {
        position += count;
        return static_cast<int>(count);
    }
    position = size;
    return static_cast<int>(static_cast<unsigned int>(stream->Skip(count - kept)) + kept);
}

} // namespace vorn::io::pushback

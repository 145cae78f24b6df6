// The buffer steps that the byte and the UTF-16 buffered streams share, over elements of either
// width. Internal.
#pragma once

#include <cstring>

#include <vorn/base/MemoryException.h>

#include "platform/Memory.h"

namespace vorn::io::buffered {

// A buffer of `size` elements from ZK_malloc; CMemoryException from `source` when none is left.
template <typename T> T* Allocate(unsigned int size, const char* source, unsigned int line) {
    T* buffer = static_cast<T*>(ZK_malloc(sizeof(T) * std::size_t{size}));
    if (buffer == nullptr)
        throw vorn::base::CMemoryException(source, line);
    return buffer;
}

// Moves the unread tail to the front and makes one read beneath into the room after it.
template <typename S, typename T>
void Fill(S* stream, T* buffer, unsigned int capacity, unsigned int& count,
          unsigned int& position) {
    if (position < count)
        std::memmove(buffer, buffer + position, sizeof(T) * (count - position));
    count -= position;
    position = 0;
    const unsigned int room = capacity - count;
    const int n = stream->Read(buffer, count, room);
    // -1 is the end; a count beneath below -1 or above the room would break the buffer's bounds.
    if (n > 0)
        count += static_cast<unsigned int>(n) < room ? static_cast<unsigned int>(n) : room;
}

// Skips from the buffer, and what it can't give beneath; the buffered elements plus what the Skip
// beneath reports.
template <typename S>
int Skip(S* stream, unsigned int count, unsigned int& position, unsigned int n) {
    const unsigned int buffered = count - position;
    if (n <= buffered) {
        position += n;
        return static_cast<int>(n);
    }
    position = count;
    // Summed unsigned: a sum past INT_MAX wraps instead of overflowing.
    return static_cast<int>(static_cast<unsigned int>(stream->Skip(n - buffered)) + buffered);
}

// Sends what is pending beneath; a failed write leaves it pending, to be offered again.
template <typename S, typename T> void Drain(S* stream, T* buffer, unsigned int& count) {
    if (count > 0) {
        stream->Write(buffer, 0, count);
        count = 0;
    }
}

// A block at least as large as the buffer goes beneath after what is pending. A smaller one is
// copied behind what is pending, and `flush` runs each time the buffer fills.
template <typename S, typename T, typename F>
void Put(S* stream, T* buffer, unsigned int capacity, unsigned int& count, const T* data,
         unsigned int offset, unsigned int n, F&& flush) {
    if (n >= capacity) {
        flush();
        stream->Write(data, offset, n);
        return;
    }
    data += offset;
    while (n > 0) {
        const unsigned int room = capacity - count;
        const unsigned int part = n < room ? n : room;
        std::memcpy(buffer + count, data, sizeof(T) * part);
        count += part;
        data += part;
        n -= part;
        if (count == capacity)
            flush();
    }
}

} // namespace vorn::io::buffered

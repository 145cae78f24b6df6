// The block handling that CStringBuffer and CUnicodeStringBuffer share, over bytes or UTF-16
// units. A block is `capacity` characters from ZK_malloc, owned by one buffer.
//
// The library writes a terminator behind everything it stores, but a caller who writes through
// GetBuffer may not: every measure stops at the end of the block, and a growing block carries the
// whole old one and ends it with a terminator, so a pointer into it keeps its text too.
#pragma once

#include <vorn/base/MemoryException.h>
#include <vorn/base/detail/Capacity.h>

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "platform/Memory.h"

namespace vorn::base::detail {

// Characters before the terminator, looking at no more than `limit`.
template <typename Char> unsigned int MeasureText(const Char* s, unsigned int limit) {
    if constexpr (sizeof(Char) == 1) {
        const void* end = std::memchr(s, 0, limit);
        return end == nullptr ? limit
                              : static_cast<unsigned int>(static_cast<const Char*>(end) - s);
    } else {
        unsigned int n = 0;
        while (n < limit && s[n] != 0)
            ++n;
        return n;
    }
}

// The place of `s` inside the block, or -1 when it lies outside.
template <typename Char>
long long OffsetInBlock(const Char* block, unsigned int capacity, const Char* s) {
    const auto p = reinterpret_cast<std::uintptr_t>(s);
    const auto begin = reinterpret_cast<std::uintptr_t>(block);
    if (block == nullptr || p < begin || p >= begin + std::size_t{capacity} * sizeof(Char))
        return -1;
    return static_cast<long long>((p - begin) / sizeof(Char));
}

// The length of `s`, which may lie inside the block and is then measured to its end at most.
template <typename Char>
unsigned int LengthOf(const Char* block, unsigned int capacity, const Char* s) {
    const long long offset = OffsetInBlock(block, capacity, s);
    return MeasureText(s, offset < 0 ? ~0u : capacity - static_cast<unsigned int>(offset));
}

// Room for `size` characters rounded up to a multiple of `increment`. With `keepText` the old
// block's contents move along; otherwise the new block is left as it comes.
template <typename Char>
void GrowBlock(Char*& text, unsigned int& capacity, unsigned int size, unsigned int increment,
               const char* source, unsigned int line, bool keepText) {
    const unsigned int rounded = RoundCapacity(size, increment);
    // A wrapped rounding would leave less room than the caller goes on to fill.
    if (rounded < size)
        throw CMemoryException(source, line);
    if (capacity >= rounded)
        return;
    auto* block = static_cast<Char*>(ZK_malloc(std::size_t{rounded} * sizeof(Char)));
    if (block == nullptr)
        throw CMemoryException(source, line);
    if (text != nullptr) {
        if (keepText) {
            std::memcpy(block, text, std::size_t{capacity} * sizeof(Char));
            block[capacity] = 0;
        }
        ZK_free(text);
    } else if (keepText) {
        block[0] = 0;
    }
    text = block;
    capacity = rounded;
}

// Replaces the text by `s`, which may lie inside the block; null or empty leaves the empty text.
// `grow(size)` makes room for `size` characters, keeping the text.
template <typename Char, typename Grow>
void AssignText(Char*& text, const unsigned int& capacity, const Char* s, Grow grow) {
    if (s == nullptr || *s == 0) {
        grow(1);
        text[0] = 0;
        return;
    }
    // A piece of the block's own text is found again where the growth has put it.
    const long long offset = OffsetInBlock(text, capacity, s);
    const unsigned int length = LengthOf(text, capacity, s);
    grow(length + 1);
    if (offset >= 0)
        s = text + offset;
    std::memmove(text, s, std::size_t{length} * sizeof(Char));
    text[length] = 0;
}

// Appends `s`, which may lie inside the block; null or empty appends nothing.
template <typename Char, typename Grow>
void AppendText(Char*& text, const unsigned int& capacity, const Char* s, Grow grow) {
    if (s == nullptr || *s == 0)
        return;
    const long long offset = OffsetInBlock(text, capacity, s);
    const unsigned int added = LengthOf(text, capacity, s);
    const unsigned int length = text == nullptr ? 0 : MeasureText(text, capacity);
    grow(length + added + 1);
    if (offset >= 0)
        s = text + offset;
    std::memmove(text + length, s, std::size_t{added} * sizeof(Char));
    text[length + added] = 0;
}

// Shrinks the block to the text and its terminator.
template <typename Char>
void TrimBlock(Char*& text, unsigned int& capacity, const char* source, unsigned int line) {
    if (text == nullptr)
        return;
    const unsigned int size = MeasureText(text, capacity) + 1;
    if (size >= capacity)
        return;
    auto* block = static_cast<Char*>(ZK_malloc(std::size_t{size} * sizeof(Char)));
    if (block == nullptr)
        throw CMemoryException(source, line);
    std::memcpy(block, text, std::size_t{size} * sizeof(Char));
    ZK_free(text);
    text = block;
    capacity = size;
}

} // namespace vorn::base::detail

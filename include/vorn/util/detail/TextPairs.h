// The storage of the string maps: parallel arrays of keys and values of one text type, grown and
// shrunk together in multiples of the increment. Texts are one pointer and relocate as bytes;
// copying one only shares its buffer, which cannot fail.
#pragma once

#include <cstring>
#include <new>
#include <utility>

#include <vorn/base/MemoryException.h>
#include <vorn/util/detail/Storage.h>

namespace vorn::util::detail {

template <typename S> class TextPairs {
public:
    // An increment of 0 becomes 5.
    TextPairs(unsigned int initialCapacity, unsigned int increment, const char* file,
              unsigned int line)
        : m_keys(nullptr), m_values(nullptr), m_size(0), m_capacity(0),
          m_increment(increment == 0 ? 5 : increment) {
        if (initialCapacity != 0)
            AllocBuffer(initialCapacity, file, line);
    }

    // Takes the source's increment and room for its size; an empty source leaves no arrays.
    TextPairs(const TextPairs& other, const char* file, unsigned int line)
        : m_keys(nullptr), m_values(nullptr), m_size(0), m_capacity(0),
          m_increment(other.m_increment) {
        if (other.m_size == 0)
            return;
        AllocBuffer(other.m_size, file, line);
        CopyElements(other);
    }

    TextPairs(const TextPairs&) = delete;
    TextPairs& operator=(const TextPairs&) = delete;

    ~TextPairs() {
        DestroyElements();
        FreeBlock(m_keys);
        FreeBlock(m_values);
    }

    // Keeps its own increment. New arrays, when needed, come before anything is released, so a
    // failure there changes nothing.
    void Assign(const TextPairs& other, const char* file, unsigned int line) {
        if (this == &other)
            return;
        const unsigned int oldSize = m_size;
        const unsigned int target = RoundCapacity(other.m_size, m_increment);
        S* keys = nullptr;
        S* values = nullptr;
        if (other.m_size != 0 && m_capacity < target)
            AllocatePair(target, keys, values, file, line);
        DestroyElements();
        if (keys != nullptr) {
            FreeBlock(m_keys);
            FreeBlock(m_values);
            m_keys = keys;
            m_values = values;
            m_capacity = target;
        }
        CopyElements(other);
        if (m_size < oldSize)
            CompactBuffer(file, line);
    }

    template <typename Key, typename Value>
    void Append(const Key& key, const Value& value, const char* file, unsigned int line) {
        EnsureCapacity(m_size + 1, file, line);
        // At the 32-bit limit the rounding wraps and grants no room: nothing more fits.
        if (m_size >= m_capacity)
            throw vorn::base::CMemoryException(file, line);
        S* stored = ::new (static_cast<void*>(m_keys + m_size)) S(key);
        try {
            ::new (static_cast<void*>(m_values + m_size)) S(value);
        } catch (...) {
            stored->~S();
            throw;
        }
        ++m_size;
    }

    // The pair is gone even when the arrays then fail to shrink.
    void RemoveAt(unsigned int index, const char* file, unsigned int line) {
        m_keys[index].~S();
        m_values[index].~S();
        const std::size_t tail = static_cast<std::size_t>(m_size - index - 1) * sizeof(S);
        std::memmove(static_cast<void*>(m_keys + index),
                     static_cast<const void*>(m_keys + index + 1), tail);
        std::memmove(static_cast<void*>(m_values + index),
                     static_cast<const void*>(m_values + index + 1), tail);
        --m_size;
        CompactBuffer(file, line);
    }

    void RemoveAll(const char* file, unsigned int line) {
        DestroyElements();
        CompactBuffer(file, line);
    }

    void EnsureCapacity(unsigned int wanted, const char* file, unsigned int line) {
        const unsigned int target = RoundCapacity(wanted, m_increment);
        if (m_capacity >= target)
            return;
        Relocate(target, file, line);
    }

    // The one way to a capacity that isn't a multiple of the increment.
    void TrimToSize(const char* file, unsigned int line) {
        if (m_size >= m_capacity)
            return;
        if (m_size == 0) {
            FreeBlock(m_keys);
            FreeBlock(m_values);
            m_keys = nullptr;
            m_values = nullptr;
            m_capacity = 0;
        } else {
            Relocate(m_size, file, line);
        }
    }

    S& Key(unsigned int index) { return m_keys[index]; }
    const S& Key(unsigned int index) const { return m_keys[index]; }
    S& Value(unsigned int index) { return m_values[index]; }
    const S& Value(unsigned int index) const { return m_values[index]; }
    unsigned int GetSize() const { return m_size; }
    unsigned int GetCapacity() const { return m_capacity; }
    unsigned int GetIncrement() const { return m_increment; }

private:
    // Keys first, values second; when the second fails the first goes back.
    static void AllocatePair(unsigned int count, S*& keys, S*& values, const char* file,
                             unsigned int line) {
        const std::size_t bytes = static_cast<std::size_t>(count) * sizeof(S);
        keys = static_cast<S*>(AllocateBlock(bytes, file, line));
        try {
            values = static_cast<S*>(AllocateBlock(bytes, file, line));
        } catch (...) {
            FreeBlock(keys);
            throw;
        }
    }

    // For an empty or about-to-be-refilled map: the old contents are not kept.
    void AllocBuffer(unsigned int wanted, const char* file, unsigned int line) {
        const unsigned int target = RoundCapacity(wanted, m_increment);
        if (m_capacity >= target)
            return;
        S* keys;
        S* values;
        AllocatePair(target, keys, values, file, line);
        FreeBlock(m_keys);
        FreeBlock(m_values);
        m_keys = keys;
        m_values = values;
        m_capacity = target;
    }

    void CompactBuffer(const char* file, unsigned int line) {
        unsigned int target = RoundCapacity(m_size, m_increment);
        if (target < m_increment)
            target = m_increment;
        if (target >= m_capacity)
            return;
        Relocate(target, file, line);
    }

    // Moves the pairs into new arrays of `capacity`; on failure the old ones stay.
    void Relocate(unsigned int capacity, const char* file, unsigned int line) {
        S* keys;
        S* values;
        AllocatePair(capacity, keys, values, file, line);
        if (m_size != 0) {
            const std::size_t bytes = static_cast<std::size_t>(m_size) * sizeof(S);
            std::memcpy(static_cast<void*>(keys), static_cast<const void*>(m_keys), bytes);
            std::memcpy(static_cast<void*>(values), static_cast<const void*>(m_values), bytes);
        }
        FreeBlock(m_keys);
        FreeBlock(m_values);
        m_keys = keys;
        m_values = values;
        m_capacity = capacity;
    }

    void CopyElements(const TextPairs& other) {
        for (unsigned int i = 0; i < other.m_size; ++i) {
            ::new (static_cast<void*>(m_keys + i)) S(other.m_keys[i]);
            ::new (static_cast<void*>(m_values + i)) S(other.m_values[i]);
        }
        m_size = other.m_size;
    }

    void DestroyElements() {
        for (unsigned int i = 0; i < m_size; ++i) {
            m_keys[i].~S();
            m_values[i].~S();
        }
        m_size = 0;
    }

    S* m_keys;
    S* m_values;
    unsigned int m_size;
    unsigned int m_capacity;
    unsigned int m_increment;
};

// The key and value iterators of the maps: a map and an index from 0, read through GetKeyAt or
// GetAt, so a step past the end throws as those do.
template <typename Map, typename Text, bool Keys> class TextIterator {
public:
    explicit TextIterator(Map* map) : m_map(map), m_index(0) {}
    bool HasMoreElements() const { return m_index < m_map->GetSize(); }
    Text& GetNextElement() {
        Text& text = Keys ? m_map->GetKeyAt(m_index) : m_map->GetAt(m_index);
        ++m_index;
        return text;
    }
    void Reset() { m_index = 0; }

private:
    Map* m_map;
    unsigned int m_index;
};

} // namespace vorn::util::detail

// CVector: a growable sequence of values. Capacity moves in multiples of a per-object increment
// and shrinks again after every removal, never below one increment.
#pragma once

#include <cstring>
#include <functional>
#include <new>

#include <vorn/base/ArrayIndexOutOfBoundsException.h>
#include <vorn/base/MemoryException.h>
#include <vorn/util/NoSuchElementException.h>
#include <vorn/util/detail/Storage.h>

namespace vorn::util {

// Elements are relocated as bytes (block copies, memmove), so T must stay valid when moved to
// another address: no pointer into itself and no registration of its own address elsewhere.
template <typename T> class CVector {
public:
    explicit CVector(unsigned int initialCapacity = 10, unsigned int increment = 5)
        : m_buffer(nullptr), m_size(0), m_capacity(0), m_increment(increment) {
        if (initialCapacity != 0)
            AllocBuffer(initialCapacity);
    }

    // Takes the source's increment and room for its size; an empty source leaves no buffer.
    CVector(const CVector& other)
        : m_buffer(nullptr), m_size(0), m_capacity(0), m_increment(other.m_increment) {
        if (other.m_size == 0)
            return;
        AllocBuffer(other.m_size);
        try {
            CopyElements(other);
        } catch (...) {
            DestroyElements();
            detail::FreeBlock(m_buffer);
            throw;
        }
    }

    // Keeps its own increment. A failure part-way leaves the elements copied so far.
    CVector& operator=(const CVector& other) {
        if (this == &other)
            return *this;
        const unsigned int oldSize = m_size;
        DestroyElements();
        if (other.m_size != 0) {
            AllocBuffer(other.m_size);
            CopyElements(other);
        }
        if (m_size < oldSize)
            CompactBuffer();
        return *this;
    }

    ~CVector() {
        DestroyElements();
        detail::FreeBlock(m_buffer);
    }

    void AddElement(const T& value) {
        // The value may live in this vector: find it again by index once the buffer has moved.
        const T* source = &value;
        const bool own = Holds(source);
        const unsigned int at = own ? static_cast<unsigned int>(source - m_buffer) : 0;
        MakeRoomForOne(__LINE__);
        ::new (static_cast<void*>(m_buffer + m_size)) T(own ? m_buffer[at] : value);
        ++m_size;
    }

    void InsertElementAt(const T& value, unsigned int index) {
        if (index == m_size) {
            AddElement(value);
            return;
        }
        if (index > m_size)
            throw vorn::base::CArrayIndexOutOfBoundsException("vorn/util/Vector", __LINE__);
        // The copy comes first: `value` may be one of ours, and a failure then changes nothing.
        alignas(T) unsigned char aside[sizeof(T)];
        T* copy = ::new (static_cast<void*>(aside)) T(value);
        try {
            MakeRoomForOne(__LINE__);
        } catch (...) {
            copy->~T();
            throw;
        }
        std::memmove(static_cast<void*>(m_buffer + index + 1),
                     static_cast<const void*>(m_buffer + index), (m_size - index) * sizeof(T));
        std::memcpy(static_cast<void*>(m_buffer + index), aside, sizeof(T));
        ++m_size;
    }

    void SetElementAt(const T& value, unsigned int index) {
        if (index >= m_size)
            throw vorn::base::CArrayIndexOutOfBoundsException("vorn/util/Vector", __LINE__);
        m_buffer[index] = value;
    }

    T& GetElementAt(unsigned int index) {
        if (index >= m_size)
            throw vorn::base::CArrayIndexOutOfBoundsException("vorn/util/Vector", __LINE__);
        return m_buffer[index];
    }
    const T& GetElementAt(unsigned int index) const {
        if (index >= m_size)
            throw vorn::base::CArrayIndexOutOfBoundsException("vorn/util/Vector", __LINE__);
        return m_buffer[index];
    }
    T& operator[](unsigned int index) { return GetElementAt(index); }
    const T& operator[](unsigned int index) const { return GetElementAt(index); }

    T& GetFirstElement() {
        if (m_size == 0)
            throw CNoSuchElementException("vorn/util/Vector", __LINE__);
        return m_buffer[0];
    }
    const T& GetFirstElement() const {
        if (m_size == 0)
            throw CNoSuchElementException("vorn/util/Vector", __LINE__);
        return m_buffer[0];
    }
    T& GetLastElement() {
        if (m_size == 0)
            throw CNoSuchElementException("vorn/util/Vector", __LINE__);
        return m_buffer[m_size - 1];
    }
    const T& GetLastElement() const {
        if (m_size == 0)
            throw CNoSuchElementException("vorn/util/Vector", __LINE__);
        return m_buffer[m_size - 1];
    }

    // Linear, by T's operator==; -1 when nothing matches.
    int GetIndexOf(const T& value) const {
        for (unsigned int i = 0; i < m_size; ++i)
            if (m_buffer[i] == value)
                return static_cast<int>(i);
        return -1;
    }
    bool Contains(const T& value) const { return GetIndexOf(value) >= 0; }

    // The element is destroyed only once the vector is whole again, and before the buffer shrinks.
    void RemoveElementAt(unsigned int index) {
        if (index >= m_size)
            throw vorn::base::CArrayIndexOutOfBoundsException("vorn/util/Vector", __LINE__);
        alignas(T) unsigned char aside[sizeof(T)];
        std::memcpy(aside, static_cast<const void*>(m_buffer + index), sizeof(T));
        if (index + 1 < m_size)
            std::memmove(static_cast<void*>(m_buffer + index),
                         static_cast<const void*>(m_buffer + index + 1),
                         (m_size - index - 1) * sizeof(T));
        --m_size;
        std::launder(reinterpret_cast<T*>(aside))->~T();
        CompactBuffer();
    }

    void RemoveAllElements() {
        DestroyElements();
        CompactBuffer();
    }

    void EnsureCapacity(unsigned int wanted) {
        const unsigned int target = detail::RoundCapacity(wanted, m_increment);
        if (m_capacity >= target)
            return;
        Relocate(target);
    }

    // The one way to a capacity that isn't a multiple of the increment.
    void TrimToSize() {
        if (m_size >= m_capacity)
            return;
        if (m_size == 0) {
            detail::FreeBlock(m_buffer);
            m_buffer = nullptr;
            m_capacity = 0;
        } else {
            Relocate(m_size);
        }
    }

    unsigned int GetSize() const { return m_size; }
    bool IsEmpty() const { return m_size == 0; }
    unsigned int GetCapacity() const { return m_capacity; }
    unsigned int GetIncrement() const { return m_increment; }

private:
    bool Holds(const T* p) const {
        std::less<const T*> before;
        return m_size != 0 && !before(p, m_buffer) && before(p, m_buffer + m_size);
    }

    void MakeRoomForOne(unsigned int line) {
        EnsureCapacity(m_size + 1);
        // At the 32-bit limit the rounding wraps and grants no room: nothing more fits.
        if (m_size >= m_capacity)
            throw vorn::base::CMemoryException("vorn/util/Vector", line);
    }

    // For an empty vector or one about to be refilled: the old contents are not kept.
    void AllocBuffer(unsigned int wanted) {
        const unsigned int target = detail::RoundCapacity(wanted, m_increment);
        if (m_capacity >= target)
            return;
        T* fresh = Allocate(target, __LINE__);
        detail::FreeBlock(m_buffer);
        m_buffer = fresh;
        m_capacity = target;
    }

    void CompactBuffer() {
        unsigned int target = detail::RoundCapacity(m_size, m_increment);
        if (target < m_increment)
            target = m_increment;
        if (target >= m_capacity)
            return;
        Relocate(target);
    }

    // Moves the elements into a new buffer of `capacity`; on failure the old one stays.
    void Relocate(unsigned int capacity) {
        T* fresh = Allocate(capacity, __LINE__);
        if (m_size != 0)
            std::memcpy(static_cast<void*>(fresh), static_cast<const void*>(m_buffer),
                        m_size * sizeof(T));
        detail::FreeBlock(m_buffer);
        m_buffer = fresh;
        m_capacity = capacity;
    }

    static T* Allocate(unsigned int count, unsigned int line) {
        return static_cast<T*>(detail::AllocateBlock(static_cast<std::size_t>(count) * sizeof(T),
                                                     "vorn/util/Vector", line));
    }

    void CopyElements(const CVector& other) {
        for (unsigned int i = 0; i < other.m_size; ++i) {
            ::new (static_cast<void*>(m_buffer + i)) T(other.m_buffer[i]);
            ++m_size;
        }
    }

    void DestroyElements() {
        for (unsigned int i = 0; i < m_size; ++i)
            m_buffer[i].~T();
        m_size = 0;
    }

    T* m_buffer;
    unsigned int m_size;
    unsigned int m_capacity;
    unsigned int m_increment;
};

} // namespace vorn::util

// IEnumeration: a walk over the elements of a collection. CEnumeration: the counted handle on
// one, which callers hold and copy.
#pragma once

#include <new>

#include <vorn/base/Base.h>
#include <vorn/base/NullReferenceException.h>
#include <vorn/util/detail/Storage.h>

namespace vorn::util {

template <typename T> class IEnumeration : public vorn::base::CBase {
public:
    virtual ~IEnumeration() {}
    virtual bool HasMoreElements() const = 0;
    // Implementations answer this one by calling the non-const form.
    virtual const T& GetNextElement() const = 0;
    virtual T& GetNextElement() = 0;
    virtual void Reset() = 0;
};

// One pointer to a shared block of the enumeration and its count. The count is a plain integer:
// handles of one enumeration belong to one thread at a time.
template <typename T> class CEnumeration {
public:
    CEnumeration() : m_block(nullptr) {}

    // Takes ownership: when no block can be had, the enumeration is deleted before the
    // CMemoryException leaves.
    CEnumeration(IEnumeration<T>* enumeration) : m_block(nullptr) {
        if (enumeration == nullptr)
            return;
        void* raw;
        try {
            raw = detail::AllocateBlock(sizeof(Block), "vorn/util/Enumeration", __LINE__);
        } catch (...) {
            delete enumeration;
            throw;
        }
        m_block = ::new (raw) Block{enumeration, 1};
    }

    CEnumeration(const CEnumeration& other) : m_block(other.m_block) {
        if (m_block != nullptr)
            ++m_block->count;
    }

    ~CEnumeration() { Release(); }

    CEnumeration& operator=(const CEnumeration& other) {
        if (m_block != other.m_block) {
            if (other.m_block != nullptr)
                ++other.m_block->count;
            Release();
            m_block = other.m_block;
        }
        return *this;
    }

    IEnumeration<T>* operator->() const {
        if (m_block == nullptr)
            throw vorn::base::CNullReferenceException("vorn/util/Enumeration", __LINE__);
        return m_block->enumeration;
    }
    IEnumeration<T>& operator*() const { return *operator->(); }

    bool IsNull() const { return m_block == nullptr; }
    // Handles sharing this enumeration; 0 for an empty handle.
    int GetCount() const { return m_block == nullptr ? 0 : m_block->count; }

private:
    struct Block {
        IEnumeration<T>* enumeration;
        int count;
    };

    void Release() {
        if (m_block == nullptr || --m_block->count != 0)
            return;
        delete m_block->enumeration;
        detail::FreeBlock(m_block);
    }

    Block* m_block;
};

} // namespace vorn::util

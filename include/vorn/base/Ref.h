// CRef: the library's counted handle. Two words: the shared count block and the object as this
// handle sees it. The last handle of an owned object deletes it.
#pragma once

#include <type_traits>

#include <vorn/base/ClassCastException.h>
#include <vorn/base/MemoryException.h>
#include <vorn/base/NullReferenceException.h>
#include <vorn/base/RefCountedPtr.h>

namespace vorn::base {

template <typename T> class CRef {
public:
    constexpr CRef() : m_block(nullptr), m_object(nullptr) {}

    CRef(T* p) : m_block(nullptr), m_object(nullptr) {
        if (p != nullptr) {
            m_block = new ("vorn/base/Ref", 186) RefCountedPtrBase(p, true);
            m_object = p;
        }
    }

    CRef(const CNull&) : m_block(nullptr), m_object(nullptr) {}

    CRef(const CRef& other) : m_block(other.m_block), m_object(other.m_object) {
        if (m_block != nullptr)
            m_block->AddRef();
    }

    // From a handle of another type: the object is converted with a run-time check.
    template <typename U>
    CRef(const CRef<U>& other) : m_block(other.GetBlock()), m_object(Convert(other.GetPointer())) {
        if (m_object == nullptr && other.GetPointer() != nullptr)
            throw CClassCastException("vorn/base/Ref", 61);
        if (m_block != nullptr)
            m_block->AddRef();
    }

    ~CRef() { Release(); }

    CRef& operator=(const CRef& other) {
        if (this != &other) {
            Release();
            m_block = other.m_block;
            m_object = other.m_object;
            if (m_block != nullptr)
                m_block->AddRef();
        }
        return *this;
    }

    // The new block comes first, so a failed allocation leaves the handle as it was. Assigning a
    // pointer this handle already holds makes a second, independent block: callers don't.
    CRef& operator=(T* p) {
        RefCountedPtrBase* block = nullptr;
        if (p != nullptr)
            block = new ("vorn/base/Ref", 280) RefCountedPtrBase(p, true);
        Release();
        m_block = block;
        m_object = p;
        return *this;
    }

    CRef& operator=(const CNull&) {
        Release();
        m_block = nullptr;
        m_object = nullptr;
        return *this;
    }

    T* operator->() const {
        if (m_object == nullptr)
            throw CNullReferenceException("vorn/base/Ref", 424);
        return m_object;
    }

    T* operator->() {
        if (m_object == nullptr)
            throw CNullReferenceException("vorn/base/Ref", 438);
        return m_object;
    }

    T& operator*() const { return *operator->(); }

    // The raw pointer, unchecked; null for an empty handle.
    operator T*() const { return m_object; }
    T* GetPointer() const { return m_object; }
    bool IsNull() const { return m_object == nullptr; }

    // The shared block, for conversions between handle types.
    RefCountedPtrBase* GetBlock() const { return m_block; }

private:
    template <typename U> static T* Convert(U* p) {
        if constexpr (std::is_convertible_v<U*, T*>)
            return p;
        else
            return dynamic_cast<T*>(p);
    }

    void Release() {
        if (m_block == nullptr)
            return;
        if (!m_block->Release())
            return;
        if (m_block->IsOwned() && m_object != nullptr)
            delete m_object;
        RefCountedPtrBase::Destroy(m_block);
    }

    RefCountedPtrBase* m_block;
    T* m_object;
};

template <typename T, typename U> bool operator==(const CRef<T>& a, const CRef<U>& b) {
    return a.GetPointer() == b.GetPointer();
}
template <typename T, typename U> bool operator!=(const CRef<T>& a, const CRef<U>& b) {
    return a.GetPointer() != b.GetPointer();
}
template <typename T> bool operator==(const CRef<T>& a, const CNull&) {
    return a.IsNull();
}
template <typename T> bool operator==(const CNull&, const CRef<T>& a) {
    return a.IsNull();
}
template <typename T> bool operator!=(const CRef<T>& a, const CNull&) {
    return !a.IsNull();
}
template <typename T> bool operator!=(const CNull&, const CRef<T>& a) {
    return !a.IsNull();
}

} // namespace vorn::base

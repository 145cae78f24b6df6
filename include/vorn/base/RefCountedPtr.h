// RefCountedPtr: the count block that all CRef handles of one object share.
#pragma once

#include <vorn/base/Base.h>
#include <vorn/base/IllegalArgumentException.h>

namespace vorn::base {

// The count block itself. Handles of different types share one block (a converted handle keeps
// the block of its source), so the block isn't typed; RefCountedPtr<T> is its typed face.
class RefCountedPtrBase : public CBase {
public:
    RefCountedPtrBase(void* pointer, bool owned) : m_pointer(pointer), m_owned(owned), m_count(1) {
        if (pointer == nullptr)
            throw CIllegalArgumentException("vorn/base/RefCountedPtr", 96, "Invalid pointer.");
    }

    bool IsOwned() const { return m_owned; }
    int GetCount() const { return m_count; }
    // The count is a plain integer: handles of one object belong to one thread at a time.
    void AddRef() { ++m_count; }
    // Returns true when this was the last handle. A count already at 0 stays there.
    bool Release() {
        if (m_count != 0)
            --m_count;
        return m_count == 0;
    }

    // Gives the block back. Kept out of line: a caller that inlined the free would make the
    // compiler see every later use of a shared block as a use after free.
    __attribute__((noinline)) static void Destroy(RefCountedPtrBase* block) { delete block; }

protected:
    void* m_pointer;
    bool m_owned;
    int m_count;
};

template <typename T> class RefCountedPtr : public RefCountedPtrBase {
public:
    RefCountedPtr(T* pointer, bool owned) : RefCountedPtrBase(pointer, owned) {}
    // The object as first given to the block.
    T* GetPointer() const { return static_cast<T*>(m_pointer); }
};

} // namespace vorn::base

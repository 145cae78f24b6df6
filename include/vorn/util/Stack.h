// CStack: a last-in, first-out layer on CVector.
#pragma once

#include <vorn/util/EmptyStackException.h>
#include <vorn/util/Vector.h>

namespace vorn::util {

template <typename T> class CStack : public CVector<T> {
public:
    explicit CStack(unsigned int initialCapacity = 10, unsigned int increment = 5)
        : CVector<T>(initialCapacity, increment) {}

    void Push(const T& value) { this->AddElement(value); }

    // The top element is copied out before it is removed; the buffer may shrink after.
    T Pop() {
        if (this->IsEmpty())
            throw CEmptyStackException("vorn/util/Stack", __LINE__);
        T top(this->GetElementAt(this->GetSize() - 1));
        this->RemoveElementAt(this->GetSize() - 1);
        return top;
    }

    T& Peek() {
        if (this->IsEmpty())
            throw CEmptyStackException("vorn/util/Stack", __LINE__);
        return this->GetElementAt(this->GetSize() - 1);
    }
    const T& Peek() const {
        if (this->IsEmpty())
            throw CEmptyStackException("vorn/util/Stack", __LINE__);
        return this->GetElementAt(this->GetSize() - 1);
    }
};

} // namespace vorn::util

// CQueue: a first-in, first-out layer on CVector. Taking the head moves the whole queue down.
#pragma once

#include <vorn/util/EmptyQueueException.h>
#include <vorn/util/Vector.h>

namespace vorn::util {

template <typename T> class CQueue : public CVector<T> {
public:
    explicit CQueue(unsigned int initialCapacity = 10, unsigned int increment = 5)
        : CVector<T>(initialCapacity, increment) {}

    void Enqueue(const T& value) { this->AddElement(value); }

    // The vector's own complaints about an empty queue (one from each call) read as an empty
    // queue; anything else passes through.
    T Dequeue() {
        try {
            T first(this->GetFirstElement());
            this->RemoveElementAt(0);
            return first;
        } catch (const CNoSuchElementException&) {
            throw CEmptyQueueException("vorn/util/Queue", __LINE__);
        } catch (const vorn::base::CArrayIndexOutOfBoundsException&) {
            throw CEmptyQueueException("vorn/util/Queue", __LINE__);
        }
    }
};

} // namespace vorn::util

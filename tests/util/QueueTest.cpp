#include <gtest/gtest.h>

#include <vorn/base/Object.h>
#include <vorn/base/Ref.h>
#include <vorn/util/EmptyQueueException.h>
#include <vorn/util/Queue.h>

#include "support/Throws.h"

namespace {

using vorn::base::CObject;
using vorn::base::CRef;

TEST(Queue, FirstInFirstOut) {
    vorn::util::CQueue<CRef<CObject>> q(2, 2);
    CObject* objects[5];
    for (auto*& object : objects) {
        object = new CObject;
        q.Enqueue(object);
    }
    EXPECT_EQ(q.GetCapacity(), 6u);
    for (auto* object : objects)
        EXPECT_EQ(q.Dequeue().GetPointer(), object); // each handle deletes its object as it goes
    EXPECT_EQ(q.GetCapacity(), 2u);
}

// The vector's own exception for an empty queue doesn't leave Dequeue.
TEST(Queue, EmptyQueueRefusesWithItsOwnException) {
    vorn::util::CQueue<int> q;
    q.Enqueue(7);
    EXPECT_EQ(q.Dequeue(), 7);
    vorn::test::ExpectThrow<vorn::util::CEmptyQueueException>([&] { q.Dequeue(); },
                                                              "vorn/util/Queue");
}

} // namespace

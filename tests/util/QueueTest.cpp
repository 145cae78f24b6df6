#include <gtest/gtest.h>

#include <vorn/base/Object.h>
#include <vorn/base/Ref.h>
#include <vorn/util/EmptyQueueException.h>
#include <vorn/util/NoSuchElementException.h>
#include <vorn/util/Queue.h>

namespace {

using vorn::util::CEmptyQueueException;
using vorn::util::CQueue;

TEST(Queue, FirstInFirstOut) {
    CQueue<vorn::base::CRef<vorn::base::CObject>> q(2, 2);
    vorn::base::CObject* objects[5];
    for (auto*& object : objects) {
        object = new vorn::base::CObject;
        q.Enqueue(object);
    }
    EXPECT_EQ(q.GetCapacity(), 6u);
    for (auto* object : objects)
        EXPECT_EQ(q.Dequeue().GetPointer(), object); // each handle deletes its object as it goes
    EXPECT_EQ(q.GetCapacity(), 2u);
    EXPECT_TRUE(q.IsEmpty());
}

TEST(Queue, EmptyQueueRefusesWithItsOwnException) {
    CQueue<int> q;
    try {
        q.Dequeue();
        FAIL();
    } catch (const vorn::util::CNoSuchElementException&) {
        FAIL() << "the vector's exception leaked";
    } catch (const CEmptyQueueException& e) {
        EXPECT_STREQ(e.GetSourceFile(), "vorn/util/Queue");
        EXPECT_EQ(e.GetMessage(), nullptr);
    }
    q.Enqueue(7);
    EXPECT_EQ(q.Dequeue(), 7);
    EXPECT_THROW(q.Dequeue(), CEmptyQueueException);
}

} // namespace

#include <gtest/gtest.h>

#include <vorn/base/MemoryException.h>
#include <vorn/base/NullReferenceException.h>
#include <vorn/util/Enumeration.h>

#include "support/AllocFailure.h"
#include "support/Throws.h"

namespace {

using vorn::util::CEnumeration;
using vorn::util::IEnumeration;

// Walks 0, 1, ... count - 1 and counts its own deaths.
class Counting : public IEnumeration<int> {
public:
    Counting(int count, int* deaths) : m_count(count), m_next(0), m_deaths(deaths) {}
    ~Counting() override { ++*m_deaths; }
    bool HasMoreElements() const override { return m_next < m_count; }
    const int& GetNextElement() const override {
        return const_cast<Counting*>(this)->GetNextElement();
    }
    int& GetNextElement() override {
        m_current = m_next++;
        return m_current;
    }
    void Reset() override { m_next = 0; }

private:
    int m_count, m_next, m_current = -1;
    int* m_deaths;
};

TEST(Enumeration, HandlesShareOneEnumeration) {
    int deaths = 0;
    {
        CEnumeration<int> a(new Counting(3, &deaths));
        CEnumeration<int> b(a);
        CEnumeration<int> c;
        c = b;
        CEnumeration<int>& alias = c;
        c = alias;
        EXPECT_EQ(a.GetCount(), 3);
        int sum = 0;
        while (b->HasMoreElements())
            sum += b->GetNextElement();
        EXPECT_EQ(sum, 3);
        EXPECT_FALSE(a->HasMoreElements()); // one walk, seen through every handle
        (*c).Reset();
        EXPECT_TRUE(a->HasMoreElements());
        a = CEnumeration<int>(new Counting(1, &deaths));
        b = a;
        EXPECT_EQ(deaths, 0);
        c = a; // the last handle of the first one
        EXPECT_EQ(deaths, 1);
        EXPECT_EQ(c.GetCount(), 3);
    }
    EXPECT_EQ(deaths, 2);
}

TEST(Enumeration, EmptyHandleRefusesAccessAndAFailedBlockDeletesTheEnumeration) {
    CEnumeration<int> empty(nullptr);
    EXPECT_EQ(vorn::test::CountAllocations([] { CEnumeration<int> none(nullptr); }), 0u);
    vorn::test::ExpectThrow<vorn::base::CNullReferenceException>([&] { empty->Reset(); },
                                                                 "vorn/util/Enumeration");
    int deaths = 0;
    auto* walk = new Counting(1, &deaths);
    vorn::test::ExpectNoMemory([&] { CEnumeration<int> handle(walk); }, "vorn/util/Enumeration");
    EXPECT_EQ(deaths, 1);
}

} // namespace

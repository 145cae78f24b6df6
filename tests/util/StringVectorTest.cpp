#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include <vorn/base/ArrayIndexOutOfBoundsException.h>
#include <vorn/base/IllegalArgumentException.h>
#include <vorn/util/NoSuchElementException.h>
#include <vorn/util/StringVector.h>
#include <vorn/util/UnicodeStringVector.h>

#include "support/Throws.h"
#include "support/Utf16.h"

namespace {

using vorn::base::CArrayIndexOutOfBoundsException;
using vorn::base::CIllegalArgumentException;
using vorn::test::ExpectThrow;
using vorn::util::CEnumeration;
using vorn::util::CNoSuchElementException;

// One body for both vectors: texts are given as UTF-8 and read back as UTF-8.
struct Narrow {
    using Vector = vorn::util::CStringVector;
    using Text = vorn::base::CString;
    static constexpr const char* kSource = "vorn/util/StringVector";
    std::string Put(const char* s) { return s; }
    static const char* Ptr(const std::string& s) { return s.c_str(); }
    static std::string Read(const Text& t) { return static_cast<const char*>(t); }
    static int Order(const void* a, const void* b) {
        return std::strcmp(*static_cast<const Text*>(a), *static_cast<const Text*>(b));
    }
};
struct Wide {
    using Vector = vorn::util::CUnicodeStringVector;
    using Text = vorn::base::CUnicodeString;
    static constexpr const char* kSource = "vorn/util/UnicodeStringVector";
    vorn::test::WString Put(const char* s) {
        vorn::test::WString w;
        for (; *s != 0; ++s)
            w.push_back(static_cast<unsigned char>(*s));
        return w;
    }
    static const unsigned short* Ptr(const vorn::test::WString& s) { return s.c_str(); }
    static std::string Read(const Text& t) { return vorn::test::Narrow(vorn::test::Units(t)); }
    static int Order(const void* a, const void* b) {
        return Read(*static_cast<const Text*>(a)).compare(Read(*static_cast<const Text*>(b)));
    }
};

template <typename T> class StringVectors : public ::testing::Test, public T {
protected:
    using Vector = typename T::Vector;
    std::vector<std::string> Contents(Vector& v) {
        std::vector<std::string> out;
        for (CEnumeration<typename T::Text> e = v.GetElements(); e->HasMoreElements();)
            out.push_back(T::Read(e->GetNextElement()));
        return out;
    }
    void Add(Vector& v, std::initializer_list<const char*> texts) {
        for (const char* text : texts)
            v.AddElement(T::Ptr(this->Put(text)));
    }
};
using Kinds = ::testing::Types<Narrow, Wide>;
TYPED_TEST_SUITE(StringVectors, Kinds);

TYPED_TEST(StringVectors, TextsByValueWithTheRulesOfTheirOwn) {
    using Strings = std::vector<std::string>;
    typename TestFixture::Vector v(7, 0);
    EXPECT_EQ(v.GetCapacity(), 10u); // an increment of 0 is 5
    this->Add(v, {"b", "", "a", "b"});
    v.InsertElementAt(TypeParam::Ptr(this->Put("c")), 1);
    EXPECT_EQ(this->Contents(v), (Strings{"b", "c", "", "a", "b"}));
    // Exact comparison: an empty text is found, case counts, the last search runs from the end.
    EXPECT_EQ(v.GetIndexOf(TypeParam::Ptr(this->Put(""))), 2);
    EXPECT_EQ(v.GetLastIndexOf(TypeParam::Ptr(this->Put("b"))), 4);
    EXPECT_FALSE(v.Contains(TypeParam::Ptr(this->Put("B"))));
    // Setting past the end is quiet; removing an absent text is not.
    v.SetElementAt(TypeParam::Ptr(this->Put("x")), 99);
    v.SetElementAt(TypeParam::Ptr(this->Put("x")), 0);
    ExpectThrow<CNoSuchElementException>([&] { v.RemoveElement(TypeParam::Ptr(this->Put("q"))); },
                                         TypeParam::kSource);
    v.RemoveElement(TypeParam::Ptr(this->Put("b")));
    v.Sort(TypeParam::Order);
    EXPECT_EQ(this->Contents(v), (Strings{"", "a", "c", "x"}));
    typename TestFixture::Vector copy(v);
    EXPECT_TRUE(copy == v);
    copy.GetElementAt(0) = TypeParam::Ptr(this->Put("changed"));
    EXPECT_TRUE(copy != v);
    EXPECT_EQ(TypeParam::Read(v.GetFirstElement()), "");
    v.RemoveAllElements();
    EXPECT_EQ(v.GetCapacity(), 5u);
    ExpectThrow<CNoSuchElementException>([&] { v.GetLastElement(); }, TypeParam::kSource);
}

TYPED_TEST(StringVectors, RefusalsAndTheEnumerationsEnd) {
    typename TestFixture::Vector v;
    this->Add(v, {"only"});
    decltype(TypeParam::Ptr(this->Put(""))) null = nullptr;
    const std::vector<std::function<void()>> refused = {
        [&] { v.AddElement(null); },      [&] { v.InsertElementAt(null, 0); },
        [&] { v.SetElementAt(null, 0); }, [&] { v.Contains(null); },
        [&] { v.GetIndexOf(null); },      [&] { v.GetLastIndexOf(null); }};
    for (const auto& call : refused)
        ExpectThrow<CIllegalArgumentException>(call, TypeParam::kSource, "Invalid element.");
    ExpectThrow<CIllegalArgumentException>([&] { v.Sort(nullptr); }, TypeParam::kSource,
                                           "Invalid compare function.");
    ExpectThrow<CArrayIndexOutOfBoundsException>(
        [&] { v.InsertElementAt(TypeParam::Ptr(this->Put("x")), 2); }, TypeParam::kSource);
    ExpectThrow<CArrayIndexOutOfBoundsException>([&] { v[1]; }, TypeParam::kSource);

    auto e = v.GetElements();
    EXPECT_EQ(TypeParam::Read(e->GetNextElement()), "only");
    EXPECT_FALSE(e->HasMoreElements());
    ExpectThrow<CNoSuchElementException>([&] { e->GetNextElement(); }, TypeParam::kSource);
    e->Reset();
    EXPECT_TRUE(e->HasMoreElements());
}

} // namespace

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include <vorn/base/IllegalArgumentException.h>
#include <vorn/util/NoSuchElementException.h>
#include <vorn/util/StringTokenizer.h>
#include <vorn/util/UnicodeStringTokenizer.h>

#include "support/Throws.h"
#include "support/Utf16.h"
#include "vorn/util/Tokenizing.h"

namespace {

using vorn::base::CIllegalArgumentException;
using vorn::test::ExpectThrow;
using vorn::util::CNoSuchElementException;
using Strings = std::vector<std::string>;

struct Narrow {
    using Tokenizer = vorn::util::CStringTokenizer;
    static constexpr const char* kSource = "vorn/util/StringTokenizer";
    static std::string Put(const char* s) { return s; }
    static std::string Read(const vorn::base::CString& t) { return static_cast<const char*>(t); }
};
struct Wide {
    using Tokenizer = vorn::util::CUnicodeStringTokenizer;
    static constexpr const char* kSource = "vorn/util/UnicodeStringTokenizer";
    static vorn::test::WString Put(const char* s) {
        return vorn::test::WString(s, s + std::strlen(s));
    }
    static std::string Read(const vorn::base::CUnicodeString& t) {
        return vorn::test::Narrow(vorn::test::Units(t));
    }
};

template <typename T> class Tokenizers : public ::testing::Test {
protected:
    typename T::Tokenizer Make(const char* text, const char* delimiters, bool returned) {
        return typename T::Tokenizer(T::Put(text).c_str(), T::Put(delimiters).c_str(), returned);
    }
    static Strings Drain(typename T::Tokenizer& t) {
        Strings out;
        while (t.HasMoreTokens())
            out.push_back(T::Read(t.GetNextToken()));
        ExpectThrow<CNoSuchElementException>([&] { t.GetNextToken(); }, T::kSource);
        return out;
    }
};
using Kinds = ::testing::Types<Narrow, Wide>;
TYPED_TEST_SUITE(Tokenizers, Kinds);

TYPED_TEST(Tokenizers, DelimiterRunsSeparateTokens) {
    auto t = this->Make(",a,b;;c;", ",;", false);
    EXPECT_EQ(t.GetTokenCount(), 3u);
    EXPECT_EQ(TypeParam::Read(t.GetNextToken()), "a");
    EXPECT_EQ(t.GetTokenCount(), 2u);
    auto copy = t;
    EXPECT_EQ(this->Drain(t), (Strings{"b", "c"}));
    EXPECT_EQ(this->Drain(copy), (Strings{"b", "c"}));
    auto only = this->Make(";;,", ",;", false);
    EXPECT_EQ(only.GetTokenCount(), 0u);
    EXPECT_EQ(this->Drain(only), Strings{});
    // New delimiters hold for the rest of the walk.
    auto switched = this->Make("a b,c d", " ", false);
    EXPECT_EQ(TypeParam::Read(switched.GetNextToken()), "a");
    EXPECT_EQ(TypeParam::Read(switched.GetNextToken(TypeParam::Put(",").c_str())), " b");
    EXPECT_EQ(this->Drain(switched), (Strings{"c d"}));
}

TYPED_TEST(Tokenizers, ReturnedDelimitersConsumeOneCharacterPerEmptyToken) {
    auto t = this->Make("a,b", ",", true);
    EXPECT_EQ(t.GetTokenCount(), 3u);
    EXPECT_EQ(this->Drain(t), (Strings{"", "", ""}));
    // The count takes each delimiter and each token; the calls go by characters.
    auto longer = this->Make("ab,,c", ",", true);
    EXPECT_EQ(longer.GetTokenCount(), 4u);
    EXPECT_EQ(this->Drain(longer).size(), 5u);
}

TYPED_TEST(Tokenizers, RefusesEmptyTextsAndDelimiters) {
    using T = typename TypeParam::Tokenizer;
    const auto text = TypeParam::Put("a"), none = TypeParam::Put("");
    ExpectThrow<CIllegalArgumentException>([&] { T(nullptr, text.c_str(), false); },
                                           TypeParam::kSource, "Invalid source text.");
    ExpectThrow<CIllegalArgumentException>([&] { T(none.c_str(), text.c_str(), false); },
                                           TypeParam::kSource, "Invalid source text.");
    ExpectThrow<CIllegalArgumentException>([&] { T(text.c_str(), nullptr, false); },
                                           TypeParam::kSource, "Invalid delimiters.");
    T t(text.c_str(), text.c_str(), false);
    ExpectThrow<CIllegalArgumentException>([&] { t.GetNextToken(none.c_str()); },
                                           TypeParam::kSource, "Invalid delimiters.");
}

TEST(StringTokenizer, ByteTestAgreesWithTheCharacterSearch) {
    // ASCII bytes take a shortcut; every byte must still answer as Find does.
    for (const char* set : {",;", "a\xC3\xA9", "\xA9\xFF,", "\xE2\x82\xAC-"}) {
        const vorn::base::CString delimiters(set);
        for (int b = 1; b < 256; ++b) {
            const char c = static_cast<char>(b);
            EXPECT_EQ(vorn::util::detail::IsDelimiter(delimiters, c), delimiters.Find(c) >= 0)
                << set << " " << b;
        }
    }
    // The walk goes by bytes, and a byte of a multi-byte character is not that character.
    vorn::util::CStringTokenizer t("x\xC3\xA9y,z", "\xC3\xA9,", false);
    EXPECT_STREQ(t.GetNextToken(), "x\xC3\xA9y");
    EXPECT_STREQ(t.GetNextToken(), "z");
}

} // namespace

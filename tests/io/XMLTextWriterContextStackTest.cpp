#include <gtest/gtest.h>

#include <vorn/base/IllegalArgumentException.h>
#include <vorn/util/EmptyStackException.h>
#include <vorn/util/NoSuchElementException.h>

#include "support/AllocFailure.h"
#include "support/Throws.h"
#include "support/Utf16.h"
#include "vorn/io/XMLTextWriterContextStack.h"

namespace {

using vorn::io::XMLTextWriterContextStack;
using vorn::test::Units;
using vorn::test::W;

const char* const kSource = "vorn/io/XMLTextWriterContextStack";

struct Stack : XMLTextWriterContextStack {
    void Default(const char16_t* name, const char16_t* uri) {
        PushElementWithDefaultNamespace(W(name).c_str(), W(uri).c_str());
    }
    void Prefixed(const char16_t* name, const char16_t* prefix, const char16_t* uri) {
        PushElementWithPrefix(W(name).c_str(), W(prefix).c_str(), W(uri).c_str());
    }
    std::u16string Default() const { return Str(GetDefaultNamespace()); }
    std::u16string Current() const { return Str(GetCurrentNamespace()); }
    static std::u16string Str(const vorn::base::CUnicodeString& s) {
        auto units = Units(s);
        return std::u16string(units.begin(), units.end());
    }
};

// The walk of PopElement runs past the nearest default unless prefixes lie above it.
TEST(XMLTextWriterContextStack, PopKeepsTheDefaultThatTheWalkFinds) {
    Stack s;
    s.Default(u"a", u"u1");
    s.PushElement(W(u"b").c_str());
    EXPECT_EQ(s.Default(), u"u1");
    s.PopElement();
    EXPECT_EQ(s.Default(), u"u1");
    // A current namespace set from a default is cleared again at the end of the walk.
    EXPECT_EQ(s.Current(), u"");
    s.PopElement();
    EXPECT_EQ(s.Default(), u"");

    s.Default(u"a", u"u1");
    s.Default(u"b", u"u2");
    s.PushElement(W(u"c").c_str());
    EXPECT_EQ(s.Default(), u"u2");
    s.PopElement();
    EXPECT_EQ(s.Default(), u"u1"); // the outermost, not b's own u2

    s.Prefixed(u"p:c", u"p", u"u3");
    s.PushElement(W(u"d").c_str());
    s.PopElement();
    EXPECT_EQ(s.Default(), u"u2"); // stopped at the nearest default, below the prefixes
    EXPECT_EQ(s.Current(), u"u3");
    EXPECT_EQ(s.Top().m_name, W(u"p:c").c_str());
}

TEST(XMLTextWriterContextStack, SearchesFindTheInnermostBinding) {
    Stack s;
    EXPECT_FALSE(s.HasUriForPrefix(W(u"p").c_str()));
    s.AddPrefix(W(u"p").c_str(), W(u"u").c_str()); // no context: nothing, no exception
    vorn::test::ExpectThrow<vorn::util::CEmptyStackException>([&] { s.Top(); }, kSource);
    vorn::test::ExpectThrow<vorn::util::CEmptyStackException>([&] { s.PopElement(); }, kSource);
    vorn::test::ExpectThrow<vorn::util::CNoSuchElementException>(
        [&] { s.GetUriForPrefix(W(u"p").c_str()); }, kSource);

    s.Prefixed(u"p:a", u"p", u"u");
    s.Prefixed(u"q:b", u"q", u"u");
    s.AddPrefix(W(u"p").c_str(), W(u"v").c_str());
    EXPECT_EQ(s.GetPrefixForUri(W(u"u").c_str()), W(u"q").c_str());
    EXPECT_EQ(s.GetUriForPrefix(W(u"p").c_str()), W(u"v").c_str()); // the inner binding hides
    EXPECT_TRUE(s.HasPrefixForUri(W(u"v").c_str()));
    EXPECT_FALSE(s.HasPrefixForUri(W(u"w").c_str()));
    vorn::test::ExpectThrow<vorn::util::CNoSuchElementException>(
        [&] { s.GetPrefixForUri(W(u"w").c_str()); }, kSource);
    // Null texts are kept as empty ones; the map takes no empty prefix.
    s.PushElementWithPrefix(nullptr, W(u"r").c_str(), nullptr);
    EXPECT_TRUE(s.Top().m_name.IsEmpty());
    EXPECT_TRUE(s.GetUriForPrefix(W(u"r").c_str()).IsEmpty());
    vorn::test::ExpectThrow<vorn::base::CIllegalArgumentException>(
        [&] { s.PushElementWithPrefix(nullptr, nullptr, nullptr); }, "vorn/util/UnicodeStringMap",
        "Invalid key.");
    EXPECT_EQ(s.GetSize(), 3u);
}

TEST(XMLTextWriterContextStack, FailedPushLeavesTheStackAsItWas) {
    Stack s;
    s.PushElement(W(u"a").c_str());
    const unsigned long count = vorn::test::CountAllocations([&] {
        s.Prefixed(u"p:b", u"p", u"u");
        s.PopElement();
    });
    for (unsigned long nth = 1; nth <= count; ++nth) {
        try {
            vorn::test::FailAllocation fail(nth);
            s.Prefixed(u"p:b", u"p", u"u");
            s.PopElement();
        } catch (const vorn::base::CMemoryException&) {
        }
        EXPECT_EQ(s.GetSize(), 1u) << nth;
        EXPECT_FALSE(s.HasUriForPrefix(W(u"p").c_str())) << nth;
    }
}

} // namespace

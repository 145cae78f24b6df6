#include <gtest/gtest.h>

#include <vorn/io/XMLException.h>

#include "support/DebugCapture.h"
#include "support/Throws.h"
#include "support/XmlText.h"
#include "vorn/io/XMLAttributeList.h"
#include "vorn/io/XMLTokens.h"

namespace {

using vorn::io::CXMLEndElementToken;
using vorn::io::CXMLException;
using vorn::io::CXMLPIToken;
using vorn::io::CXMLStartElementToken;
using vorn::io::XMLAttributeList;
using vorn::test::ExpectThrow;
using vorn::test::N;
using vorn::test::Str;
using vorn::test::W;

const char* const kList = "vorn/io/XMLAttributeList";

TEST(XMLAttributeList, AddsWhatItCanAndFindsTheFirstMatch) {
    XMLAttributeList list(2, 2);
    EXPECT_FALSE(list.HasAttribute(N(u"a")));
    list.AddAttribute(nullptr, N(u"a"), N(u"a"), N(u"0")); // no namespace URI: nothing
    list.AddAttribute(N(u"urn:x"), N(u""), N(u"x:a"), N(u"0"));
    list.AddAttribute(N(u""), N(u"a"), N(u"a"), N(u"1"));
    list.AddAttribute(N(u"urn:x"), N(u"a"), N(u"x:a"), nullptr);
    list.AddAttribute(N(u"a"), N(u"2"));
    list.AddAttribute(N(u""), N(u"3"));
    EXPECT_EQ(list.GetSize(), 3u);
    EXPECT_EQ(Str(list.GetAttribute(N(u"a"))), "1");
    EXPECT_EQ(Str(list.GetAttribute(N(u"urn:x"), N(u"a"))), "");
    EXPECT_FALSE(list.HasAttribute(N(u"urn:x"), N(u"A")));
    EXPECT_FALSE(list.HasAttribute(N(u"urn:y"), N(u"a")));
    // Namespace first, then local name, then the match; null and empty alike.
    ExpectThrow<CXMLException>([&] { list.HasAttribute(N(u""), nullptr); }, kList,
                               "Invalid namespace URI.");
    ExpectThrow<CXMLException>([&] { list.GetAttribute(N(u"urn:x"), N(u"")); }, kList,
                               "Invalid local name.");
    ExpectThrow<CXMLException>([&] { list.HasAttribute(nullptr); }, kList,
                               "Invalid qualified name.");
    ExpectThrow<CXMLException>([&] { list.GetAttribute(N(u"b")); }, kList, "No such attribute.");
}

TEST(XMLTokens, ElementAndInstructionTokens) {
    CXMLStartElementToken byName(N(u"p:e"));
    EXPECT_EQ(Str(byName.GetQualifiedName()), "p:e");
    EXPECT_TRUE(byName.GetLocalName().IsEmpty());
    EXPECT_TRUE(byName.HasNamespaceURI()); // true for NO namespace URI
    EXPECT_FALSE(byName.HasAttribute(N(u"urn:x"), N(u"a")));
    byName.AddAttribute(N(u"a"), N(u"1"));
    EXPECT_EQ(Str(byName.GetAttribute(N(u"a"))), "1");
    CXMLEndElementToken full(N(u"urn:p"), N(u"e"), N(u"p:e"));
    EXPECT_FALSE(full.HasNamespaceURI());
    EXPECT_EQ(Str(full.GetLocalName()), "e");
    EXPECT_EQ(full.GetType(), vorn::io::XMLTokenEndElement);
    EXPECT_TRUE(full.GetValue().IsEmpty());
    CXMLPIToken pi(N(u"t"), N(u"d"));
    EXPECT_TRUE(pi.GetValue().IsEmpty());
    EXPECT_EQ(Str(pi.GetData()), "d");
}

} // namespace

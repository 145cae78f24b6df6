#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include <xercesc/dom/DOM.hpp>

#include <vorn/base/NullReferenceException.h>
#include <vorn/io/XMLDOMReader.h>
#include <vorn/io/XMLException.h>
#include <vorn/io/XMLTextReader.h>

#include "support/AllocFailure.h"
#include "support/DebugCapture.h"
#include "support/Throws.h"
#include "support/XmlDom.h"
#include "support/XmlText.h"

namespace {

using vorn::base::CRef;
using vorn::base::CUnicodeString;
using vorn::io::CIOException;
using vorn::io::CXMLDOMReader;
using vorn::io::CXMLException;
using vorn::io::IXMLToken;
using vorn::test::ExpectThrow;
using vorn::test::ParsedDocument;
using vorn::test::Str;
using vorn::test::W;

const char* const kSource = "vorn/io/XMLDOMReader";

template <typename E = CIOException, typename F>
void ExpectWords(F&& call, const char* words, const char* source = kSource) {
    ExpectThrow<E>(call, source, words);
}

// S(a), T(t), E(a) as the walk gives them, a dash where ReadToken says false.
std::string Walk(CXMLDOMReader& reader, int count) {
    std::string tokens;
    for (int i = 0; i < count; ++i) {
        tokens += i == 0 ? "" : " ";
        if (!reader.ReadToken()) {
            tokens += "-";
            continue;
        }
        const IXMLToken& token = *reader.GetCurrentToken();
        if (token.GetType() == vorn::io::XMLTokenText) {
            tokens += "T(" + Str(token.GetValue()) + ")";
            continue;
        }
        const auto& element = dynamic_cast<const vorn::io::IXMLElementToken&>(token);
        tokens += (token.GetType() == vorn::io::XMLTokenStartElement ? "S(" : "E(") +
                  Str(element.GetQualifiedName()) + ")";
    }
    return tokens;
}

TEST(XMLDOMReader, TheWalkGivesEndTokensInItsOwnOrderAndStartsOver) {
    const std::pair<const char*, const char*> cases[] = {
        {"<a/>", "S(a) - S(a) -"},
        {"<a>t</a>", "S(a) T(t) E(a) S(a) T(t) E(a)"},
        {"<a><b>t</b></a>", "S(a) S(b) T(t) E(b) - S(a)"},
        {"<a><b>t</b><c>u</c></a>", "S(a) S(b) T(t) E(b) S(c) T(u) E(c) - S(a)"},
        {"<a><b><c>t</c></b><d>u</d></a>", "S(a) S(b) S(c) T(t) E(b) E(c) S(d) T(u) E(d) - S(a)"},
        {"<a><b><c>t</c></b></a>", "S(a) S(b) S(c) T(t) E(c) E(a) - S(a)"},
        {"<a><b/><c/></a>", "S(a) S(b) S(c) E(a) S(a)"},
    };
    for (const auto& [text, tokens] : cases) {
        ParsedDocument document(text);
        CXMLDOMReader reader(document.Get());
        const int count =
            static_cast<int>(std::count(tokens, tokens + std::strlen(tokens), ' ')) + 1;
        EXPECT_EQ(Walk(reader, count), tokens) << text;
    }
}

TEST(XMLDOMReader, RefusesADocumentWithoutAnElementAndFreesWhatItMade) {
    ExpectWords([] { CXMLDOMReader reader(nullptr); }, "Invalid DOM document.",
                "vorn/io/XMLDOMTokenizer");
    xercesc::DOMDocument* empty = xercesc::DOMImplementation::getImplementation()->createDocument();
    ExpectWords([&] { CXMLDOMReader reader(empty); }, "Invalid DOM document.",
                "vorn/io/XMLDOMTokenizer");
    empty->release();
    ParsedDocument document("<a/>");
    const unsigned long made =
        vorn::test::CountAllocations([&] { CXMLDOMReader reader(document.Get()); });
    EXPECT_GE(made, 3u); // the walk, its stack, the state
    for (unsigned long nth = 1; nth <= made; ++nth) {
        vorn::test::FailAllocation fail(nth);
        EXPECT_THROW(CXMLDOMReader reader(document.Get()), vorn::base::CMemoryException);
    }
}

TEST(XMLDOMReader, TokensAskTheirNodes) {
    ParsedDocument document("<!DOCTYPE r [<!ENTITY e 'x'>]><r xmlns:p='urn:p' p:a='1' b='2'>"
                            "&e;<!--c--><?pi d?><![CDATA[<>]]></r>",
                            true, true);
    CRef<IXMLToken> start;
    {
        CXMLDOMReader reader(document.Get());
        ASSERT_TRUE(reader.ReadToken());
        start = reader.GetCurrentToken();
        // The entity reference itself is a text token, over a node that has no data; its text
        // comes as its child.
        ASSERT_TRUE(reader.ReadToken());
        EXPECT_EQ(reader.GetCurrentTokenType(), vorn::io::XMLTokenText);
        EXPECT_THROW(reader.GetCurrentToken()->GetValue(), vorn::base::CNullReferenceException);
        std::string rest;
        for (int i = 0; i < 7; ++i) {
            ASSERT_TRUE(reader.ReadToken());
            rest += vorn::test::Describe(*reader.GetCurrentToken()) + " ";
        }
        EXPECT_EQ(rest, "T:x E:e C:c P:pi=d D:<> E:r S:r ");
        reader.Close();
        ExpectWords([&] { reader.Close(); }, "Reader closed.");
        ExpectWords([&] { reader.ReadToken(); }, "Reader closed.");
    }
    // Past the reader, as long as the document lives.
    auto& element = dynamic_cast<vorn::io::IXMLStartElementToken&>(*start);
    EXPECT_EQ(start->GetLineNumber(), 0u);
    EXPECT_FALSE(element.HasNamespaceURI());
    EXPECT_EQ(Str(element.GetAttribute(W(u"urn:p").c_str(), W(u"a").c_str())), "1");
    EXPECT_EQ(Str(element.GetAttribute(W(u"b").c_str())), "2");
    // An absent attribute is the empty string in a DOM, and so is there.
    EXPECT_TRUE(element.HasAttribute(W(u"none").c_str()));
    EXPECT_EQ(Str(element.GetAttribute(W(u"urn:p").c_str(), W(u"none").c_str())), "");
    const char* token = "vorn/io/XMLDOMStartElementToken";
    ExpectWords<CXMLException>([&] { element.HasAttribute(W(u"").c_str(), W(u"a").c_str()); },
                               "Invalid namespace URI.", token);
    ExpectWords<CXMLException>([&] { element.GetAttribute(W(u"urn:p").c_str(), nullptr); },
                               "Invalid local name.", token);
    ExpectWords<CXMLException>([&] { element.GetAttribute(nullptr); }, "Invalid qualidied name.",
                               token);
}

TEST(XMLDOMReader, ReadsLikeTheTextReaderWithItsOwnWords) {
    ParsedDocument document("<r xmlns='urn:r' a='x'><n> 42 </n><s>one<![CDATA[two]]></s></r>");
    CXMLDOMReader reader(document.Get());
    ExpectWords([&] { reader.GetCurrentTokenType(); }, "There is no valid token.");
    ExpectWords<CXMLException>([&] { reader.ReadStartElement(W(u"").c_str()); },
                               "Invalid qualified name.");
    ExpectWords<CXMLException>([&] { reader.ReadEndElement(nullptr); }, "Invalid qualified name.");
    reader.ReadStartElement(W(u"r").c_str(), W(u"urn:r").c_str());
    EXPECT_EQ(Str(reader.ReadAttribute(W(u"a").c_str())), "x");
    EXPECT_EQ(reader.ReadElementLong(W(u"n").c_str(), W(u"urn:r").c_str()), 42);
    // Both forms join CDATA to the run.
    CUnicodeString text;
    reader.ReadElementText(text);
    EXPECT_EQ(Str(text), "onetwo");
    ASSERT_TRUE(reader.ReadToken());
    ExpectWords<CXMLException>([&] { reader.HasAttribute(W(u"a").c_str()); },
                               "Attributes available only in start element nodes.");

    // Without namespaces a node has no local name: a search by two names meets that null.
    ParsedDocument plain("<r><n/></r>", false);
    CXMLDOMReader flat(plain.Get());
    flat.ReadStartElement(W(u"n").c_str());
    vorn::test::DebugCapture debug;
    ExpectWords([&] { flat.ReadStartElement(W(u"n").c_str(), W(u"").c_str()); },
                "Failed to read start element.");
    EXPECT_NE(debug.Text().find("CNullReferenceException"), std::string::npos);
}

} // namespace

#include <gtest/gtest.h>

#include <set>

#include <vorn/io/XMLDOMWriter.h>
#include <vorn/io/XMLException.h>

#include "support/AllocFailure.h"
#include "support/Throws.h"
#include "support/XmlEvents.h"
#include "support/XmlWriting.h"

namespace {

using vorn::io::CXMLDOMWriter;
using vorn::io::CXMLException;
using vorn::test::U;

const char* const kSource = "vorn/io/XMLDOMWriter";

std::string Tree(const CXMLDOMWriter& w) {
    return vorn::test::Flat(vorn::test::Normal(vorn::test::DomEvents(w.GetDocument())));
}

template <typename F> void Refused(F&& call, const char* words) {
    vorn::test::ExpectThrow<CXMLException>(call, kSource, words);
}

TEST(XMLDOMWriter, CollectsThePrologOnAPlaceholderAndMovesItToTheRealRoot) {
    CXMLDOMWriter w;
    EXPECT_EQ(w.GetDocument(), nullptr);
    w.WriteStartDocument();
    EXPECT_EQ(Tree(w), "S:DocumentRoot{}DocumentRoot | E:DocumentRoot{}DocumentRoot");
    Refused([&] { w.WriteStartDocument(); }, "Document has already been started once.");
    w.WriteComment(U(u"one"));
    w.WriteComment(U(u""));
    w.WriteProcessingInstruction(U(u"pi"), U(u"d"));
    w.WriteStartElement(U(u"a"), U(u"urn:a"));
    w.WriteComment(U(u"in"));
    EXPECT_EQ(Tree(w), "C:one | P:pi=d | S:a{urn:a}a | C:in | E:a{urn:a}a");
}

TEST(XMLDOMWriter, PutsContentUnderTheCurrentElementAndKeepsTheRootCurrent) {
    CXMLDOMWriter w;
    w.WriteStartDocument();
    w.WriteStartElement(U(u"p"), U(u"b"), U(u"urn:b"));
    w.WriteAttribute(U(u"x"), U(u"1"));
    w.WriteString(U(u"t"));
    w.WriteAttribute(U(u"q"), U(u"z"), U(u"urn:z"), U(u"<"));
    w.WriteElementString(U(u"e"), U(u"v"));
    w.WriteElementLong(U(u"n"), U(u"urn:n"), 5);
    w.WriteElementDouble(U(u"d"), 2.0);
    w.WriteAttrFloat(U(u"f"), 1.5f);
    w.WriteComment(U(u"c"));
    Refused([&] { w.WriteAttribute(U(u"y"), U(u"2")); },
            "Attributes can be written only in start element state.");
    w.WriteStartElement(U(u"c"));
    w.WriteCDATA(U(u"x"));
    w.WriteEntityRef(U(u"amp"));
    w.WriteWhitespace(U(u" "));
    w.WriteBase64("ab", 0, 2);
    w.WriteBinHex("ab", 1, 0);
    w.WriteEndElement();
    w.WriteFullEndElement();
    Refused([&] { w.WriteEndElement(); }, "Element stack is empty.");
    w.WriteString(U(u"after"));
    w.WriteEndDocument();
    w.Close();
    EXPECT_EQ(Tree(w), "S:b{urn:b}b f{}f=1.500000 x{}x=1 z{urn:z}z=< | T:tv52.000000 | C:c | "
                       "S:c{}c | D:x | R:amp | T: YWI= | E:c{}c | T:after | E:b{urn:b}b");
}

TEST(XMLDOMWriter, RefusesBadCallsInItsOwnWords) {
    CXMLDOMWriter w;
    w.WriteAttrNamespaceDeclaration(nullptr, nullptr);
    w.WriteAttrDefaultNamespaceDeclaration(nullptr);
    w.Flush();
    w.Close();
    Refused([&] { w.WriteStartElement(U(u"a")); }, "Document hasn't been started yet.");
    Refused([&] { w.WriteEndDocument(); }, "Document hasn't been started yet.");
    Refused([&] { w.WriteStartElement(nullptr, U(u"a"), U(u"u")); }, "Invalid prefix.");
    Refused([&] { w.WriteEntityRef(U(u"")); }, "Invalid entity name.");
    Refused([&] { w.WriteProcessingInstruction(nullptr, U(u"d")); },
            "Invalid processing instruction target.");
    Refused([&] { w.WriteProcessingInstruction(U(u"t"), U(u"")); },
            "Invalid processing instruction data.");
    w.WriteStartDocument();
    const char* const noRoot = "Document element hasn't been written yet.";
    Refused([&] { w.WriteString(U(u"t")); }, noRoot);
    Refused([&] { w.WriteEndElement(); }, noRoot);
    Refused([&] { w.WriteAttribute(U(u"x"), U(u"v")); }, noRoot);
    Refused([&] { w.WriteCDATA(U(u"t")); }, "CDATA section invalid at the top of XML document.");
    Refused([&] { w.WriteWhitespace(U(u" ")); }, "Whitespaces don't allowed top of XML document.");
    Refused([&] { w.WriteEntityRef(U(u"amp")); },
            "Entity reference invalid at the top of XML document.");
    Refused([&] { w.WriteStartElement(nullptr); }, "Invalid local name.");
    Refused([&] { w.WriteStartElement(U(u"a:b")); }, "Local name must be unqualified name.");
    Refused([&] { w.WriteStartElement(U(u"a"), nullptr); }, "Invalid namespace URI.");
    Refused([&] { w.WriteStartElement(U(u"1a")); }, "Invalid character error.");
    Refused([&] { w.WriteProcessingInstruction(U(u"1x"), U(u"d")); }, "Invalid character error.");
    w.WriteStartElement(U(u"a"));
    Refused([&] { w.WriteAttribute(U(u"x y"), U(u"v")); }, "Invalid character error.");
    Refused([&] { w.WriteAttribute(U(u"xmlns"), U(u"urn:x"), U(u"v")); }, "Namespace error.");
    Refused([&] { w.WriteAttribute(U(u"x"), nullptr, U(u"v")); }, "Invalid namespace URI.");
    Refused([&] { w.WriteElementString(U(u"e"), U(u""), U(u"v")); }, "Invalid namespace URI.");
    Refused([&] { w.WriteEntityRef(U(u"#233")); }, "Invalid character error.");
    Refused([&] { w.WriteBase64(nullptr, 0, 3); }, "Failed to create DOM text node.");
    EXPECT_EQ(Tree(w), "S:a{}a | E:a{}a");
}

TEST(XMLDOMWriter, NoMemoryForTheElementStackOrTheEncodedText) {
    std::set<std::string> failures;
    const unsigned long swept = vorn::test::SweepAllocations(
        [] {
            CXMLDOMWriter w;
            w.WriteStartDocument();
            for (int depth = 0; depth < 12; ++depth)
                w.WriteStartElement(U(u"a"));
            w.WriteBase64("ab", 0, 2);
        },
        [&](const vorn::base::CException& e, unsigned long) {
            failures.insert(std::string(e.GetClass()->GetName()) + ": " +
                            (e.GetErrorDescription() ? e.GetErrorDescription() : "-"));
        });
    EXPECT_GT(swept, 0u);
    EXPECT_EQ(failures, (std::set<std::string>{"CMemoryException: -", "CIOException: Memory full.",
                                               "CXMLException: Failed to create DOM "
                                               "text node."}));
}

} // namespace

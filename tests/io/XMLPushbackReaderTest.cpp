#include <gtest/gtest.h>

#include <vorn/base/IllegalArgumentException.h>
#include <vorn/io/XMLDOMReader.h>
#include <vorn/io/XMLException.h>
#include <vorn/io/XMLPushbackReader.h>
#include <vorn/io/XMLTextReader.h>

#include "support/AllocFailure.h"
#include "support/Throws.h"
#include "support/XmlDom.h"
#include "support/XmlText.h"

namespace {

using vorn::base::CIllegalArgumentException;
using vorn::base::CRef;
using vorn::base::CUnicodeString;
using vorn::io::CIOException;
using vorn::io::CXMLException;
using vorn::io::CXMLPushbackReader;
using vorn::io::CXMLReader;
using vorn::io::CXMLTextReader;
using vorn::test::ExpectThrow;
using vorn::test::ReadAll;
using vorn::test::Str;
using vorn::test::W;
using vorn::test::XmlStream;

const char* const kSource = "vorn/io/XMLPushbackReader";

template <typename E = CIOException, typename F> void ExpectWords(F&& call, const char* words) {
    ExpectThrow<E>(call, kSource, words);
}

const unsigned short* N(const char16_t* text) {
    return reinterpret_cast<const unsigned short*>(text);
}

TEST(XMLPushbackReader, ConstructionRefusesTheReaderFirstAndFreesWhatItMade) {
    CXMLTextReader beneath(XmlStream("<r/>"));
    ExpectWords<CIllegalArgumentException>([] { CXMLPushbackReader r(nullptr, 0); },
                                           "Invalid XML reader.");
    ExpectWords<CIllegalArgumentException>([] { CXMLPushbackReader r(CRef<CXMLReader>(), 3); },
                                           "Invalid XML reader.");
    ExpectWords<CIllegalArgumentException>([&] { CXMLPushbackReader r(&beneath, 0); },
                                           "Invalid pushback buffer size.");
    const unsigned long made =
        vorn::test::CountAllocations([&] { CXMLPushbackReader r(&beneath, 3); });
    EXPECT_EQ(made, 3u); // the current token, the buffer, its slots
    for (unsigned long nth = 1; nth <= made; ++nth) {
        vorn::test::FailAllocation fail(nth);
        EXPECT_THROW(CXMLPushbackReader r(&beneath, 3), vorn::base::CMemoryException);
    }
}

TEST(XMLPushbackReader, AnElementPutInReadsAsIfTheDocumentHeldIt) {
    CXMLTextReader beneath(XmlStream("<r><s>t</s></r>"));
    CXMLPushbackReader reader(&beneath, 6);
    reader.UnreadElementLong(N(u"n"), N(u"urn:x"), -42);
    EXPECT_EQ(reader.ReadElementLong(N(u"n"), N(u"urn:x")), -42);
    // By two names the local name is the qualified name as well.
    reader.UnreadElementDouble(N(u"d"), N(u"urn:x"), 0.1);
    reader.UnreadElementFloat(N(u"f"), 1.5f);
    EXPECT_EQ(Str(reader.ReadElementString(N(u"f"))), "1.5");
    EXPECT_EQ(Str(reader.ReadElementString(N(u"d"))), "0.1");
    ExpectThrow<CIOException>([&] { beneath.GetCurrentToken(); }, "vorn/io/XMLTextReader",
                              "There is no valid token.");
    // A name made alone is found only by that name.
    reader.UnreadElementBool(N(u"p:b"), true);
    reader.UnreadElementShort(N(u"h"), N(u""), -3);
    EXPECT_EQ(reader.ReadElementShort(N(u"h"), N(u"")), -3);
    EXPECT_TRUE(reader.ReadElementBool(N(u"p:b")));
    reader.UnreadElementString(N(u"e"), N(u"")); // an empty text is taken
    EXPECT_EQ(ReadAll(reader), "S:e T: E:e S:r S:s T:t E:s E:r");
    ExpectWords([&] { reader.GetCurrentToken(); }, "There is no valid token."); // past the end
}

TEST(XMLPushbackReader, TokensComeBackLastInFirstOutUpToTheSize) {
    CXMLTextReader beneath(XmlStream("<r>b<x/></r>"));
    CXMLPushbackReader reader(&beneath, 2);
    ASSERT_TRUE(reader.ReadToken());
    reader.UnreadToken(); // the current token stays current
    reader.UnreadElementText(N(u"a"));
    ExpectWords([&] { reader.UnreadToken(); }, "Pushback buffer is full.");
    ASSERT_TRUE(reader.ReadToken());
    EXPECT_EQ(reader.GetCurrentToken()->GetLineNumber(), 0u); // made here, not scanned
    EXPECT_EQ(ReadAll(reader), "S:r T:b S:x E:x E:r");

    CXMLTextReader again(XmlStream("<r>b<x/></r>"));
    CXMLPushbackReader two(&again, 2);
    // Full after the end and the text: what went in stays.
    ExpectWords([&] { two.UnreadElementString(N(u"e"), N(u"t")); }, "Pushback buffer is full.");
    EXPECT_EQ(ReadAll(two), "T:t E:e S:r T:b S:x E:x E:r");

    // A run joins across the buffer and the reader beneath; the token after it goes back.
    CXMLTextReader third(XmlStream("<r>b<x/></r>"));
    CXMLPushbackReader run(&third, 3);
    run.ReadStartElement();
    run.UnreadElementText(N(u"a"));
    EXPECT_TRUE(run.ReadElementTextIfAvailable());
    EXPECT_EQ(Str(run.GetCurrentTokenValue()), "ab");
    EXPECT_FALSE(run.ReadElementTextIfAvailable());
    EXPECT_EQ(vorn::test::Describe(*run.GetCurrentToken()), "S:x"); // on the token put back
    run.UnreadElementText(N(u"d"));
    run.UnreadElementText(N(u"c"));
    CUnicodeString text;
    run.ReadElementText(text); // the first only: no joining
    EXPECT_EQ(Str(text), "c");
    run.ReadEndElement(N(u"r"));
    run.UnreadElementText(N(u"z"));
    ExpectWords([&] { run.ReadElementTextIfAvailable(); }, "There is no valid token.");
}

TEST(XMLPushbackReader, ChecksArgumentsThenState) {
    vorn::test::ParsedDocument document("<r/>");
    vorn::io::CXMLDOMReader beneath(document.Get());
    CXMLPushbackReader reader(&beneath, 4);
    ExpectWords<CXMLException>([&] { reader.UnreadStartElement(N(u""), N(u"")); },
                               "Invalid local name.");
    ExpectWords<CXMLException>([&] { reader.UnreadEndElement(N(u"a:b"), N(u"")); },
                               "Local name must be unqualified name.");
    ExpectWords<CXMLException>([&] { reader.UnreadElementLong(N(u"a"), nullptr, 1); },
                               "Invalid namespace URI.");
    ExpectWords<CXMLException>([&] { reader.UnreadElementString(N(u"a"), nullptr); },
                               "Invalid element text.");
    ExpectWords<CXMLException>([&] { reader.UnreadElementText(N(u"")); }, "Invalid element text.");
    ExpectWords([&] { reader.UnreadToken(); }, "There is no valid token.");
    reader.ReadStartElement(N(u"r"));
    // The attribute questions are the base class's: a CIOException for another token type.
    reader.UnreadElementText(N(u"t"));
    ASSERT_TRUE(reader.ReadToken());
    ExpectThrow<CIOException>([&] { reader.HasAttribute(N(u"a")); }, "vorn/io/XMLReader",
                              "Attributes available only in start element nodes.");
    beneath.Close(); // its second Close will throw; this reader swallows that
    reader.Close();
    ExpectWords([&] { reader.GetCurrentToken(); }, "Reader closed.");
    ExpectWords([&] { reader.Close(); }, "Reader closed.");
    ExpectWords<CXMLException>([&] { reader.UnreadStartElement(nullptr); }, "Invalid local name.");
    ExpectWords([&] { reader.UnreadStartElement(N(u"a")); }, "Reader closed.");
    ExpectWords([&] { reader.UnreadToken(CRef<vorn::io::IXMLToken>()); }, "Reader closed.");
}

} // namespace

#include <gtest/gtest.h>

#include <memory>

#include <xercesc/sax/InputSource.hpp>
#include <xercesc/util/BinInputStream.hpp>

#include <vorn/base/System.h>
#include <vorn/io/XMLException.h>
#include <vorn/io/XMLTextReader.h>

#include "support/AllocFailure.h"
#include "support/Child.h"
#include "support/DebugCapture.h"
#include "support/Files.h"
#include "support/Throws.h"
#include "support/XmlText.h"
#include "vorn/io/XMLTextTokenizer.h"

namespace {

using vorn::base::CRef;
using vorn::base::CUnicodeString;
using vorn::io::CIOException;
using vorn::io::CXMLException;
using vorn::io::CXMLTextReader;
using vorn::io::IXMLToken;
using vorn::test::ExpectThrow;
using vorn::test::ReadAll;
using vorn::test::Str;
using vorn::test::W;
using vorn::test::XmlStream;

const char* const kSource = "vorn/io/XMLTextReader";

template <typename E = CIOException, typename F> void ExpectWords(F&& call, const char* words) {
    ExpectThrow<E>(call, kSource, words);
}

TEST(XMLTextReader, GivesEveryTokenInOrderWithItsLineAndDropsWhatFollowsTheRoot) {
    CXMLTextReader reader(XmlStream("<?xml version=\"1.0\"?>\n<!--c-->\n"
                                    "<r xmlns='urn:a' xmlns:p='urn:p'>t<![CDATA[cd]]><p:e/>"
                                    "<f></f><?pi data?></r>\n<!--after--> "));
    ExpectWords([&] { reader.GetCurrentToken(); }, "There is no valid token.");
    ASSERT_TRUE(reader.ReadToken());
    EXPECT_EQ(reader.GetCurrentToken()->GetLineNumber(), 2u);
    ASSERT_TRUE(reader.ReadToken());
    EXPECT_EQ(reader.GetCurrentToken()->GetLineNumber(), 3u);
    EXPECT_EQ(ReadAll(reader), "T:t D:cd S:p:e{urn:p}e E:p:e{urn:p}e S:f{urn:a}f E:f{urn:a}f "
                               "P:pi=data E:r{urn:a}r");
    EXPECT_FALSE(reader.ReadToken());
    ExpectWords([&] { reader.GetCurrentTokenType(); }, "There is no valid token.");
}

TEST(XMLTextReader, AttributesOfTheCurrentStartElement) {
    CXMLTextReader reader(XmlStream("<r xmlns:p='urn:p' p:a='1' b=' 2 '><c/></r>"));
    ExpectWords<CIOException>([&] { reader.HasAttribute(W(u"b").c_str()); },
                              "There is no valid token.");
    reader.ReadStartElement(W(u"r").c_str(), W(u"").c_str());
    // Local name first for HasAttribute, namespace URI first for ReadAttribute.
    EXPECT_TRUE(reader.HasAttribute(W(u"a").c_str(), W(u"urn:p").c_str()));
    EXPECT_FALSE(reader.HasAttribute(W(u"urn:p").c_str(), W(u"a").c_str()));
    EXPECT_EQ(Str(reader.ReadAttribute(W(u"urn:p").c_str(), W(u"a").c_str())), "1");
    EXPECT_EQ(Str(reader.ReadAttribute(W(u"p:a").c_str())), "1");
    EXPECT_EQ(Str(reader.ReadAttribute(W(u"b").c_str())), " 2 ");
    // An attribute in no namespace is found by its qualified name only.
    ExpectThrow<CXMLException>([&] { reader.HasAttribute(W(u"b").c_str(), W(u"").c_str()); },
                               "vorn/io/XMLAttributeList", "Invalid namespace URI.");
    ExpectThrow<CXMLException>([&] { reader.ReadAttribute(W(u"x").c_str()); },
                               "vorn/io/XMLAttributeList", "No such attribute.");
    ASSERT_TRUE(reader.ReadToken());
    ASSERT_TRUE(reader.ReadToken());
    ExpectWords<CXMLException>([&] { reader.ReadAttribute(W(u"b").c_str()); },
                               "Attributes available only in start element nodes.");
}

TEST(XMLTextReader, SearchesDropWhatTheyPassAndCheckTheirNames) {
    CXMLTextReader reader(XmlStream("<r xmlns:p='urn:p'><p:a>1</p:a><a/><b/></r>"));
    ExpectWords<CXMLException>([&] { reader.ReadStartElement(nullptr); }, "Invalid local name.");
    ExpectWords<CXMLException>([&] { reader.ReadEndElement(W(u"").c_str(), W(u"").c_str()); },
                               "Invalid local name.");
    ExpectWords<CXMLException>([&] { reader.ReadStartElement(W(u"p:a").c_str(), nullptr); },
                               "Local name must be unqualified name.");
    ExpectWords<CXMLException>([&] { reader.ReadStartElement(W(u"a").c_str(), nullptr); },
                               "Invalid namespace URI.");
    // By namespace and local name whatever the prefix, by qualified name as written.
    reader.ReadStartElement(W(u"a").c_str(), W(u"urn:p").c_str());
    EXPECT_EQ(vorn::test::Describe(*reader.GetCurrentToken()), "S:p:a{urn:p}a");
    reader.ReadEndElement(W(u"p:a").c_str());
    reader.ReadStartElement(W(u"a").c_str(), W(u"").c_str());
    reader.ReadEndElement();
    EXPECT_EQ(reader.GetCurrentTokenType(), vorn::io::XMLTokenEndElement);
    ExpectWords([&] { reader.ReadStartElement(W(u"a").c_str()); }, "End of stream reached.");
    EXPECT_FALSE(reader.ReadToken());
}

TEST(XMLTextReader, ElementTextJoinsItsRun) {
    const char* doc =
        "<r><e>one<![CDATA[two]]>three<x/></e><c><![CDATA[7]]></c><m>a<!--n-->b</m></r>";
    CXMLTextReader all(XmlStream(doc));
    all.ReadStartElement(W(u"e").c_str());
    all.ReadElementText();
    EXPECT_EQ(all.GetCurrentTokenType(), vorn::io::XMLTokenText);
    EXPECT_EQ(Str(all.GetCurrentTokenValue()), "onetwothree");
    ASSERT_TRUE(all.ReadToken());
    EXPECT_EQ(vorn::test::Describe(*all.GetCurrentToken()), "S:x");
    all.ReadStartElement(W(u"c").c_str());
    all.ReadElementText();
    // A comment ends the run.
    CUnicodeString text;
    all.ReadElementText(text);
    EXPECT_EQ(Str(text), "a");
    EXPECT_EQ(ReadAll(all), "C:n T:b E:m E:r");
    ExpectWords([&] { all.ReadElementText(); }, "End of stream reached.");

    // With a place for the text, a CDATA section ends the run and comes next.
    CXMLTextReader first(XmlStream(doc));
    first.ReadElementText(text);
    EXPECT_EQ(Str(text), "one");
    EXPECT_EQ(ReadAll(first).substr(0, 15), "D:two T:three S");
}

TEST(XMLTextReader, TextIfAvailableLooksAtOneTokenAndPutsItBack) {
    CXMLTextReader reader(XmlStream("<r><e/><f>5</f><g><!--c-->x</g></r>"));
    reader.ReadStartElement(W(u"e").c_str());
    EXPECT_FALSE(reader.ReadElementTextIfAvailable());
    EXPECT_EQ(vorn::test::Describe(*reader.GetCurrentToken()), "S:e");
    reader.ReadEndElement(W(u"e").c_str());
    reader.ReadStartElement(W(u"f").c_str());
    EXPECT_TRUE(reader.ReadElementTextIfAvailable());
    EXPECT_EQ(Str(reader.GetCurrentTokenValue()), "5");
    reader.ReadStartElement(W(u"g").c_str());
    EXPECT_FALSE(reader.ReadElementTextIfAvailable());
    EXPECT_EQ(ReadAll(reader), "C:c T:x E:g E:r");
    ExpectWords([&] { reader.ReadElementTextIfAvailable(); }, "End of stream reached.");
}

TEST(XMLTextReader, CloseLeavesTheStreamAndTheTokensAlive) {
    CRef<vorn::io::CInputStream> stream = XmlStream("<r a='1'/>");
    CXMLTextReader reader(stream.GetPointer());
    ASSERT_TRUE(reader.ReadToken());
    CRef<IXMLToken> kept = reader.GetCurrentToken();
    reader.Close();
    reader.Close();
    ExpectWords([&] { reader.ReadToken(); }, "Reader closed.");
    ExpectWords([&] { reader.GetCurrentToken(); }, "Reader closed.");
    ExpectWords([&] { reader.ReadStartElement(); }, "Reader closed.");
    {
        vorn::test::DebugCapture debug;
        ExpectWords([&] { reader.ReadElementTextIfAvailable(); }, "Failed to read element text.");
        EXPECT_NE(debug.Text().find("NullReference"), std::string::npos) << debug.Text();
    }
    stream->Reset();
    EXPECT_EQ(stream->Read(), '<');
    auto& start = dynamic_cast<vorn::io::IXMLStartElementToken&>(*kept);
    EXPECT_EQ(Str(start.GetAttribute(W(u"a").c_str())), "1");
}

TEST(XMLTextReader, StreamFaults) {
    const char* const tokenizer = "vorn/io/XMLTextTokenizer";
    ExpectThrow<CIOException>([] { CXMLTextReader r(CRef<vorn::io::CInputStream>{}); }, tokenizer,
                              "Invalid input stream.");
    ExpectThrow<CIOException>(
        [] { CXMLTextReader r(static_cast<vorn::io::CInputStream*>(nullptr)); }, tokenizer,
        "Invalid input stream.");
    // A fault in the prolog is lost behind the constructor's words; later ones keep the scanner's.
    ExpectThrow<CIOException>([] { CXMLTextReader r(XmlStream("<!-- a -- b --><r/>")); }, tokenizer,
                              "Failed to create XML text tokenizer.");
    CXMLTextReader reader(XmlStream("<r></s>"));
    try {
        reader.ReadToken();
        reader.ReadToken();
        ADD_FAILURE() << "no exception";
    } catch (const CXMLException& e) {
        EXPECT_STREQ(e.GetSourceFile(), tokenizer);
        EXPECT_EQ(e.GetErrorDescription(), nullptr);
        EXPECT_NE(std::string(e.GetMessage()).find("'r'"), std::string::npos) << e.GetMessage();
    }
    reader.Close();
    // The root's own end comes out even when the step that ends the document makes it.
    CXMLTextReader empty(XmlStream("<r/><!--x--><?p?>"));
    EXPECT_EQ(ReadAll(empty), "S:r E:r");
}

TEST(XMLTextReader, FromAFileLocation) {
    vorn::test::TempDir dir;
    vorn::test::PutFile(dir / "good.xml", "<r>\xc3\xa9</r>");
    vorn::test::PutFile(dir / "bad.xml", "<!-- a -- b --><r/>");
    vorn::test::PutFile(dir / "locked.xml", "<r/>");
    std::filesystem::create_directory(dir / "folder");
    const int descriptors = vorn::test::OpenDescriptors();
    {
        const std::string path = dir / "good.xml";
        const vorn::test::WString wide(path.begin(), path.end());
        CXMLTextReader reader(wide.c_str());
        EXPECT_EQ(ReadAll(reader), "S:r T:\xc3\xa9 E:r");
        EXPECT_EQ(vorn::test::OpenDescriptors(), descriptors + 1);
    }
    using vorn::test::Thrown;
    EXPECT_EQ(Thrown([&] { CXMLTextReader r((dir / "missing.xml").c_str()); }),
              "CIOException: Failed to create file for reading the specified xml file.");
    EXPECT_EQ(Thrown([&] { CXMLTextReader r((dir / "folder").c_str()); }),
              "CIOException: An error occured while trying to open file.");
    // From a file, a fault in the prolog keeps the scanner's exception.
    EXPECT_EQ(Thrown([&] { CXMLTextReader r((dir / "bad.xml").c_str()); }), "CXMLException: -");
    EXPECT_EQ(vorn::test::OpenDescriptors(), descriptors);
    std::filesystem::permissions(dir.Path(), std::filesystem::perms(0755));
    std::filesystem::permissions(dir / "locked.xml", std::filesystem::perms::none);
    EXPECT_EQ(vorn::test::InChild([&] {
                  return vorn::test::DropRoot()
                             ? Thrown([&] { CXMLTextReader r((dir / "locked.xml").c_str()); })
                             : "setuid failed";
              }),
              "CAccessDeniedException: Access denied.");
}

TEST(XMLTextReader, NeverFetchesWhatADocumentRefersTo) {
    // The DTD exists and would break the document if it were read.
    const std::string dtd = VORN_TEST_SOURCE_DIR "/io/xml-corpus/broken.dtd";
    for (const std::string& id : {dtd, std::string("http://example.invalid/x.dtd")}) {
        CXMLTextReader reader(XmlStream("<!DOCTYPE r SYSTEM '" + id + "'><r>&amp;</r>"));
        EXPECT_EQ(ReadAll(reader), "S:r T:& E:r") << id;
    }
    // An external entity isn't read either: to the scanner it is unknown.
    CXMLTextReader entity(XmlStream("<!DOCTYPE r [<!ENTITY e SYSTEM '" + dtd + "'>]><r>&e;</r>"));
    entity.ReadToken();
    EXPECT_THROW(entity.ReadToken(), CXMLException);
    // What the scanner would get for one: the 38 bytes of an empty document.
    vorn::io::CXMLTextTokenizer tokenizer(XmlStream("<r/>"));
    std::unique_ptr<xercesc::InputSource> source(
        tokenizer.resolveEntity(nullptr, W(u"/etc/passwd").c_str(), nullptr));
    std::unique_ptr<xercesc::BinInputStream> bytes(source->makeStream());
    unsigned char buffer[64];
    EXPECT_EQ(std::string(reinterpret_cast<char*>(buffer), bytes->readBytes(buffer, 64)),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>");
}

TEST(XMLTextReader, EveryFailedAllocationIsReportedAndLosesNothing) {
    const std::string doc = "<r xmlns:p='urn:p' p:a='1' b='2'>one<![CDATA[two]]><p:e>3</p:e>"
                            "<!--c--><?pi d?></r>";
    vorn::test::DebugCapture quiet;
    unsigned long failures = 0;
    for (unsigned long nth = 1;; ++nth) {
        CRef<vorn::io::CInputStream> stream = XmlStream(doc);
        try {
            vorn::test::FailAllocation fail(nth);
            CXMLTextReader reader(stream);
            reader.ReadStartElement(W(u"r").c_str());
            reader.ReadElementText();
            reader.ReadElementLong(W(u"e").c_str(), W(u"urn:p").c_str());
            ReadAll(reader);
            break;
        } catch (const CIOException& e) {
            ++failures;
            const std::string words = e.GetErrorDescription() ? e.GetErrorDescription() : "";
            EXPECT_TRUE(words == "Memory full." || words == "Failed to create XML text tokenizer.")
                << nth << ": " << words;
        } catch (const vorn::base::CMemoryException&) {
            ++failures; // the reader's own state, or a token of the first scanner step
        }
    }
    EXPECT_GT(failures, 20u);
}

} // namespace

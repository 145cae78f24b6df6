#include <gtest/gtest.h>

#include <climits>
#include <functional>
#include <string>
#include <vector>

#include <vorn/base/IllegalArgumentException.h>
#include <vorn/io/UnsupportedEncodingException.h>
#include <vorn/io/XMLException.h>
#include <vorn/io/XMLTextReader.h>

#include "support/AllocFailure.h"
#include "support/DebugCapture.h"
#include "support/Files.h"
#include "support/Recording.h"
#include "support/Throws.h"
#include "support/XmlText.h"
#include "support/XmlWriting.h"

namespace {

using vorn::io::CIOException;
using vorn::io::CXMLException;
using vorn::io::CXMLTextWriter;
using vorn::test::ExpectThrow;
using vorn::test::U;
using vorn::test::W;
using vorn::test::WrittenXml;

const char* const kSource = "vorn/io/XMLTextWriter";
const std::string kDeclaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

class CTwoBlanks : public vorn::io::CXMLTextTabulator {
public:
    const unsigned short* GetTabulation() override { return blanks.c_str(); }
    vorn::test::WString blanks = W(u"  ");
};

TEST(XMLTextWriter, LayoutOfEachCall) {
    WrittenXml crlf(nullptr, nullptr);
    crlf.writer.WriteStartDocument();
    crlf.writer.WriteStartElement(U(u"a"));
    crlf.writer.WriteEndElement();
    crlf.writer.WriteEndDocument();
    EXPECT_EQ(crlf.Text(), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<a/>\r\n");

    WrittenXml x;
    auto& w = x.writer;
    w.WriteStartDocument();
    w.WriteComment(U(u"x"));
    w.WriteProcessingInstruction(U(u"t"), U(u"d"));
    w.WriteStartElement(U(u"a"));
    w.WriteAttribute(U(u"x"), U(u"1"));
    w.WriteString(U(u"t"));
    w.WriteStartElement(U(u"b"));
    w.WriteFullEndElement();
    w.WriteElementString(U(u"e"), U(u"a<b"));
    w.WriteElementString(U(u"e"), U(u""));
    w.WriteElementLong(U(u"e"), 5);
    w.WriteStartElement(U(u"c"));
    w.WriteAttribute(U(u"x"), U(u"a\"b&<>'"));
    w.WriteAttribute(U(u"p"), U(u"y"), U(u"u"), U(u"a\"b")); // unescaped
    w.WriteWhitespace(U(u" "));                              // inside the tag
    w.WriteCDATA(U(u"]]x"));
    w.WriteEntityRef(U(u"amp"));
    w.WriteEndElement();
    EXPECT_EQ(x.Text(), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!-- x-->\n<?t d?>\n"
                        "<a x=\"1\">\nt<b>\n</b>\n<e>a&lt;b</e>\n<e></e>\n<e>5</e>\n"
                        "<c x=\"a&quot;b&amp;&lt;&gt;&apos;\" p:y=\"a\"b\" >\n"
                        "<![CDATA[]]x]]>\n&amp;</c>\n");
    // Close ends one element of the two.
    w.WriteStartElement(U(u"d"));
    w.Close();
    EXPECT_EQ(x.Bytes().substr(x.Bytes().size() - 10), "</c>\n<d/>\n");
}

TEST(XMLTextWriter, TabulatorIndentsSomeCallsOnly) {
    CTwoBlanks tab;
    WrittenXml x(&tab);
    auto& w = x.writer;
    w.WriteStartDocument();
    w.WriteStartElement(U(u"a"));
    w.WriteStartElement(U(u"b"), U(u"u"));
    w.WriteElementString(U(u"e"), U(u"v"));
    w.WriteElementString(U(u"f"), U(u"u"), U(u"v"));
    w.WriteCDATA(U(u"c"));
    w.WriteComment(U(u"m"));
    w.WriteEndElement();
    w.WriteStartElement(U(u"p"), U(u"c"), U(u"u"));
    w.WriteEndElement();
    w.WriteFullEndElement();
    EXPECT_EQ(x.Text(), kDeclaration +
                            "  <a>\n<b xmlns=\"u\">\n  <e>v</e>\n<f>v</f>\n  <![CDATA[c]]>\n"
                            "<!-- m-->\n  </b>\n<p:c xmlns:p=\"u\"/>\n</a>\n");
    // The tabulation itself goes through CDATA's filter of the characters.
    tab.blanks = W(u"\x01\x02");
    w.WriteStartElement(U(u"g"));
    w.WriteCDATA(U(u"\x01"));
    EXPECT_EQ(x.Text().substr(x.Bytes().size() - 20), "\x01\x02<g>\n\x02<![CDATA[]]>\n");
}

TEST(XMLTextWriter, NamespacesFollowTheContextStack) {
    WrittenXml x;
    auto& w = x.writer;
    w.WriteStartDocument();
    w.WriteStartElement(U(u"a"), U(u"u1"));          // declares the default
    w.WriteStartElement(U(u"b"), U(u"u1"));          // in the default
    w.WriteStartElement(U(u"p"), U(u"c"), U(u"u2")); // declares p
    w.WriteStartElement(U(u"d"), U(u"u2"));          // finds p
    w.WriteAttribute(U(u"x"), U(u"u2"), U(u"<"));
    w.WriteAttrNamespaceDeclaration(U(u"q"), U(u"u4"));
    w.WriteAttribute(U(u"y"), U(u"u4"), U(u"v"));
    w.WriteStartElement(U(u"p"), U(u"e"), U(u"u2")); // bound already: no declaration
    w.WriteStartElement(U(u"p"), U(u"f"), U(u"u3")); // rebinds p
    w.WriteElementString(U(u"g"), U(u"u4"), U(u"v"));
    w.WriteElementString(U(u"h"), U(u"u5"), U(u"v"));
    w.WriteEndDocument();
    EXPECT_EQ(x.Text(), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a xmlns=\"u1\">\n<b>\n"
                        "<p:c xmlns:p=\"u2\">\n<p:d p:x=\"&lt;\" xmlns:q=\"u4\" q:y=\"v\">\n"
                        "<p:e>\n<p:f xmlns:p=\"u3\">\n<q:g>v</q:g>\n<h xmlns=\"u5\">v</h>\n"
                        "</p:f>\n</p:e>\n</p:d>\n</p:c>\n</b>\n</a>\n");
}

TEST(XMLTextWriter, TypedValuesInTheirFormats) {
    WrittenXml x;
    auto& w = x.writer;
    const auto l = U(u"l"), u = U(u"u");
    w.WriteStartDocument();
    w.WriteStartElement(U(u"p"), U(u"r"), u);
    w.WriteAttrBool(l, true);
    w.WriteAttrChar(l, u, 'A');
    w.WriteAttrUnsignedChar(l, 255);
    w.WriteAttrShort(l, u, SHRT_MIN);
    w.WriteAttrUnsignedShort(l, 65535);
    w.WriteAttrInt(l, INT_MIN);
    w.WriteAttrUnsignedInt(l, UINT_MAX);
    w.WriteAttrInt64(l, LLONG_MIN);
    w.WriteAttrUnsignedInt64(l, ULLONG_MAX);
    w.WriteAttrFloat(l, 0.1f);
    w.WriteAttrDouble(l, 1.0 / 3.0);
    EXPECT_EQ(x.Text().substr(kDeclaration.size()),
              "<p:r xmlns:p=\"u\" l=\"true\" p:l=\"65\" l=\"255\" p:l=\"-32768\" "
              "l=\"65535\" l=\"-2147483648\" l=\"4294967295\" "
              "l=\"-9223372036854775808\" l=\"18446744073709551615\" "
              "l=\"0.1\" l=\"0.333333\"");
    x.stream.Reset();
    w.WriteElementBool(l, u, false);
    w.WriteElementChar(l, -1);
    w.WriteElementUnsignedChar(l, u, 200);
    w.WriteElementShort(l, -2);
    w.WriteElementUnsignedShort(l, u, 65535);
    w.WriteElementInt32(l, -3);
    w.WriteElementUInt32(l, u, 4);
    w.WriteElementInt64(l, LLONG_MAX);
    w.WriteElementUnsignedInt64(l, u, ULLONG_MAX);
    w.WriteElementFloat(l, 1.5f);
    w.WriteElementDouble(l, 1.0 / 3.0);
    w.WriteElementDouble(l, u, 1.0 / 3.0);
    EXPECT_EQ(x.Text(), ">\n<p:l>false</p:l>\n<l>-1</l>\n<p:l>200</p:l>\n<l>-2</l>\n"
                        "<p:l>65535</p:l>\n<l>-3</l>\n<p:l>4</p:l>\n<l>9223372036854775807</l>\n"
                        "<p:l>18446744073709551615</p:l>\n<l>1.5</l>\n<l>0.333333333333333</l>\n"
                        "<p:l>0.333333</p:l>\n");
    x.stream.Reset();
    w.WriteBool(true);
    w.WriteChar('<'); // neither checked nor escaped
    w.WriteUnsignedChar(255);
    w.WriteShort(-5);
    w.WriteUnsignedShort(65535);
    w.WriteInt(-6);
    w.WriteUnsignedInt(7);
    w.WriteInt32(INT_MIN);
    w.WriteUInt32(UINT_MAX);
    w.WriteUInt64(0x100000009ULL); // 32 bits of it
    w.WriteFloat(0.5f);
    w.Write(0.25);
    EXPECT_EQ(x.Text(), "true<255-565535-67-214748364842949672959"
                        "0.5000000.250000");
}

TEST(XMLTextWriter, BinaryData) {
    WrittenXml x;
    auto& w = x.writer;
    const char bytes[] = {'x', 'M', 'a', 'n', '\x0A', '\xFF'};
    w.WriteStartDocument();
    w.WriteStartElement(U(u"r"));
    w.WriteElementBase64(U(u"e"), nullptr, 0, 3); // silently nothing
    w.WriteElementBinHex(U(u"e"), U(u"u"), nullptr, 0, 3);
    EXPECT_EQ(x.Text(), kDeclaration + "<r");
    w.WriteElementBase64(U(u"e"), bytes, 1, 3);
    w.WriteElementBase64(U(u"e"), U(u"u"), bytes, 1, 0);
    w.WriteElementBinHex(U(u"e"), bytes, 4, 2);
    w.WriteBase64(bytes, 1, 2);
    w.WriteBase64(bytes, 1, 0);
    w.WriteBinHex(bytes, 4, 2);
    EXPECT_EQ(x.Text().substr(kDeclaration.size() + 2),
              ">\n<e>TWFu</e>\n<e xmlns=\"u\"></e>\n<e>0AFF</e>\nTWE=0AFF");
    // Here a null pointer reaches the encoder.
    ExpectThrow<vorn::base::CIllegalArgumentException>(
        [&] { w.WriteBinHex(nullptr, 0, 1); }, "vorn/base/BinaryData", "Illegal data pointer.");
}

TEST(XMLTextWriter, RefusalsWriteNothing) {
    WrittenXml x;
    auto& w = x.writer;
    const std::vector<std::pair<std::function<void()>, const char*>> beforeStart = {
        {[&] { w.WriteStartElement(U(u"a")); }, "Document hasn't been started yet."},
        {[&] { w.WriteString(U(u"a")); }, "Document hasn't been started yet."},
        {[&] { w.WriteComment(U(u"a")); }, "Document hasn't been started yet."},
        {[&] { w.WriteProcessingInstruction(U(u""), U(u"d")); },
         "Invalid processing instruction target."},
        {[&] { w.WriteProcessingInstruction(U(u"t"), nullptr); },
         "Invalid processing instruction data."},
        {[&] { w.WriteEntityRef(nullptr); }, "Invalid entity name."},
    };
    for (auto& [call, words] : beforeStart)
        ExpectThrow<CXMLException>(call, kSource, words);
    w.WriteStartDocument();
    const std::string declaration = x.Text();
    const std::vector<std::pair<std::function<void()>, const char*>> beforeRoot = {
        {[&] { w.WriteEndDocument(); }, "Document root hasn't been written yet."},
        {[&] { w.WriteWhitespace(U(u" ")); }, "Document root hasn't been written yet."},
        {[&] { w.WriteCDATA(U(u"c")); }, "Document root hasn't been written yet."},
        {[&] { w.WriteEntityRef(U(u"lt")); }, "Document root hasn't been written yet."},
        {[&] { w.WriteEndElement(); },
         "There is no start elements to close in the current context."},
        {[&] { w.WriteFullEndElement(); },
         "There is no start elements to close in the current context."},
        {[&] { w.WriteAttribute(U(u"a"), U(u"v")); },
         "Attributes must be written at start element."},
        {[&] { w.WriteAttrNamespaceDeclaration(U(u"p"), U(u"u")); },
         "Attributes must be written at start element."},
        {[&] { w.WriteStartElement(nullptr); }, "Invalid local name."},
        {[&] { w.WriteStartElement(U(u"")); }, "Invalid local name."},
        {[&] { w.WriteStartElement(U(u"a:b")); }, "Local name must be unqualified name."},
        {[&] { w.WriteStartElement(U(u"1a")); }, "Invalid character error."},
        {[&] { w.WriteStartElement(U(u"a b")); }, "Invalid character error."},
        {[&] { w.WriteStartElement(U(u"a"), nullptr); }, "Invalid namespace URI."},
        {[&] { w.WriteStartElement(U(u""), U(u"a"), U(u"u")); }, "Invalid prefix."},
        {[&] { w.WriteStartElement(U(u"-"), U(u"a"), U(u"u")); }, "Invalid character error."},
        {[&] { w.WriteStartElement(U(u"p"), U(u"a"), U(u"")); }, "Invalid namespace URI."},
        {[&] { w.WriteElementString(U(u"e"), U(u"\x01")); }, "Invalid character error."},
        // One unit at a time: a character beyond the BMP is two surrogates, and is refused.
        {[&] { w.WriteString(U(u"\U0001F600")); }, "Invalid character error."},
        {[&] { w.WriteString(U(u"\xFFFE")); }, "Invalid character error."},
    };
    for (auto& [call, words] : beforeRoot)
        ExpectThrow<CXMLException>(call, kSource, words);
    EXPECT_EQ(x.Text(), declaration);

    w.WriteStartElement(U(u"a"));
    const std::vector<std::pair<std::function<void()>, const char*>> inStartTag = {
        {[&] { w.WriteAttribute(U(u"x"), U(u"\U0001F600")); }, "Invalid character error."},
        {[&] { w.WriteAttribute(U(u"x:y"), U(u"v")); }, "Local name must be unqualified name."},
        {[&] { w.WriteAttribute(U(u"x"), U(u"u"), U(u"v")); }, "Undeclared namespace."},
        {[&] { w.WriteAttribute(nullptr, U(u"x"), U(u"u"), U(u"v")); }, "Invalid prefix."},
        {[&] { w.WriteAttrNamespaceDeclaration(U(u"p"), nullptr); }, "Invalid namespace URI."},
        {[&] { w.WriteAttrDefaultNamespaceDeclaration(U(u"")); }, "Invalid namespace URI."},
    };
    for (auto& [call, words] : inStartTag)
        ExpectThrow<CXMLException>(call, kSource, words);
    EXPECT_EQ(x.Text(), declaration + "<a");
    // These close the start tag before they look at their arguments.
    ExpectThrow<CXMLException>([&] { w.WriteElementString(U(u""), U(u"v")); }, kSource,
                               "Invalid local name.");
    EXPECT_EQ(x.Text(), declaration + "<a>\n");
    ExpectThrow<CXMLException>([&] { w.WriteAttribute(U(u"x"), U(u"v")); }, kSource,
                               "Attributes must be written at start element.");
}

TEST(XMLTextWriter, Construction) {
    using vorn::base::CIllegalArgumentException;
    vorn::io::CMemoryOutputStream out;
    ExpectThrow<CIllegalArgumentException>(
        [] {
            CXMLTextWriter(static_cast<vorn::io::COutputStream*>(nullptr), "", 8, nullptr, nullptr,
                           false);
        },
        kSource, "Invalid output stream.");
    ExpectThrow<CIllegalArgumentException>(
        [] {
            CXMLTextWriter(vorn::base::CRef<vorn::io::COutputStream>(), "UTF-8", 8, nullptr,
                           nullptr, false);
        },
        kSource, "Invalid output stream.");
    ExpectThrow<CIllegalArgumentException>(
        [&] { CXMLTextWriter(&out, nullptr, 8, nullptr, nullptr, false); }, kSource,
        "Invalid encoding specification.");
    ExpectThrow<CIllegalArgumentException>(
        [&] { CXMLTextWriter(IO::Location("/nonexistent/x"), "", 8, nullptr, nullptr, false); },
        kSource, "Invalid encoding specification.");
    ExpectThrow<CIllegalArgumentException>(
        [&] { CXMLTextWriter(&out, "UTF-8", 0, nullptr, nullptr, false); },
        "vorn/io/BufferedWriter", "Invalid buffer size.");
    EXPECT_THROW(CXMLTextWriter(&out, "utf-8", 8, nullptr, nullptr, false),
                 vorn::io::CUnsupportedEncodingException);

    // A file replaced whole, with the byte order mark first.
    vorn::test::TempDir dir;
    vorn::test::PutFile(dir / "x.xml", std::string(100, '#'));
    {
        CXMLTextWriter w(IO::Location((dir / "x.xml").c_str()), "UTF-8", 1, nullptr,
                         W(u"|").c_str(), true);
        EXPECT_STREQ(w.GetEncoding(), "UTF-8");
        vorn::base::CUnicodeString end;
        w.GetEndOfLine(end);
        EXPECT_EQ(end, W(u"|").c_str());
        w.WriteStartDocument();
        w.WriteElementString(U(u"é"), U(u"\u20AC"));
        w.Close();
        ExpectThrow<CIOException>([&] { w.GetEndOfLine(end); }, kSource, "Writer closed.");
    }
    EXPECT_EQ(vorn::test::GetFile(dir / "x.xml"),
              "\xEF\xBB\xBF<?xml version=\"1.0\" "
              "encoding=\"UTF-8\"?>|<\xC3\xA9>\xE2\x82\xAC</\xC3\xA9>|");
}

TEST(XMLTextWriter, CloseEndsOneElementAndClosesThePipeline) {
    vorn::test::CRecordingStream out;
    CXMLTextWriter w(&out, "UTF-8", 16, nullptr, W(u"\n").c_str(), false);
    w.WriteStartDocument();
    w.WriteStartElement(U(u"a"));
    w.WriteStartElement(U(u"b"));
    out.failFlush = true;
    ExpectThrow<CIOException>([&] { w.Close(); }, "test/Recording", "Flush failed.");
    EXPECT_EQ(out.log,
              std::string("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a>\n<b/>\n") + "|F|F|C");
    // Closed all the same; a second Close still has an element to end, and says so.
    ExpectThrow<CIOException>([&] { w.Close(); }, kSource, "Writer closed.");
    for (auto call : {+[](CXMLTextWriter& x) { x.WriteStartDocument(); },
                      +[](CXMLTextWriter& x) { x.WriteString(nullptr); },
                      +[](CXMLTextWriter& x) { x.WriteStartElement(nullptr); },
                      +[](CXMLTextWriter& x) { x.WriteFloat(1); },
                      +[](CXMLTextWriter& x) { x.WriteBase64(nullptr, 0, 0); },
                      +[](CXMLTextWriter& x) { x.Flush(); }})
        ExpectThrow<CIOException>([&] { call(w); }, kSource, "Writer closed.");
    EXPECT_EQ(out.closes, 1);
}

// Each allocation of each assembling operation fails in turn: the caller sees "Memory full."
// or success, never the CMemoryException itself, and nothing leaks.
TEST(XMLTextWriter, NoMemoryIsMemoryFull) {
    vorn::test::DebugCapture quiet; // the string pools tell of their failures
    const char bytes[] = "bytes";
    const std::vector<std::function<void(CXMLTextWriter&)>> calls = {
        [](CXMLTextWriter& w) { w.WriteStartElement(U(u"p"), U(u"c"), U(u"u3")); },
        [](CXMLTextWriter& w) { w.WriteAttribute(U(u"q"), U(u"x"), U(u"u5"), U(u"v")); },
        [](CXMLTextWriter& w) { w.WriteAttrNamespaceDeclaration(U(u"r"), U(u"u6")); },
        [](CXMLTextWriter& w) { w.WriteAttrDefaultNamespaceDeclaration(U(u"u7")); },
        [](CXMLTextWriter& w) { w.WriteAttribute(U(u"y"), U(u"u6"), U(u"v")); },
        [](CXMLTextWriter& w) { w.WriteStartElement(U(u"d"), U(u"u4")); },
        [](CXMLTextWriter& w) { w.WriteCDATA(U(u"c")); },
        [](CXMLTextWriter& w) { w.WriteComment(U(u"c")); },
        [](CXMLTextWriter& w) { w.WriteProcessingInstruction(U(u"t"), U(u"d")); },
        [](CXMLTextWriter& w) { w.WriteEntityRef(U(u"lt")); },
        [&](CXMLTextWriter& w) { w.WriteBase64(bytes, 0, 5); },
        [&](CXMLTextWriter& w) { w.WriteElementBinHex(U(u"e"), U(u"u8"), bytes, 0, 5); },
        [](CXMLTextWriter& w) { w.WriteElementString(U(u"e"), U(u"v")); },
        [](CXMLTextWriter& w) { w.WriteFullEndElement(); },
        [](CXMLTextWriter& w) { w.WriteEndDocument(); },
    };
    for (std::size_t c = 0; c < calls.size(); ++c) {
        for (unsigned long nth = 1; nth < 100; ++nth) {
            WrittenXml x;
            x.writer.WriteStartDocument();
            x.writer.WriteStartElement(U(u"a"));
            x.writer.WriteStartElement(U(u"b"));
            bool failed = false;
            try {
                vorn::test::FailAllocation fail(nth);
                for (std::size_t i = 0; i <= c; ++i)
                    calls[i](x.writer);
            } catch (const CIOException& e) {
                EXPECT_STREQ(e.GetErrorDescription(), "Memory full.") << c << " " << nth;
                EXPECT_STREQ(e.GetSourceFile(), kSource);
                failed = true;
            }
            if (!failed)
                break;
        }
    }
}

// The stream beneath fails once, at its Nth write: its exception comes through as it is, the
// call that met it loses the rest of its text, and everything else reaches the stream once. The
// exception is a failed flush that had filled the encoder's buffer exactly: the buffered writer
// then offers the same chunk again, and it is written twice in a row.
TEST(XMLTextWriter, FailingStreamLosesTheFailedCallAndRepeatsOnlyAnExactChunk) {
    auto write = [](vorn::test::CRecordingStream& out, unsigned int size, int failAt) {
        out.failCountedWrite = failAt;
        CXMLTextWriter w(&out, "UTF-8", size, nullptr, W(u"\n").c_str(), false);
        int failed = -1;
        w.WriteStartDocument();
        w.WriteStartElement(U(u"root"));
        for (int i = 0; i < 3000; ++i) {
            try {
                w.WriteElementLong(U(u"item"), i);
            } catch (const CIOException& e) {
                EXPECT_STREQ(e.GetErrorDescription(), "Write failed.");
                EXPECT_EQ(failed, -1);
                failed = i;
            }
        }
        w.WriteEndElement();
        w.Close();
        return failed;
    };
    // 1000 units never fill the encoder's 8196 bytes exactly; 12 chunks of 683 always do.
    for (unsigned int size : {1000u, 683u}) {
        vorn::test::CRecordingStream reference;
        write(reference, size, 0);
        const std::string& all = reference.bytes;
        for (int failAt = 1; failAt <= 5; ++failAt) {
            vorn::test::CRecordingStream out;
            const int failed = write(out, size, failAt);
            ASSERT_GE(failed, 0);
            std::string got = out.bytes;
            const std::string tag = "<item>" + std::to_string(failed) + "</item>\n";
            const std::size_t at = all.find(tag);
            std::size_t next = got.find("<item>" + std::to_string(failed + 1) + "<");
            if (size == 683) {
                EXPECT_EQ(got.substr(next - 2 * size, size), got.substr(next - size, size));
                got.erase(next - size, size);
                next -= size;
            }
            EXPECT_EQ(got.substr(0, at), all.substr(0, at)) << size << " " << failAt;
            EXPECT_EQ(tag.compare(0, next - at, got, at, next - at), 0) << size << " " << failAt;
            EXPECT_EQ(got.substr(next), all.substr(at + tag.size())) << size << " " << failAt;
        }
    }
}

} // namespace

// What the reader gets back: floating values of as many digits as the format keeps, bytes of every
// value, and text with every character that needs escaping; exact texts are checked above.
TEST(XMLTextWriter, TypedValuesReadBack) {
    WrittenXml x;
    auto& w = x.writer;
    char bytes[256];
    for (int i = 0; i < 256; ++i)
        bytes[i] = static_cast<char>(i);
    const auto text = U(u"a&b<c>d'e\"f\t\n\u00e9\u20ac\u4e2d\ufffd]]>");
    const auto value = U(u"a&b<c>d'e\"f \u00e9\u4e2d");
    w.WriteStartDocument();
    w.WriteStartElement(U(u"p"), U(u"r"), U(u"u"));
    w.WriteAttribute(U(u"s"), value);
    w.WriteElementFloat(U(u"f"), U(u"u"), -1.5e-7f);
    w.WriteElementDouble(U(u"d"), -1.23456789012345e300);
    w.WriteElementBase64(U(u"x"), bytes, 0, 256);
    w.WriteElementBinHex(U(u"x"), U(u"u"), bytes, 0, 256);
    w.WriteElementString(U(u"t"), text);
    w.WriteEndDocument();
    w.Close();

    vorn::io::CXMLTextReader r(vorn::test::XmlStream(x.Bytes()));
    r.ReadStartElement(U(u"p:r"));
    EXPECT_EQ(r.ReadAttribute(U(u"s")), static_cast<const unsigned short*>(value));
    EXPECT_EQ(r.ReadElementFloat(U(u"f"), U(u"u")), -1.5e-7f);
    EXPECT_EQ(r.ReadElementDouble(U(u"d")), -1.23456789012345e300);
    for (bool base64 : {true, false}) {
        char* data = nullptr;
        unsigned int size = 0;
        base64 ? r.ReadElementBase64(U(u"x"), data, size)
               : r.ReadElementBinHex(U(u"x"), U(u"u"), data, size);
        EXPECT_EQ(size, base64 ? 86u : 256u); // the base64 parser counts groups
        EXPECT_EQ(std::string(data, 256), std::string(bytes, 256));
        ZK_free(data);
    }
    EXPECT_EQ(r.ReadElementString(U(u"t")), static_cast<const unsigned short*>(text));
}

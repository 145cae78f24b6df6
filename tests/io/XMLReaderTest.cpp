#include <gtest/gtest.h>

#include <cstring>

#include <vorn/io/XMLException.h>
#include <vorn/io/XMLTextReader.h>

#include "support/DebugCapture.h"
#include "support/Throws.h"
#include "support/XmlText.h"

namespace {

using vorn::base::CRef;
using vorn::base::CUnicodeString;
using vorn::io::CIOException;
using vorn::io::CXMLException;
using vorn::io::CXMLReader;
using vorn::io::CXMLTextReader;
using vorn::io::IXMLToken;
using vorn::test::ExpectThrow;
using vorn::test::N;
using vorn::test::Str;
using vorn::test::W;
using vorn::test::XmlStream;

const char* const kSource = "vorn/io/XMLReader";

template <typename E = CXMLException, typename F> void ExpectWords(F&& call, const char* words) {
    ExpectThrow<E>(call, kSource, words);
}

TEST(XMLReader, TypedElementsTrimTheirTextAndKeepToTheirRange) {
    CXMLTextReader r(XmlStream("<r><b> true\n</b><b>True</b><s>32767</s><s>32768</s>"
                               "<l>-2147483648</l><u>4294967295</u><u>-1</u>"
                               "<i>-9223372036854775808</i><q>18446744073709551615</q>"
                               "<q>18446744073709551616</q><q>12x</q><f>3.5e38</f><d>1e308</d>"
                               "<d>0x10</d><t> a </t></r>"));
    EXPECT_TRUE(r.ReadElementBool(N(u"b")));
    ExpectWords([&] { r.ReadElementBool(N(u"b")); }, "Invalid bool literal.");
    EXPECT_EQ(r.ReadElementShort(N(u"s"), N(u"")), 32767);
    ExpectWords([&] { r.ReadElementShort(N(u"s")); }, "Invalid short literal.");
    EXPECT_EQ(r.ReadElementLong(N(u"l")), -2147483647 - 1);
    EXPECT_EQ(r.ReadElementUnsignedLong(N(u"u")), 4294967295u);
    // The unsigned read says Int32.
    ExpectWords([&] { r.ReadElementUnsignedLong(N(u"u")); }, "Invalid Int32 literal.");
    EXPECT_EQ(r.ReadElementInt64(N(u"i"), N(u"")), -9223372036854775807LL - 1);
    EXPECT_EQ(r.ReadElementUInt64(N(u"q")), 18446744073709551615ULL);
    ExpectWords([&] { r.ReadElementUInt64(N(u"q")); }, "Invalid UInt64 literal.");
    ExpectWords([&] { r.ReadElementUInt64(N(u"q")); }, "Invalid UInt64 literal.");
    ExpectWords([&] { r.ReadElementFloat(N(u"f")); }, "Invalid float literal.");
    EXPECT_EQ(r.ReadElementDouble(N(u"d"), N(u"")), 1e308);
    ExpectWords([&] { r.ReadElementDouble(N(u"d")); }, "Invalid double literal.");
    EXPECT_EQ(Str(r.ReadElementString(N(u"t"))), " a ");
}

TEST(XMLReader, CurrentTokenAndAttributeReads) {
    CXMLTextReader r(
        XmlStream("<r xmlns:p='urn:p' p:n='7' p:m='-1' v=' true' u='-1' x='2.5'>t</r>"));
    r.ReadStartElement();
    ExpectWords([&] { r.ReadLong(); }, "Invalid Int32 literal.");
    EXPECT_EQ(r.ReadAttrLong(N(u"urn:p"), N(u"n")), 7);
    EXPECT_EQ(r.ReadAttrShort(N(u"p:n")), 7);
    EXPECT_EQ(r.ReadAttrDouble(N(u"x")), 2.5);
    EXPECT_EQ(r.ReadAttrFloat(N(u"x")), 2.5f);
    // Attribute values are not trimmed.
    ExpectWords([&] { r.ReadAttrBool(N(u"v")); }, "Invalid bool literal.");
    // Int32 by namespace and local name, UInt32 by qualified name.
    ExpectWords([&] { r.ReadAttrUnsignedLong(N(u"urn:p"), N(u"m")); }, "Invalid Int32 literal.");
    ExpectWords([&] { r.ReadAttrUnsignedLong(N(u"p:m")); }, "Invalid UInt32 literal.");
    ExpectThrow<CXMLException>([&] { r.ReadAttrLong(N(u"urn:p"), N(u"zz")); },
                               "vorn/io/XMLAttributeList", "No such attribute.");
    r.ReadToken();
    EXPECT_EQ(Str(r.ReadString()), "t");
    ExpectWords<CIOException>([&] { r.ReadAttrLong(N(u"x")); },
                              "Attributes available only in start element nodes.");
}

TEST(XMLReader, ElementsWithoutTextAndCDATA) {
    CXMLTextReader r(XmlStream("<r><e/><e/><n>5</n><c>x<![CDATA[y]]></c></r>"));
    EXPECT_EQ(Str(r.ReadElementString(N(u"e"), N(u""))), "");
    // The numeric form runs on to the next text and then misses its end tag.
    ExpectThrow<CIOException>([&] { r.ReadElementLong(N(u"e")); }, "vorn/io/XMLTextReader",
                              "End of stream reached.");
    CXMLTextReader c(XmlStream("<r><c>x<![CDATA[y]]>z</c></r>"));
    CUnicodeString text;
    c.ReadCDATA(text);
    EXPECT_EQ(Str(text), "y");
    ExpectWords<CIOException>([&] { c.ReadCDATA(); }, "End of stream reached.");
}

TEST(XMLReader, BinaryElements) {
    CXMLTextReader r(XmlStream("<r><h> 414243 </h><b>QUJD</b><b>QU</b><h>4G</h></r>"));
    char* data = nullptr;
    unsigned int size = 0;
    r.ReadElementBinHex(N(u"h"), data, size);
    EXPECT_EQ(std::string(data, size), "ABC");
    ZK_free(data);
    r.ReadElementBase64(N(u"b"), N(u""), data, size);
    EXPECT_EQ(std::memcmp(data, "ABC", 3), 0);
    ZK_free(data);
    // The base64 form says binhex too.
    ExpectWords<CIOException>([&] { r.ReadElementBase64(N(u"b"), data, size); },
                              "Invalid binhex encoded string literal.");
    EXPECT_EQ(data, nullptr);
    EXPECT_EQ(size, 0u);
    size = 9;
    ExpectWords<CIOException>([&] { r.ReadElementBinHex(N(u"h"), N(u""), data, size); },
                              "Invalid binhex encoded string literal.");
    EXPECT_EQ(data, nullptr);
    EXPECT_EQ(size, 0u);
}

// A reader whose current token is always empty: the base's own wrappers answer.
class CEmptyReader : public CXMLReader {
public:
    const CRef<IXMLToken>& GetCurrentToken() const override { return m_none; }
    bool ReadToken() override { return true; }
    void ReadStartElement(const unsigned short*, const unsigned short*) override {}
    void ReadStartElement(const unsigned short*) override {}
    void ReadStartElement() override {}
    void ReadEndElement(const unsigned short*, const unsigned short*) override {}
    void ReadEndElement(const unsigned short*) override {}
    void ReadEndElement() override {}
    void ReadElementText(CUnicodeString&) override {}
    void ReadElementText() override {}
    bool ReadElementTextIfAvailable() override { return true; }
    void Close() override {}

private:
    CRef<IXMLToken> m_none;
};

class CCounter : public vorn::io::IXMLSerializable {
public:
    void ReadXML(CXMLReader& reader) override { seen = &reader; }
    void WriteXML(vorn::io::CXMLWriter&) const override {}
    CXMLReader* seen = nullptr;
};

TEST(XMLReader, AnEmptyReferenceGivesEachOperationsOwnWords) {
    CEmptyReader r;
    vorn::test::DebugCapture debug;
    ExpectWords<CIOException>([&] { r.GetCurrentTokenType(); },
                              "Failed to get the token type of current XML token.");
    ExpectWords<CIOException>([&] { r.GetCurrentTokenValue(); },
                              "Failed to get the value of current XML token.");
    ExpectWords<CIOException>([&] { r.ReadUnsignedLong(); },
                              "Failed to read the value of current token as UInt32.");
    ExpectWords<CIOException>([&] { r.ReadUInt64(); },
                              "Failed to read the value of current token as UInt64.");
    ExpectWords<CIOException>([&] { r.ReadElementDouble(N(u"d")); },
                              "Failed to read the value of current token as double.");
    char* data = nullptr;
    unsigned int size = 0;
    ExpectWords<CIOException>(
        [&] { r.ReadBase64(data, size); },
        "Failed to read the value of current token as base64 encoded binary data.");
    ExpectWords<CIOException>([&] { r.ReadCDATA(); }, "Failed to read XML CDATA token.");
    ExpectWords<CIOException>([&] { r.ReadElementString(N(u"s")); },
                              "Failed to read element with string content.");
    EXPECT_NE(debug.Text().find("NullReference"), std::string::npos);
    // The attribute reads catch nothing.
    EXPECT_THROW(r.HasAttribute(N(u"a")), vorn::base::CNullReferenceException);
    CCounter object;
    r.ReadObject(object);
    EXPECT_EQ(object.seen, &r);
}

} // namespace

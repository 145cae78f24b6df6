#include <gtest/gtest.h>

#include <string>

#include <vorn/io/IOException.h>
#include <vorn/io/XMLWriter.h>

#include "support/AllocFailure.h"
#include "support/Throws.h"
#include "support/Utf16.h"

namespace {

using vorn::test::Narrow;
using vorn::test::Units;
using vorn::test::W;

// Keeps each call of a string form as "Name(arguments)"; the rest of the interface does nothing.
class CJournalWriter : public vorn::io::CXMLWriter {
public:
    using ushort = unsigned short;
    void WriteStartDocument() override {}
    void WriteEndDocument() override {}
    void WriteCDATA(const ushort*) override {}
    void WriteComment(const ushort*) override {}
    void WriteProcessingInstruction(const ushort*, const ushort*) override {}
    void WriteEntityRef(const ushort*) override {}
    void WriteWhitespace(const ushort*) override {}
    void WriteStartElement(const ushort*, const ushort*, const ushort*) override {}
    void WriteStartElement(const ushort*, const ushort*) override {}
    void WriteStartElement(const ushort*) override { log += "S;"; }
    void WriteEndElement() override {}
    void WriteFullEndElement() override {}
    void WriteElementString(const ushort* l, const ushort* u, const ushort* v) override {
        Keep("E", {l, u, v});
    }
    void WriteElementString(const ushort* l, const ushort* v) override { Keep("E", {l, v}); }
    void WriteAttribute(const ushort*, const ushort*, const ushort*, const ushort*) override {}
    void WriteAttribute(const ushort* l, const ushort* u, const ushort* v) override {
        Keep("A", {l, u, v});
    }
    void WriteAttribute(const ushort* l, const ushort* v) override { Keep("A", {l, v}); }
    void WriteAttrDefaultNamespaceDeclaration(const ushort*) override {}
    void WriteAttrNamespaceDeclaration(const ushort*, const ushort*) override {}
    void WriteString(const ushort* v) override { Keep("T", {v}); }
    void Flush() override {}
    void Close() override {}

    std::string log;

private:
    void Keep(const char* name, std::initializer_list<const ushort*> texts) {
        log += name;
        for (const ushort* t : texts)
            log += "(" + Narrow(Units(t)) + ")";
        log += ";";
    }
};

TEST(XMLWriter, TypedOperationsFormatIntoTheStringForms) {
    const auto l = W(u"l"), u = W(u"u");
    CJournalWriter w;
    w.WriteShort(-1);
    w.WriteLong(-2147483647 - 1);
    w.WriteUnsignedLong(4294967295u);
    w.WriteFloat(1.5f);
    w.WriteDouble(2.0);
    w.WriteBool(true);
    EXPECT_EQ(w.log, "T(-1);T(-2147483648);T(4294967295);T(1.500000);T(2.000000);T(true);");
    w.log.clear();
    w.WriteElementBool(l.c_str(), u.c_str(), false);
    w.WriteElementShort(l.c_str(), short(-7));
    w.WriteElementLong(l.c_str(), u.c_str(), 5);
    w.WriteElementUnsignedLong(l.c_str(), 6u);
    w.WriteElementFloat(l.c_str(), u.c_str(), 0.25f);
    w.WriteElementDouble(l.c_str(), 1.0 / 3.0);
    EXPECT_EQ(w.log,
              "E(l)(u)(false);E(l)(-7);E(l)(u)(5);E(l)(6);E(l)(u)(0.250000);E(l)(0.333333);");
    w.log.clear();
    w.WriteAttrBool(l.c_str(), true);
    w.WriteAttrShort(l.c_str(), u.c_str(), short(3));
    w.WriteAttrLong(l.c_str(), -4);
    w.WriteAttrUnsignedLong(l.c_str(), u.c_str(), 7u);
    w.WriteAttrFloat(l.c_str(), -0.5f);
    w.WriteAttrDouble(l.c_str(), u.c_str(), 1e6);
    EXPECT_EQ(w.log, "A(l)(true);A(l)(u)(3);A(l)(-4);A(l)(u)(7);A(l)(-0.500000);"
                     "A(l)(u)(1000000.000000);");
}

TEST(XMLWriter, BinaryDataIsEncodedUnlessThePointerIsRefused) {
    const auto l = W(u"l"), u = W(u"u");
    const char bytes[] = {'x', 'M', 'a', 'n', '\x0A', '\xFF'};
    CJournalWriter w;
    w.WriteBase64(nullptr, 0, 3);
    w.WriteBinHex(nullptr, 0, 0);
    w.WriteElementBase64(l.c_str(), nullptr, 0, 1);
    EXPECT_EQ(w.log, "");
    w.WriteBase64(bytes, 1, 3);
    w.WriteBase64(bytes, 1, 0);
    w.WriteBinHex(bytes, 4, 2);
    w.WriteElementBase64(l.c_str(), u.c_str(), bytes, 1, 2);
    w.WriteElementBinHex(l.c_str(), bytes, 4, 1);
    EXPECT_EQ(w.log, "T(TWFu);T();T(0AFF);E(l)(u)(TWE=);E(l)(0A);");
    // Out of memory while encoding is the stream's "Memory full.", and nothing is written.
    w.log.clear();
    for (auto encode : {+[](CJournalWriter&j, const char*b) { j.WriteBase64(b, 0, 6); },
                        +[](CJournalWriter&j, const char*b) {
                            j.WriteElementBinHex(W(u"l").c_str(), b, 0, 6);
                        }}) {
        vorn::test::FailAllocation fail(1, true);
        vorn::test::ExpectThrow<vorn::io::CIOException>([&] { encode(w, bytes); },
                                                        "vorn/io/XMLWriter", "Memory full.");
    }
    EXPECT_EQ(w.log, "");
}

TEST(XMLWriter, WriteObjectHandsTheWriterOver) {
    struct Item : vorn::io::IXMLSerializable {
        void ReadXML(vorn::io::CXMLReader&) override {}
        void WriteXML(vorn::io::CXMLWriter& writer) const override {
            writer.WriteStartElement(W(u"i").c_str());
        }
    };
    CJournalWriter w;
    w.WriteObject(Item());
    EXPECT_EQ(w.log, "S;");
}

} // namespace

// The same calls made to the text writer and to the DOM writer: the parsed text and the built
// tree must agree, prefixes, namespace declarations and white-space-only text aside. The grammar
// keeps to the calls where the two writers agree; the trees where they part, as docs/GUIDE.md
// lists, are shown once.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>
#include <set>

#include <vorn/io/XMLDOMWriter.h>
#include <vorn/io/XMLException.h>

#include "support/Throws.h"
#include "support/XmlEvents.h"
#include "support/XmlWriting.h"

namespace {

using vorn::io::CXMLWriter;
using vorn::test::Event;
using vorn::test::U;
using vorn::test::W;
using vorn::test::WString;

// Events without prefixes and without white-space-only text; the text writer's comments lose
// the blank it puts in front.
std::string Comparable(std::vector<Event> events, bool fromText) {
    std::vector<Event> out;
    for (Event& e : vorn::test::Normal(events)) {
        if (e.kind == 'T' && e.text.find_first_not_of(" \t\r") == std::string::npos)
            continue;
        if (e.kind == 'C' && fromText && !e.text.empty() && e.text[0] == ' ')
            e.text.erase(0, 1);
        if (e.kind == 'S' || e.kind == 'E')
            e.name.clear();
        for (vorn::test::Attribute& a : e.attributes)
            a.qname.clear();
        if (e.kind == 'T' && !out.empty() && out.back().kind == 'T')
            out.back().text += e.text;
        else
            out.push_back(e);
    }
    return vorn::test::Flat(out);
}

// The trees that `calls` make on each writer.
struct Both {
    std::string text, dom, error;
    explicit Both(const std::function<void(CXMLWriter&)>& calls) {
        vorn::test::WrittenXml x;
        calls(x.writer);
        vorn::io::CXMLDOMWriter d;
        calls(d);
        text = Comparable(vorn::test::ParseWithXerces(x.Bytes(), error), true);
        dom = Comparable(vorn::test::DomEvents(d.GetDocument()), false);
    }
};

// Seeded sequences within the common ground: elements without a namespace, prefixed ones, and
// leaves in any namespace; attributes with and without one; every kind of content.
class Grammar {
public:
    explicit Grammar(unsigned int seed) : m_random(seed) {}

    void Run(CXMLWriter& w) {
        w.WriteStartDocument();
        for (int n = Pick(3); n > 0; --n)
            Misc(w);
        Start(w, false);
        for (int steps = Pick(80); steps > 0 && !m_open.empty(); --steps) {
            const int p = Pick(100);
            if (p < 4)
                Misuse(w);
            else if (m_tagOpen && p < 30)
                Attribute(w);
            else if (p < 50 && m_open.size() < 6)
                Start(w, true);
            else if (p < 65)
                End(w);
            else
                Content(w);
        }
        while (!m_open.empty())
            End(w);
        w.WriteEndDocument();
        w.Close();
    }

    std::string refusals;

private:
    int Pick(int n) { return std::uniform_int_distribution<int>(0, n - 1)(m_random); }
    WString Chars(const char16_t* alphabet, int least, int most) {
        const WString from = W(alphabet);
        WString out;
        for (int n = least + Pick(most - least + 1); n > 0; --n)
            out += from[static_cast<std::size_t>(Pick(static_cast<int>(from.size())))];
        return out;
    }
    WString Local() { return W(u"n") + Chars(u"ab\u00e9\u540d-.", 0, 3); }
    static WString Uri(int k) { return W(u"urn:p") + WString(1, '0' + k); }
    static WString Prefix(int k) { return W(u"p") + WString(1, '0' + k); }
    bool Bound(int k) const {
        for (const auto& bound : m_open)
            if (bound.count(k) != 0)
                return true;
        return false;
    }

    void Start(CXMLWriter& w, bool leafAllowed) {
        const WString local = Local();
        const int form = Pick(leafAllowed ? 3 : 2), k = Pick(3);
        m_open.emplace_back();
        m_tag.clear();
        m_tagOpen = true;
        if (form == 0) {
            w.WriteStartElement(local.c_str());
        } else if (form == 1) {
            w.WriteStartElement(Prefix(k).c_str(), local.c_str(), Uri(k).c_str());
            m_open.back().insert(k);
        } else { // a default declaration of the text writer must not reach any child
            w.WriteStartElement(local.c_str(), (Pick(2) ? Uri(k) : W(u"urn:d")).c_str());
            if (Pick(2))
                Attribute(w);
            Content(w);
            End(w);
        }
    }

    void End(CXMLWriter& w) {
        Pick(2) ? w.WriteEndElement() : w.WriteFullEndElement();
        m_open.pop_back();
        m_tagOpen = false;
    }

    void Attribute(CXMLWriter& w) {
        const WString local = W(u"a") + Chars(u"xyz\u00e9", 0, 2);
        const int k = Pick(3), form = Pick(4);
        // By local name alone: the DOM writer's namespaced attribute has no prefix, and so the
        // same name as a plain one.
        if (!m_tag.insert(local).second)
            return;
        if (form == 0) {
            w.WriteAttribute(local.c_str(), Chars(u"ab Z09&<>'\"\u00e9\u4e2d", 0, 8).c_str());
        } else if (form == 1) {
            w.WriteAttrLong(local.c_str(), static_cast<int>(m_random()));
        } else {
            if (!Bound(k)) {
                w.WriteAttrNamespaceDeclaration(Prefix(k).c_str(), Uri(k).c_str());
                m_open.back().insert(k);
            }
            if (form == 2)
                w.WriteAttribute(local.c_str(), Uri(k).c_str(), Chars(u"a&<\"", 0, 4).c_str());
            else // written unescaped by the text writer
                w.WriteAttribute(Prefix(k).c_str(), local.c_str(), Uri(k).c_str(),
                                 Chars(u"ab >'", 0, 4).c_str());
        }
    }

    void Content(CXMLWriter& w) {
        const char bytes[] = {'\0', '\x7F', '\x80', '\xFF', 'a'};
        switch (Pick(9)) {
        case 0:
            w.WriteString(Chars(u"ab Z09\t&<>'\"]\u00e9\u20ac\u4e2d\ufffd", 0, 12).c_str());
            break;
        case 1:
            w.WriteCDATA(Chars(u"ab <&>\"\u00e9\t", 0, 10).c_str());
            break;
        case 2:
            if (!m_tagOpen)
                w.WriteWhitespace(Chars(u" \t", 1, 3).c_str());
            return;
        case 3:
            w.WriteLong(static_cast<int>(m_random()));
            w.WriteUnsignedLong(static_cast<unsigned int>(m_random()));
            w.WriteShort(static_cast<short>(m_random()));
            break;
        case 4:
            w.WriteDouble(std::uniform_real_distribution<double>(-1e9, 1e9)(m_random));
            w.WriteFloat(static_cast<float>(Pick(100000)) / 8);
            w.WriteBool(Pick(2) == 1);
            break;
        case 5:
            Pick(2) ? w.WriteBase64(bytes, 0, static_cast<unsigned int>(Pick(6)))
                    : w.WriteBinHex(bytes, 1, static_cast<unsigned int>(Pick(5)));
            break;
        default:
            Misc(w);
        }
        m_tagOpen = false;
    }

    // Never an empty comment: the DOM writer drops it, the text writer does not.
    void Misc(CXMLWriter& w) {
        if (Pick(2))
            w.WriteComment(Chars(u"ab <&>\u00e9", 1, 8).c_str());
        else
            w.WriteProcessingInstruction(Pick(2) ? W(u"pi").c_str() : W(u"go.x").c_str(),
                                         (W(u"d") + Chars(u"ab <&>\"\u00e9", 0, 8)).c_str());
        m_tagOpen = false;
    }

    // Refusals both writers share, in the same words.
    void Misuse(CXMLWriter& w) {
        const int which = Pick(3);
        refusals += vorn::test::Thrown([&] {
            if (which == 0)
                w.WriteStartElement(U(u"a:b"));
            else if (which == 1)
                w.WriteStartElement(U(u""), U(u"urn:x"));
            else
                w.WriteStartElement(U(u"a"), nullptr);
        });
        refusals += ";";
        m_tagOpen = false; // the text writer closes the tag before it looks at the name
    }

    std::mt19937 m_random;
    std::vector<std::set<int>> m_open; // the prefixes each open element binds
    std::set<WString> m_tag;           // local names of the open tag's attributes
    bool m_tagOpen = false;
};

TEST(XMLDOMWriterDifferential, SameCallsGiveTheSameTree) {
    std::size_t events = 0, refusals = 0;
    for (unsigned int seed = 1; seed <= 2000; ++seed) {
        std::string refused[2];
        int side = 0;
        const Both both([&](CXMLWriter& w) {
            Grammar grammar(seed);
            grammar.Run(w);
            refused[side++] = grammar.refusals;
        });
        ASSERT_EQ(both.error, "") << "seed " << seed;
        ASSERT_EQ(both.text, both.dom) << "seed " << seed;
        ASSERT_EQ(refused[0], refused[1]) << "seed " << seed;
        events += static_cast<std::size_t>(std::count(both.dom.begin(), both.dom.end(), '|'));
        refusals += static_cast<std::size_t>(std::count(refused[0].begin(), refused[0].end(), ';'));
    }
    EXPECT_GT(events, 40000u);
    EXPECT_GT(refusals, 500u);
}

TEST(XMLDOMWriterDifferential, PartsWhereDocumented) {
    const Both trees([](CXMLWriter& w) {
        w.WriteStartDocument();
        w.WriteStartElement(U(u"r"), U(u"urn:d"));
        w.WriteStartElement(U(u"c"));
        w.WriteElementString(U(u"e"), U(u"v"));
        w.WriteElementDouble(U(u"f"), U(u"urn:d"), 0.5);
        w.WriteEntityRef(U(u"lt"));
        w.WriteCDATA(U(u"x\x01"));
        w.WriteComment(U(u""));
        w.WriteEndElement();
        w.WriteEndElement();
        w.WriteComment(U(u"k"));
        w.WriteEndDocument();
        w.Close();
    });
    ASSERT_EQ(trees.error, "");
    EXPECT_EQ(trees.text, "S:{urn:d}r | S:{urn:d}c | S:{urn:d}e | T:v | E:{urn:d}e | "
                          "S:{urn:d}f | T:0.5 | E:{urn:d}f | T:< | D:x | C: | E:{urn:d}c | "
                          "E:{urn:d}r | C:k");
    EXPECT_EQ(trees.dom, "S:{urn:d}r | S:{}c | T:v0.500000 | R:lt | D:x\x01 | E:{}c | C:k | "
                         "E:{urn:d}r");
}

} // namespace

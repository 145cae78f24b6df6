// Thousands of seeded call sequences, drawn from a grammar that keeps clear of the documented
// holes of the text writer (docs/GUIDE.md). Every document must parse with Xerces-C and with
// xmllint, and read back to what the calls said: through the DOM with attributes, through
// CXMLTextReader without. Refused calls are mixed in and must leave the document well-formed.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <random>
#include <set>

#include <vorn/base/BinaryData.h>
#include <vorn/io/XMLException.h>
#include <vorn/io/XMLTextReader.h>

#include "support/Files.h"
#include "support/XmlEvents.h"
#include "support/XmlText.h"
#include "support/XmlWriting.h"

namespace {

using vorn::base::CRef;
using vorn::io::IXMLToken;
using vorn::test::Event;
using vorn::test::Join;
using vorn::test::Normal;
using vorn::test::ParseWithXerces;
using vorn::test::Utf8;
using vorn::test::W;
using vorn::test::WString;

// Up to the root's end tag: the reader may drop what follows it.
std::vector<Event> UpToRootEnd(std::vector<Event> events) {
    int depth = 0;
    for (std::size_t i = 0; i < events.size(); ++i) {
        depth += events[i].kind == 'S' ? 1 : events[i].kind == 'E' ? -1 : 0;
        if (events[i].kind == 'E' && depth == 0) {
            events.resize(i + 1);
            break;
        }
    }
    return events;
}

WString Ascii(const char* text) {
    return WString(text, text + std::char_traits<char>::length(text));
}

// The grammar, and a model of what the writer keeps: its context stack with the walk that
// recomputes the default namespace at each end tag, and the XML scope of the same declarations.
class Script {
public:
    Script(unsigned int seed, vorn::io::CXMLTextWriter& writer) : m_random(seed), m_w(writer) {}

    void Run() {
        m_w.WriteStartDocument();
        for (int steps = 5 + Pick(60); steps > 0; --steps)
            Step();
        if (!m_rootStarted)
            StartElement();
        if (m_open.size() <= 1 && Chance(50)) {
            if (!m_open.empty())
                EndElement(false);
        } else {
            while (!m_open.empty())
                EndElement(false);
            m_w.WriteEndDocument();
        }
        m_w.Close();
    }

    std::vector<Event> expected;
    int refused = 0, stale = 0;

private:
    struct Context {
        bool hasDefault = false;
        WString defaultUri;
        std::vector<WString> prefixes;
        std::size_t event = 0; // its start in `expected`
        bool prefixed = false;
    };

    int Pick(int n) { return std::uniform_int_distribution<int>(0, n - 1)(m_random); }
    bool Chance(int percent) { return Pick(100) < percent; }
    template <typename T> const T& OneOf(const std::vector<T>& items) {
        return items[static_cast<std::size_t>(Pick(static_cast<int>(items.size())))];
    }

    WString Chars(const char16_t* alphabet, int most) {
        const WString from = W(alphabet);
        WString out;
        for (int n = Pick(most + 1); n > 0; --n)
            out += from[static_cast<std::size_t>(Pick(static_cast<int>(from.size())))];
        return out;
    }
    WString Text() { return Chars(u"ab Z09\t&<>'\"]\u00e9\u20ac\u4e2d\ufffd", 12); }
    WString Value() { return Chars(u"ab Z09&<>'\"\u00e9\u4e2d", 8); }
    static WString Uri(int k) { return W(k < 3 ? u"urn:p" : u"urn:d") + WString(1, '0' + k % 3); }
    static WString PrefixName(const WString& uri) { return W(u"p") + uri.substr(5); }
    WString AnyUri() { return Uri(Pick(5)); }
    WString PrefixableUri() { return Uri(Pick(3)); }

    // A prefix is only ever bound to its one URI, so a binding anywhere on the stack is in scope.
    bool Bound(const WString& prefix) const {
        for (const Context& c : m_open)
            if (std::find(c.prefixes.begin(), c.prefixes.end(), prefix) != c.prefixes.end())
                return true;
        return false;
    }
    WString PrefixFor(const WString& uri) const {
        return uri.compare(0, 5, W(u"urn:p")) == 0 && Bound(PrefixName(uri)) ? PrefixName(uri)
                                                                             : WString();
    }
    WString ScopeDefault() const {
        for (auto c = m_open.rbegin(); c != m_open.rend(); ++c)
            if (c->hasDefault)
                return c->defaultUri;
        return WString();
    }
    // The writer's own default after a pop: the walk stops at a default only below prefixes.
    void Pop() {
        m_open.pop_back();
        bool foundDefault = false, foundPrefixes = false;
        for (auto c = m_open.rbegin(); c != m_open.rend(); ++c) {
            if (c->hasDefault) {
                m_stackDefault = c->defaultUri;
                foundDefault = true;
                if (foundPrefixes)
                    return;
            } else if (!c->prefixes.empty()) {
                foundPrefixes = true;
            }
        }
        if (!foundDefault)
            m_stackDefault.clear();
    }

    // The qualified name and namespace that the writer gives `local` in `uri`, and whether it
    // declares `uri` as the default; the writer's default may be stale, the scope's is not.
    void Choose(const WString& local, const WString& uri, Event& e, bool& declare) {
        declare = false;
        const WString prefix = PrefixFor(uri);
        if (uri == m_stackDefault) {
            e.uri = Utf8(ScopeDefault());
            stale += e.uri != Utf8(uri);
        } else if (!prefix.empty()) {
            e.name = Utf8(prefix) + ":";
            e.uri = Utf8(uri);
        } else {
            declare = true;
            e.uri = Utf8(uri);
        }
        e.name += Utf8(local);
        e.local = Utf8(local);
    }

    WString Local() {
        return OneOf<WString>({W(u"a"), W(u"b"), W(u"item"), W(u"\u00e9t\u00e9"), W(u"\u540d"),
                               W(u"_x"), W(u"x-1"), W(u"x.2")});
    }

    void Expect(Event e) { expected.push_back(std::move(e)); }
    void ExpectText(const WString& text) { Expect({'T', "", "", "", Utf8(text), {}, {}}); }
    void TagClosed() { m_tagOpen = false; }

    void StartElement() {
        TagClosed();
        const WString local = Local();
        Event e{'S', "", "", "", "", {}, {}};
        Context c;
        m_tag.clear();
        const int form = Pick(3);
        if (form == 0) {
            m_w.WriteStartElement(local.c_str());
            e.name = e.local = Utf8(local);
            e.uri = Utf8(ScopeDefault());
        } else if (form == 1) {
            const WString uri = AnyUri();
            bool declare;
            Choose(local, uri, e, declare);
            c.prefixed = e.name != e.local;
            if (declare) {
                c.hasDefault = true;
                c.defaultUri = m_stackDefault = uri;
                m_tag.insert(W(u"xmlns"));
            }
            m_w.WriteStartElement(local.c_str(), uri.c_str());
        } else {
            const WString uri = PrefixableUri(), prefix = PrefixName(uri);
            if (!Bound(prefix))
                m_tag.insert(W(u"xmlns:") + prefix);
            c.prefixes.push_back(prefix);
            c.prefixed = true;
            e.name = Utf8(prefix) + ":" + Utf8(local);
            e.uri = Utf8(uri);
            e.local = Utf8(local);
            m_w.WriteStartElement(prefix.c_str(), local.c_str(), uri.c_str());
        }
        c.event = expected.size();
        Expect(e);
        m_open.push_back(c);
        m_rootStarted = m_tagOpen = true;
    }

    void EndElement(bool full) {
        const Event& start = expected[m_open.back().event];
        Event e{'E', start.name, start.uri, start.local, "", {}, {}};
        full ? m_w.WriteFullEndElement() : m_w.WriteEndElement();
        Expect(e);
        TagClosed();
        Pop();
    }

    // An attribute of the open start tag, unless its name is there already.
    bool Fresh(const WString& qname) { return m_tag.insert(qname).second; }
    void ExpectAttribute(const WString& qname, const WString& uri, const WString& local,
                         const std::string& value) {
        expected[m_open.back().event].attributes.push_back(
            {Utf8(qname), Utf8(uri), Utf8(local), value});
    }

    void Attribute() {
        const WString local =
            OneOf<WString>({W(u"x"), W(u"y"), W(u"z"), W(u"\u00e9"), W(u"a-b"), W(u"n")});
        const WString uri = PrefixableUri(), prefix = PrefixFor(uri);
        const WString qname = prefix.empty() ? local : prefix + W(u":") + local;
        switch (Pick(6)) {
        case 0:
            if (Fresh(local)) {
                const WString value = Value();
                m_w.WriteAttribute(local.c_str(), value.c_str());
                ExpectAttribute(local, WString(), local, Utf8(value));
            }
            break;
        case 1:
            if (prefix.empty()) {
                Refuse([&] { m_w.WriteAttribute(local.c_str(), uri.c_str(), W(u"v").c_str()); },
                       "Undeclared namespace.");
            } else if (Fresh(qname)) {
                const WString value = Value();
                m_w.WriteAttribute(local.c_str(), uri.c_str(), value.c_str());
                ExpectAttribute(qname, uri, local, Utf8(value));
            }
            break;
        case 2: // written as it is: only where the prefix is declared and the value safe
            if (!prefix.empty() && Fresh(qname)) {
                const WString value = Chars(u"ab >'\u00e9", 6);
                m_w.WriteAttribute(prefix.c_str(), local.c_str(), uri.c_str(), value.c_str());
                ExpectAttribute(qname, uri, local, Utf8(value));
            }
            break;
        case 3: {
            const WString declared = PrefixName(uri);
            if (Fresh(W(u"xmlns:") + declared)) {
                m_w.WriteAttrNamespaceDeclaration(declared.c_str(), uri.c_str());
                m_open.back().prefixes.push_back(declared);
            }
            break;
        }
        case 4: {
            Context& top = m_open.back();
            const WString other = AnyUri();
            if (top.hasDefault) {
                Refuse([&] { m_w.WriteAttrDefaultNamespaceDeclaration(other.c_str()); },
                       "This start element already contains default namespace declaration.");
                break;
            }
            m_w.WriteAttrDefaultNamespaceDeclaration(other.c_str());
            top.hasDefault = true;
            top.defaultUri = other;
            if (!top.prefixed)
                expected[top.event].uri = Utf8(other);
            break;
        }
        default:
            if (!Fresh(local))
                break;
            const int v = static_cast<int>(m_random());
            const double d = std::uniform_real_distribution<double>(-1e6, 1e6)(m_random);
            char text[64];
            if (Chance(50)) {
                m_w.WriteAttrLong(local.c_str(), v);
                std::snprintf(text, sizeof text, "%d", v);
            } else {
                m_w.WriteAttrDouble(local.c_str(), d);
                std::snprintf(text, sizeof text, "%g", d);
            }
            ExpectAttribute(local, WString(), local, text);
        }
    }

    // Content of the open element; everything but white space closes the start tag.
    void Content() {
        char text[64];
        const int v = static_cast<int>(m_random());
        const double d = std::uniform_real_distribution<double>(-1e9, 1e9)(m_random);
        switch (Pick(12)) {
        case 0:
        case 1: {
            const WString t = Text();
            m_w.WriteString(t.c_str());
            ExpectText(t);
            break;
        }
        case 2: {
            static const std::vector<std::pair<const char16_t*, const char16_t*>> entities = {
                {u"amp", u"&"},   {u"lt", u"<"},        {u"gt", u">"},         {u"apos", u"'"},
                {u"quot", u"\""}, {u"#233", u"\u00e9"}, {u"#x4E2D", u"\u4e2d"}};
            const auto& [name, character] = OneOf(entities);
            m_w.WriteEntityRef(W(name).c_str());
            ExpectText(W(character));
            break;
        }
        case 3: {
            const WString t = Chars(u"ab <&>\"\u00e9\t", 10);
            m_w.WriteCDATA(t.c_str());
            Expect({'D', "", "", "", Utf8(t), {}, {}});
            break;
        }
        case 4:
            if (!m_tagOpen) {
                const WString t = Chars(u" \t", 3);
                m_w.WriteWhitespace(t.c_str());
                ExpectText(t);
            }
            return;
        case 5:
            m_w.WriteLong(v);
            std::snprintf(text, sizeof text, "%d", v);
            ExpectText(Ascii(text));
            break;
        case 6:
            m_w.WriteDouble(d);
            std::snprintf(text, sizeof text, "%f", d);
            ExpectText(Ascii(text));
            break;
        case 7: {
            const char bytes[] = {'\0', '\x7F', '\x80', '\xFF', 'a', 'b'};
            const unsigned int count = static_cast<unsigned int>(Pick(6));
            const bool base64 = Chance(50);
            base64 ? m_w.WriteBase64(bytes, 0, count) : m_w.WriteBinHex(bytes, 0, count);
            vorn::base::CString encoded;
            if (count > 0)
                encoded = base64 ? vorn::base::CBinaryData::ToBase64String(bytes, count)
                                 : vorn::base::CBinaryData::ToBinHexString(bytes, count);
            ExpectText(Ascii(encoded));
            break;
        }
        case 8: {
            const WString local = Local(), value = Text();
            Event s{'S', "", "", "", "", {}, {}};
            bool declare = false;
            if (Chance(50)) {
                const WString uri = AnyUri();
                Choose(local, uri, s, declare);
                m_w.WriteElementString(local.c_str(), uri.c_str(), value.c_str());
            } else {
                s.name = s.local = Utf8(local);
                s.uri = Utf8(ScopeDefault());
                m_w.WriteElementString(local.c_str(), value.c_str());
            }
            Expect(s);
            ExpectText(value);
            Expect({'E', s.name, s.uri, s.local, "", {}, {}});
            break;
        }
        case 9: {
            const WString local = Local();
            Event s{'S', Utf8(local), Utf8(ScopeDefault()), Utf8(local), "", {}, {}};
            if (Chance(50)) {
                m_w.WriteElementDouble(local.c_str(), d);
                std::snprintf(text, sizeof text, "%.15g", d);
            } else {
                const long long big = static_cast<long long>(
                    static_cast<unsigned long long>(m_random()) << 32 | m_random());
                m_w.WriteElementInt64(local.c_str(), big);
                std::snprintf(text, sizeof text, "%lld", big);
            }
            Expect(s);
            ExpectText(Ascii(text));
            Expect({'E', s.name, s.uri, s.local, "", {}, {}});
            break;
        }
        default:
            Misc();
            return;
        }
        TagClosed();
    }

    // Comments and processing instructions, allowed anywhere after the declaration.
    void Misc() {
        if (Chance(50)) {
            const WString t = Chars(u"ab <&>\"\u00e9\t", 10);
            m_w.WriteComment(t.c_str());
            Expect({'C', "", "", "", " " + Utf8(t), {}, {}});
        } else {
            const WString target = OneOf<WString>({W(u"pi"), W(u"go.x"), W(u"\u00e9")});
            const WString data = W(u"d") + Chars(u"ab <&>\"\u00e9", 8);
            m_w.WriteProcessingInstruction(target.c_str(), data.c_str());
            Expect({'P', Utf8(target), "", "", "=" + Utf8(data), {}, {}});
        }
        TagClosed();
    }

    // A call that the writer must refuse with `words`, writing nothing.
    void Refuse(const std::function<void()>& call, const char* words) {
        ++refused;
        try {
            call();
            ADD_FAILURE() << "no refusal: " << words;
        } catch (const vorn::io::CXMLException& e) {
            EXPECT_STREQ(e.GetErrorDescription(), words);
        }
    }

    void Misuse() {
        switch (Pick(4)) {
        case 0:
            if (!m_tagOpen)
                Refuse([&] { m_w.WriteAttribute(W(u"x").c_str(), W(u"v").c_str()); },
                       "Attributes must be written at start element.");
            break;
        case 1: // the start tag is closed before the name is looked at
            Refuse([&] { m_w.WriteStartElement(W(u"a:b").c_str()); },
                   "Local name must be unqualified name.");
            TagClosed();
            break;
        case 2:
            Refuse([&] { m_w.WriteString(W(u"a\x01").c_str()); }, "Invalid character error.");
            break;
        default:
            if (m_open.empty())
                Refuse([&] { m_w.WriteEndElement(); },
                       "There is no start elements to close in the current context.");
        }
    }

    void Step() {
        if (Chance(5)) {
            Misuse();
            return;
        }
        if (Chance(3))
            m_w.Flush();
        if (m_open.empty()) {
            if (!m_rootStarted && Chance(60))
                StartElement();
            else
                Misc();
            return;
        }
        const int p = Pick(100);
        if (m_tagOpen && p < 35)
            Attribute();
        else if (p < 55 && m_open.size() < 8)
            StartElement();
        else if (p < 75)
            EndElement(Chance(30));
        else
            Content();
    }

    std::mt19937 m_random;
    vorn::io::CXMLTextWriter& m_w;
    std::vector<Context> m_open;
    WString m_stackDefault;
    std::set<WString> m_tag; // names written into the open start tag
    bool m_rootStarted = false, m_tagOpen = false;
};

// The document as CXMLTextReader gives it.
std::vector<Event> ReadBack(const std::string& document) {
    std::vector<Event> events;
    vorn::io::CXMLTextReader reader(vorn::test::XmlStream(document));
    while (reader.ReadToken()) {
        const CRef<IXMLToken>& token = reader.GetCurrentToken();
        const std::string describe = vorn::test::Describe(*token);
        Event e{describe[0], "", "", "", describe.substr(2), {}, {}};
        if (auto* element = dynamic_cast<vorn::io::IXMLElementToken*>(token.GetPointer())) {
            e.name = vorn::test::Str(element->GetQualifiedName());
            e.uri = vorn::test::Str(element->GetNamespaceURI());
            e.local = vorn::test::Str(element->GetLocalName());
            e.text.clear();
        }
        events.push_back(e);
    }
    return events;
}

TEST(XMLTextWriterRandom, EveryDocumentIsWellFormedAndReadsBackAsWritten) {
    const unsigned int documents = 2000;
    vorn::test::TempDir dir;
    int refused = 0, stale = 0;
    for (unsigned int seed = 1; seed <= documents; ++seed) {
        vorn::test::WrittenXml x(nullptr, u"\n", 1 + seed % 97);
        Script script(seed, x.writer);
        script.Run();
        const std::string document = x.Bytes();
        refused += script.refused;
        stale += script.stale;
        vorn::test::PutFile(dir / ("d" + std::to_string(seed) + ".xml"), document);

        std::string error;
        const std::vector<Event> expected = Normal(script.expected);
        const std::vector<Event> dom = Normal(ParseWithXerces(document, error));
        ASSERT_EQ(error, "") << "seed " << seed << "\n" << document;
        ASSERT_EQ(Join(dom, true), Join(expected, true)) << "seed " << seed << "\n" << document;
        std::vector<Event> read;
        try {
            read = UpToRootEnd(Normal(ReadBack(document)));
        } catch (const vorn::base::CException& e) {
            FAIL() << "seed " << seed << ": " << e.GetErrorDescription() << "\n" << document;
        }
        ASSERT_EQ(Join(read, false), Join(UpToRootEnd(expected), false)) << "seed " << seed << "\n"
                                                                         << document;
    }
    // The grammar reaches the refusals and the writer's stale default namespace.
    EXPECT_GT(refused, 200);
    EXPECT_GT(stale, 10);

    ASSERT_EQ(std::system("command -v xmllint >/dev/null"), 0)
        << "xmllint is missing: scripts/bootstrap installs libxml2-utils";
    const std::string errors = dir / "errors";
    EXPECT_EQ(std::system(("xmllint --noout " + dir.Path() + "/*.xml 2>" + errors).c_str()), 0);
    EXPECT_EQ(vorn::test::GetFile(errors), "");
}

} // namespace

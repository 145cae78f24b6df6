// Every document of tests/io/xml-corpus through CXMLTextReader: the well-formed ones (wf/) and
// those the scanner accepts though it doesn't check them (unchecked/) read to the end; every
// not-well-formed one (nwf/), and every cut of a small document, fails with the scanner's
// CXMLException or the tokenizer's own words, and nothing else. The well-formed ones without a
// DOCTYPE read the same through CXMLDOMReader over the tree that Xerces-C's DOM parser makes.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <vector>

#include <vorn/io/XMLDOMReader.h>
#include <vorn/io/XMLException.h>
#include <vorn/io/XMLTextReader.h>

#include "support/XmlDom.h"
#include "support/XmlText.h"

namespace {

namespace fs = std::filesystem;
using vorn::io::CIOException;
using vorn::io::CXMLException;

const fs::path kCorpus = fs::path(VORN_TEST_SOURCE_DIR) / "io" / "xml-corpus";

// "read", "xml" for the scanner's fault, or what else came out.
std::string Outcome(const std::string& document) {
    try {
        vorn::io::CXMLTextReader reader(vorn::test::XmlStream(document));
        while (reader.ReadToken()) {
        }
        return "read";
    } catch (const CXMLException& e) {
        return e.GetMessage() != nullptr && e.GetErrorDescription() == nullptr ? "xml" : "bare xml";
    } catch (const CIOException& e) {
        const std::string words = e.GetErrorDescription() ? e.GetErrorDescription() : "";
        if (words == "Failed to create XML text tokenizer." ||
            words == "Failed to get the next token of xml text tokenizer.")
            return "xml";
        return "io: " + words;
    }
}

std::string Load(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::ostringstream bytes;
    bytes << in.rdbuf();
    return bytes.str();
}

// Each document of `kind` with its outcome, where that isn't `expected`.
std::string Mismatches(const char* kind, const std::string& expected, unsigned int& count) {
    std::string wrong;
    for (const fs::directory_entry& entry : fs::directory_iterator(kCorpus / kind)) {
        ++count;
        const std::string outcome = Outcome(Load(entry.path()));
        if (outcome != expected)
            wrong += entry.path().filename().string() + " -> " + outcome + "\n";
    }
    return wrong;
}

TEST(XMLCorpus, EachDocumentReadsToTheEndOrFailsWithTheScannersFault) {
    unsigned int count = 0;
    EXPECT_EQ(Mismatches("wf", "read", count), "");
    EXPECT_EQ(Mismatches("unchecked", "read", count), "");
    EXPECT_EQ(Mismatches("nwf", "xml", count), "");
    EXPECT_GE(count, 150u);
}

TEST(XMLCorpus, EveryCutOfADocumentFails) {
    const std::string utf8 = "<?xml version=\"1.0\"?>\n<!DOCTYPE r [<!ENTITY x 'y'>]>"
                             "<!--c--><?p d?><r xmlns='urn:a' xmlns:p='urn:p' p:a='1&amp;'>"
                             "t&#233;\xc3\xa9<![CDATA[<>]]><p:e b=\"2\"/><f>\xe4\xb8\xad</f></r>";
    std::u16string wide = u"\ufeff<r a='\u00e9'>\U0001F600<e/><![CDATA[x]]></r>";
    const std::string utf16(reinterpret_cast<const char*>(wide.data()), wide.size() * 2);
    for (const std::string& document : {utf8, utf16}) {
        ASSERT_EQ(Outcome(document), "read");
        std::string wrong;
        for (std::size_t length = 0; length < document.size(); ++length) {
            const std::string outcome = Outcome(document.substr(0, length));
            if (outcome != "xml")
                wrong += std::to_string(length) + " -> " + outcome + "\n";
        }
        EXPECT_EQ(wrong, "");
    }
}

// ---- The DOM reader beside the text reader

using vorn::io::IXMLStartElementToken;
using vorn::io::IXMLToken;
using vorn::io::XMLTokenType;

// A node of the tree below the document element, in document order, with the index (among the
// elements) of the element it stands in.
struct TreeNode {
    const xercesc::DOMNode* node;
    std::size_t parent;
};

void Collect(const xercesc::DOMNode* node, std::size_t parent, std::size_t& elements,
             std::vector<TreeNode>& nodes) {
    nodes.push_back({node, parent});
    if (node->getNodeType() != xercesc::DOMNode::ELEMENT_NODE)
        return;
    const std::size_t self = elements++;
    for (const xercesc::DOMNode* child = node->getFirstChild(); child != nullptr;
         child = child->getNextSibling())
        Collect(child, self, elements, nodes);
}

XMLTokenType TokenTypeOf(const xercesc::DOMNode& node) {
    switch (node.getNodeType()) {
    case xercesc::DOMNode::ELEMENT_NODE:
        return vorn::io::XMLTokenStartElement;
    case xercesc::DOMNode::CDATA_SECTION_NODE:
        return vorn::io::XMLTokenCDATA;
    case xercesc::DOMNode::COMMENT_NODE:
        return vorn::io::XMLTokenComment;
    case xercesc::DOMNode::PROCESSING_INSTRUCTION_NODE:
        return vorn::io::XMLTokenPI;
    default:
        return vorn::io::XMLTokenText;
    }
}

template <typename F> std::string Value(F&& get) {
    try {
        return vorn::test::Str(get());
    } catch (const vorn::base::CException& e) {
        return std::string("!") + e.GetErrorDescription();
    }
}

// The element's names, and each attribute of the tree's element as the token gives it, by
// qualified name and, in a namespace, by namespace and local name.
std::string Describe(const xercesc::DOMNode* tree, IXMLStartElementToken& token) {
    using vorn::test::Str;
    std::string line = Str(token.GetQualifiedName()) + "{" + Str(token.GetNamespaceURI()) + "}" +
                       Str(token.GetLocalName());
    const xercesc::DOMNamedNodeMap* attributes = tree->getAttributes();
    for (XMLSize_t i = 0; i < attributes->getLength(); ++i) {
        const xercesc::DOMNode* attribute = attributes->item(i);
        const auto* name = reinterpret_cast<const unsigned short*>(attribute->getNodeName());
        const auto* uri = reinterpret_cast<const unsigned short*>(attribute->getNamespaceURI());
        const auto* local = reinterpret_cast<const unsigned short*>(attribute->getLocalName());
        line += " @" + Str(attribute->getNodeName()) + "=" +
                Value([&] { return token.GetAttribute(name); });
        // A default namespace declaration is in the xmlns namespace in a DOM; the text reader
        // keeps it by its qualified name only.
        if (uri != nullptr && *uri != 0 && Str(attribute->getNodeName()) != "xmlns")
            line += "|" + Value([&] { return token.GetAttribute(uri, local); });
    }
    return line;
}

// One line a element: what Describe gives, then the text and CDATA directly in it, joined.
std::vector<std::string> Lines(const std::vector<std::string>& names,
                               const std::vector<std::string>& texts) {
    std::vector<std::string> lines;
    for (std::size_t i = 0; i < names.size(); ++i)
        lines.push_back(names[i] + " T:" + texts[i]);
    return lines;
}

std::vector<std::string> ByText(const std::string& document,
                                const std::vector<const xercesc::DOMNode*>& elements) {
    vorn::io::CXMLTextReader reader(vorn::test::XmlStream(document));
    std::vector<std::string> names, texts;
    std::vector<std::size_t> open;
    while (reader.ReadToken()) {
        IXMLToken& token = *reader.GetCurrentToken();
        switch (token.GetType()) {
        case vorn::io::XMLTokenStartElement:
            names.push_back(
                names.size() < elements.size()
                    ? Describe(elements[names.size()], dynamic_cast<IXMLStartElementToken&>(token))
                    : "extra");
            texts.emplace_back();
            open.push_back(names.size() - 1);
            break;
        case vorn::io::XMLTokenEndElement:
            open.pop_back();
            break;
        case vorn::io::XMLTokenText:
        case vorn::io::XMLTokenCDATA:
            if (!open.empty())
                texts[open.back()] += vorn::test::Str(token.GetValue());
            break;
        default:
            break;
        }
    }
    return Lines(names, texts);
}

// Stops by the tree: once every node has had its token, leaving out end tokens, which the walk
// doesn't give for every element.
std::vector<std::string> ByDOM(const xercesc::DOMDocument* document,
                               const std::vector<TreeNode>& tree,
                               const std::vector<const xercesc::DOMNode*>& elements) {
    vorn::io::CXMLDOMReader reader(document);
    std::vector<std::string> names(elements.size()), texts(elements.size());
    std::size_t seen = 0, started = 0;
    while (seen < tree.size() && reader.ReadToken()) {
        IXMLToken& token = *reader.GetCurrentToken();
        const XMLTokenType type = token.GetType();
        if (type == vorn::io::XMLTokenEndElement)
            continue;
        const TreeNode& node = tree[seen++];
        if (type != TokenTypeOf(*node.node)) {
            names.push_back("a token out of order");
            texts.emplace_back();
            break;
        }
        if (type == vorn::io::XMLTokenStartElement) {
            names[started] =
                Describe(elements[started], dynamic_cast<IXMLStartElementToken&>(token));
            ++started;
        } else if (type == vorn::io::XMLTokenText || type == vorn::io::XMLTokenCDATA) {
            texts[node.parent] += vorn::test::Str(token.GetValue());
        }
    }
    return Lines(names, texts);
}

TEST(XMLCorpus, TheDOMReaderGivesTheElementsAttributesAndTextOfTheTextReader) {
    unsigned int count = 0;
    std::string wrong;
    for (const fs::directory_entry& entry : fs::directory_iterator(kCorpus / "wf")) {
        const std::string document = Load(entry.path());
        if (document.find("<!DOCTYPE") != std::string::npos)
            continue;
        vorn::test::ParsedDocument parsed(document);
        ASSERT_NE(parsed.Get(), nullptr) << entry.path();
        std::vector<TreeNode> tree;
        std::size_t elementCount = 0;
        Collect(parsed.Get()->getDocumentElement(), 0, elementCount, tree);
        std::vector<const xercesc::DOMNode*> elements;
        for (const TreeNode& node : tree)
            if (node.node->getNodeType() == xercesc::DOMNode::ELEMENT_NODE)
                elements.push_back(node.node);
        const std::vector<std::string> text = ByText(document, elements);
        const std::vector<std::string> dom = ByDOM(parsed.Get(), tree, elements);
        if (text != dom) {
            wrong += entry.path().filename().string() + ":\n";
            for (std::size_t i = 0; i < std::max(text.size(), dom.size()); ++i)
                wrong += "  text " + (i < text.size() ? text[i] : "-") + "\n  dom  " +
                         (i < dom.size() ? dom[i] : "-") + "\n";
        }
        ++count;
    }
    EXPECT_EQ(wrong, "");
    EXPECT_GE(count, 50u);
}

} // namespace

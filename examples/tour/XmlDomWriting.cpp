// XML DOM writing: one function writes a small order through the writer contract, once as text
// and once into a Xerces-C DOM, and the tour prints both.
#include "Tour.h"

#include <cstdio>
#include <string>

#include <xercesc/dom/DOM.hpp>

#include <vorn/vorn.h>

using vorn::base::CUnicodeString;

namespace {

// Any writer: the calls do not know which one they drive.
void WriteOrder(vorn::io::CXMLWriter& w) {
    const CUnicodeString order("order"), shop("urn:example:shop"), id("id"), item("item"),
        sku("sku"), note("note"), total("total");
    w.WriteStartDocument();
    w.WriteComment(CUnicodeString("one order"));
    w.WriteStartElement(order, shop);
    w.WriteAttrLong(id, 42);
    w.WriteStartElement(item);
    w.WriteAttribute(sku, CUnicodeString("A&B-7"));
    w.WriteString(CUnicodeString("two mugs"));
    w.WriteEndElement();
    w.WriteElementDouble(total, 19.5);
    w.WriteCDATA(CUnicodeString("fragile <glass>"));
    w.WriteEndElement();
    w.WriteEndDocument();
    w.Close();
}

std::string Utf8(const XMLCh* text) {
    if (text == nullptr)
        return "";
    return static_cast<const char*>(
        CUnicodeString(reinterpret_cast<const unsigned short*>(text)).ToUTF8());
}

// The tree as an outline, one node a line.
void PrintTree(const xercesc::DOMNode* node, int depth) {
    for (const xercesc::DOMNode* n = node->getFirstChild(); n != nullptr; n = n->getNextSibling()) {
        std::printf("%*s", 2 * depth + 2, "");
        switch (n->getNodeType()) {
        case xercesc::DOMNode::ELEMENT_NODE: {
            std::printf("element %s", Utf8(n->getNodeName()).c_str());
            if (n->getNamespaceURI() != nullptr)
                std::printf(" in %s", Utf8(n->getNamespaceURI()).c_str());
            const xercesc::DOMNamedNodeMap* attributes = n->getAttributes();
            for (XMLSize_t i = 0; i < attributes->getLength(); ++i)
                std::printf(" @%s=\"%s\"", Utf8(attributes->item(i)->getNodeName()).c_str(),
                            Utf8(attributes->item(i)->getNodeValue()).c_str());
            std::printf("\n");
            PrintTree(n, depth + 1);
            break;
        }
        case xercesc::DOMNode::COMMENT_NODE:
            std::printf("comment \"%s\"\n", Utf8(n->getNodeValue()).c_str());
            break;
        case xercesc::DOMNode::CDATA_SECTION_NODE:
            std::printf("CDATA \"%s\"\n", Utf8(n->getNodeValue()).c_str());
            break;
        default:
            std::printf("text \"%s\"\n", Utf8(n->getNodeValue()).c_str());
        }
    }
}

} // namespace

void tour::XmlDomWriting() {
    Section("XML DOM writing");
    vorn::io::CMemoryOutputStream bytes;
    const unsigned short lineEnd[] = {'\n', 0};
    vorn::io::CXMLTextWriter text(&bytes, "UTF-8", 256, nullptr, lineEnd, false);
    WriteOrder(text);
    std::printf("as text:\n%.*s", static_cast<int>(bytes.GetBufferSize()), bytes.GetBuffer());

    vorn::io::CXMLDOMWriter dom;
    WriteOrder(dom);
    // WriteElementString keeps only the value, and the typed values use the base's "%f".
    std::printf("as a DOM (the document dies with the writer):\n");
    PrintTree(dom.GetDocument(), 0);

    try {
        dom.WriteStartDocument();
    } catch (const vorn::io::CXMLException& e) {
        std::printf("WriteStartDocument again -> \"%s\"\n", e.GetErrorDescription());
    }
    try {
        dom.WriteStartElement(CUnicodeString("1st"));
    } catch (const vorn::io::CXMLException& e) {
        std::printf("WriteStartElement(\"1st\") -> \"%s\" (Xerces-C judges the name)\n",
                    e.GetErrorDescription());
    }
}

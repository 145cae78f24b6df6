// XML DOM reading and pushback: a document that Xerces-C's DOM parser built, read through the same
// pull interface as text; then an element looked at, put back and read again, and an element the
// document never held put in front of it.
#include "Tour.h"

#include <cstdio>
#include <memory>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>

#include <vorn/vorn.h>

using vorn::base::CUnicodeString;
using vorn::io::CXMLDOMReader;
using vorn::io::CXMLPushbackReader;

namespace {

const char kOrder[] = "<order xmlns=\"urn:example:shop\" id=\"1042\">\n"
                      "  <customer>Ada</customer>\n"
                      "  <item sku=\"A-7\"><quantity>3</quantity><price>4.25</price></item>\n"
                      "  <item sku=\"B-2\"><quantity>1</quantity><price>19.9</price></item>\n"
                      "</order>\n";

// Namespaces on, nothing external loaded; the parser owns the tree.
std::unique_ptr<xercesc::XercesDOMParser> Parse(const char* text, std::size_t size) {
    auto parser = std::make_unique<xercesc::XercesDOMParser>();
    parser->setDoNamespaces(true);
    parser->setLoadExternalDTD(false);
    xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(text), size, "order");
    parser->parse(source);
    return parser;
}

// Xerces-C's XMLCh is char16_t where the library's wide character is unsigned short.
const XMLCh* Xml(const CUnicodeString& text) {
    return reinterpret_cast<const XMLCh*>(static_cast<const unsigned short*>(text));
}

} // namespace

void tour::XmlDom() {
    Section("XML DOM reading and pushback");
    const CUnicodeString shop("urn:example:shop"), order("order"), customer("customer"),
        item("item"), quantity("quantity"), price("price"), discount("discount"), id("id"),
        sku("sku");
    std::unique_ptr<xercesc::XercesDOMParser> parser = Parse(kOrder, sizeof kOrder - 1);
    const xercesc::DOMDocument* document = parser->getDocument();

    // The walk gives start elements and text in order, but not every end element, and starts
    // over after the last token: stop by the tree's structure, here its number of items.
    const XMLSize_t items = document->getElementsByTagNameNS(Xml(shop), Xml(item))->getLength();
    CXMLDOMReader reader(document);
    reader.ReadStartElement(order, shop);
    const int number = reader.ReadAttrLong(id);
    const CUnicodeString who = reader.ReadElementString(customer, shop);
    std::printf("order %d for %s, %u items, read from the DOM\n", number,
                static_cast<const char*>(who.ToUTF8()), static_cast<unsigned int>(items));
    for (XMLSize_t i = 0; i < items; ++i) {
        reader.ReadStartElement(item, shop);
        const CUnicodeString code = reader.ReadAttribute(sku);
        const int count = reader.ReadElementLong(quantity, shop);
        const double each = reader.ReadElementDouble(price, shop);
        std::printf("  item %s: %d x %.2f\n", static_cast<const char*>(code.ToUTF8()), count, each);
    }

    // The pushback reader decorates any reader: here a new walk over the same tree. An element
    // read whole is put back, whole, and read again; then one the document never held goes in
    // front of what follows.
    CXMLDOMReader again(document);
    CXMLPushbackReader pushback(&again, 3); // an element with a value takes three
    pushback.ReadStartElement(item, shop);
    const int first = pushback.ReadElementLong(quantity, shop);
    pushback.UnreadElementLong(quantity, shop, first);
    std::printf("read <quantity>%d</quantity>, put it back, read it again: %d\n", first,
                pushback.ReadElementLong(quantity, shop));
    pushback.UnreadElementDouble(discount, shop, 0.1);
    const double off = pushback.ReadElementDouble(discount, shop);
    const double each = pushback.ReadElementDouble(price, shop);
    std::printf("put in <discount>%g</discount>, then the price from the tree: %.2f\n", off, each);

    // A token taken back comes again: the start of the second item, read twice.
    pushback.ReadStartElement(item, shop);
    pushback.UnreadToken();
    pushback.ReadStartElement(item, shop);
    std::printf("second item put back and read again: sku %s\n",
                static_cast<const char*>(pushback.ReadAttribute(sku).ToUTF8()));
    pushback.Close(); // closes the DOM reader beneath; the tree stays with its parser
}

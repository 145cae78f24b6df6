// XML writing: an order with two namespaces and typed values, written by the text writer into
// memory, shown, and read back by the text reader.
#include "Tour.h"

#include <cstdio>

#include <vorn/vorn.h>

using vorn::base::CUnicodeString;
using vorn::io::CXMLTextWriter;

void tour::XmlWriting() {
    Section("XML writing");
    const CUnicodeString orders("urn:example:orders"), pricing("urn:example:pricing");
    const CUnicodeString order("order"), item("item"), name("name"), count("count"), stamp("stamp"),
        id("id"), paid("paid"), sku("sku"), price("price"), p("p");
    const CUnicodeString label("Salt & \"Pepper\" <fine>");
    const char bytes[] = {'\x00', '\x7f', '\x80', '\xff'};

    vorn::io::CMemoryOutputStream out;
    const unsigned short lf[] = {'\n', 0};
    // 512 units of buffer, no tabulator, LF line ends, no byte order mark.
    CXMLTextWriter writer(&out, "UTF-8", 512, nullptr, lf, false);
    writer.WriteStartDocument();
    writer.WriteStartElement(order, orders); // no prefix for it: declared as the default
    writer.WriteAttrNamespaceDeclaration(p, pricing);
    writer.WriteAttrLong(id, 1042);
    writer.WriteAttrBool(paid, true);
    writer.WriteStartElement(item, orders); // the default namespace already: a plain name
    writer.WriteAttribute(sku, CUnicodeString("A-7"));
    writer.WriteAttrDouble(price, pricing, 12.5); // the bound prefix p
    writer.WriteElementString(name, orders, label);
    writer.WriteElementLong(count, orders, -3);
    writer.WriteElementBase64(stamp, orders, bytes, 0, sizeof bytes);
    try {
        writer.WriteAttribute(id, CUnicodeString("late"));
    } catch (const vorn::io::CXMLException& e) {
        std::printf("an attribute after content -> \"%s\"\n", e.GetErrorDescription());
    }
    const unsigned short smiley[] = {0xD83D, 0xDE00, 0};
    try {
        writer.WriteString(smiley);
    } catch (const vorn::io::CXMLException& e) {
        std::printf("a character beyond the BMP -> \"%s\" (checked one UTF-16 unit at a time)\n",
                    e.GetErrorDescription());
    }
    writer.WriteEndDocument(); // ends the item and the order
    writer.Close();            // flushes; without it the buffered text is lost
    std::printf("%u bytes written:\n%.*s", out.GetBufferSize(),
                static_cast<int>(out.GetBufferSize()), out.GetBuffer());

    vorn::io::CMemoryInputStream in(out.GetBuffer(), out.GetBufferSize(), false);
    vorn::io::CXMLTextReader reader(&in);
    reader.ReadStartElement(order, orders);
    const int number = reader.ReadAttrLong(id);
    const bool settled = reader.ReadAttrBool(paid);
    reader.ReadStartElement(item, orders);
    const CUnicodeString code = reader.ReadAttribute(sku);
    const double amount = reader.ReadAttrDouble(pricing, price);
    const CUnicodeString text = reader.ReadElementString(name, orders);
    const int n = reader.ReadElementLong(count, orders);
    char* decoded = nullptr;
    unsigned int groups = 0;
    reader.ReadElementBase64(stamp, orders, decoded, groups);
    std::printf("read back: order %d, paid %s, item %s at %.2f, \"%s\" x %d, stamp %02X %02X %02X "
                "%02X\n",
                number, settled ? "yes" : "no", static_cast<const char*>(code.ToUTF8()), amount,
                static_cast<const char*>(text.ToUTF8()), n, static_cast<unsigned char>(decoded[0]),
                static_cast<unsigned char>(decoded[1]), static_cast<unsigned char>(decoded[2]),
                static_cast<unsigned char>(decoded[3]));
    ZK_free(decoded);
}

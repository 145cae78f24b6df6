// XML reading: a pull reader over a small document of weather stations, with attributes in two
// namespaces and typed element values.
#include "Tour.h"

#include <cstdio>

#include <vorn/vorn.h>

using vorn::base::CUnicodeString;
using vorn::io::CXMLTextReader;

namespace {

const char kStations[] =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<stations xmlns=\"urn:example:weather\" xmlns:geo=\"urn:example:geo\">\n"
    "  <!-- readings of one morning -->\n"
    "  <station id=\"7\" geo:lat=\"47.38\" geo:lon=\"8.57\" active=\"true\">\n"
    "    <name>Z\xc3\xbcrich &amp; Fluntern</name>\n"
    "    <temperature>12.5</temperature>\n"
    "    <samples>1440</samples>\n"
    "    <note><![CDATA[wind <3 m/s]]></note>\n"
    "  </station>\n"
    "  <station id=\"12\" geo:lat=\"46.25\" geo:lon=\"6.13\" active=\"false\">\n"
    "    <name>Gen\xc3\xa8ve</name>\n"
    "    <temperature>-1.25</temperature>\n"
    "    <samples>96</samples>\n"
    "    <note/>\n"
    "  </station>\n"
    "</stations>\n";

// Steps to the next station's start tag; false at the end tag of the stations.
bool NextStation(CXMLTextReader& reader) {
    while (reader.ReadToken()) {
        if (reader.GetCurrentTokenType() == vorn::io::XMLTokenStartElement)
            return true;
        if (reader.GetCurrentTokenType() == vorn::io::XMLTokenEndElement)
            return false;
    }
    return false;
}

} // namespace

void tour::XmlReading() {
    Section("XML reading");
    // Names go in as UTF-16; a CUnicodeString made from UTF-8 text converts to one.
    const CUnicodeString weather("urn:example:weather"), geo("urn:example:geo");
    const CUnicodeString stations("stations"), station("station"), name("name"),
        temperature("temperature"), samples("samples"), note("note"), id("id"), lat("lat"),
        lon("lon"), active("active");

    vorn::io::CMemoryInputStream bytes(kStations, sizeof kStations - 1, false);
    CXMLTextReader reader(&bytes);
    reader.ReadStartElement(stations, weather); // local name, then namespace URI
    while (NextStation(reader)) {
        // Attributes take the namespace URI first; one in no namespace goes by its plain name.
        const int number = reader.ReadAttrLong(id);
        const double latitude = reader.ReadAttrDouble(geo, lat);
        const double longitude = reader.ReadAttrDouble(geo, lon);
        const bool on = reader.ReadAttrBool(active);
        const unsigned int line = reader.GetCurrentToken()->GetLineNumber();
        const CUnicodeString place = reader.ReadElementString(name, weather);
        const double celsius = reader.ReadElementDouble(temperature, weather);
        const unsigned int count = reader.ReadElementUnsignedLong(samples, weather);
        const CUnicodeString remark = reader.ReadElementString(note, weather); // "" for <note/>
        reader.ReadEndElement(station, weather);
        std::printf("station %2d (line %u) %-18s %6.2f/%5.2f %-8s %6.2f C over %4u samples, "
                    "note \"%s\"\n",
                    number, line, static_cast<const char*>(place.ToUTF8()), latitude, longitude,
                    on ? "active" : "inactive", celsius, count,
                    static_cast<const char*>(remark.ToUTF8()));
    }

    // A fault in the document comes out with the scanner's words.
    const char broken[] = "<stations><station><name>x</station></stations>";
    vorn::io::CMemoryInputStream brokenBytes(broken, sizeof broken - 1, false);
    CXMLTextReader faulty(&brokenBytes);
    try {
        while (faulty.ReadToken()) {
        }
    } catch (const vorn::io::CXMLException& e) {
        std::printf("not well-formed: %s\n", e.GetMessage());
    }
}

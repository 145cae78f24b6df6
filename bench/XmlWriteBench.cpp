// Writing a 100 MB document through CXMLTextWriter beside libxml2's xmlTextWriter: the same
// elements, attributes and escaped text, into memory that holds the whole document from the
// start. Each case is registered as "Case/vorn" and "Case/<peer>".
#include <benchmark/benchmark.h>

#include <libxml/xmlwriter.h>

#include <vorn/io/MemoryOutputStream.h>
#include <vorn/io/XMLTextWriter.h>

namespace {

constexpr unsigned int kItems = 650000;    // about 100 MB
constexpr unsigned int kRoom = 128u << 20; // the whole document, on both sides
constexpr unsigned int kBufferUnits = 16384;

// The same texts, once as UTF-16 and once as UTF-8.
template <typename Char, std::size_t N> struct Text {
    Char units[N];
    constexpr Text(const char (&text)[N]) : units{} {
        for (std::size_t i = 0; i < N; ++i)
            units[i] = static_cast<Char>(static_cast<unsigned char>(text[i]));
    }
};
#define VORN_BENCH_TEXT(name, literal)                                                             \
    constexpr Text<unsigned short, sizeof(literal)> name##16(literal);                             \
    constexpr Text<unsigned char, sizeof(literal)> name##8(literal);
VORN_BENCH_TEXT(kRoot, "catalogue")
VORN_BENCH_TEXT(kItem, "item")
VORN_BENCH_TEXT(kId, "id")
VORN_BENCH_TEXT(kIdValue, "A-10472")
VORN_BENCH_TEXT(kName, "name")
VORN_BENCH_TEXT(kNameValue, "Salt & \"Pepper\"")
VORN_BENCH_TEXT(kBody, "Ground black pepper <fine>, sea salt & a pinch of 'cayenne'; 250 g.")
#undef VORN_BENCH_TEXT

void XmlWrite_vorn(benchmark::State& state) {
    std::size_t bytes = 0;
    for (auto _ : state) {
        vorn::io::CMemoryOutputStream out(kRoom, 1u << 20);
        vorn::io::CXMLTextWriter w(&out, "UTF-8", kBufferUnits, nullptr, nullptr, false);
        w.WriteStartDocument();
        w.WriteStartElement(kRoot16.units);
        for (unsigned int i = 0; i < kItems; ++i) {
            w.WriteStartElement(kItem16.units);
            w.WriteAttribute(kId16.units, kIdValue16.units);
            w.WriteAttribute(kName16.units, kNameValue16.units);
            w.WriteString(kBody16.units);
            w.WriteEndElement();
        }
        w.WriteEndDocument();
        w.Close();
        bytes = out.GetBufferSize();
        benchmark::DoNotOptimize(out.GetBuffer());
    }
    state.counters["MB"] = static_cast<double>(bytes) / 1e6;
}
BENCHMARK(XmlWrite_vorn)->Name("XmlWrite100M/vorn")->Unit(benchmark::kMillisecond);

void XmlWrite_libxml2(benchmark::State& state) {
    std::size_t bytes = 0;
    for (auto _ : state) {
        xmlBufferPtr buffer = xmlBufferCreateSize(kRoom);
        xmlTextWriterPtr w = xmlNewTextWriterMemory(buffer, 0);
        xmlTextWriterStartDocument(w, "1.0", "UTF-8", nullptr);
        xmlTextWriterStartElement(w, kRoot8.units);
        for (unsigned int i = 0; i < kItems; ++i) {
            xmlTextWriterStartElement(w, kItem8.units);
            xmlTextWriterWriteAttribute(w, kId8.units, kIdValue8.units);
            xmlTextWriterWriteAttribute(w, kName8.units, kNameValue8.units);
            xmlTextWriterWriteString(w, kBody8.units);
            xmlTextWriterEndElement(w);
        }
        xmlTextWriterEndDocument(w);
        xmlFreeTextWriter(w);
        bytes = static_cast<std::size_t>(xmlBufferLength(buffer));
        benchmark::DoNotOptimize(xmlBufferContent(buffer));
        xmlBufferFree(buffer);
    }
    state.counters["MB"] = static_cast<double>(bytes) / 1e6;
}
BENCHMARK(XmlWrite_libxml2)->Name("XmlWrite100M/libxml2_writer")->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();

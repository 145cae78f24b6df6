// CXMLTextReader token by token beside the Xerces-C progressive scan it stands on, with handlers
// that do nothing (the floor), and beside libxml2's xmlTextReader. All read the same document
// from memory: records with attributes, two namespaces, text, references and CDATA.
//
// A fourth side, "fixed_costs", is the floor plus what the reader must pay per token whatever its
// care: the token object and its count block, the text copied into it, the attribute list of a
// start element, the XMLBuffer of an element callback. The reader's distance to it is all the rest.
#include <benchmark/benchmark.h>

#include <string>
#include <type_traits>

#include <libxml/xmlreader.h>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/framework/XMLBuffer.hpp>
#include <xercesc/framework/XMLDocumentHandler.hpp>
#include <xercesc/framework/XMLErrorReporter.hpp>
#include <xercesc/framework/XMLPScanToken.hpp>
#include <xercesc/internal/WFXMLScanner.hpp>
#include <xercesc/validators/DTD/DTDValidator.hpp>
#include <xercesc/validators/common/GrammarResolver.hpp>

#include <vorn/io/MemoryInputStream.h>
#include <vorn/io/XMLTextReader.h>

#include "vorn/io/XMLTokens.h"

namespace {

// About `bytes` of records; each record makes 46 tokens, the white space between tags included.
std::string Records(std::size_t bytes) {
    std::string doc = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                      "<catalog xmlns=\"urn:vorn:catalog\" xmlns:m=\"urn:vorn:meta\">\n";
    for (unsigned int i = 1; doc.size() < bytes; ++i) {
        const std::string n = std::to_string(i);
        doc += "  <record id=\"" + n +
               "\" m:kind=\"book\" status=\"active\">\n"
               "    <title>Title number " +
               n +
               " &amp; a subtitle</title>\n"
               "    <price currency=\"EUR\">" +
               std::to_string(i % 997) +
               ".50</price>\n"
               "    <m:tags><m:tag>alpha</m:tag><m:tag>beta</m:tag></m:tags>\n"
               "    <note><![CDATA[Some <raw> text & more]]></note>\n"
               "    <count>" +
               n +
               "</count>\n"
               "  </record>\n";
    }
    return doc + "</catalog>\n";
}

const std::string& Document(std::size_t megabytes) {
    static const std::string small = Records(1u << 20);
    static std::string large;
    if (megabytes == 1)
        return small;
    if (large.empty())
        large = Records(std::size_t{100} << 20);
    return large;
}

void Vorn(benchmark::State& state, std::size_t megabytes) {
    const std::string& doc = Document(megabytes);
    for (auto _ : state) {
        vorn::io::CMemoryInputStream stream(doc.data(), static_cast<unsigned int>(doc.size()),
                                            false);
        vorn::io::CXMLTextReader reader(&stream);
        unsigned long tokens = 0;
        while (reader.ReadToken())
            tokens += reader.GetCurrentToken()->GetType();
        benchmark::DoNotOptimize(tokens);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * doc.size()));
}

// ---- The floor: the same scanner, set up as the tokenizer sets it up, with empty handlers.

class CNullHandlers : public xercesc::XMLDocumentHandler, public xercesc::XMLErrorReporter {
public:
    void docCharacters(const XMLCh*, XMLSize_t, bool) override {}
    void docComment(const XMLCh*) override {}
    void docPI(const XMLCh*, const XMLCh*) override {}
    void endDocument() override {}
    void endElement(const xercesc::XMLElementDecl&, unsigned int, bool, const XMLCh*) override {}
    void endEntityReference(const xercesc::XMLEntityDecl&) override {}
    void ignorableWhitespace(const XMLCh*, XMLSize_t, bool) override {}
    void resetDocument() override {}
    void startDocument() override {}
    void startElement(const xercesc::XMLElementDecl&, unsigned int, const XMLCh*,
                      const xercesc::RefVectorOf<xercesc::XMLAttr>&, XMLSize_t, bool,
                      bool) override {}
    void startEntityReference(const xercesc::XMLEntityDecl&) override {}
    void XMLDecl(const XMLCh*, const XMLCh*, const XMLCh*, const XMLCh*) override {}
    void error(unsigned int, const XMLCh*, ErrTypes, const XMLCh*, const XMLCh*, const XMLCh*,
               XMLFileLoc, XMLFileLoc) override {
        throw 1;
    }
    void resetErrors() override {}
};

// Makes each token as the tokenizer does and drops it at once.
class CFixedCosts : public CNullHandlers {
public:
    xercesc::XMLScanner* scanner = nullptr;

    void docCharacters(const XMLCh* chars, XMLSize_t, bool cdata) override {
        using namespace vorn::io;
        if (cdata)
            Make(new CXMLCDATAToken(U(chars)));
        else
            Make(new CXMLTextToken(U(chars)));
    }
    void docComment(const XMLCh* text) override { Make(new vorn::io::CXMLCommentToken(U(text))); }
    void docPI(const XMLCh* target, const XMLCh* data) override {
        Make(new vorn::io::CXMLPIToken(U(target), U(data)));
    }
    void startElement(const xercesc::XMLElementDecl& decl, unsigned int uri, const XMLCh*,
                      const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes, XMLSize_t count,
                      bool empty, bool) override {
        xercesc::XMLBuffer buffer(1023);
        scanner->getURIText(uri, buffer);
        const xercesc::QName& name = *decl.getElementName();
        auto* start = new vorn::io::CXMLStartElementToken(
            U(buffer.getRawBuffer()), U(name.getLocalPart()), U(name.getRawName()));
        vorn::base::CRef<vorn::io::IXMLToken> held = vorn::io::HoldToken(start);
        for (XMLSize_t i = 0; i < count; ++i) {
            const xercesc::XMLAttr* a = attributes.elementAt(i);
            scanner->getURIText(a->getURIId(), buffer);
            start->AddAttribute(U(buffer.getRawBuffer()), U(a->getName()), U(a->getQName()),
                                U(a->getValue()));
        }
        if (empty)
            Make(new vorn::io::CXMLEndElementToken(U(buffer.getRawBuffer()), U(name.getLocalPart()),
                                                   U(name.getRawName())));
    }
    void endElement(const xercesc::XMLElementDecl& decl, unsigned int uri, bool,
                    const XMLCh*) override {
        xercesc::XMLBuffer buffer(1023);
        scanner->getURIText(uri, buffer);
        const xercesc::QName& name = *decl.getElementName();
        Make(new vorn::io::CXMLEndElementToken(U(buffer.getRawBuffer()), U(name.getLocalPart()),
                                               U(name.getRawName())));
    }

private:
    static const unsigned short* U(const XMLCh* text) {
        return reinterpret_cast<const unsigned short*>(text);
    }
    static void Make(vorn::io::IXMLToken* token) {
        vorn::base::CRef<vorn::io::IXMLToken> held = vorn::io::HoldToken(token);
        benchmark::DoNotOptimize(held.GetPointer());
    }
};

template <typename Handlers> void Scan(benchmark::State& state, std::size_t megabytes) {
    using namespace xercesc;
    const std::string& doc = Document(megabytes);
    Handlers handlers;
    for (auto _ : state) {
        DTDValidator validator(nullptr);
        GrammarResolver resolver(nullptr, XMLPlatformUtils::fgMemoryManager);
        // The scanner doesn't delete the validator it is given.
        WFXMLScanner scanner(&handlers, nullptr, nullptr, &handlers, &validator, &resolver);
        if constexpr (std::is_same_v<Handlers, CFixedCosts>)
            handlers.scanner = &scanner;
        scanner.setDoNamespaces(true);
        scanner.setURIStringPool(resolver.getStringPool());
        MemBufInputSource source(reinterpret_cast<const XMLByte*>(doc.data()), doc.size(), "doc");
        XMLPScanToken token;
        unsigned long steps = 0;
        for (bool more = scanner.scanFirst(source, token); more; more = scanner.scanNext(token))
            ++steps;
        benchmark::DoNotOptimize(steps);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * doc.size()));
}

void Floor(benchmark::State& state, std::size_t megabytes) {
    Scan<CNullHandlers>(state, megabytes);
}

void FixedCosts(benchmark::State& state, std::size_t megabytes) {
    Scan<CFixedCosts>(state, megabytes);
}

void LibXml2(benchmark::State& state, std::size_t megabytes) {
    const std::string& doc = Document(megabytes);
    for (auto _ : state) {
        xmlTextReaderPtr reader = xmlReaderForMemory(doc.data(), static_cast<int>(doc.size()),
                                                     nullptr, nullptr, XML_PARSE_NONET);
        unsigned long tokens = 0;
        while (xmlTextReaderRead(reader) == 1)
            tokens += static_cast<unsigned long>(xmlTextReaderNodeType(reader));
        xmlFreeTextReader(reader);
        benchmark::DoNotOptimize(tokens);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * doc.size()));
}

BENCHMARK_CAPTURE(Vorn, 1, 1)->Name("XmlRead1M/vorn")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Floor, 1, 1)->Name("XmlRead1M/xerces_scan")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(LibXml2, 1, 1)->Name("XmlRead1M/libxml2")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(FixedCosts, 1, 1)->Name("XmlRead1M/fixed_costs")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Vorn, 100, 100)->Name("XmlRead100M/vorn")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Floor, 100, 100)->Name("XmlRead100M/xerces_scan")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(LibXml2, 100, 100)->Name("XmlRead100M/libxml2")->Unit(benchmark::kMillisecond);

} // namespace
BENCHMARK_MAIN();

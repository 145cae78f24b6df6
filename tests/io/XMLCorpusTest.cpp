// Every document of tests/io/xml-corpus through CXMLTextReader: the well-formed ones (wf/) and
// those the scanner accepts though it doesn't check them (unchecked/) read to the end; every
// not-well-formed one (nwf/), and every cut of a small document, fails with the scanner's
// CXMLException or the tokenizer's own words, and nothing else.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include <vorn/io/XMLException.h>
#include <vorn/io/XMLTextReader.h>

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

} // namespace

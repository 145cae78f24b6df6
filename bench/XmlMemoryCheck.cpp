// Reads a document of 1 GB (or the size in MB given as the argument) that a stream makes on the
// fly, through CXMLTextReader with typed reads, and checks that memory stays flat: it prints the
// throughput and the peak resident size, and fails above 64 MB or on any value read wrong.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>

#include <vorn/vorn.h>

using vorn::base::CUnicodeString;
using vorn::io::CXMLTextReader;

namespace {

// The document, one record at a time: nothing of it is kept but the record being handed out.
// Like the memory streams it answers -1 at its end.
class CRecordStream : public vorn::io::CInputStream {
public:
    explicit CRecordStream(unsigned long long bytes) : m_target(bytes) {
        m_chunk = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                  "<catalog xmlns=\"urn:vorn:catalog\" xmlns:m=\"urn:vorn:meta\">\n";
    }

    unsigned int GetAvailable() const override { return 0; }
    int Read(char* buffer, unsigned int offset, unsigned int count) override {
        unsigned int done = 0;
        while (done < count) {
            if (m_at == m_chunk.size() && !Refill())
                break;
            const std::size_t n = std::min<std::size_t>(count - done, m_chunk.size() - m_at);
            std::memcpy(buffer + offset + done, m_chunk.data() + m_at, n);
            m_at += n;
            done += static_cast<unsigned int>(n);
        }
        m_made += done;
        return done == 0 && count != 0 ? -1 : static_cast<int>(done);
    }
    void Reset() override {}
    void Close() override {}

    unsigned long long Records() const { return m_records; }
    unsigned long long Bytes() const { return m_made; }

private:
    bool Refill() {
        if (m_ended)
            return false;
        m_at = 0;
        if (m_made >= m_target) {
            m_chunk = "</catalog>\n";
            m_ended = true;
            return true;
        }
        const std::string n = std::to_string(++m_records);
        m_chunk = "  <record id=\"" + n +
                  "\" m:kind=\"book\">\n"
                  "    <title>Title " +
                  n +
                  " &amp; more</title>\n"
                  "    <price currency=\"EUR\">" +
                  std::to_string(m_records % 1000) +
                  ".25</price>\n"
                  "    <m:tags><m:tag>alpha</m:tag><m:tag>beta</m:tag></m:tags>\n"
                  "    <note><![CDATA[<raw> " +
                  n +
                  "]]></note>\n"
                  "    <count>" +
                  n +
                  "</count>\n"
                  "  </record>\n";
        return true;
    }

    unsigned long long m_target;
    unsigned long long m_made = 0;
    unsigned long long m_records = 0;
    std::string m_chunk;
    std::size_t m_at = 0;
    bool m_ended = false;
};

// UTF-16 names for the reader.
struct Name {
    explicit Name(const char* text) : value(text) {}
    operator const unsigned short*() const { return value; }
    CUnicodeString value;
};

long PeakResidentKB() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.rfind("VmHWM:", 0) == 0)
            return std::strtol(line.c_str() + 6, nullptr, 10);
    return -1;
}

bool Fail(const char* what, unsigned long long record) {
    std::fprintf(stderr, "xml-memory-check: %s at record %llu\n", what, record);
    return false;
}

bool ReadAll(CRecordStream& stream) {
    const Name catalog("urn:vorn:catalog"), meta("urn:vorn:meta"), id("id"), kind("kind"),
        title("title"), price("price"), tags("tags"), tag("tag"), note("note"), count("count"),
        record("record");
    CXMLTextReader reader(&stream);
    reader.ReadStartElement(Name("catalog"), catalog);
    for (unsigned long long n = 1;; ++n) {
        // White space, then the next record or the end of the catalog.
        while (reader.ReadToken() && reader.GetCurrentTokenType() == vorn::io::XMLTokenText) {
        }
        if (reader.GetCurrentTokenType() == vorn::io::XMLTokenEndElement)
            return n - 1 == stream.Records() || Fail("records lost", n);
        if (reader.ReadAttrLong(id) != static_cast<int>(n) ||
            !(reader.ReadAttribute(meta, kind) == "book"))
            return Fail("bad attribute", n);
        const std::string number = std::to_string(n);
        if (!(reader.ReadElementString(title, catalog) == ("Title " + number + " & more").c_str()))
            return Fail("bad title", n);
        if (reader.ReadElementDouble(price, catalog) != static_cast<double>(n % 1000) + 0.25)
            return Fail("bad price", n);
        reader.ReadStartElement(tags, meta);
        if (!(reader.ReadElementString(tag, meta) == "alpha") ||
            !(reader.ReadElementString(tag, meta) == "beta"))
            return Fail("bad tag", n);
        reader.ReadEndElement(tags, meta);
        if (!(reader.ReadElementString(note, catalog) == ("<raw> " + number).c_str()))
            return Fail("bad note", n);
        if (reader.ReadElementInt64(count, catalog) != static_cast<long long>(n))
            return Fail("bad count", n);
        reader.ReadEndElement(record, catalog);
    }
}

} // namespace

int main(int argc, char** argv) {
    const unsigned long long megabytes = argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 1024;
    CRecordStream stream(megabytes << 20);
    const auto start = std::chrono::steady_clock::now();
    bool ok;
    try {
        ok = ReadAll(stream);
    } catch (const vorn::base::CException& e) {
        std::fprintf(stderr, "xml-memory-check: %s: %s %s\n", e.GetClass()->GetName(),
                     e.GetErrorDescription() ? e.GetErrorDescription() : "",
                     e.GetMessage() ? e.GetMessage() : "");
        ok = false;
    }
    const double seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    const long peakKB = PeakResidentKB();
    std::printf("read %.1f MB, %llu records, in %.1f s: %.1f MB/s; peak resident %.1f MB\n",
                static_cast<double>(stream.Bytes()) / (1 << 20), stream.Records(), seconds,
                static_cast<double>(stream.Bytes()) / (1 << 20) / seconds, peakKB / 1024.0);
    if (peakKB < 0 || peakKB > 64 * 1024) {
        std::fprintf(stderr, "xml-memory-check: peak resident size above 64 MB\n");
        ok = false;
    }
    return ok ? 0 : 1;
}

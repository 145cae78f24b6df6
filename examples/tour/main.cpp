// A tour of the library: each section exercises one subsystem and says what it did.
#include "Tour.h"

#include <vorn/vorn.h>

#include <cstdio>
#include <cstring>

using namespace vorn::base;

void tour::Section(const char* title) {
    std::printf("\n== %s ==\n", title);
}

namespace {

using tour::Section;

void ClassRecords() {
    Section("Class records");
    const char* names[] = {"vorn::base::CObject", "vorn::io::CIOException",
                           "vorn::util::CNoSuchElementException", "CObject"};
    const CClass* exception = CClass::FindClass("vorn::base::CException");
    const CClass* memory = CClass::FindClass("vorn::base::CMemoryException");
    for (const char* name : names) {
        const CClass* cls = CClass::FindClass(name);
        if (cls == nullptr) {
            std::printf("%-38s not found (names are looked up in full)\n", name);
            continue;
        }
        std::printf("%-38s short name %-24s size %2u  exception: %-5s memory: %s\n", name,
                    cls->GetName(), cls->GetSize(), cls->IsInstanceOf(exception) ? "yes" : "no",
                    cls->IsInstanceOf(memory) ? "yes" : "no");
    }
}

void Exceptions() {
    Section("Exceptions");
    try {
        throw vorn::io::CIOException("examples/tour", __LINE__, "Stream closed.", "while reading");
    } catch (const CException& e) {
        std::printf("caught %s\n  from %s(%u)\n  description: %s\n  message: %s\n",
                    e.GetClass()->GetQualifiedName(), e.GetSourceFile(), e.GetSourceLine(),
                    e.GetErrorDescription(), e.GetMessage());
    }
    vorn::base::win::CWinSystemErrorException system("examples/tour", __LINE__, "Failed to open.",
                                                     2);
    std::printf("system error %lu reads \"%s\"\n", system.GetErrorCode(), system.GetMessage());
}

// A named value that knows how to compare and copy itself.
class CCity : public CObject {
public:
    CCity(const char* name, int population) : m_name(name), m_population(population) {}
    bool Equals(const CObject* other) const override {
        auto* city = dynamic_cast<const CCity*>(other);
        return city != nullptr && std::strcmp(city->m_name, m_name) == 0;
    }
    CObject* Clone() const override { return new CCity(m_name, m_population); }
    const char* m_name;
    int m_population;
};

class CByLength : public vorn::util::IComparator {
public:
    int Compare(const void* a, const void* b) const override {
        ++comparisons;
        return static_cast<int>(std::strlen(*static_cast<const char* const*>(a))) -
               static_cast<int>(std::strlen(*static_cast<const char* const*>(b)));
    }
    mutable int comparisons = 0;
};

void Collections() {
    Section("Collections");
    vorn::util::CObjectVector cities;
    std::printf("new vector: capacity %u\n", cities.GetCapacity());
    const char* names[] = {"Lyon",  "Graz",  "Porto", "Turku", "Split", "Bergen",
                           "Ghent", "Malmo", "Cork",  "Brno",  "Riga"};
    for (int i = 0; i < 11; ++i)
        cities.AddElement(new CCity(names[i], 100 + i));
    std::printf("11 cities: capacity %u\n", cities.GetCapacity());
    CCity probe("Cork", 0);
    std::printf("Cork is at %d (found by Equals)\n", cities.GetIndexOf(&probe));
    cities.RemoveElement(&probe);
    std::printf("after removing it: size %u, capacity %u (memory given back)\n", cities.GetSize(),
                cities.GetCapacity());
    CObject* kept = cities.GetFirstElement();
    cities.DetachElementAt(0);
    std::printf("detached %s, still alive and ours to delete\n", static_cast<CCity*>(kept)->m_name);
    delete kept;

    vorn::util::CStack<int> stack;
    vorn::util::CQueue<int> queue;
    for (int i = 1; i <= 3; ++i) {
        stack.Push(i);
        queue.Enqueue(i);
    }
    std::printf("stack pops");
    while (!stack.IsEmpty())
        std::printf(" %d", stack.Pop());
    std::printf("; queue gives");
    while (!queue.IsEmpty())
        std::printf(" %d", queue.Dequeue());
    std::printf("\n");
    try {
        queue.Dequeue();
    } catch (const vorn::util::CEmptyQueueException& e) {
        std::printf("an empty queue says %s from %s\n", e.GetClass()->GetName(), e.GetSourceFile());
    }

    CByLength byLength;
    vorn::util::qsort(names, 11, sizeof(const char*), byLength);
    std::printf("names by length (%d comparisons):", byLength.comparisons);
    for (const char* name : names)
        std::printf(" %s", name);
    std::printf("\n");
}

void Strings() {
    Section("Strings");
    CString greeting("Gr\xc3\xbc\xc3\x9f Gott, Welt");
    CString copy(greeting);
    std::printf("\"%s\": %u bytes; its copy shares the buffer: %s\n",
                static_cast<const char*>(greeting), greeting.GetLength(),
                static_cast<const char*>(copy) == static_cast<const char*>(greeting) ? "yes"
                                                                                     : "no");
    copy.MakeUpper();
    std::printf("copy.MakeUpper() -> \"%s\" (\xc3\x9f has no one-letter capital and stays); "
                "the original keeps \"%s\"\n",
                static_cast<const char*>(copy), static_cast<const char*>(greeting));
    std::printf("Find(\"Gott\") -> %d, FindIgnoreCase(\"WELT\") -> %d, Find(',') -> %d\n",
                greeting.Find("Gott"), greeting.FindIgnoreCase("WELT"), greeting.Find(','));
    std::printf("CompareIgnoreCase(copy) -> %d, Compare(copy) -> %d\n",
                greeting.CompareIgnoreCase(copy), greeting.Compare(copy));
    CString reversed("a\xc3\xa9\xe2\x82\xac");
    reversed.MakeReverse();
    std::printf("\"a\xc3\xa9\xe2\x82\xac\" reversed by characters -> \"%s\"\n",
                static_cast<const char*>(reversed));
    CString padded("  both ends  ");
    padded.TrimLeft();
    padded.TrimRight();
    std::printf("trimmed -> \"%s\"; \"abcde\".Right(2) -> \"%s\" (one byte early)\n",
                static_cast<const char*>(padded),
                static_cast<const char*>(CString("abcde").Right(2)));
    CString list("one, two, one");
    unsigned int replaced = list.Replace("one", "three");
    std::printf("Replace(\"one\", \"three\") -> %u times: \"%s\"\n", replaced,
                static_cast<const char*>(list));
    CString formatted;
    formatted.Format("%s has %d items, %u of them long", "list", 3, 2u);
    std::printf("Format -> \"%s\"\n", static_cast<const char*>(formatted));
    const unsigned short wide[] = {'w', 0x00EB, 0xD83D, 0xDE00, 0};
    CString fromWide(wide);
    std::printf("from UTF-16 -> \"%s\" (%u bytes)\n", static_cast<const char*>(fromWide),
                fromWide.GetLength());
    std::printf("CString() == \"\" -> %s, CString() == CString(\"\") -> %s\n",
                CString() == "" ? "true" : "false", CString() == CString("") ? "true" : "false");
}

void UnicodeStrings() {
    Section("Unicode strings");
    const char* utf8 = "Stra\xc3\x9f"
                       "e \xe2\x86\x92 \xf0\x9f\x9a\xb2";
    CUnicodeString text;
    text.FromUTF8(utf8, -1);
    std::printf("FromUTF8(\"%s\") -> %u UTF-16 units:", utf8, text.GetLength());
    for (unsigned int i = 0; i < text.GetLength(); ++i)
        std::printf(" %04X", text[i]);
    std::printf("\n");
    CUnicodeString upper(text);
    upper.MakeUpper();
    std::printf("MakeUpper on a copy -> \"%s\" (unit by unit: \xc3\x9f has no one-unit capital)\n",
                static_cast<const char*>(upper.ToUTF8()));
    std::printf("ToUTF8(nullptr, -1) -> %d bytes needed; ToUTF8() -> \"%s\" (the pair of the "
                "bicycle becomes one '?')\n",
                text.ToUTF8(nullptr, -1), static_cast<const char*>(text.ToUTF8()));
    CUnicodeString trimmed("xaxx");
    trimmed.TrimRight('x');
    std::printf("\"xaxx\".TrimRight('x') -> \"%s\" (the narrow class strips the left end)\n",
                static_cast<const char*>(trimmed.ToUTF8()));
    std::printf("CUnicodeString() == \"\" -> %s, Compare(\"\") -> %d\n",
                CUnicodeString() == "" ? "true" : "false", CUnicodeString().Compare(""));
    vorn::base::CStringBuffer builder(16);
    for (int i = 0; i < 5; ++i) {
        builder += "item ";
        builder += static_cast<char>('1' + i);
        builder += ' ';
    }
    builder += text;
    std::printf("CStringBuffer built \"%s\" (its conversion keeps the pair whole), %u bytes in a "
                "block of %u\n",
                static_cast<const char*>(builder), builder.GetSize(), builder.GetCapacity());
}

// A client class that the registry can create from its name.
class CGreeter : public CObject {
    VORN_DECLARE_CLASS(CGreeter)

public:
    const char* Greeting() const { return "hello from a class made by name"; }
};
VORN_DEFINE_CLASS(CGreeter, "tour::CGreeter", "vorn::base::CObject", nullptr, nullptr,
                  VORN_CLASS_FACTORY(CGreeter))

void CreationByName() {
    Section("Creation by name");
    IClassManager& manager = CClassManager::GetInstance();
    CObject* object = manager.CreateInstanceByName("tour::CGreeter");
    std::printf("CreateInstanceByName(\"tour::CGreeter\") -> a %s: \"%s\"\n",
                object->GetClass()->GetQualifiedName(), static_cast<CGreeter*>(object)->Greeting());
    delete object;
    try {
        manager.CreateInstanceByName("CGreeter");
    } catch (const CClassNotFoundException& e) {
        std::printf("CreateInstanceByName(\"CGreeter\") -> %s \"%s\" for \"%s\"\n",
                    e.GetClass()->GetName(), e.GetErrorDescription(),
                    static_cast<const char*>(e.GetClassName()));
    }
    try {
        CException::m_classCException.CreateNewInstance();
    } catch (const CInstantiationException& e) {
        std::printf("a library class has no factory -> %s \"%s\"\n", e.GetClass()->GetName(),
                    e.GetErrorDescription());
    }
}

void Locks() {
    Section("Locks");
    CLock lock;
    lock.Acquire();
    std::printf("CLock taken again by its owner: %s\n", lock.TryAcquire(1000) ? "yes" : "no");
    lock.Release();
    lock.Release();
    CSpinLock spin;
    bool first = spin.TryAcquire(0);
    bool second = spin.TryAcquire(0);
    spin.Release();
    std::printf("CSpinLock: first try %s, second try %s (no recursion)\n", first ? "yes" : "no",
                second ? "yes" : "no");
    CLazyLock lazy;
    try {
        lazy.Acquire();
    } catch (const CSynchronizationException& e) {
        std::printf("CLazyLock never makes its section: \"%s\"\n", e.GetErrorDescription());
    }
}

void HashTablesAndMaps() {
    Section("Hash tables and maps");
    vorn::util::CStringSet fruit;
    for (const char* name : {"apple", "pear", "plum", "apple"})
        fruit.Put(name);
    std::printf("set of 4 puts (one twice): size %u, %u buckets\n", fruit.GetSize(),
                fruit.GetCapacity());
    vorn::util::CStringSet stone;
    stone.Put("plum");
    stone.Put("cherry");
    vorn::util::CStringSet both = fruit;
    both *= stone;
    vorn::util::CStringSet all = fruit;
    all += stone;
    std::printf("intersection:");
    for (auto e = both.GetElements(); e->HasMoreElements();)
        std::printf(" %s", static_cast<const char*>(e->GetNextElement()));
    std::printf("; union has %u; intersection is a subset: %s\n", all.GetSize(),
                both.IsSubSetOf(fruit) ? "yes" : "no");
    try {
        fruit.Contains("");
    } catch (const CIllegalArgumentException& e) {
        std::printf("Contains(\"\") -> \"%s\"\n", e.GetErrorDescription());
    }

    vorn::util::CStringSet grown(0, 0.75f);
    std::printf("CStringSet(0, 0.75) starts with %u buckets", grown.GetCapacity());
    for (int i = 0; i < 9; ++i) {
        CString name;
        name.Format("item%d", i);
        grown.Put(name);
    }
    std::printf(", and the ninth put grows it to %u\n", grown.GetCapacity());

    vorn::util::CStringMap headers(false);
    headers.Put("Content-Type", "text/xml");
    headers.Put("Host", "example.org");
    headers.Put("CONTENT-TYPE", "application/xml");
    std::printf("map ignoring case, %u entries in insertion order:", headers.GetSize());
    auto keys = headers.GetKeyIterator();
    auto values = headers.GetValueIterator();
    while (keys.HasMoreElements()) {
        const char* key = keys.GetNextElement();
        std::printf(" %s=%s", key, static_cast<const char*>(values.GetNextElement()));
    }
    vorn::util::CStringMap host;
    host.Put("host", "example.org");
    vorn::util::CStringMap other(false);
    other.Put("host", "example.org");
    // Equality is one-way: only the driving map's keys are sought, sizes don't count.
    std::printf("\n{host} == headers: %s; headers == {host}: %s (the case-sensitive map drives); "
                "headers == {host} ignoring case: %s\n",
                host == headers ? "true" : "false", headers == host ? "true" : "false",
                headers == other ? "true" : "false");
}

void Streams() {
    Section("Streams");
    vorn::io::CMemoryOutputStream bytes(0, 16);
    vorn::io::CPrintStream print(&bytes, false);
    print.Print("n=");
    print.Print(-42);
    print.Print(" x=");
    print.Print(0.25);
    print.Print(' ');
    print.Println(true);
    bytes.Write('\xFF');
    print.Close(); // closes the memory stream too; its bytes stay
    std::printf("printed %u bytes:", bytes.GetBufferSize());
    for (unsigned int i = 0; i < bytes.GetBufferSize(); ++i)
        std::printf(" %02X", static_cast<unsigned char>(bytes.GetBuffer()[i]));
    std::printf("\n");

    vorn::io::CMemoryInputStream in(bytes.GetBuffer(), bytes.GetBufferSize(), false);
    char head[3] = {};
    in.Read(head, 2);
    int skipped = in.Skip(16);
    std::printf("read \"%s\", skipped %d, %u left\n", head, skipped, in.GetAvailable());
    int last = in.Read();
    int end = in.Read();
    std::printf("then Read() gives %d (0xFF, sign-extended) and %d (EOS)\n", last, end);

    in.Close();
    try {
        in.Read();
    } catch (const CException& e) {
        std::printf("reading a closed stream: printed to CSystem::debugOut (standard error):\n");
        std::fflush(stdout); // the debug output has its own channel; keep the two in order
        e.Print(CSystem::debugOut);
    }
}

// A small record that writes and reads itself in the binary data format.
struct CStation : vorn::io::ISerializable {
    int id = 0;
    short altitude = 0;
    bool staffed = false;
    double temperature = 0;
    CUnicodeString name;
    void Read(vorn::io::CDataInputStream& in) override {
        in >> id >> altitude >> staffed >> temperature >> name;
    }
    void Write(vorn::io::CDataOutputStream& out) const override {
        out << id << altitude << staffed << temperature << name;
    }
};

void BinaryDataAndRegularExpressions() {
    Section("Binary data, data streams and regular expressions");
    CStation station;
    station.id = 4711;
    station.altitude = -12;
    station.staffed = true;
    station.temperature = 21.5;
    station.name = CUnicodeString("S\xc3\xa4ntis");
    vorn::io::CMemoryOutputStream bytes;
    vorn::io::CDataOutputStream out(&bytes);
    out << station;
    CBinaryData record(bytes.GetBuffer(), bytes.GetBufferSize());
    std::printf("the record in %u bytes (integers big-endian, the double as it lies in memory)\n",
                record.GetDataLength());
    std::printf("binhex: %s\n", static_cast<const char*>(record.ToBinHexString()));
    const CString base64 = CBinaryData::ToBase64String(record.GetData(), record.GetDataLength());
    std::printf("base64: %s\n", static_cast<const char*>(base64));

    char* decoded = nullptr;
    unsigned int groups = 0;
    CBinaryData::ParseBase64String(base64, decoded, groups);
    std::printf("ParseBase64String reports %u, one per group of four characters; the block holds "
                "all %u bytes\n",
                groups, record.GetDataLength());
    vorn::io::CMemoryInputStream in(decoded, record.GetDataLength(), true);
    vorn::io::CDataInputStream reader(&in);
    CStation back;
    reader >> back;
    std::printf("read back: id %d, altitude %d, staffed %s, %.1f degrees, \"%s\"\n", back.id,
                back.altitude, back.staffed ? "yes" : "no", back.temperature,
                static_cast<const char*>(back.name.ToUTF8()));
    try {
        CBinaryData().FromBinHexString("0aff");
    } catch (const CNumberFormatException& e) {
        std::printf("binhex \"0aff\" -> %s (small letters are no digits)\n",
                    e.GetErrorDescription());
    }

    using vorn::util::regex::CRegEx;
    using vorn::util::regex::CRegExMatch;
    const char* text = "Zo\xc3\xab's ticket VRN-2024-0815 is open"; // positions count bytes
    CRegEx ticket("([A-Z]+)-([0-9]{4})-([0-9]+)");
    CRegExMatch match;
    if (ticket.Matches(text, match)) {
        std::printf("\"%s\" matches with %u groups:\n", text, match.GetGroupCount());
        for (unsigned int g = 0; g < match.GetGroupCount(); ++g) {
            const unsigned int start = match.GetStartPosOfGroup(g);
            const unsigned int end = match.GetEndPosOfGroup(g);
            std::printf("  group %u [%u, %u) \"%.*s\"\n", g, start, end,
                        static_cast<int>(end - start), text + start);
        }
    }
    std::printf("\"OPEN\" with option i in [21, 28): %s\n",
                CRegEx("open", "i").Matches("ticket VRN-2024-0815 is OPEN", 21, 28) ? "yes" : "no");
    try {
        CRegEx broken("([A-Z]+");
    } catch (const vorn::util::regex::CRegExParseException& e) {
        std::printf("a broken pattern: %s\n", e.GetMessage());
    }
}

void Encoding() {
    Section("Encoding");
    vorn::io::CMemoryOutputStream bytes;
    vorn::io::COutputStreamWriter writer(&bytes, "UTF-8", true);
    const unsigned short text[] = {'G', 'r', 0xFC, 0xDF, 'e', ' ', 0x20AC, ' ', 0xD83D, 0};
    const unsigned short pair[] = {0xD83D, 0xDE00};
    writer.Write(text);       // the high half at its end waits for the next call
    writer.Write(pair, 1, 1); // and makes four bytes with this low half
    writer.Write(static_cast<unsigned short>(' '));
    writer.Write(pair, 0, 2); // a pair inside one call becomes '?'
    std::printf("before Close the stream holds %u bytes (only the byte order mark)\n",
                bytes.GetBufferSize());
    writer.Close();
    std::printf("after Close:");
    for (unsigned int i = 0; i < bytes.GetBufferSize(); ++i)
        std::printf(" %02X", static_cast<unsigned char>(bytes.GetBuffer()[i]));
    std::printf("\n");

    using vorn::io::CWCharToCharConverter;
    std::printf("GetConverter(CString(\"UTF-8\")) -> a converter for %s\n",
                static_cast<const char*>(
                    CWCharToCharConverter::GetConverter(CString("UTF-8"))->GetEncoding()));
    try {
        CWCharToCharConverter::GetConverter("UTF-8");
    } catch (const CIllegalArgumentException& e) {
        std::printf("GetConverter(\"UTF-8\") as char text -> \"%s\" (that form refuses every "
                    "name)\n",
                    e.GetErrorDescription());
    }
    try {
        vorn::io::COutputStreamWriter lower(&bytes, "utf-8", false);
    } catch (const vorn::io::CUnsupportedEncodingException& e) {
        std::printf("a writer for \"%s\" -> %s (names are case-sensitive)\n",
                    static_cast<const char*>(e.GetEncoding()), e.GetClass()->GetName());
    }
}

} // namespace

int main() {
    std::printf("vorn::Initialize() -> %d\n", vorn::Initialize());
    std::printf("vorn::Initialize() -> %d (nested)\n", vorn::Initialize());
    ClassRecords();
    Exceptions();
    Collections();
    Strings();
    UnicodeStrings();
    CreationByName();
    Locks();
    HashTablesAndMaps();
    Streams();
    Encoding();
    BinaryDataAndRegularExpressions();
    tour::Threads();
    tour::Sockets();
    tour::Files();
    tour::XmlReading();
    tour::XmlWriting();
    tour::Tokenizers();
    tour::UntrustedInput();
    tour::XmlDom();
    tour::XmlDomWriting();
    std::printf("\nvorn::Terminate() -> %d\n", vorn::Terminate());
    std::printf("vorn::Terminate() -> %d\n", vorn::Terminate());
    return 0;
}

// CXMLTextReader reading arbitrary bytes to the end. On every token it makes each typed read and
// checks them against each other, decodes binhex and base64 (freeing the block on every path),
// and on a start element reads every attribute by both kinds of name; now and then it gathers
// element text instead of stepping. Only the documented exceptions may come out.
#include <vorn/base/BinaryData.h>
#include <vorn/base/String.h>
#include <vorn/base/UnicodeString.h>
#include <vorn/io/IOException.h>
#include <vorn/io/MemoryInputStream.h>
#include <vorn/io/XMLException.h>
#include <vorn/io/XMLTextReader.h>

#include <functional>
#include <memory>

#include "Fuzz.h"
#include "platform/Memory.h"
#include "vorn/io/XMLAttributeList.h"
#include "vorn/io/XMLTokens.h"

using vorn::base::CBinaryData;
using vorn::base::CException;
using vorn::base::CString;
using vorn::base::CUnicodeString;
using namespace vorn::io;

namespace {

using vorn::fuzz::Says;

const unsigned short* W(const char16_t* text) {
    return reinterpret_cast<const unsigned short*>(text);
}

// Runs a typed read; true with its value, or false after checking the words of its refusal.
template <typename T> bool Typed(std::function<T()> read, const char* badLiteral, T& value) {
    try {
        value = read();
        return true;
    } catch (const CXMLException& e) {
        FUZZ_CHECK(Says(e, badLiteral));
        return false;
    }
}

// The typed reads of one text agree with each other.
void CheckNumbers(std::function<CUnicodeString()> text, const std::function<short()>& s,
                  const std::function<int()>& l, const std::function<double()>& d,
                  const std::function<bool()>& b, bool trimmed) {
    CUnicodeString t = text();
    if (trimmed) {
        t.TrimLeft();
        t.TrimRight();
    }
    short sv = 0;
    int lv = 0;
    double dv = 0;
    bool bv = false;
    const bool sok = Typed(s, "Invalid short literal.", sv);
    const bool lok = Typed(l, "Invalid Int32 literal.", lv);
    const bool dok = Typed(d, "Invalid double literal.", dv);
    FUZZ_CHECK(!sok || (lok && lv == sv));
    FUZZ_CHECK(!lok || (dok && dv == lv));
    FUZZ_CHECK(Typed(b, "Invalid bool literal.", bv) == (t == W(u"true") || t == W(u"false")));
    FUZZ_CHECK(bv == (t == W(u"true")));
}

void CheckBinary(const CXMLReader& reader, const CUnicodeString& value) {
    CUnicodeString trimmed = value;
    trimmed.TrimLeft();
    trimmed.TrimRight();
    for (bool base64 : {false, true}) {
        char* data = nullptr;
        unsigned int size = 0;
        try {
            base64 ? reader.ReadBase64(data, size) : reader.ReadBinHex(data, size);
            if (!base64) {
                FUZZ_CHECK(size == trimmed.GetLength() / 2);
                if (size > 0)
                    FUZZ_CHECK(CBinaryData::ToBinHexUnicodeString(data, size) == trimmed);
            } else {
                FUZZ_CHECK(size == trimmed.GetLength() / 4);
            }
        } catch (const CIOException& e) {
            FUZZ_CHECK(Says(e, "Invalid binhex encoded string literal."));
        }
        ZK_free(data);
    }
}

void CheckAttributes(CXMLReader& reader) {
    const auto* start = dynamic_cast<const CXMLStartElementToken*>(&*reader.GetCurrentToken());
    FUZZ_CHECK(start != nullptr);
    const XMLAttributeList& list = start->GetAttributeList();
    for (unsigned int i = 0; i < list.GetSize(); ++i) {
        const XMLAttribute& a = list[i];
        FUZZ_CHECK(reader.HasAttribute(a.qualifiedName));
        FUZZ_CHECK(reader.ReadAttribute(a.qualifiedName) == a.value);
        const unsigned short* q = a.qualifiedName;
        CheckNumbers(
            [&] { return reader.ReadAttribute(q); }, [&] { return reader.ReadAttrShort(q); },
            [&] { return reader.ReadAttrLong(q); }, [&] { return reader.ReadAttrDouble(q); },
            [&] { return reader.ReadAttrBool(q); }, false);
        if (a.namespaceURI.IsEmpty() || a.localName.IsEmpty())
            continue;
        const unsigned short* ns = a.namespaceURI;
        const unsigned short* local = a.localName;
        FUZZ_CHECK(reader.HasAttribute(local, ns));
        FUZZ_CHECK(reader.ReadAttribute(ns, local) == a.value);
        unsigned int u1 = 0, u2 = 0;
        FUZZ_CHECK(Typed<unsigned int>([&] { return reader.ReadAttrUnsignedLong(ns, local); },
                                       "Invalid Int32 literal.", u1) ==
                   Typed<unsigned int>([&] { return reader.ReadAttrUnsignedLong(q); },
                                       "Invalid UInt32 literal.", u2));
        FUZZ_CHECK(u1 == u2);
    }
}

void Visit(CXMLReader& reader) {
    const XMLTokenType type = reader.GetCurrentTokenType();
    const CUnicodeString value = reader.GetCurrentTokenValue();
    FUZZ_CHECK(reader.ReadString() == value);
    CheckNumbers([&] { return reader.GetCurrentTokenValue(); }, [&] { return reader.ReadShort(); },
                 [&] { return reader.ReadLong(); }, [&] { return reader.ReadDouble(); },
                 [&] { return reader.ReadBool(); }, true);
    long long i64 = 0;
    unsigned long long u64 = 0;
    unsigned int u32 = 0;
    if (Typed<unsigned int>([&] { return reader.ReadUnsignedLong(); }, "Invalid Int32 literal.",
                            u32))
        FUZZ_CHECK(Typed<unsigned long long>([&] { return reader.ReadUInt64(); },
                                             "Invalid UInt64 literal.", u64) &&
                   u64 == u32);
    if (Typed<long long>([&] { return reader.ReadInt64(); }, "Invalid Int64 literal.", i64)) {
        float f = 0;
        FUZZ_CHECK(Typed<float>([&] { return reader.ReadFloat(); }, "Invalid float literal.", f));
    }
    CheckBinary(reader, value);
    if (type == 5) {
        CheckAttributes(reader);
    } else {
        try {
            reader.HasAttribute(W(u"a"));
            FUZZ_CHECK(!"an attribute outside a start element");
        } catch (const CXMLException& e) {
            FUZZ_CHECK(Says(e, "Attributes available only in start element nodes."));
        }
    }
}

// Steps token by token, gathering text instead at some steps, as the input decides.
void ReadAll(CXMLReader& reader, unsigned int seed) {
    for (unsigned int step = 0;; ++step) {
        const unsigned int choice = (step * 2654435761u + seed) >> 29;
        if (choice == 1 && step > 0) {
            const IXMLToken* before = &*reader.GetCurrentToken();
            if (!reader.ReadElementTextIfAvailable()) {
                FUZZ_CHECK(&*reader.GetCurrentToken() == before);
                if (!reader.ReadToken())
                    break;
            }
        } else if ((choice == 2 || choice == 3) && step > 0) {
            CUnicodeString text;
            choice == 2 ? reader.ReadElementText(text) : reader.ReadElementText();
            FUZZ_CHECK(reader.GetCurrentTokenType() == 3);
            FUZZ_CHECK(choice == 3 || reader.GetCurrentTokenValue() == text);
        } else if (!reader.ReadToken()) {
            break;
        }
        Visit(reader);
    }
    FUZZ_CHECK(!reader.ReadToken());
    try {
        reader.GetCurrentToken();
        FUZZ_CHECK(!"a token after the end");
    } catch (const CIOException& e) {
        FUZZ_CHECK(Says(e, "There is no valid token."));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    CMemoryInputStream stream(reinterpret_cast<const char*>(data), static_cast<unsigned int>(size),
                              false);
    std::unique_ptr<CXMLTextReader> reader;
    try {
        reader = std::make_unique<CXMLTextReader>(&stream);
    } catch (const CIOException& e) {
        FUZZ_CHECK(Says(e, "Failed to create XML text tokenizer."));
        return 0;
    }
    try {
        ReadAll(*reader, size == 0 ? 0 : data[size / 2]);
    } catch (const CXMLException&) {
        // A fault in the document, in the scanner's words.
    } catch (const CIOException& e) {
        FUZZ_CHECK(Says(e, "End of stream reached.") ||
                   Says(e, "Failed to get the next token of xml text tokenizer."));
    }
    reader->Close();
    reader->Close();
    return 0;
}

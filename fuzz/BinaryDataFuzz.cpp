// CBinaryData's base64 and binhex parsers, narrow and wide, on arbitrary text. Binhex that parses
// re-encodes to its input; base64 that parses re-encodes to its input when that is canonical,
// and to a text that parses to the same bytes otherwise. Every block handed out is freed, also
// when the parser throws, so the leak check holds the parsers to it.
#include <vorn/base/BinaryData.h>
#include <vorn/base/IllegalArgumentException.h>
#include <vorn/base/NumberFormatException.h>
#include <vorn/base/String.h>
#include <vorn/base/UnicodeString.h>

#include <string>

#include "Fuzz.h"
#include "platform/Memory.h"

using vorn::base::CBinaryData;
using vorn::base::CException;
using vorn::base::CIllegalArgumentException;
using vorn::base::CNumberFormatException;
using vorn::base::CString;
using vorn::base::CUnicodeString;
using Units = std::u16string;

namespace {

// What a parse gave: the bytes and reported length, or the line it threw from.
struct Outcome {
    bool ok = false;
    unsigned int line = 0;
    unsigned int length = 0;
    std::string bytes;
    bool operator==(const Outcome& o) const {
        return ok == o.ok && line == o.line && length == o.length && bytes == o.bytes;
    }
};

// Runs `parse(data, length)`, keeps what it gave, and frees the block on every path.
template <typename Parse>
Outcome Run(Parse parse, std::size_t (*decoded)(const Units&), const Units& text) {
    Outcome out;
    char* data = reinterpret_cast<char*>(1);
    unsigned int length = 1;
    try {
        parse(data, length);
        out.ok = true;
        FUZZ_CHECK(data != nullptr);
        out.length = length;
        out.bytes.assign(data, decoded(text));
    } catch (const CException& e) {
        FUZZ_CHECK((vorn::fuzz::IsOneOf<CNumberFormatException, CIllegalArgumentException>(e)));
        out.line = e.GetSourceLine();
    }
    ZK_free(data == reinterpret_cast<char*>(1) ? nullptr : data);
    return out;
}

std::size_t Base64Bytes(const Units& t) {
    std::size_t n = 0;
    for (std::size_t i = 0; i + 3 < t.size(); i += 4)
        n += t[i + 3] != u'=' ? 3 : t[i + 2] == u'=' ? 1 : 2;
    return n;
}
std::size_t BinHexBytes(const Units& t) {
    return t.size() / 2;
}

Units Widen(const std::string& s) {
    Units u;
    for (unsigned char c : s)
        u.push_back(c);
    return u;
}
const unsigned short* Ptr(const Units& u) {
    return reinterpret_cast<const unsigned short*>(u.c_str());
}

unsigned int Value(char16_t c) {
    static const std::string alphabet =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    return static_cast<unsigned int>(alphabet.find(static_cast<char>(c)));
}

// Pads only closing the last group, and the bits they leave unused all zero.
bool Canonical(const Units& t) {
    const std::size_t pads = t.size() >= 4 ? (t.back() == u'=') + (t[t.size() - 2] == u'=') : 0;
    if (t.find(u'=') < t.size() - pads || (pads == 1 && t[t.size() - 3] == u'='))
        return false;
    return pads == 0 || (Value(t[t.size() - pads - 1]) & (pads == 2 ? 0x0F : 0x03)) == 0;
}

void CheckBase64(const Units& text, const Outcome& o) {
    if (!o.ok)
        return;
    FUZZ_CHECK(o.length == text.size() / 4);
    if (o.bytes.empty())
        return;
    const CString again =
        CBinaryData::ToBase64String(o.bytes.data(), static_cast<unsigned int>(o.bytes.size()));
    const CUnicodeString wide = CBinaryData::ToBase64UnicodeString(
        o.bytes.data(), static_cast<unsigned int>(o.bytes.size()));
    const Units encoded = Widen(std::string(again, again.GetLength()));
    FUZZ_CHECK(Units(reinterpret_cast<const char16_t*>(static_cast<const unsigned short*>(wide)),
                     wide.GetLength()) == encoded);
    if (Canonical(text))
        FUZZ_CHECK(encoded == text);
    const Outcome reparsed =
        Run([&](char*& d, unsigned int& l) { CBinaryData::ParseBase64String(again, d, l); },
            Base64Bytes, encoded);
    FUZZ_CHECK(reparsed.ok && reparsed.bytes == o.bytes);
}

void CheckBinHex(const Units& text, const Outcome& o) {
    if (!o.ok)
        return;
    FUZZ_CHECK(o.length == text.size() / 2 && o.length > 0);
    const CString narrow = CBinaryData::ToBinHexString(o.bytes.data(), o.length);
    const CUnicodeString wide = CBinaryData::ToBinHexUnicodeString(o.bytes.data(), o.length);
    FUZZ_CHECK(Widen(std::string(narrow, narrow.GetLength())) == text);
    FUZZ_CHECK(wide == Ptr(text));
}

Outcome Base64Wide(const Units& text) {
    const CUnicodeString s(Ptr(text));
    return Run([&](char*& d, unsigned int& l) { CBinaryData::ParseBase64UnicodeString(s, d, l); },
               Base64Bytes, text);
}
Outcome BinHexWide(const Units& text) {
    return Run(
        [&](char*& d, unsigned int& l) {
            CBinaryData::ParseBinHexUnicodeString(Ptr(text), static_cast<unsigned int>(text.size()),
                                                  d, l);
        },
        BinHexBytes, text);
}

// The wide parsers throw from lines of their own where the narrow ones do.
unsigned int WideLine(unsigned int narrow) {
    switch (narrow) {
    case 672:
        return 714;
    case 202:
        return 253;
    case 185:
        return 236;
    case 172:
        return 222;
    case 318:
        return 356;
    case 269:
        return 285;
    case 850:
        return 882;
    default:
        return narrow;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const std::string narrow = bytes.substr(0, bytes.find('\0'));
    Units units;
    for (std::size_t i = 0; i + 1 < size; i += 2)
        units.push_back(static_cast<char16_t>(data[i] | data[i + 1] << 8));
    units.resize(units.find(u'\0') == Units::npos ? units.size() : units.find(u'\0'));

    // Base64: narrow and widened text agree, UTF-16 units reach the wide form past the table.
    const Units widened = Widen(narrow);
    const CString narrowText(narrow.c_str());
    Outcome n =
        Run([&](char*& d, unsigned int& l) { CBinaryData::ParseBase64String(narrowText, d, l); },
            Base64Bytes, widened);
    Outcome w = Base64Wide(widened);
    CheckBase64(widened, n);
    n.line = WideLine(n.line);
    FUZZ_CHECK(n == w);
    CheckBase64(units, Base64Wide(units));

    // Binhex: the counted narrow form takes every byte, NULs included.
    const Units all = Widen(bytes);
    n = Run(
        [&](char*& d, unsigned int& l) {
            CBinaryData::ParseBinHexString(bytes.data(), static_cast<unsigned int>(size), d, l);
        },
        BinHexBytes, all);
    w = BinHexWide(all);
    CheckBinHex(all, n);
    n.line = WideLine(n.line);
    FUZZ_CHECK(n == w);
    CheckBinHex(units, BinHexWide(units));

    // An object keeps the block of a failed decode and releases it itself.
    CBinaryData object;
    try {
        object.FromBinHexString(narrow.c_str());
        FUZZ_CHECK(object.ToBinHexString() == narrow.c_str());
    } catch (const CException& e) {
        FUZZ_CHECK((vorn::fuzz::IsOneOf<CNumberFormatException, CIllegalArgumentException>(e)));
    }
    return 0;
}

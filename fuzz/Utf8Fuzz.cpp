// CUnicodeString::FromUTF8 and ToUTF8 on arbitrary bytes, read as UTF-8 and as UTF-16 units.
// Well-formed UTF-8 without four-byte forms comes back byte for byte; a four-byte form comes
// back as one '?'; in the other direction a high surrogate takes the unit after it into one '?'.
#include <vorn/base/String.h>
#include <vorn/base/UnicodeString.h>

#include <string>
#include <vector>

#include "Fuzz.h"

using vorn::base::CString;
using vorn::base::CUnicodeString;

namespace {

std::string Text(const CString& s) {
    return std::string(s, s.GetLength());
}

// ToUTF8 into a block of exactly the size it asks for, and one byte short of it.
void CheckSizedForms(const CUnicodeString& s) {
    const int size = s.ToUTF8(nullptr, -1);
    if (s.IsEmpty()) {
        FUZZ_CHECK(size == 0);
        return;
    }
    FUZZ_CHECK(size >= 2);
    std::vector<char> exact(static_cast<std::size_t>(size), '\x5A');
    FUZZ_CHECK(s.ToUTF8(exact.data(), size) == size - 1);
    FUZZ_CHECK(std::memchr(exact.data(), 0, exact.size()) != nullptr);
    const std::string whole = Text(s.ToUTF8());
    const bool trailingHigh = s[s.GetLength() - 1] >= 0xD800 && s[s.GetLength() - 1] <= 0xDBFF;
    if (!trailingHigh)
        FUZZ_CHECK(whole == exact.data());
    std::vector<char> shortBlock(static_cast<std::size_t>(size - 1), '\x5A');
    FUZZ_CHECK(s.ToUTF8(shortBlock.data(), size - 1) == -1);
    FUZZ_CHECK(shortBlock == std::vector<char>(shortBlock.size(), '\x5A'));
}

void Narrow(const std::uint8_t* data, std::size_t size) {
    const char* bytes = reinterpret_cast<const char*>(data);
    CUnicodeString s;
    s.FromUTF8(bytes, static_cast<int>(size));
    FUZZ_CHECK(s.GetLength() <= size);

    // The well-formed prefix before any NUL: what it must come back as, and its units.
    std::string expected;
    std::size_t units = 0;
    std::size_t i = 0;
    while (i < size && data[i] != 0) {
        const std::size_t n = vorn::fuzz::WellFormed(data + i, size - i);
        if (n == 0)
            break;
        expected.append(n == 4 ? "?" : bytes + i, n == 4 ? 1 : n);
        units += n == 4 ? 2 : 1;
        i += n;
    }
    const std::string back = Text(s.ToUTF8());
    FUZZ_CHECK(s.GetLength() >= units);
    FUZZ_CHECK(back.compare(0, expected.size(), expected) == 0);
    if (i == size) {
        FUZZ_CHECK(s.GetLength() == units);
        FUZZ_CHECK(back == expected);
        FUZZ_CHECK(s.ToUTF8(nullptr, -1) ==
                   (size == 0 ? 0 : static_cast<int>(expected.size()) + 1));
    }
    CheckSizedForms(s);

    // Up to the terminator: the units of the counted form of the bytes before the first NUL,
    // which are where the whole input's units begin.
    const std::string terminated(bytes, size);
    CUnicodeString t, counted;
    t.FromUTF8(terminated.c_str(), -1);
    counted.FromUTF8(bytes, static_cast<int>(std::strlen(terminated.c_str())));
    FUZZ_CHECK(t == counted && t.GetLength() <= s.GetLength());
    for (unsigned int k = 0; k < t.GetLength(); ++k)
        FUZZ_CHECK(t[k] == s[k]);
}

void Wide(const std::uint8_t* data, std::size_t size) {
    std::vector<unsigned short> units(size / 2 + 1, 0);
    for (std::size_t k = 0; k < size / 2; ++k)
        units[k] = static_cast<unsigned short>(data[2 * k] | data[2 * k + 1] << 8);
    const CUnicodeString w(units.data(), static_cast<unsigned int>(size / 2));
    CheckSizedForms(w);

    std::vector<unsigned short> expected;
    bool trailingHigh = false;
    for (unsigned int k = 0; k < w.GetLength(); ++k) {
        const bool high = w[k] >= 0xD800 && w[k] <= 0xDBFF;
        expected.push_back(high ? u'?' : w[k]);
        if (high && k + 1 == w.GetLength())
            trailingHigh = true;
        else if (high)
            ++k;
    }
    if (trailingHigh)
        expected.push_back(u'?');
    const CString utf8 = w.ToUTF8();
    CUnicodeString back;
    back.FromUTF8(utf8, static_cast<int>(utf8.GetLength()));
    FUZZ_CHECK(back.GetLength() == expected.size());
    for (unsigned int k = 0; k < back.GetLength(); ++k)
        FUZZ_CHECK(back[k] == expected[k]);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > 1 << 20)
        return 0;
    Narrow(data, size);
    Wide(data, size);
    return 0;
}

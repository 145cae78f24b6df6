// UTF-16 literals as the library's wide text (unsigned short), and back for assertions.
#pragma once

#include <string>

namespace vorn::test {

using WString = std::basic_string<unsigned short>;

// W(u"text"): a wide text from a char16_t literal.
inline WString W(const char16_t* text) {
    WString out;
    for (; *text != 0; ++text)
        out.push_back(static_cast<unsigned short>(*text));
    return out;
}

// The units of a NUL-terminated wide text, for comparison with W(...).
inline WString Units(const unsigned short* text) {
    return text == nullptr ? WString() : WString(text);
}

// Wide text to UTF-8 for readable failure messages; only the Basic Multilingual Plane is shown
// faithfully, anything else as '?'.
inline std::string Narrow(const WString& text) {
    std::string out;
    for (unsigned short c : text) {
        if (c < 0x80) {
            out.push_back(static_cast<char>(c));
        } else if (c < 0x800) {
            out.push_back(static_cast<char>(0xC0 | (c >> 6)));
            out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
        } else if (c >= 0xD800 && c < 0xE000) {
            out.push_back('?');
        } else {
            out.push_back(static_cast<char>(0xE0 | (c >> 12)));
            out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
            out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
        }
    }
    return out;
}

} // namespace vorn::test

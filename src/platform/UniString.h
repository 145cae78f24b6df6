// The root library's UTF-16 string value, as far as the file layer's start needs it.
#pragma once

#include <cstdint>
#include <string>

// Character set selector of the narrow text services; 0 is the default set (UTF-8 here).
using ZKCharCode = int;

namespace ZK {

class UniString {
public:
    UniString() = default;
    UniString(const char* text, ZKCharCode charCode);
    const std::u16string& Text() const { return m_text; }

private:
    std::u16string m_text;
};

} // namespace ZK

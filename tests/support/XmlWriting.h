// XML writing in tests: wide literals as arguments, and a text writer over a memory stream.
#pragma once

#include <string>

#include <vorn/io/MemoryOutputStream.h>
#include <vorn/io/XMLTextWriter.h>

#include "support/Utf16.h"

namespace vorn::test {

// U(u"text") as an argument: a NUL-terminated wide text that lives to the end of the statement.
struct WideArgument {
    WString text;
    operator const unsigned short*() const { return text.c_str(); }
};
inline WideArgument U(const char16_t* text) {
    return {W(text)};
}

// A writer on a memory stream, lines ending in LF unless told otherwise.
class WrittenXml {
public:
    explicit WrittenXml(vorn::io::CXMLTextTabulator* tabulator = nullptr,
                        const char16_t* endOfLine = u"\n", unsigned int bufferSize = 64)
        : stream(), writer(&stream, "UTF-8", bufferSize, tabulator,
                           endOfLine == nullptr ? nullptr : W(endOfLine).c_str(), false) {}

    // What reached the stream after a flush.
    std::string Text() {
        writer.Flush();
        return Bytes();
    }
    std::string Bytes() const { return std::string(stream.GetBuffer(), stream.GetBufferSize()); }

    vorn::io::CMemoryOutputStream stream;
    vorn::io::CXMLTextWriter writer;
};

} // namespace vorn::test

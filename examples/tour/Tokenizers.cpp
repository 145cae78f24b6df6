// Tokenizers and string vectors, handle strings and the base64 stream.
#include "Tour.h"

#include <vorn/vorn.h>

#include <cstdio>

using vorn::base::CString;

void tour::Tokenizers() {
    tour::Section("Tokenizers, string vectors, formatted and handle strings, base64");

    vorn::util::CStringTokenizer fields("name,,city;zip", ",;", false);
    std::printf("\"name,,city;zip\" has %u tokens:", fields.GetTokenCount());
    while (fields.HasMoreTokens())
        std::printf(" [%s]", static_cast<const char*>(fields.GetNextToken()));
    std::printf("\n");

    // With returned delimiters every call takes one character and gives an empty token.
    vorn::util::CStringTokenizer marks("a,b", ",", true);
    unsigned int calls = 0;
    while (marks.HasMoreTokens() && marks.GetNextToken().IsEmpty())
        ++calls;
    std::printf("\"a,b\" with returned delimiters: %u empty tokens\n", calls);

    vorn::util::CStringVector names;
    names.AddElement("Oslo");
    names.AddElement("Bergen");
    names.InsertElementAt("Tromso", 1);
    std::printf("CStringVector: %u names, Bergen at %d\n", names.GetSize(),
                names.GetIndexOf("Bergen"));

    // Two blocks in all: the texts end to end, and one offset each.
    vorn::util::CStringVectorH packed;
    for (const char* name : {"Oslo", "Bergen", "Tromso"})
        packed.AddElement(name);
    packed.RemoveElementAt(0);
    std::printf("CStringVectorH after removing the first: %s, %s\n",
                static_cast<const char*>(packed[0]), static_cast<const char*>(packed[1]));

    // Formatted once, at construction; `l` is 32 bits and `%ls` takes UTF-16.
    const unsigned short city[] = {'B', 'e', 'r', 'g', 'e', 'n', 0};
    vorn::base::CFormattedString line("%-8ls|%5.1f|%ld", city, 3.25, 42);
    std::printf("CFormattedString: [%s]\n", static_cast<const char*>(line));

    // A handle string: Empty sets the length to 0 and writes the digit '0' over the first byte.
    vorn::base::CStringH handle("handle");
    handle.Empty();
    std::printf("CStringH after Empty: length %u, text \"%s\"\n", handle.GetLength(),
                static_cast<const char*>(handle));

    // Base64 in lines of 8; Flush writes the last, partial group with its padding.
    vorn::io::CMemoryOutputStream text;
    vorn::io::CBase64OutputStream base64(&text, 8);
    base64.Write("tokenizers", 10);
    base64.Flush();
    base64.Close();
    std::printf("base64 of \"tokenizers\" in lines of 8: ");
    for (unsigned int i = 0; i < text.GetBufferSize(); ++i)
        std::printf(text.GetBuffer()[i] == '\r'   ? "\\r"
                    : text.GetBuffer()[i] == '\n' ? "\\n"
                                                  : "%c",
                    text.GetBuffer()[i]);
    std::printf("\n");
}

// Tokenizers and string vectors: splitting a text, and keeping many texts in two blocks.
#include "Tour.h"

#include <vorn/vorn.h>

#include <cstdio>

using vorn::base::CString;

void tour::Tokenizers() {
    tour::Section("Tokenizers and string vectors");

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
}

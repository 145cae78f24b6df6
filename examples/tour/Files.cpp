// Files: a file written through a buffered stream and read back, named in UTF-16 and in UTF-8.
#include "Tour.h"

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>

#include <vorn/vorn.h>

using vorn::base::CRef;
using namespace vorn::io;

void tour::Files() {
    Section("Files");
    const std::string dir = std::filesystem::temp_directory_path().string();
    const std::string narrow = dir + "/vorn-tour-d\xC3\xA9j\xC3\xA0-vu.txt"; // "déjà-vu" in UTF-8
    std::u16string wide(dir.begin(), dir.end());
    wide += u"/vorn-tour-d\u00E9j\u00E0-vu.txt";
    const auto* widePath = reinterpret_cast<const unsigned short*>(wide.c_str());

    {
        // The buffered stream shares the file stream through its CRef; closing it closes both.
        CRef<COutputStream> file(new CFileOutputStream(widePath, false));
        CBufferedOutputStream out(file, 4096);
        const char text[] = "first line\nsecond line\nthird line\n";
        for (const char* c = text; *c != '\0'; ++c)
            out.Write(*c); // a byte at a time, into the buffer
        std::printf("wrote %zu bytes a byte at a time; on disk before Close: %ju bytes\n",
                    sizeof text - 1,
                    static_cast<std::uintmax_t>(std::filesystem::file_size(narrow)));
        out.Close();
        std::printf("after Close: %ju bytes in %s\n",
                    static_cast<std::uintmax_t>(std::filesystem::file_size(narrow)),
                    narrow.c_str());
    }

    CFileInputStream file(narrow.c_str()); // the same file by its UTF-8 name
    CBufferedInputStream in(&file, 16);
    std::string line;
    for (int c; (c = in.Read()) != CInputStream::EOS;) {
        if (c != '\n') {
            line += static_cast<char>(c);
            continue;
        }
        std::printf("read back: \"%s\"\n", line.c_str());
        line.clear();
    }
    in.Reset();
    char head[6] = {};
    std::printf("after Reset, Read(buffer, 5) -> %d: \"%s\"\n", in.Read(head, 5), head);
    in.Close(); // closes the file stream beneath too

    try {
        CFileInputStream missing((dir + "/vorn-tour-no-such-file").c_str());
    } catch (const CIOException& e) {
        std::printf("a missing file: %s with %s\n", e.GetClass()->GetName(),
                    e.GetErrorDescription() != nullptr ? e.GetErrorDescription() : "no words");
    }
    std::filesystem::remove(narrow);
}

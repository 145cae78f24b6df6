// Untrusted input: bounding what a message from outside may ask for, and freeing what a parser
// hands out whether or not it succeeds.
#include "Tour.h"

#include <cstdio>
#include <vector>

#include <vorn/vorn.h>

using vorn::base::CBinaryData;
using vorn::base::CNumberFormatException;
using vorn::base::CUnicodeString;
using vorn::io::CDataInputStream;
using vorn::io::CMemoryInputStream;

void tour::UntrustedInput() {
    Section("Untrusted input");
    // A string of the data format whose count asks for 2 GiB: ReadString would allocate it
    // before reading a byte, so read the count and check it against what has arrived.
    const char message[] = {0x7F, 0, 0, 0, 'h', 'i'};
    CMemoryInputStream bytes(message, sizeof message, false);
    CDataInputStream in(&bytes);
    const unsigned int count = in.ReadUInt32();
    if (count > in.GetAvailable()) {
        std::printf("refused a string of %u bytes with %u at hand\n", count, in.GetAvailable());
    } else {
        std::vector<char> text(count + 1);
        in.Read(text.data(), count);
        CUnicodeString s;
        s.FromUTF8(text.data(), static_cast<int>(count));
    }

    // The parsers hand out their block even when they throw: free it on every path.
    char* data = nullptr;
    unsigned int groups = 0;
    try {
        CBinaryData::ParseBase64String("TWFu!A==", data, groups);
    } catch (const CNumberFormatException& e) {
        std::printf("base64 refused: %s (line %u)\n", e.GetErrorDescription(), e.GetSourceLine());
    }
    ZK_free(data);
}

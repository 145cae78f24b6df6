// The IO::File steps that the file streams share, each failure with its fixed words. A step
// throws CIOException from the site that calls it: the stream's source file and line. Internal.
#pragma once

#include <vorn/platform/File.h>

namespace vorn::io::filesteps {

struct Site {
    const char* source;
    unsigned int line;
};

// What a stream's constructor does with its new file: a non-zero status throws with no words,
// then Open in `mode` throws "Access denied." or `failure`.
void Open(IO::File& file, IO::OpenMode mode, const char* failure, Site site);
// Bytes from the position to the end.
unsigned long long Available(const IO::File& file, Site site);
// Seeks forward by `count` elements of `unit` bytes, at most by those left; the elements skipped.
unsigned int Skip(IO::File& file, unsigned int count, unsigned int unit, Site site);
void Rewind(IO::File& file, Site site);
void Flush(IO::File& file, Site site);
void Close(IO::File& file, Site site);

} // namespace vorn::io::filesteps

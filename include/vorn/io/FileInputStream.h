// CFileInputStream: the bytes of a file. The single-byte Read() throws at the end instead of
// giving EOS; Skip seeks. The destructor closes the file.
#pragma once

#include <vorn/io/InputStream.h>
#include <vorn/platform/File.h>

namespace vorn::io {

class VORN_API CFileInputStream : public CInputStream {
    VORN_DECLARE_CLASS(CFileInputStream)

public:
    // Opens the file to read: a missing file throws CIOException with no words, a refused one
    // "Access denied.".
    explicit CFileInputStream(IO::Location const& location);
    ~CFileInputStream() override;

    // Refuses a file of 4 GiB or more from the position.
    unsigned int GetAvailable() const override;
    // 0 at the end, not -1; a null destination skips `count` bytes instead.
    int Read(char* buffer, unsigned int offset, unsigned int count) override;
    int Read(char* buffer, unsigned int count) override;
    int Read() override;
    // The bytes skipped, at most those left.
    int Skip(unsigned int count) override;
    // Back to the start of the file.
    void Reset() override;
    void Close() override;

private:
    int ReadInto(char* target, unsigned int count);
    void CheckOpen(unsigned int line) const;

    IO::File m_file;
};

} // namespace vorn::io

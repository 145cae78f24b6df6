// CFileReader: the UTF-16 units of a file, as they lie in memory, with no encoding and no
// signature. Reads that reach the end throw; Skip seeks. The destructor closes the file.
#pragma once

#include <vorn/io/Reader.h>
#include <vorn/platform/File.h>

namespace vorn::io {

class VORN_API CFileReader : public CReader {
    VORN_DECLARE_CLASS(CFileReader)

public:
    // Refuses a file of odd length as well as a missing or refused one.
    explicit CFileReader(IO::Location const& location);
    ~CFileReader() override;

    // Fails unless all `count` units are there; a null destination skips instead.
    int Read(unsigned short* buffer, unsigned int offset, unsigned int count) override;
    int Read(unsigned short* buffer, unsigned int count) override;
    int Read() override;
    // The units skipped, at most those left.
    int Skip(unsigned int count) override;
    void Reset() override;
    void Close() override;

private:
    int ReadInto(unsigned short* target, unsigned int count);
    void CheckOpen(unsigned int line) const;

    IO::File m_file;
};

} // namespace vorn::io

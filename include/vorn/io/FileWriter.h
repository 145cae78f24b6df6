// CFileWriter: UTF-16 units into a file as they lie in memory, with no encoding and no signature
// (a COutputStreamWriter over a CFileOutputStream encodes). No buffer; the destructor closes the
// file.
#pragma once

#include <vorn/io/Writer.h>
#include <vorn/platform/File.h>

namespace vorn::io {

class VORN_API CFileWriter : public CWriter {
    VORN_DECLARE_CLASS(CFileWriter)

public:
    // Opens or creates the file and drops its old content.
    explicit CFileWriter(IO::Location const& location);
    ~CFileWriter() override;

    // The text forms are CWriter's, which end in the counted form below.
    using CWriter::Write;
    // These two write nothing for a null or refused source, even when closed.
    void Write(unsigned short const* text, unsigned int offset, unsigned int count) override;
    void Write(unsigned short const* text, unsigned int count) override;
    void Write(unsigned short const* text) override;
    void Write(unsigned short value) override;
    void Flush() override;
    void Close() override;

protected:
    void InternalWrite(unsigned short const* text, unsigned int offset, unsigned int count);

private:
    IO::File m_file;
};

} // namespace vorn::io

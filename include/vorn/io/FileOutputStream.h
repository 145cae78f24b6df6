// CFileOutputStream: bytes into a file, each write handed to the file at once: there is no
// buffer, so a failed write loses nothing that an earlier one accepted. The destructor closes the
// file.
#pragma once

#include <vorn/io/OutputStream.h>
#include <vorn/platform/File.h>

namespace vorn::io {

class VORN_API CFileOutputStream : public COutputStream {
    VORN_DECLARE_CLASS(CFileOutputStream)

public:
    // Opens or creates the file: without `append` its old content is dropped, with it the bytes
    // go after it. A refused file throws "Access denied.".
    CFileOutputStream(IO::Location const& location, bool append);
    ~CFileOutputStream() override;

    // A null or refused source writes nothing, even on a closed stream.
    void Write(char const* buffer, unsigned int offset, unsigned int count) override;
    void Write(char const* buffer, unsigned int count) override;
    void Write(char value) override;
    // Hands the written bytes on to the storage device.
    void Flush() override;
    void Close() override;

protected:
    void InternalWrite(char const* buffer, unsigned int offset, unsigned int count);

private:
    IO::File m_file;
};

} // namespace vorn::io

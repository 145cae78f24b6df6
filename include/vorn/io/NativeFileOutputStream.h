// CNativeFileOutputStream: bytes straight into a file through the system, without the file
// layer. It never truncates: without `append` the bytes overwrite the file from its start and
// the rest stays. Close never throws and may be repeated.
#pragma once

#include <vorn/base/Base.h>
#include <vorn/io/OutputStream.h>

namespace vorn::io {

class CNativeFileOutputStreamImpl;

class VORN_API CNativeFileOutputStream : public COutputStream, public vorn::base::CNonCopyable {
    VORN_DECLARE_CLASS(CNativeFileOutputStream)

public:
    // A null or empty path throws CIllegalArgumentException "Invalid file path.".
    CNativeFileOutputStream(unsigned short const* path, bool append);
    ~CNativeFileOutputStream() override;

    // All three write `count` bytes with no pointer check: a null buffer fails the write.
    void Write(char const* buffer, unsigned int offset, unsigned int count) override;
    void Write(char const* buffer, unsigned int count) override;
    void Write(char value) override;
    void Flush() override;
    void Close() override;

private:
    void InternalWrite(char const* buffer, unsigned int offset, unsigned int count);

    CNativeFileOutputStreamImpl* m_impl;
};

} // namespace vorn::io

#include <memory>

#include <vorn/base/IllegalArgumentException.h>
#include <vorn/io/IOException.h>
#include <vorn/io/NativeFileOutputStream.h>
#include <vorn/platform/Location.h>

#include "platform/NativeFile.h"

namespace vorn::io {

using vorn::platform::kNoNativeFile;

namespace {
const char* const kSource = "vorn/io/NativeFileOutputStream";
}

// The system's handle of the file; kNoNativeFile once closed.
class CNativeFileOutputStreamImpl : public vorn::base::CBase {
public:
    ~CNativeFileOutputStreamImpl() {
        if (m_handle != kNoNativeFile)
            vorn::platform::CloseNativeFile(m_handle);
    }

    int m_handle = kNoNativeFile;
};

VORN_DEFINE_CLASS_BASE(CNativeFileOutputStream, "vorn::io::CNativeFileOutputStream",
                       "vorn::io::COutputStream")

CNativeFileOutputStream::CNativeFileOutputStream(unsigned short const* path, bool append)
    : m_impl(nullptr) {
    if (path == nullptr || *path == 0)
        throw vorn::base::CIllegalArgumentException(kSource, __LINE__, "Invalid file path.");
    std::unique_ptr<CNativeFileOutputStreamImpl> impl(new CNativeFileOutputStreamImpl);
    // A path with no UTF-8 form names no file; it fails as a name the system refuses would.
    const IO::Location location(path);
    bool accessDenied = false;
    if (location.IsValid())
        impl->m_handle =
            vorn::platform::OpenNativeFileForWriting(location.GetPath(), &accessDenied);
    if (impl->m_handle == kNoNativeFile) {
        if (accessDenied)
            throw CIOException(kSource, __LINE__, "Access denied.", nullptr);
        throw CIOException(kSource, __LINE__, "Failed to open the specified file.", nullptr);
    }
    if (append && !vorn::platform::SeekNativeFileToEnd(impl->m_handle))
        throw CIOException(kSource, __LINE__,
                           "Failed to move the file pointer to the end of the file.", nullptr);
    m_impl = impl.release();
}

CNativeFileOutputStream::~CNativeFileOutputStream() {
    delete m_impl;
}

void CNativeFileOutputStream::InternalWrite(char const* buffer, unsigned int offset,
                                            unsigned int count) {
    if (m_impl->m_handle == kNoNativeFile)
        throw CIOException(kSource, __LINE__, "Stream closed.", nullptr);
    // A null source can't be read: the write fails as the system's would, without reading it.
    const bool written = buffer != nullptr ? vorn::platform::WriteNativeFile(m_impl->m_handle,
                                                                             buffer + offset, count)
                                           : count == 0;
    if (!written)
        throw CIOException(kSource, __LINE__,
                           "Failed to write the specified byte the the underlying file.", nullptr);
}

void CNativeFileOutputStream::Write(char const* buffer, unsigned int offset, unsigned int count) {
    InternalWrite(buffer, offset, count);
}

void CNativeFileOutputStream::Write(char const* buffer, unsigned int count) {
    InternalWrite(buffer, 0, count);
}

void CNativeFileOutputStream::Write(char value) {
    InternalWrite(&value, 0, 1);
}

void CNativeFileOutputStream::Flush() {
    if (m_impl->m_handle == kNoNativeFile)
        throw CIOException(kSource, __LINE__, "Stream closed.", nullptr);
    if (!vorn::platform::FlushNativeFile(m_impl->m_handle))
        throw CIOException(kSource, __LINE__, "Failed to flush the buffers of the underlying file.",
                           nullptr);
}

void CNativeFileOutputStream::Close() {
    if (m_impl->m_handle == kNoNativeFile)
        return;
    vorn::platform::CloseNativeFile(m_impl->m_handle);
    m_impl->m_handle = kNoNativeFile;
}

} // namespace vorn::io

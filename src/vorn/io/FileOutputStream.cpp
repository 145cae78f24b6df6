#include <vorn/io/FileOutputStream.h>
#include <vorn/io/IOException.h>

#include "platform/PtrCheck.h"
#include "vorn/io/FileSteps.h"

namespace vorn::io {

namespace {
const char* const kSource = "vorn/io/FileOutputStream";
}

VORN_DEFINE_CLASS_BASE(CFileOutputStream, "vorn::io::CFileOutputStream", "vorn::io::COutputStream")

CFileOutputStream::CFileOutputStream(IO::Location const& location, bool append)
    : m_file(location, IO::kCreateIfNotFound) {
    filesteps::Open(m_file, append ? IO::kOpenAppend : IO::kOpenWrite,
                    "Failed to open the underlying file.", {kSource, __LINE__});
}

CFileOutputStream::~CFileOutputStream() {
    if (!m_file.IsOpen())
        return;
    try {
        Close();
    } catch (const CIOException&) {
    }
}

void CFileOutputStream::Write(char const* buffer, unsigned int offset, unsigned int count) {
    if (buffer == nullptr || !BNValidReadPtr(buffer + offset, count))
        return;
    InternalWrite(buffer, offset, count);
}

void CFileOutputStream::Write(char const* buffer, unsigned int count) {
    if (buffer == nullptr || !BNValidReadPtr(buffer, count))
        return;
    InternalWrite(buffer, 0, count);
}

void CFileOutputStream::Write(char value) {
    if (!m_file.IsOpen())
        throw CIOException(kSource, __LINE__, "Stream closed.", nullptr);
    m_file << value;
    if (m_file.GetOutputStatus() != ZK::kStatusOK)
        throw CIOException(kSource, __LINE__,
                           "Failed to write the specified byte the the underlying file.", nullptr);
}

void CFileOutputStream::InternalWrite(char const* buffer, unsigned int offset, unsigned int count) {
    if (!m_file.IsOpen())
        throw CIOException(kSource, __LINE__, "Stream closed.", nullptr);
    if (m_file.WriteBin(buffer + offset, count, nullptr) != ZK::kStatusOK)
        throw CIOException(kSource, __LINE__,
                           "Failed to write the specified number of bytes to the underlying file.",
                           nullptr);
}

void CFileOutputStream::Flush() {
    if (!m_file.IsOpen())
        throw CIOException(kSource, __LINE__, "Stream closed.", nullptr);
    filesteps::Flush(m_file, {kSource, __LINE__});
}

void CFileOutputStream::Close() {
    if (!m_file.IsOpen())
        throw CIOException(kSource, __LINE__, "Stream closed.", nullptr);
    filesteps::Close(m_file, {kSource, __LINE__});
}

} // namespace vorn::io

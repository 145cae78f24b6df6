#include <vorn/io/FileOutputStream.h>
#include <vorn/io/IOException.h>

#include "platform/PtrCheck.h"

namespace vorn::io {

namespace {
const char* const kSource = "vorn/io/FileOutputStream";
}

VORN_DEFINE_CLASS_BASE(CFileOutputStream, "vorn::io::CFileOutputStream", "vorn::io::COutputStream")

CFileOutputStream::CFileOutputStream(IO::Location const& location, bool append)
    : m_file(location, IO::kCreateIfNotFound) {
    if (m_file.GetStatus() != ZK::kStatusOK)
        throw CIOException(kSource, __LINE__, nullptr, nullptr);
    const ZK::Status status =
        m_file.Open(append ? IO::kOpenAppend : IO::kOpenWrite, IO::kReportAccessDenied);
    if (status == IO::kStatusAccessDenied)
        throw CIOException(kSource, __LINE__, "Access denied.", nullptr);
    if (status != ZK::kStatusOK)
        throw CIOException(kSource, __LINE__, "Failed to open the underlying file.", nullptr);
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
    if (m_file.Flush() != ZK::kStatusOK)
        throw CIOException(kSource, __LINE__, "Failed to flush the underlying file.", nullptr);
}

void CFileOutputStream::Close() {
    if (!m_file.IsOpen())
        throw CIOException(kSource, __LINE__, "Stream closed.", nullptr);
    if (m_file.Close() != ZK::kStatusOK)
        throw CIOException(kSource, __LINE__, "Failed to close the underlying file.", nullptr);
}

} // namespace vorn::io

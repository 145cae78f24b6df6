#include <vorn/io/FileReader.h>
#include <vorn/io/IOException.h>

#include "platform/PtrCheck.h"

namespace vorn::io {

namespace {
const char* const kSource = "vorn/io/FileReader";
}

VORN_DEFINE_CLASS_BASE(CFileReader, "vorn::io::CFileReader", "vorn::io::CReader")

CFileReader::CFileReader(IO::Location const& location) : m_file(location, IO::kFailIfNotFound) {
    if (m_file.GetStatus() != ZK::kStatusOK)
        throw CIOException(kSource, __LINE__, nullptr, nullptr);
    const ZK::Status status = m_file.Open(IO::kOpenRead, IO::kReportAccessDenied);
    if (status == IO::kStatusAccessDenied)
        throw CIOException(kSource, __LINE__, "Access denied.", nullptr);
    if (status != ZK::kStatusOK)
        throw CIOException(kSource, __LINE__, "Failed to open the underlying file.", nullptr);
    unsigned long long length;
    if (m_file.GetDataLength(&length) != ZK::kStatusOK)
        throw CIOException(kSource, __LINE__, "Failed to get the length of the underlying file.",
                           nullptr);
    if (length % 2 != 0)
        throw CIOException(kSource, __LINE__, "Invalid unicode file: the file length must be even.",
                           nullptr);
}

CFileReader::~CFileReader() {
    if (m_file.IsOpen())
        m_file.Close();
}

void CFileReader::CheckOpen(unsigned int line) const {
    if (!m_file.IsOpen())
        throw CIOException(kSource, line, "Reader closed.", nullptr);
}

int CFileReader::ReadInto(unsigned short* target, unsigned int count) {
    if (count == 0)
        return 0;
    unsigned int read = 0;
    // The end of the file is a failure here, unlike in CFileInputStream.
    if (m_file.ReadBin(reinterpret_cast<char*>(target), 2 * count, &read) != ZK::kStatusOK)
        throw CIOException(
            kSource, __LINE__,
            "Failed to read the specified number of wide chars from the underlying file.", nullptr);
    return static_cast<int>(read / 2);
}

int CFileReader::Read(unsigned short* buffer, unsigned int offset, unsigned int count) {
    CheckOpen(__LINE__);
    if (buffer == nullptr || !BNValidWritePtr(buffer + offset, 2 * std::size_t{count}))
        return count == 0 ? 0 : Skip(count);
    return ReadInto(buffer + offset, count);
}

int CFileReader::Read(unsigned short* buffer, unsigned int count) {
    CheckOpen(__LINE__);
    if (buffer == nullptr || !BNValidWritePtr(buffer, 2 * std::size_t{count}))
        return count == 0 ? 0 : Skip(count);
    return ReadInto(buffer, count);
}

int CFileReader::Read() {
    CheckOpen(__LINE__);
    short value;
    if (m_file.Read(value) != ZK::kStatusOK)
        throw CIOException(kSource, __LINE__, "End of stream reached.", nullptr);
    return static_cast<unsigned short>(value);
}

int CFileReader::Skip(unsigned int count) {
    CheckOpen(__LINE__);
    if (count == 0)
        return 0;
    unsigned long long available;
    if (m_file.GetAvailable(&available) != ZK::kStatusOK)
        throw CIOException(kSource, __LINE__,
                           "Failed to get the number of available bytes of the underlying file.",
                           nullptr);
    available /= 2;
    const unsigned long long skipped = count >= available ? available : count;
    if (m_file.Seek(IO::kSeekCurrent, static_cast<long long>(2 * skipped)) != ZK::kStatusOK)
        throw CIOException(kSource, __LINE__, "Failed to seek in the underlying file.", nullptr);
    return static_cast<int>(skipped);
}

void CFileReader::Reset() {
    CheckOpen(__LINE__);
    if (m_file.SetPosition(0) != ZK::kStatusOK)
        throw CIOException(kSource, __LINE__,
                           "Failed to set the position of file pointer in the underlying file.",
                           nullptr);
}

void CFileReader::Close() {
    CheckOpen(__LINE__);
    if (m_file.Close() != ZK::kStatusOK)
        throw CIOException(kSource, __LINE__, "Failed to close the underlying file.", nullptr);
}

} // namespace vorn::io

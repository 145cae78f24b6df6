#include <vorn/io/FileReader.h>
#include <vorn/io/IOException.h>

#include "platform/PtrCheck.h"
#include "vorn/io/FileSteps.h"

namespace vorn::io {

namespace {
const char* const kSource = "vorn/io/FileReader";
}

VORN_DEFINE_CLASS_BASE(CFileReader, "vorn::io::CFileReader", "vorn::io::CReader")

CFileReader::CFileReader(IO::Location const& location) : m_file(location, IO::kFailIfNotFound) {
    filesteps::Open(m_file, IO::kOpenRead, "Failed to open the underlying file.",
                    {kSource, __LINE__});
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
    return static_cast<int>(filesteps::Skip(m_file, count, 2, {kSource, __LINE__}));
}

void CFileReader::Reset() {
    CheckOpen(__LINE__);
    filesteps::Rewind(m_file, {kSource, __LINE__});
}

void CFileReader::Close() {
    CheckOpen(__LINE__);
    filesteps::Close(m_file, {kSource, __LINE__});
}

} // namespace vorn::io

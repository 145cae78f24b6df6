#include <vorn/io/FileInputStream.h>
#include <vorn/io/IOException.h>

#include "platform/PtrCheck.h"
#include "vorn/io/FileSteps.h"

namespace vorn::io {

namespace {
const char* const kSource = "vorn/io/FileInputStream";
}

VORN_DEFINE_CLASS_BASE(CFileInputStream, "vorn::io::CFileInputStream", "vorn::io::CInputStream")

CFileInputStream::CFileInputStream(IO::Location const& location)
    : m_file(location, IO::kFailIfNotFound) {
    filesteps::Open(m_file, IO::kOpenRead, "An error occurred while trying to open file.",
                    {kSource, __LINE__});
}

CFileInputStream::~CFileInputStream() {
    if (m_file.IsOpen())
        m_file.Close();
}

void CFileInputStream::CheckOpen(unsigned int line) const {
    if (!m_file.IsOpen())
        throw CIOException(kSource, line, "Stream closed.", nullptr);
}

unsigned int CFileInputStream::GetAvailable() const {
    CheckOpen(__LINE__);
    const unsigned long long available = filesteps::Available(m_file, {kSource, __LINE__});
    if (available > 0xFFFFFFFFull)
        throw CIOException(kSource, __LINE__, "64-bit file sizes not supported", nullptr);
    return static_cast<unsigned int>(available);
}

int CFileInputStream::ReadInto(char* target, unsigned int count) {
    if (count == 0)
        return 0;
    unsigned int read = 0;
    const ZK::Status status = m_file.ReadBin(target, count, &read);
    if (status != ZK::kStatusOK && status != ZK::kStatusEndOfInput)
        throw CIOException(kSource, __LINE__,
                           "Failed to read the specified number of bytes from the underlying file.",
                           nullptr);
    return static_cast<int>(read);
}

int CFileInputStream::Read(char* buffer, unsigned int offset, unsigned int count) {
    CheckOpen(__LINE__);
    if (buffer == nullptr || !BNValidWritePtr(buffer + offset, count))
        return count == 0 ? 0 : Skip(count);
    return ReadInto(buffer + offset, count);
}

int CFileInputStream::Read(char* buffer, unsigned int count) {
    CheckOpen(__LINE__);
    if (buffer == nullptr || !BNValidWritePtr(buffer, count))
        return count == 0 ? 0 : Skip(count);
    return ReadInto(buffer, count);
}

int CFileInputStream::Read() {
    CheckOpen(__LINE__);
    char value;
    if (m_file.Read(value) != ZK::kStatusOK)
        throw CIOException(kSource, __LINE__, "End of stream reached.", nullptr);
    return static_cast<signed char>(value);
}

int CFileInputStream::Skip(unsigned int count) {
    CheckOpen(__LINE__);
    if (count == 0)
        return 0;
    return static_cast<int>(filesteps::Skip(m_file, count, 1, {kSource, __LINE__}));
}

void CFileInputStream::Reset() {
    CheckOpen(__LINE__);
    filesteps::Rewind(m_file, {kSource, __LINE__});
}

void CFileInputStream::Close() {
    CheckOpen(__LINE__);
    filesteps::Close(m_file, {kSource, __LINE__});
}

} // namespace vorn::io

#include <vorn/io/FileWriter.h>
#include <vorn/io/IOException.h>

#include "platform/PtrCheck.h"
#include "platform/UniText.h"

namespace vorn::io {

namespace {
const char* const kSource = "vorn/io/FileWriter";
}

VORN_DEFINE_CLASS_BASE(CFileWriter, "vorn::io::CFileWriter", "vorn::io::CWriter")

CFileWriter::CFileWriter(IO::Location const& location) : m_file(location, IO::kCreateIfNotFound) {
    if (m_file.GetStatus() != ZK::kStatusOK)
        throw CIOException(kSource, __LINE__, nullptr, nullptr);
    const ZK::Status status = m_file.Open(IO::kOpenWrite, IO::kReportAccessDenied);
    if (status == IO::kStatusAccessDenied)
        throw CIOException(kSource, __LINE__, "Access denied.", nullptr);
    if (status != ZK::kStatusOK)
        throw CIOException(kSource, __LINE__, "Failed to open the underlying file.", nullptr);
}

CFileWriter::~CFileWriter() {
    if (!m_file.IsOpen())
        return;
    try {
        Close();
    } catch (const CIOException&) {
    }
}

void CFileWriter::Write(unsigned short const* text, unsigned int offset, unsigned int count) {
    if (text == nullptr || !BNValidReadPtr(text + offset, 2 * std::size_t{count}))
        return;
    InternalWrite(text, offset, count);
}

void CFileWriter::Write(unsigned short const* text, unsigned int count) {
    if (text == nullptr || !BNValidReadPtr(text, 2 * std::size_t{count}))
        return;
    InternalWrite(text, 0, count);
}

void CFileWriter::Write(unsigned short const* text) {
    if (text == nullptr || *text == 0)
        return;
    InternalWrite(text, 0, static_cast<unsigned int>(ZK::ucslen(text)));
}

void CFileWriter::Write(unsigned short value) {
    if (!m_file.IsOpen())
        throw CIOException(kSource, __LINE__, "Writer closed.", nullptr);
    m_file << static_cast<short>(value);
    if (m_file.GetStatus() != ZK::kStatusOK)
        throw CIOException(kSource, __LINE__,
                           "Failed to write the specified wide char to the underlying file.",
                           nullptr);
}

void CFileWriter::InternalWrite(unsigned short const* text, unsigned int offset,
                                unsigned int count) {
    if (!m_file.IsOpen())
        throw CIOException(kSource, __LINE__, "Writer closed.", nullptr);
    if (m_file.WriteBin(reinterpret_cast<char const*>(text + offset), 2 * count, nullptr) !=
        ZK::kStatusOK)
        throw CIOException(
            kSource, __LINE__,
            "Failed to write the specified number of wide chars to the underlying file.", nullptr);
}

void CFileWriter::Flush() {
    if (!m_file.IsOpen())
        throw CIOException(kSource, __LINE__, "Writer closed.", nullptr);
    if (m_file.Flush() != ZK::kStatusOK)
        throw CIOException(kSource, __LINE__, "Failed to flush the underlying file.", nullptr);
}

void CFileWriter::Close() {
    if (!m_file.IsOpen())
        throw CIOException(kSource, __LINE__, "Writer closed.", nullptr);
    if (m_file.Close() != ZK::kStatusOK)
        throw CIOException(kSource, __LINE__, "Failed to close the underlying file.", nullptr);
}

} // namespace vorn::io

#include <vorn/io/FileWriter.h>
#include <vorn/io/IOException.h>

#include "platform/PtrCheck.h"
#include "platform/UniText.h"
#include "vorn/io/FileSteps.h"

namespace vorn::io {

namespace {
const char* const kSource = "vorn/io/FileWriter";
}

VORN_DEFINE_CLASS_BASE(CFileWriter, "vorn::io::CFileWriter", "vorn::io::CWriter")

CFileWriter::CFileWriter(IO::Location const& location) : m_file(location, IO::kCreateIfNotFound) {
    filesteps::Open(m_file, IO::kOpenWrite, "Failed to open the underlying file.",
                    {kSource, __LINE__});
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
    filesteps::Flush(m_file, {kSource, __LINE__});
}

void CFileWriter::Close() {
    if (!m_file.IsOpen())
        throw CIOException(kSource, __LINE__, "Writer closed.", nullptr);
    filesteps::Close(m_file, {kSource, __LINE__});
}

} // namespace vorn::io

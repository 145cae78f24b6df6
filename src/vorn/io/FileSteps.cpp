#include "vorn/io/FileSteps.h"

#include <vorn/io/IOException.h>

namespace vorn::io::filesteps {

namespace {

[[noreturn]] void Fail(Site site, const char* words) {
    throw CIOException(site.source, site.line, words, nullptr);
}

} // namespace

void Open(IO::File& file, IO::OpenMode mode, const char* failure, Site site) {
    if (file.GetStatus() != ZK::kStatusOK)
        Fail(site, nullptr);
    const ZK::Status status = file.Open(mode, IO::kReportAccessDenied);
    if (status == IO::kStatusAccessDenied)
        Fail(site, "Access denied.");
    if (status != ZK::kStatusOK)
        Fail(site, failure);
}

unsigned long long Available(const IO::File& file, Site site) {
    unsigned long long available;
    if (file.GetAvailable(&available) != ZK::kStatusOK)
        Fail(site, "Failed to get the number of available bytes of the underlying file.");
    return available;
}

unsigned int Skip(IO::File& file, unsigned int count, unsigned int unit, Site site) {
    const unsigned long long left = Available(file, site) / unit;
    const unsigned int skipped = count >= left ? static_cast<unsigned int>(left) : count;
    if (file.Seek(IO::kSeekCurrent, static_cast<long long>(skipped) * unit) != ZK::kStatusOK)
        Fail(site, "Failed to seek in the underlying file.");
    return skipped;
}

void Rewind(IO::File& file, Site site) {
    if (file.SetPosition(0) != ZK::kStatusOK)
        Fail(site, "Failed to set the position of file pointer in the underlying file.");
}

void Flush(IO::File& file, Site site) {
    if (file.Flush() != ZK::kStatusOK)
        Fail(site, "Failed to flush the underlying file.");
}

void Close(IO::File& file, Site site) {
    if (file.Close() != ZK::kStatusOK)
        Fail(site, "Failed to close the underlying file.");
}

} // namespace vorn::io::filesteps

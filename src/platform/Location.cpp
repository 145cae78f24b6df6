#include <vorn/platform/Location.h>

#include <cstring>
#include <utility>

#include "platform/Memory.h"
#include "platform/Utf8.h"

namespace IO {

namespace {

char* CopyPath(const char* path) {
    if (path == nullptr || *path == '\0')
        return nullptr;
    const std::size_t size = std::strlen(path) + 1;
    char* copy = static_cast<char*>(ZK_malloc(size));
    if (copy != nullptr)
        std::memcpy(copy, path, size);
    return copy;
}

bool IsHigh(unsigned short unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
bool IsLow(unsigned short unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

// The code point at `path[i]` and the units it takes; 0 units for an unpaired surrogate.
std::size_t CodePointAt(const unsigned short* path, std::size_t i, std::int32_t& c) {
    const unsigned short unit = path[i];
    if (IsHigh(unit) && IsLow(path[i + 1])) {
        c = 0x10000 + ((unit - 0xD800) << 10) + (path[i + 1] - 0xDC00);
        return 2;
    }
    c = unit;
    return IsHigh(unit) || IsLow(unit) ? 0 : 1;
}

char* PathFromUtf16(const unsigned short* path) {
    if (path == nullptr || *path == 0)
        return nullptr;
    std::size_t bytes = 1;
    std::int32_t c;
    for (std::size_t i = 0, n; path[i] != 0; i += n) {
        n = CodePointAt(path, i, c);
        if (n == 0)
            return nullptr;
        bytes += vorn::platform::utf8::EncodedLength(c);
    }
    char* out = static_cast<char*>(ZK_malloc(bytes));
    if (out == nullptr)
        return nullptr;
    char* o = out;
    for (std::size_t i = 0; path[i] != 0;) {
        i += CodePointAt(path, i, c);
        o += vorn::platform::utf8::Encode(c, o);
    }
    *o = '\0';
    return out;
}

} // namespace

Location::Location(const char* path) : m_path(CopyPath(path)) {}

Location::Location(const unsigned short* path) : m_path(PathFromUtf16(path)) {}

Location::Location(const Location& other) : m_path(CopyPath(other.m_path)) {}

Location::Location(Location&& other) noexcept : m_path(std::exchange(other.m_path, nullptr)) {}

Location& Location::operator=(const Location& other) {
    if (this != &other) {
        ZK_free(m_path);
        m_path = CopyPath(other.m_path);
    }
    return *this;
}

Location& Location::operator=(Location&& other) noexcept {
    if (this != &other) {
        ZK_free(m_path);
        m_path = std::exchange(other.m_path, nullptr);
    }
    return *this;
}

Location::~Location() {
    ZK_free(m_path);
}

} // namespace IO

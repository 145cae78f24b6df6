// IO::Location: where a file is, as a path of the file system.
#pragma once

#include <vorn/base/Export.h>

namespace IO {

// A narrow path is taken byte for byte (UTF-8 by convention); a UTF-16 path becomes UTF-8. A
// location is invalid when its path is null or empty, when a UTF-16 path holds an unpaired
// surrogate (no file name could stand for it), or when memory ran out; a file built on an invalid
// location fails at construction.
class VORN_API Location {
public:
    Location(const char* path);
    Location(const unsigned short* path);
    Location(const Location& other);
    Location(Location&& other) noexcept;
    Location& operator=(const Location& other);
    Location& operator=(Location&& other) noexcept;
    ~Location();

    bool IsValid() const { return m_path != nullptr; }
    // The path in UTF-8, NUL-terminated; null when the location is invalid.
    const char* GetPath() const { return m_path; }

private:
    char* m_path;
};

} // namespace IO

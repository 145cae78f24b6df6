// Scratch files for the file tests: a private directory that goes away with the object, whole
// files, wide paths, and a count of the process's open descriptors.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "support/Utf16.h"

namespace vorn::test {

// A name for mkstemp or mkdtemp, which put a unique part in place of its last six characters.
inline std::string UniqueName(const std::string& prefix) {
    return prefix + std::string(6, 'X');
}

class TempDir {
public:
    TempDir() {
        std::string name = UniqueName("/tmp/vorn-test-");
        if (mkdtemp(name.data()) != nullptr)
            m_path = name;
    }
    ~TempDir() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    const std::string& Path() const { return m_path; }
    std::string operator/(const std::string& name) const { return m_path + "/" + name; }

private:
    std::string m_path;
};

inline void PutFile(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
}

inline std::string GetFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// An ASCII path as UTF-16.
inline WString Wide(const std::string& path) {
    return WString(path.begin(), path.end());
}

inline int OpenDescriptors() {
    auto entries = std::filesystem::directory_iterator("/proc/self/fd");
    return static_cast<int>(std::distance(begin(entries), end(entries)));
}

} // namespace vorn::test

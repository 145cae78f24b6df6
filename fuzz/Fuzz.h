// What every fuzz target shares: the entry point, a check that stops the run with the failed
// condition, and a test of which exception classes a parser may throw.
#pragma once

#include <vorn/base/Exception.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

// Unlike assert, kept in every build type: a check that can't fail finds nothing.
#define FUZZ_CHECK(condition)                                                                      \
    ((condition) ? (void)0 : vorn::fuzz::Fail(__FILE__, __LINE__, #condition))

namespace vorn::fuzz {

[[noreturn]] inline void Fail(const char* file, int line, const char* condition) {
    std::fprintf(stderr, "%s:%d: check failed: %s\n", file, line, condition);
    std::abort();
}

template <typename... Allowed> bool IsOneOf(const vorn::base::CException& e) {
    return (... || (dynamic_cast<const Allowed*>(&e) != nullptr));
}

inline bool Says(const vorn::base::CException& e, const char* words) {
    return e.GetErrorDescription() != nullptr && std::strcmp(e.GetErrorDescription(), words) == 0;
}

// Length of the well-formed UTF-8 sequence at `p` (1 to 4), or 0.
inline std::size_t WellFormed(const std::uint8_t* p, std::size_t n) {
    auto continues = [&](std::size_t i, unsigned lo, unsigned hi) {
        return i < n && p[i] >= lo && p[i] <= hi;
    };
    const unsigned b = p[0];
    if (b < 0x80)
        return 1;
    if (b >= 0xC2 && b <= 0xDF)
        return continues(1, 0x80, 0xBF) ? 2 : 0;
    if (b >= 0xE0 && b <= 0xEF)
        return continues(1, b == 0xE0 ? 0xA0 : 0x80, b == 0xED ? 0x9F : 0xBF) &&
                       continues(2, 0x80, 0xBF)
                   ? 3
                   : 0;
    if (b >= 0xF0 && b <= 0xF4)
        return continues(1, b == 0xF0 ? 0x90 : 0x80, b == 0xF4 ? 0x8F : 0xBF) &&
                       continues(2, 0x80, 0xBF) && continues(3, 0x80, 0xBF)
                   ? 4
                   : 0;
    return 0;
}

// Whether all of `p` is well-formed UTF-8.
inline bool IsUtf8(const std::uint8_t* p, std::size_t n) {
    for (std::size_t i = 0, step; i < n; i += step)
        if ((step = WellFormed(p + i, n - i)) == 0)
            return false;
    return true;
}

// Cuts the input into consecutive parts: one byte of choices, then length-prefixed pieces.
class Input {
public:
    Input(const std::uint8_t* data, std::size_t size) : m_data(data), m_size(size) {}
    std::size_t Left() const { return m_size; }
    unsigned char Byte() {
        if (m_size == 0)
            return 0;
        --m_size;
        return *m_data++;
    }
    // The next `n` bytes or what is left of them.
    const std::uint8_t* Take(std::size_t& n) {
        n = n < m_size ? n : m_size;
        const std::uint8_t* p = m_data;
        m_data += n;
        m_size -= n;
        return p;
    }

private:
    const std::uint8_t* m_data;
    std::size_t m_size;
};

} // namespace vorn::fuzz

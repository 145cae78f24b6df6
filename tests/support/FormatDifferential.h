// A differential run of printf directives against the C library, shared by the tests of the
// formatter and of the classes that format through it.
#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <random>
#include <string>

namespace vorn::test {

// Random directives of every conversion on which the library's formatter and the C library
// agree: flags, widths, precisions and values. `check(format, value, reference)` gets the format
// in the library's spelling (where its `l` is the C library's plain int) and the C library's
// output for it; it checks the library's side with ASSERTs, which end the run.
template <typename Check> class FormatDifferential {
public:
    FormatDifferential(unsigned seed, Check check) : m_random(seed), m_check(check) {}

    void Run(int cases) {
        for (int i = 0; i < cases && !::testing::Test::HasFatalFailure(); ++i) {
            long long bits = Pick(2) ? static_cast<long long>(Pick(200)) - 100
                                     : static_cast<long long>(m_random());
            switch (Pick(4)) {
            case 0: { // our "l" is the C library's plain int
                static const char* const lengths[][2] = {{"", ""},     {"l", ""},    {"h", "h"},
                                                         {"hh", "hh"}, {"ll", "ll"}, {"I64", "ll"}};
                char c = "diuoxX"[Pick(6)];
                bool isSigned = c == 'd' || c == 'i';
                std::string field = Field(isSigned ? "-+ 0" : (c == 'u' ? "-0" : "-#0"), true);
                const char* const* l = lengths[Pick(6)];
                if (l[1][0] == 'l')
                    Compare("%" + field + l[0] + c, "%" + field + l[1] + c, bits);
                else
                    Compare("%" + field + l[0] + c, "%" + field + l[1] + c, static_cast<int>(bits));
                break;
            }
            case 1: {
                double v; // any bit pattern (NaNs, infinities, subnormals), or a plain value
                std::memcpy(&v, &bits, sizeof v);
                if (Pick(2))
                    v = std::ldexp(static_cast<double>(bits % 100000),
                                   static_cast<int>(Pick(90)) - 45);
                char c = "eEfFgGaA"[Pick(8)];
                std::string field = Field("-+ #0", true);
                // The C library's long double %La normalises differently; the value is the same.
                if (Pick(2) == 0 || c == 'a' || c == 'A')
                    Compare("%" + field + (Pick(2) ? "l" : "") + c, "%" + field + c, v);
                else
                    Compare("%" + field + "L" + c, "%" + field + "L" + c,
                            static_cast<long double>(v));
                break;
            }
            case 2: {
                std::string text;
                for (unsigned n = Pick(20); n > 0; --n)
                    text += static_cast<char>(' ' + Pick(95));
                std::string field = Field("-", true);
                Compare("%" + field + (Pick(2) ? "hs" : "s"), "%" + field + "s", text.c_str());
                break;
            }
            default: {
                std::string field = Field("-", false);
                Compare("%" + field + "c", "%" + field + "c", static_cast<int>(' ' + Pick(95)));
            }
            }
        }
    }

private:
    unsigned Pick(unsigned n) {
        return std::uniform_int_distribution<unsigned>(0, n - 1)(m_random);
    }

    std::string Field(const char* allowed, bool precision) {
        std::string field;
        for (const char* f = allowed; *f != 0; ++f)
            if (Pick(4) == 0)
                field += *f;
        if (Pick(3) != 0)
            field += std::to_string(Pick(40));
        if (precision && Pick(3) != 0)
            field += Pick(5) == 0 ? std::string(".") : "." + std::to_string(Pick(30));
        return field;
    }

    template <typename T> void Compare(const std::string& ours, const std::string& theirs, T v) {
        char expected[4096];
        int n = std::snprintf(expected, sizeof expected, theirs.c_str(), v);
        m_check(ours, v, std::string(expected, static_cast<std::size_t>(n)));
    }

    std::mt19937_64 m_random;
    Check m_check;
};

} // namespace vorn::test

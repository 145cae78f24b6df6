// The text values beside the standard library and ICU. Each case is registered as "Case/vorn"
// and "Case/<peer>", and bench/report.py pairs them by that name.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include <unicode/unistr.h>

#include <vorn/base/String.h>
#include <vorn/base/UnicodeString.h>

using vorn::base::CString;
using vorn::base::CUnicodeString;

namespace {

// ---- CString beside std::string

const std::string& KiloText() {
    static const std::string text(1024, 'x');
    return text;
}

void CStringCopy(benchmark::State& state) {
    const CString source(KiloText().c_str());
    for (auto _ : state) {
        CString copy(source);
        benchmark::DoNotOptimize(copy);
    }
}
BENCHMARK(CStringCopy)->Name("CStringCopy1K/vorn");

void StdStringCopy(benchmark::State& state) {
    const std::string source(KiloText());
    for (auto _ : state) {
        std::string copy(source);
        benchmark::DoNotOptimize(copy);
    }
}
BENCHMARK(StdStringCopy)->Name("CStringCopy1K/std_string");

// Twelve bytes: inside std::string's own small buffer, so the peer allocates nothing.
const char* volatile g_literal = "Hello, world";

void CStringFromLiteral(benchmark::State& state) {
    for (auto _ : state) {
        CString text(g_literal);
        benchmark::DoNotOptimize(text);
    }
}
BENCHMARK(CStringFromLiteral)->Name("CStringFromLiteral/vorn");

void StdStringFromLiteral(benchmark::State& state) {
    for (auto _ : state) {
        std::string text(g_literal);
        benchmark::DoNotOptimize(text);
    }
}
BENCHMARK(StdStringFromLiteral)->Name("CStringFromLiteral/std_string");

// 4096 pieces of 16 bytes into an empty string, giving 64 KB.
constexpr int kPieces = 4096;

void CStringAppend(benchmark::State& state) {
    const CString piece("0123456789abcdef");
    for (auto _ : state) {
        CString text;
        for (int i = 0; i < kPieces; ++i)
            text += piece;
        benchmark::DoNotOptimize(text);
    }
}
BENCHMARK(CStringAppend)->Name("CStringAppend64K/vorn")->Unit(benchmark::kMicrosecond);

void StdStringAppend(benchmark::State& state) {
    const std::string piece("0123456789abcdef");
    for (auto _ : state) {
        std::string text;
        for (int i = 0; i < kPieces; ++i)
            text += piece;
        benchmark::DoNotOptimize(text);
    }
}
BENCHMARK(StdStringAppend)->Name("CStringAppend64K/std_string")->Unit(benchmark::kMicrosecond);

// ---- CUnicodeString beside std::u16string

const std::u16string& KiloUnits() {
    static const std::u16string text(1024, u'x');
    return text;
}
const unsigned short* Units(const std::u16string& s) {
    return reinterpret_cast<const unsigned short*>(s.c_str());
}

void UnicodeStringCopy(benchmark::State& state) {
    const CUnicodeString source(Units(KiloUnits()));
    for (auto _ : state) {
        CUnicodeString copy(source);
        benchmark::DoNotOptimize(copy);
    }
}
BENCHMARK(UnicodeStringCopy)->Name("CUnicodeStringCopy1K/vorn");

void U16StringCopy(benchmark::State& state) {
    const std::u16string source(KiloUnits());
    for (auto _ : state) {
        std::u16string copy(source);
        benchmark::DoNotOptimize(copy);
    }
}
BENCHMARK(U16StringCopy)->Name("CUnicodeStringCopy1K/std_u16string");

// 32 appends of 16 units into a string that already has the room.
void UnicodeStringAppend(benchmark::State& state) {
    const std::u16string piece(16, u'y');
    CUnicodeString text;
    text.EnsureCapacity(1024);
    for (auto _ : state) {
        text = Units(piece);
        for (int i = 0; i < 31; ++i)
            text += Units(piece);
        benchmark::DoNotOptimize(text);
    }
}
BENCHMARK(UnicodeStringAppend)->Name("CUnicodeStringAppend512/vorn");

void U16StringAppend(benchmark::State& state) {
    const std::u16string piece(16, u'y');
    std::u16string text;
    text.reserve(1024);
    for (auto _ : state) {
        text = piece;
        for (int i = 0; i < 31; ++i)
            text += piece;
        benchmark::DoNotOptimize(text);
    }
}
BENCHMARK(U16StringAppend)->Name("CUnicodeStringAppend512/std_u16string");

// ---- UTF-8 conversions beside ICU

// 1 MB of UTF-8 in several scripts, of one, two and three bytes a character. Characters beyond
// U+FFFF are left out: the library writes a surrogate pair back as '?', and the two sides would
// no longer produce the same text.
const std::string& MixedText() {
    static const std::string text = [] {
        const char* const pieces[] = {
            "The quick brown fox jumps over the lazy dog. ",
            "Größe, Übermaß und naïve Cafés à côté. ",
            "Ελληνικό κείμενο για τη δοκιμή. ",
            "Русский текст для проверки. ",
            "中文文本用于测试转换。",
            "日本語のテキストを変換します。",
            "한국어 텍스트를 변환합니다. ",
            "नमस्ते दुनिया, यह परीक्षण है। ",
            "مرحبا بالعالم، هذا اختبار. ",
        };
        std::string s;
        for (std::size_t i = 0;; ++i) {
            const char* piece = pieces[i % (sizeof pieces / sizeof pieces[0])];
            if (s.size() + std::strlen(piece) > (1u << 20))
                break;
            s += piece;
        }
        return s;
    }();
    return text;
}

// Both sides must read and write the same units, or the comparison means nothing.
void CheckSameConversion() {
    const std::string& text = MixedText();
    CUnicodeString ours;
    ours.FromUTF8(text.data(), static_cast<int>(text.size()));
    const icu::UnicodeString theirs = icu::UnicodeString::fromUTF8(text);
    const auto units = static_cast<std::size_t>(theirs.length());
    if (ours.GetLength() != units ||
        std::memcmp(static_cast<const unsigned short*>(ours), theirs.getBuffer(), units * 2) != 0 ||
        text != static_cast<const char*>(ours.ToUTF8())) {
        std::fprintf(stderr, "the UTF-8 conversions differ from ICU's\n");
        std::abort();
    }
}

void UnicodeStringFromUTF8(benchmark::State& state) {
    CheckSameConversion();
    const std::string& text = MixedText();
    for (auto _ : state) {
        CUnicodeString s;
        s.FromUTF8(text.data(), static_cast<int>(text.size()));
        benchmark::DoNotOptimize(s);
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
}
BENCHMARK(UnicodeStringFromUTF8)
    ->Name("CUnicodeStringFromUTF8_1M/vorn")
    ->Unit(benchmark::kMicrosecond);

void IcuFromUTF8(benchmark::State& state) {
    const std::string& text = MixedText();
    for (auto _ : state) {
        icu::UnicodeString s = icu::UnicodeString::fromUTF8(text);
        benchmark::DoNotOptimize(s);
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
}
BENCHMARK(IcuFromUTF8)->Name("CUnicodeStringFromUTF8_1M/icu")->Unit(benchmark::kMicrosecond);

void UnicodeStringToUTF8(benchmark::State& state) {
    const std::string& text = MixedText();
    CUnicodeString source;
    source.FromUTF8(text.data(), static_cast<int>(text.size()));
    for (auto _ : state) {
        CString bytes = source.ToUTF8();
        benchmark::DoNotOptimize(bytes);
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
}
BENCHMARK(UnicodeStringToUTF8)->Name("CUnicodeStringToUTF8_1M/vorn")->Unit(benchmark::kMicrosecond);

void IcuToUTF8(benchmark::State& state) {
    const std::string& text = MixedText();
    const icu::UnicodeString source = icu::UnicodeString::fromUTF8(text);
    for (auto _ : state) {
        std::string bytes;
        source.toUTF8String(bytes);
        benchmark::DoNotOptimize(bytes);
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
}
BENCHMARK(IcuToUTF8)->Name("CUnicodeStringToUTF8_1M/icu")->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();

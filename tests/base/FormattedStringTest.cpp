#include <gtest/gtest.h>

#include <cstdarg>
#include <cstdio>
#include <string>

#include <vorn/base/FormattedString.h>
#include <vorn/base/FormattedUnicodeString.h>
#include <vorn/base/IllegalArgumentException.h>

#include "support/FormatDifferential.h"
#include "support/Throws.h"
#include "support/Utf16.h"

namespace {

using vorn::base::CFormattedString;
using vorn::base::CFormattedUnicodeString;
using vorn::test::ExpectThrowAt;
using vorn::test::Units;
using vorn::test::W;
using vorn::test::WString;

WString Widen(const std::string& text) {
    return WString(text.begin(), text.end());
}

// Both classes, the UTF-16 one from the same format widened, against the C library wherever the
// two agree: every integer, floating, text and character conversion, flags, widths, precisions.
TEST(FormattedString, AgreesWithTheCLibraryWhereTheRulesMeet) {
    vorn::test::FormatDifferential(1763, [](const std::string& format, auto value,
                                            const std::string& reference) {
        ASSERT_EQ(std::string(CFormattedString(format.c_str(), value)), reference) << format;
        ASSERT_EQ(Units(CFormattedUnicodeString(Widen(format).c_str(), value)), Widen(reference))
            << format;
    }).Run(4000);
    EXPECT_STREQ(CFormattedString("100%% of %s", "it"), "100% of it");
}

// The C library's output, from a format that the compiler doesn't check.
std::string Theirs(const char* format, ...) {
    char text[64];
    va_list arguments;
    va_start(arguments, format);
    const int n = std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    return std::string(text, n > 0 ? static_cast<std::size_t>(n) : 0);
}

// Where the two part, by the Windows rules that the library's callers are written for. Each line
// checks the library's output, and that the C library's differs where it is safe to ask it.
TEST(FormattedString, WhereTheRulesPartFromTheCLibrary) {
    auto differs = [](const char* ours, const char* expected, const std::string& theirs) {
        EXPECT_STREQ(ours, expected);
        EXPECT_NE(theirs, ours);
    };
    // `l` is 32 bits, as long is there: a 64-bit argument gives its low half.
    differs(CFormattedString("%ld", 0x100000002LL), "2", Theirs("%ld", 0x100000002L));
    // `I64` and `I32` are lengths there; the C library takes `I` for a flag and 64 for a width.
    differs(CFormattedString("%I64d", 5LL), "5", Theirs("%I64d", 5));
    // `%p`: every hex digit in capitals with no prefix, also for null (C: 0x..., "(nil)").
    differs(CFormattedString("%p", nullptr), "0000000000000000", Theirs("%p", nullptr));
    // `%n` is refused, as that runtime does by default: it stores nothing, and the `n` is copied
    // out as an unknown conversion is.
    int count = 7, stored = 7;
    differs(CFormattedString("ab%n", &count), "abn", Theirs("ab%n", &stored));
    EXPECT_EQ(count, 7);
    // An unknown conversion is copied out without its '%'.
    differs(CFormattedString("%y", 1), "y", Theirs("%y", 1));
    // A null text is "(null)", and a precision cuts that too (C: nothing below six).
    const char* null = nullptr;
    differs(CFormattedString("%.3s", null), "(nu", Theirs("%.3s", null));
    // `%ls`, `%S` and `%lc` take UTF-16, as wchar_t is there (C: 32-bit units, not asked here).
    const WString euro = W(u"\u20ac");
    EXPECT_STREQ(CFormattedString("%ls|%S|%lc", euro.c_str(), euro.c_str(), 0xE9),
                 "\xE2\x82\xAC|\xE2\x82\xAC|\xC3\xA9");
    EXPECT_EQ(Units(CFormattedUnicodeString(W(u"%ls|%s").c_str(), euro.c_str(), "\xC3\xA9")),
              W(u"\u20ac|\u00e9"));
}

TEST(FormattedString, RefusalsAndTheOneKilobyteRule) {
    for (const char* format : {static_cast<const char*>(nullptr), ""})
        ExpectThrowAt<vorn::base::CIllegalArgumentException>([&] { CFormattedString text(format); },
                                                             "vorn/base/FormattedString", 39,
                                                             "Invalid format string.");
    const WString empty;
    for (const unsigned short* format :
         {static_cast<const unsigned short*>(nullptr), empty.c_str()})
        ExpectThrowAt<vorn::base::CIllegalArgumentException>(
            [&] { CFormattedUnicodeString text(format); }, "vorn/base/FormattedUnicodeString", 39,
            "Invalid format string.");
    // Text that fills 1023 bytes is formatted again with more room; longer text is cut at 1024.
    EXPECT_EQ(std::string(CFormattedString("%1023d", 1)).size(), 1023u);
    EXPECT_EQ(std::string(CFormattedString("%1500d", 1)).size(), 1024u);
    EXPECT_EQ(Units(CFormattedUnicodeString(W(u"%1023d").c_str(), 1)).size(), 1023u);
    vorn::test::ExpectNoMemory([] { CFormattedString text("%d", 1); }, "vorn/base/String", 1763);
    vorn::test::ExpectNoMemory([] { CFormattedString text("%1023d", 1); }, "vorn/base/String", 1780,
                               2);
    vorn::test::ExpectNoMemory([] { CFormattedUnicodeString text(W(u"%d").c_str(), 1); },
                               "vorn/base/UnicodeString", 2309);
}

} // namespace

#include <gtest/gtest.h>

#include <cmath>

#include "platform/NumberParse.h"
#include "support/Utf16.h"

namespace {

using vorn::test::W;

template <typename T>
bool Parse(const char16_t* text, T& value, ZK::TrimWSMode trim = ZK::TrimWSNone) {
    return ZK::strtovalue(W(text).c_str(), value, ZK::ToValueStrict, trim);
}

TEST(NumberParse, IntegersAreWholeDecimalsInRange) {
    short s = 5;
    EXPECT_TRUE(Parse(u"-32768", s));
    EXPECT_EQ(s, -32768);
    EXPECT_FALSE(Parse(u"32768", s));
    EXPECT_FALSE(Parse(u"-32769", s));
    EXPECT_EQ(s, -32768);
    int i = 0;
    EXPECT_TRUE(Parse(u"+2147483647", i));
    EXPECT_EQ(i, 2147483647);
    for (const char16_t* bad :
         {u"", u"+", u"-", u"1 ", u" 1", u"0x1", u"1e3", u"1.0", u"+-1", u"١"})
        EXPECT_FALSE(Parse(bad, i)) << vorn::test::Narrow(W(bad));
    EXPECT_TRUE(Parse(u" 12\n", i, ZK::TrimWSBoth));
    EXPECT_EQ(i, 12);
    unsigned int u = 0;
    EXPECT_TRUE(Parse(u"4294967295", u));
    EXPECT_FALSE(Parse(u"-0", u));
    EXPECT_FALSE(Parse(u"4294967296", u));
    long long ll = 0;
    EXPECT_TRUE(Parse(u"-9223372036854775808", ll));
    EXPECT_FALSE(Parse(u"9223372036854775808", ll));
    unsigned long long ull = 0;
    EXPECT_FALSE(Parse(u"18446744073709551616", ull));
    EXPECT_FALSE(Parse(u"99999999999999999999", ull));
}

TEST(NumberParse, FloatingValues) {
    float f = 0;
    EXPECT_TRUE(Parse(u"+1.5e3", f));
    EXPECT_EQ(f, 1500.0f);
    EXPECT_FALSE(Parse(u"3.5e38", f));
    EXPECT_FALSE(Parse(u"1e-46", f));
    double d = 0;
    EXPECT_TRUE(Parse(u"-inf", d));
    EXPECT_TRUE(std::isinf(d));
    EXPECT_TRUE(Parse(u"nan", d));
    EXPECT_TRUE(Parse(u".5", d));
    EXPECT_EQ(d, 0.5);
    EXPECT_TRUE(Parse(u"0.000000000000000000000000000000000000000000000000000000000000000000000000"
                      u"000000000000000000000000000000000000000000000000000000000000000000000001",
                      d));
    for (const char16_t* bad : {u"", u"1e", u"0x10", u"1,5", u"1.5f", u"+-1", u"1e400", u"é"})
        EXPECT_FALSE(Parse(bad, d)) << vorn::test::Narrow(W(bad));
}

TEST(NumberParse, CheckedScanStoresOnlyWhatTheArgumentListAllows) {
    const char* const ull[] = {"%llu", nullptr};
    unsigned long long value = 0;
    EXPECT_EQ(
        ZK::checkedsscanf(0, W(u"18446744073709551615").c_str(), W(u"%llu").c_str(), ull, &value),
        1);
    EXPECT_EQ(value, 18446744073709551615ULL);
    for (const char16_t* bad : {u"12x", u"-1", u"", u"18446744073709551616"})
        EXPECT_EQ(ZK::checkedsscanf(0, W(bad).c_str(), W(u"%llu").c_str(), ull, &value), 0);
    // A directive that the list doesn't name stores nothing.
    EXPECT_EQ(ZK::checkedsscanf(0, W(u"5").c_str(), W(u"%d").c_str(), ull, &value), 0);
    const char* const pair[] = {"%hd", "%lf", nullptr};
    short s = 0;
    double d = 0;
    EXPECT_EQ(ZK::checkedsscanf(0, W(u" -3 , 2.5").c_str(), W(u"%hd ,%lf").c_str(), pair, &s, &d),
              2);
    EXPECT_EQ(s, -3);
    EXPECT_EQ(d, 2.5);
}

} // namespace

#include <gtest/gtest.h>

#include <string>

#include <vorn/base/IllegalArgumentException.h>
#include <vorn/base/MemoryException.h>
#include <vorn/io/UnsupportedEncodingException.h>
#include <vorn/io/WCharToCharConverter.h>
#include <vorn/io/WCharToCharConverterFactory.h>
#include <vorn/io/WCharToCharUTF8.h>

#include "support/AllocFailure.h"
#include "support/Throws.h"
#include "support/Utf16.h"

namespace {

using vorn::base::CIllegalArgumentException;
using vorn::base::CRef;
using vorn::base::CString;
using vorn::io::CWCharToCharConverter;
using vorn::io::CWCharToCharConverterFactory;
using vorn::io::CWCharToCharUTF8;
using vorn::test::ExpectThrow;
using vorn::test::WString;

// The bytes of one Convert call, or "-1".
std::string Convert(CWCharToCharUTF8& converter, const WString& units, unsigned int room = 64) {
    char target[80] = {};
    const int n = converter.Convert(units.data(), 0, static_cast<unsigned int>(units.size()),
                                    target, 0, room);
    return n < 0 ? "-1" : std::string(target, static_cast<std::size_t>(n));
}

WString U(std::initializer_list<unsigned short> units) {
    return WString(units);
}

TEST(WCharToCharUTF8, SingleUnits) {
    CWCharToCharUTF8 utf8;
    EXPECT_EQ(utf8.GetEncoding(), "UTF-8");
    EXPECT_EQ(Convert(utf8, U({'A', 0xE9, 0x20AC, 0xFFFF})), "A\xC3\xA9\xE2\x82\xAC\xEF\xBF\xBF");
    // A lone low surrogate takes the three-byte form of its value.
    EXPECT_EQ(Convert(utf8, U({0xDC00})), "\xED\xB0\x80");
    // Only a whole range fits or nothing does.
    EXPECT_EQ(Convert(utf8, U({'a', 0xE9}), 2), "-1");
    EXPECT_EQ(Convert(utf8, U({'a', 0xE9}), 3), "a\xC3\xA9");
}

TEST(WCharToCharUTF8, SurrogatePairs) {
    CWCharToCharUTF8 utf8;
    // Inside one call a pair is one '?', and the unit after a high surrogate is swallowed.
    EXPECT_EQ(Convert(utf8, U({0xD83D, 0xDE00})), "?");
    EXPECT_EQ(Convert(utf8, U({0xD83D, 'b', 'c'})), "?c");
    // Across two calls the halves make four bytes.
    EXPECT_EQ(Convert(utf8, U({'x', 0xD83D})), "x");
    EXPECT_EQ(Convert(utf8, U({0xDE00})), "\xF0\x9F\x98\x80");
    // A kept half meets no low half: '?' each time, until a low half or a Reset.
    EXPECT_EQ(Convert(utf8, U({0xDBFF})), "");
    EXPECT_EQ(Convert(utf8, U({'a'})), "?a");
    EXPECT_EQ(Convert(utf8, U({'b'})), "?b");
    EXPECT_EQ(Convert(utf8, U({0xDFFF})), "\xF4\x8F\xBF\xBF");
    EXPECT_EQ(Convert(utf8, U({0xD800})), "");
    EXPECT_EQ(Convert(utf8, U({0xDC00}), 3), "-1"); // the pair is dropped with the failure
    EXPECT_EQ(Convert(utf8, U({'c'})), "c");
    EXPECT_EQ(Convert(utf8, U({0xD800})), "");
    utf8.Reset();
    EXPECT_EQ(Convert(utf8, U({'d'})), "d");
}

TEST(WCharToCharUTF8, OffsetsByteOrderMarkAndNullBlocks) {
    CWCharToCharUTF8 utf8;
    const unsigned short source[] = {'a', 'b', 'c', 'd'};
    char target[8] = {'-', '-', '-', '-', '-', '-', '-', '-'};
    EXPECT_EQ(utf8.Convert(source, 1, 2, target, 3, 2), 2);
    EXPECT_EQ(std::string(target, 8), "---bc---");

    unsigned int size = 0;
    utf8.GetByteOrderMark(nullptr, &size);
    EXPECT_EQ(size, 3u);
    size = 2;
    utf8.GetByteOrderMark(target, &size);
    EXPECT_EQ(size, 0u);
    size = 16;
    utf8.GetByteOrderMark(target, &size);
    EXPECT_EQ(size, 3u);
    EXPECT_EQ(std::string(target, 3), "\xEF\xBB\xBF");

    EXPECT_EQ(utf8.Convert(nullptr, 0, 0, nullptr, 0, 0), 0);
    EXPECT_THROW(utf8.Convert(source, 0, 1, nullptr, 0, 4), vorn::base::CNullReferenceException);
}

// A converter that only carries its name.
class CNamed : public CWCharToCharConverter {
public:
    explicit CNamed(const char* name) : CWCharToCharConverter(name) {}
    explicit CNamed(const CString& name) : CWCharToCharConverter(name) {}
    int Convert(const unsigned short*, unsigned int, unsigned int, char*, unsigned int,
                unsigned int) override {
        return 0;
    }
    void Reset() override {}
    void GetByteOrderMark(char*, unsigned int* size) override { *size = 0; }
};

TEST(ConverterRegistry, LookupsByNameAndTheirInvertedChecks) {
    CRef<CWCharToCharConverter> converter = CWCharToCharConverter::GetConverter(CString("UTF-8"));
    EXPECT_EQ(converter->GetEncoding(), "UTF-8");
    // Each call makes a converter of its own.
    EXPECT_NE(converter.GetPointer(),
              CWCharToCharConverter::GetConverter(CString("UTF-8")).GetPointer());
    try {
        CWCharToCharConverter::GetConverter(CString("utf-8"));
        ADD_FAILURE() << "no exception";
    } catch (const vorn::io::CUnsupportedEncodingException& e) {
        EXPECT_EQ(e.GetEncoding(), "utf-8");
        EXPECT_STREQ(e.GetSourceFile(), "vorn/io/WCharToCharConverter");
    }
    for (const char* name : {"UTF-8", "", static_cast<const char*>(nullptr)})
        EXPECT_THROW(CWCharToCharConverter::GetConverter(name), CIllegalArgumentException);
    ExpectThrow<CIllegalArgumentException>(
        [] { CWCharToCharConverterFactory::GetConverterFactory("UTF-8"); },
        "vorn/io/WCharToCharConverterFactory", "Invalid encoding.");
    EXPECT_EQ(CWCharToCharConverterFactory::GetConverterFactory(""), nullptr);
    EXPECT_EQ(CWCharToCharConverterFactory::GetConverterFactory(static_cast<const char*>(nullptr)),
              nullptr);
    ExpectThrow<CIllegalArgumentException>([] { CNamed unnamed(""); },
                                           "vorn/io/WCharToCharConverter", "Invalid encoding.");
    ExpectThrow<CIllegalArgumentException>([] { CNamed unnamed{CString()}; },
                                           "vorn/io/WCharToCharConverter", "Invalid encoding.");
}

class CPlainFactory : public vorn::io::CConcreteWCharToCharConverterFactory<CWCharToCharUTF8> {
public:
    explicit CPlainFactory(const char* name)
        : vorn::io::CConcreteWCharToCharConverterFactory<CWCharToCharUTF8>(name) {}
};

TEST(ConverterRegistry, RegistrationReplacesAndRemovesByName) {
    CWCharToCharConverterFactory* original =
        CWCharToCharConverterFactory::GetConverterFactory(CString("UTF-8"));
    ASSERT_NE(original, nullptr);
    EXPECT_STREQ(original->GetEncoding(), "UTF-8");
    {
        auto* first = new CPlainFactory("UTF-8");
        EXPECT_EQ(CWCharToCharConverterFactory::GetConverterFactory(CString("UTF-8")), first);
        CPlainFactory second("UTF-8");
        delete first; // removes the name, though it now belongs to `second`
        EXPECT_EQ(CWCharToCharConverterFactory::GetConverterFactory(CString("UTF-8")), nullptr);
        EXPECT_FALSE(CWCharToCharConverterFactory::RegisterConverterFactory(nullptr));
        EXPECT_FALSE(CWCharToCharConverterFactory::UnregisterConverterFactory(nullptr));
        EXPECT_TRUE(CWCharToCharConverterFactory::RegisterConverterFactory(&second));
        EXPECT_FALSE(CWCharToCharConverterFactory::UnregisterConverterFactory(&second));
        EXPECT_EQ(CWCharToCharConverterFactory::GetConverterFactory(CString("UTF-8")), nullptr);
        {
            vorn::test::FailAllocation fail(1, true);
            EXPECT_FALSE(CWCharToCharConverterFactory::RegisterConverterFactory(&second));
        }
    }
    EXPECT_TRUE(CWCharToCharConverterFactory::RegisterConverterFactory(original));
    ExpectThrow<CIllegalArgumentException>([] { CPlainFactory unnamed(""); },
                                           "vorn/io/WCharToCharConverterFactory",
                                           "Invalid encoding.");
}

} // namespace

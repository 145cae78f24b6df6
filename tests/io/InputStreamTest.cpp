#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <vorn/io/InputStream.h>
#include <vorn/io/Reader.h>

namespace {

using vorn::io::CInputStream;
using vorn::io::CReader;

// A byte source that keeps only the primitives, so the base defaults are what runs.
class CBytes : public CInputStream {
public:
    explicit CBytes(std::string bytes) : m_bytes(std::move(bytes)) {}
    unsigned int GetAvailable() const override {
        return static_cast<unsigned int>(m_bytes.size() - m_at);
    }
    int Read(char* buffer, unsigned int offset, unsigned int count) override {
        calls.push_back(offset * 1000 + count);
        if (m_at >= m_bytes.size())
            return -1;
        unsigned int n = 0;
        for (; n < count && m_at < m_bytes.size(); ++n)
            buffer[offset + n] = m_bytes[m_at++];
        return static_cast<int>(n);
    }
    using CInputStream::Read;
    void Reset() override { m_at = 0; }
    void Close() override {}
    std::vector<unsigned int> calls;

private:
    std::string m_bytes;
    std::size_t m_at = 0;
};

// A source that answers 0 without ever saying -1.
class CSilent : public CInputStream {
public:
    unsigned int GetAvailable() const override { return 0; }
    int Read(char*, unsigned int, unsigned int) override { return 0; }
    using CInputStream::Read;
    void Reset() override {}
    void Close() override {}
};

class CUnits : public CReader {
public:
    explicit CUnits(std::vector<unsigned short> units) : m_units(std::move(units)) {}
    int Read(unsigned short* buffer, unsigned int offset, unsigned int count) override {
        if (m_at >= m_units.size())
            return -1;
        unsigned int n = 0;
        for (; n < count && m_at < m_units.size(); ++n)
            buffer[offset + n] = m_units[m_at++];
        return static_cast<int>(n);
    }
    using CReader::Read;
    void Reset() override { m_at = 0; }
    void Close() override {}

private:
    std::vector<unsigned short> m_units;
    std::size_t m_at = 0;
};

TEST(InputStream, SingleByteReadSignExtendsAndEndsWithEOS) {
    CBytes s(std::string("\x41\x80\xFF", 3));
    EXPECT_EQ(s.Read(), 0x41);
    EXPECT_EQ(s.Read(), -128);
    EXPECT_EQ(s.Read(), -1);
    EXPECT_EQ(s.Read(), CInputStream::EOS);
    EXPECT_EQ(CInputStream::EOS, 65535);
    EXPECT_EQ(s.calls.front(), 1u); // offset 0, count 1
    CSilent silent;
    EXPECT_EQ(silent.Read(), 0);
}

TEST(InputStream, CountedReadForwardsWithOffsetZero) {
    CBytes s("abcdef");
    char buffer[8] = {};
    EXPECT_EQ(s.Read(buffer, 4), 4);
    EXPECT_EQ(s.calls.back(), 4u);
    EXPECT_EQ(std::string(buffer, 4), "abcd");
}

TEST(InputStream, BaseSkipReturnsWhatWasNotSkipped) {
    CBytes s("abcdefg");
    EXPECT_EQ(s.Skip(0), 0);
    EXPECT_TRUE(s.calls.empty());
    EXPECT_EQ(s.Skip(4), 0);
    EXPECT_EQ(s.Skip(5), 2); // three bytes were there
    EXPECT_EQ(s.Read(), CInputStream::EOS);
    s.Reset();
    EXPECT_EQ(s.Skip(3), 0);
    EXPECT_EQ(s.Read(), 'd');
    // A 0xFF byte reads as -1, which is no end: the skip goes past it.
    CBytes high(std::string("\xFF\xFF", 2));
    EXPECT_EQ(high.Skip(2), 0);
    EXPECT_EQ(high.GetAvailable(), 0u);
}

TEST(Reader, SingleUnitReadZeroExtendsAndSkipIsResidual) {
    CUnits r({0x41, 0xFFFF, 0x8000});
    EXPECT_EQ(r.Read(), 0x41);
    EXPECT_EQ(r.Read(), 0xFFFF);
    EXPECT_EQ(r.Read(), 0x8000);
    EXPECT_EQ(r.Read(), CReader::EOS);
    EXPECT_EQ(CReader::EOS, 1048575);
    r.Reset();
    EXPECT_EQ(r.Skip(0), 0);
    EXPECT_EQ(r.Skip(5), 2);
    r.Reset();
    unsigned short buffer[4] = {};
    EXPECT_EQ(r.Read(buffer, 4), 3);
    EXPECT_EQ(buffer[1], 0xFFFF);
    EXPECT_EQ(r.Read(buffer, 4), -1);
}

TEST(InputStream, BasesAreRegistered) {
    for (const char* name :
         {"vorn::io::CInputStream", "vorn::io::COutputStream", "vorn::io::CReader"}) {
        const vorn::base::CClass* cls = vorn::base::CClass::FindClass(name);
        ASSERT_NE(cls, nullptr) << name;
        EXPECT_STREQ(cls->GetQualifiedBaseClassName1(), "vorn::base::CObject");
        EXPECT_EQ(cls->GetConstructor(), nullptr);
    }
    CBytes s("");
    EXPECT_TRUE(s.IsInstanceOf(&CInputStream::m_classCInputStream));
}

} // namespace

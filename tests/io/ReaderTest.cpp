#include <gtest/gtest.h>

#include <vorn/io/Reader.h>

#include "support/Utf16.h"

namespace {

using vorn::io::CReader;

// Only the primitive, so the base's single-unit read and skip are what run.
class CUnits : public CReader {
public:
    explicit CUnits(vorn::test::WString units) : m_units(units) {}
    int Read(unsigned short* buffer, unsigned int offset, unsigned int count) override {
        if (m_at >= m_units.size())
            return -1;
        unsigned int n = 0;
        for (; n < count && m_at < m_units.size(); ++n)
            buffer[offset + n] = m_units[m_at++];
        return int(n);
    }
    using CReader::Read;
    void Reset() override { m_at = 0; }
    void Close() override {}

private:
    vorn::test::WString m_units;
    std::size_t m_at = 0;
};

TEST(Reader, SingleUnitReadZeroExtendsAndSkipIsResidual) {
    CUnits r({0x41, 0xFFFF, 0x8000});
    EXPECT_EQ(r.Read(), 0x41);
    EXPECT_EQ(r.Read(), 0xFFFF);
    EXPECT_EQ(r.Read(), 0x8000);
    EXPECT_EQ(r.Read(), 1048575);
    r.Reset();
    EXPECT_EQ(r.Skip(5), 2);
    r.Reset();
    unsigned short buffer[4];
    EXPECT_EQ(r.Read(buffer, 4), 3);
    EXPECT_EQ(r.Read(buffer, 4), -1);
}

} // namespace

#include <gtest/gtest.h>

#include <string>

#include <vorn/io/InputStream.h>

namespace {

using vorn::io::CInputStream;

// Only the primitives, so the base's single-byte read and skip are what run. `silent` answers 0
// where it should say -1.
class CBytes : public CInputStream {
public:
    explicit CBytes(std::string bytes, bool silent = false) : m_bytes(bytes), m_silent(silent) {}
    unsigned int GetAvailable() const override { return unsigned(m_bytes.size() - m_at); }
    int Read(char* buffer, unsigned int offset, unsigned int count) override {
        if (m_at >= m_bytes.size())
            return m_silent ? 0 : -1;
        unsigned int n = 0;
        for (; n < count && m_at < m_bytes.size(); ++n)
            buffer[offset + n] = m_bytes[m_at++];
        return int(n);
    }
    using CInputStream::Read;
    void Reset() override { m_at = 0; }
    void Close() override {}

private:
    std::string m_bytes;
    std::size_t m_at = 0;
    bool m_silent;
};

TEST(InputStream, SingleByteReadSignExtendsAndEndsWithEOS) {
    CBytes s(std::string("\x41\x80\xFF", 3));
    EXPECT_EQ(s.Read(), 0x41);
    EXPECT_EQ(s.Read(), -128);
    EXPECT_EQ(s.Read(), -1);
    EXPECT_EQ(s.Read(), 65535);
    EXPECT_EQ(CBytes("", true).Read(), 0); // nothing read and no end said: no stack garbage
    char buffer[4];
    s.Reset();
    EXPECT_EQ(s.Read(buffer, 4), 3);
}

TEST(InputStream, BaseSkipReturnsWhatWasNotSkipped) {
    CBytes s("abcdefg");
    EXPECT_EQ(s.Skip(0), 0);
    EXPECT_EQ(s.Skip(4), 0);
    EXPECT_EQ(s.Skip(5), 2); // three bytes were left
    s.Reset();
    EXPECT_EQ(s.Skip(3), 0);
    EXPECT_EQ(s.Read(), 'd');
    CBytes high(std::string("\xFF\xFF", 2)); // -1 is a byte, not the end
    EXPECT_EQ(high.Skip(2), 0);
    EXPECT_EQ(high.GetAvailable(), 0u);
}

} // namespace

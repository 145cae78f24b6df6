#include <gtest/gtest.h>

#include <string>

#include <vorn/io/OutputStream.h>

namespace {

using vorn::io::COutputStream;

// Keeps only the single-byte primitive, so the block writes are the base loops.
class CBytes : public COutputStream {
public:
    using COutputStream::Write;
    void Write(char value) override { bytes.push_back(value); }
    void Flush() override {}
    void Close() override {}
    std::string bytes;
};

TEST(OutputStream, BlockWritesLoopOverTheBytePrimitive) {
    CBytes s;
    s.Write("abcdef", 2, 3);
    EXPECT_EQ(s.bytes, "cde");
    s.Write("xy", 2);
    EXPECT_EQ(s.bytes, "cdexy");
    COutputStream& base = s;
    base.Write(std::string("\0z", 2).c_str(), 2);
    EXPECT_EQ(s.bytes, std::string("cdexy\0z", 7));
}

TEST(OutputStream, NullZeroAndWrappingCountsWriteNothing) {
    CBytes s;
    s.Write(nullptr, 0, 4);
    s.Write(nullptr, 4);
    s.Write("abc", 1, 0);
    // offset + count wraps below offset: nothing, not a walk through memory.
    s.Write("abc", 1, 0xFFFFFFFFu);
    s.Write("abc", 0xFFFFFFF0u, 0x20u);
    EXPECT_EQ(s.bytes, "");
}

} // namespace

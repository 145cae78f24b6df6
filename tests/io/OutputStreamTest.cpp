#include <gtest/gtest.h>

#include <string>

#include <vorn/io/OutputStream.h>

namespace {

// Only the single-byte primitive, so the block writes are the base's loops.
class CBytes : public vorn::io::COutputStream {
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
    s.Write(std::string("x\0", 2).c_str(), 2);
    EXPECT_EQ(s.bytes, std::string("cdex\0", 5));
    s.bytes.clear();
    s.Write(nullptr, 0, 4);
    s.Write(nullptr, 4);
    s.Write("abc", 1, 0);
    s.Write("abc", 1, 0xFFFFFFFFu); // offset + count wraps below offset
    EXPECT_EQ(s.bytes, "");
}

} // namespace

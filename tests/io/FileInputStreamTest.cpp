#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include <vorn/io/FileInputStream.h>
#include <vorn/io/IOException.h>

#include "support/Files.h"
#include "support/Throws.h"

namespace {

using vorn::io::CFileInputStream;
using vorn::io::CIOException;
using vorn::test::ExpectThrow;

const char* const kSource = "vorn/io/FileInputStream";

TEST(FileInputStream, ReadsSkipsAndTheEnd) {
    vorn::test::TempDir dir;
    ExpectThrow<CIOException>([&] { CFileInputStream s((dir / "none").c_str()); }, kSource);
    ExpectThrow<CIOException>([&] { CFileInputStream s(dir.Path().c_str()); }, kSource,
                              "An error occurred while trying to open file.");
    vorn::test::PutFile(dir / "f", "\xFF"
                                   "123456789");
    CFileInputStream s((dir / "f").c_str());
    EXPECT_EQ(s.Read(), -1); // sign-extended
    char buffer[8] = {};
    EXPECT_EQ(s.Read(buffer, 2, 3), 3);
    EXPECT_EQ(std::string(buffer + 2, 3), "123");
    EXPECT_EQ(s.Read(nullptr, 2), 2); // skipped
    EXPECT_EQ(s.GetAvailable(), 4u);
    EXPECT_EQ(s.Skip(1), 1);
    EXPECT_EQ(s.Read(buffer, 8), 3);
    EXPECT_EQ(s.Read(buffer, 4), 0); // 0 at the end, not -1
    ExpectThrow<CIOException>([&] { s.Read(); }, kSource, "End of stream reached.");
    s.Reset();
    EXPECT_EQ(s.Skip(100), 10); // only what is left, by seeking
    EXPECT_EQ(s.GetAvailable(), 0u);
}

TEST(FileInputStream, FourGibibytesAndAClosedStream) {
    vorn::test::TempDir dir;
    vorn::test::PutFile(dir / "big", "");
    std::filesystem::resize_file(dir / "big", 0x100000000ull); // sparse
    CFileInputStream s((dir / "big").c_str());
    ExpectThrow<CIOException>([&] { s.GetAvailable(); }, kSource,
                              "64-bit file sizes not supported");
    EXPECT_EQ(s.Skip(1), 1);
    EXPECT_EQ(s.GetAvailable(), 0xFFFFFFFFu);
    s.Close();
    for (auto call :
         {+[](CFileInputStream& f) { f.Read(); }, +[](CFileInputStream& f) { f.Read(nullptr, 1); },
          +[](CFileInputStream& f) { f.Read(nullptr, 0, 1); },
          +[](CFileInputStream& f) { f.Skip(0); }, +[](CFileInputStream& f) { f.GetAvailable(); },
          +[](CFileInputStream& f) { f.Reset(); }, +[](CFileInputStream& f) { f.Close(); }})
        ExpectThrow<CIOException>([&] { call(s); }, kSource, "Stream closed.");
}

} // namespace

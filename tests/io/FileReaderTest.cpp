// CFileReader and CFileWriter: UTF-16 units to and from a file as they lie in memory.
#include <gtest/gtest.h>

#include <vorn/base/UnicodeString.h>
#include <vorn/io/FileReader.h>
#include <vorn/io/FileWriter.h>
#include <vorn/io/IOException.h>

#include "support/Files.h"
#include "support/Throws.h"

namespace {

using vorn::io::CFileReader;
using vorn::io::CFileWriter;
using vorn::io::CIOException;
using vorn::test::ExpectThrow;
using vorn::test::W;

const char* const kReader = "vorn/io/FileReader";
const char* const kWriter = "vorn/io/FileWriter";

TEST(FileReader, UnitsWrittenAreUnitsRead) {
    vorn::test::TempDir dir;
    const std::string path = dir / "units";
    vorn::test::PutFile(path, "old content is dropped");
    {
        CFileWriter w(path.c_str());
        w.Write(static_cast<unsigned short>(0xFFFF)); // by the channel, one unit
        w.Write(W(u"ab\u00E9\U0001F600").c_str());    // in a block
        w.Write(vorn::base::CUnicodeString(W(u"xyz").c_str()), 1, 9);
    }
    CFileReader r(path.c_str());
    EXPECT_EQ(r.Read(), 0xFFFF); // zero-extended
    unsigned short units[8] = {};
    EXPECT_EQ(r.Read(units, 1, 3), 3);
    EXPECT_EQ(vorn::test::WString(units + 1, 3), W(u"ab\u00E9"));
    EXPECT_EQ(r.Read(nullptr, 1), 1); // skips the high half
    EXPECT_EQ(r.Read(), 0xDE00);
    EXPECT_EQ(r.Skip(100), 2); // units left, by seeking
    ExpectThrow<CIOException>([&] { r.Read(); }, kReader, "End of stream reached.");
    r.Reset();
    EXPECT_EQ(r.Skip(6), 6);
    // Two units left: the end of the file fails a read of four.
    ExpectThrow<CIOException>([&] { r.Read(units, 4); }, kReader,
                              "Failed to read the specified number of wide chars from the "
                              "underlying file.");
    r.Close();
    ExpectThrow<CIOException>([&] { r.Read(); }, kReader, "Reader closed.");
    ExpectThrow<CIOException>([&] { r.Skip(1); }, kReader, "Reader closed.");
    ExpectThrow<CIOException>([&] { r.Close(); }, kReader, "Reader closed.");
}

TEST(FileReader, OddFilesFailedWritesAndAClosedWriter) {
    vorn::test::TempDir dir;
    vorn::test::PutFile(dir / "odd", "abc");
    ExpectThrow<CIOException>([&] { CFileReader r((dir / "odd").c_str()); }, kReader,
                              "Invalid unicode file: the file length must be even.");
    ExpectThrow<CIOException>([&] { CFileReader r((dir / "none").c_str()); }, kReader);
    ExpectThrow<CIOException>([&] { CFileWriter w(dir.Path().c_str()); }, kWriter,
                              "Failed to open the underlying file.");
    CFileWriter full("/dev/full");
    ExpectThrow<CIOException>([&] { full.Write(static_cast<unsigned short>('x')); }, kWriter,
                              "Failed to write the specified wide char to the underlying file.");
    ExpectThrow<CIOException>([&] { full.Write(W(u"x").c_str()); }, kWriter,
                              "Failed to write the specified number of wide chars to the "
                              "underlying file.");
    full.Close();
    full.Write(W(u"").c_str()); // empty and null texts write nothing, closed or not
    full.Write(nullptr, 0, 3);
    ExpectThrow<CIOException>([&] { full.Write(W(u"x").c_str(), 1); }, kWriter, "Writer closed.");
    ExpectThrow<CIOException>([&] { full.Flush(); }, kWriter, "Writer closed.");
    ExpectThrow<CIOException>([&] { full.Close(); }, kWriter, "Writer closed.");
}

} // namespace

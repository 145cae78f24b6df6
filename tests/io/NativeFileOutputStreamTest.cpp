#include <gtest/gtest.h>

#include <string>

#include <unistd.h>

#include <vorn/base/IllegalArgumentException.h>
#include <vorn/io/IOException.h>
#include <vorn/io/NativeFileOutputStream.h>

#include "support/Files.h"
#include "support/Throws.h"

namespace {

using vorn::io::CIOException;
using vorn::io::CNativeFileOutputStream;
using vorn::test::ExpectThrow;
using vorn::test::Wide;

const char* const kSource = "vorn/io/NativeFileOutputStream";
const char* const kWriteFailed = "Failed to write the specified byte the the underlying file.";

TEST(NativeFileOutputStream, OverwritesWithoutTruncatingOrAppends) {
    vorn::test::TempDir dir;
    const std::string path = dir / "f";
    vorn::test::PutFile(path, "0123456789");
    {
        CNativeFileOutputStream s(Wide(path).c_str(), false);
        s.Write('a');
        s.Write("xbc", 1, 1);
        s.Write("c", 1);
        EXPECT_EQ(vorn::test::GetFile(path), "abc3456789");
        ExpectThrow<CIOException>([&] { s.Write(nullptr, 2, 1); }, kSource, kWriteFailed);
        s.Close();
        s.Close(); // quietly
        ExpectThrow<CIOException>([&] { s.Write('x'); }, kSource, "Stream closed.");
        ExpectThrow<CIOException>([&] { s.Flush(); }, kSource, "Stream closed.");
    }
    CNativeFileOutputStream(Wide(path).c_str(), true).Write("def", 3);
    EXPECT_EQ(vorn::test::GetFile(path), "abc3456789def");
}

TEST(NativeFileOutputStream, Failures) {
    using vorn::base::CIllegalArgumentException;
    ExpectThrow<CIllegalArgumentException>([] { CNativeFileOutputStream s(nullptr, false); },
                                           kSource, "Invalid file path.");
    ExpectThrow<CIllegalArgumentException>(
        [] { CNativeFileOutputStream s(Wide("").c_str(), true); }, kSource, "Invalid file path.");
    vorn::test::TempDir dir;
    ExpectThrow<CIOException>([&] { CNativeFileOutputStream s(Wide(dir.Path()).c_str(), true); },
                              kSource, "Failed to open the specified file.");
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const std::string pipePath = "/proc/self/fd/" + std::to_string(ends[1]);
    ExpectThrow<CIOException>([&] { CNativeFileOutputStream s(Wide(pipePath).c_str(), true); },
                              kSource, "Failed to move the file pointer to the end of the file.");
    close(ends[0]);
    close(ends[1]);
    CNativeFileOutputStream full(Wide("/dev/full").c_str(), false);
    ExpectThrow<CIOException>([&] { full.Write('x'); }, kSource, kWriteFailed);
    ExpectThrow<CIOException>([&] { full.Write("xy", 2); }, kSource, kWriteFailed);
    full.Flush();
}

} // namespace
